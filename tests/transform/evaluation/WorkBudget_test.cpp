#include <gtest/gtest.h>

#include <string>

#include "transform/DerivedDocument.h"

namespace {

std::string Field(const std::string& name, const std::string& dataType, const std::string& expression) {
    return "<DerivedField name='" + name + "' dataType='" + dataType + "'>" + expression + "</DerivedField>";
}

std::string Repeated(const std::string& text, int times) {
    std::string repeated;
    for (int i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

/// Unused fields, so that each field has a tenth of the budget.
std::string NineOthers() {
    std::string fields;
    for (int i = 0; i < 9; ++i)
        fields += Field("other" + std::to_string(i), "double", "<Constant>1</Constant>");
    return fields;
}

const std::string lengthOfS = "<Apply function='stringLength'><FieldRef field='s'/></Apply>";

/// f0 gives the length of its argument, each of the others twice what the one before gives.
std::string DoublingFunctions(int count) {
    std::string functions =
        "<DefineFunction name='f0'><ParameterField name='p'/>"
        "<Apply function='stringLength'><FieldRef field='p'/></Apply></DefineFunction>";
    for (int i = 1; i <= count; ++i) {
        const std::string call = "<Apply function='f" + std::to_string(i - 1) + "'><FieldRef field='p'/></Apply>";
        functions += "<DefineFunction name='f" + std::to_string(i) +
                     "'><ParameterField name='p'/><Apply function='+'>" + call + call + "</Apply></DefineFunction>";
    }
    return functions;
}

TEST(WorkBudget, IsSpent_WhenLongTextsGoThroughManyCalls) {
    const DerivedDocument document(
        caseFields,
        DoublingFunctions(12) + Field("d", "double", "<Apply function='f12'><FieldRef field='s'/></Apply>"));
    const Case shortText(2, std::string(1'000, 'a')), longText(2, std::string(1'000'000, 'a'));
    EXPECT_EQ(document.ValueOf("d", &shortText), "number 4096000");
    EXPECT_EQ(document.ValueOf("d", &longText), "absent");
}

TEST(WorkBudget, IsSpent_WhenACallHasManyLongArguments) {
    const DerivedDocument document(
        caseFields,
        Field("d", "boolean", "<Apply function='isIn'>" + Repeated("<FieldRef field='s'/>", 2'000) + "</Apply>"));
    const Case shortText(2, std::string(1'000, 'a')), longText(2, std::string(1'000'000, 'a'));
    EXPECT_EQ(document.ValueOf("d", &shortText), "text true");
    EXPECT_EQ(document.ValueOf("d", &longText), "absent");
}

TEST(WorkBudget, IsSharedEquallyByTheFieldsOfADocument) {
    const auto document = [](int otherFields) {
        std::string fields = Field("d", "double", "<Apply function='sum'>" + Repeated(lengthOfS, 40) + "</Apply>");
        for (int i = 0; i < otherFields; ++i)
            fields += Field("e" + std::to_string(i), "double", lengthOfS);
        return DerivedDocument(caseFields, fields);
    };
    const Case longText(2, std::string(1'000'000, 'a'));
    EXPECT_EQ(document(0).ValueOf("d", &longText), "number 40000000");
    EXPECT_EQ(document(9).ValueOf("d", &longText), "absent");  // not the sum of those for which the work sufficed
    EXPECT_EQ(document(9).ValueOf("e0", &longText), "number 1000000");
}

TEST(WorkBudget, IsEachFieldsOwn_WhateverWasComputedBefore) {
    const std::string costly = "<Apply function='sum'>" + Repeated(lengthOfS, 100) + "</Apply>";
    const DerivedDocument document(caseFields,
                                   Field("spent", "double", costly) + Field("d", "double", lengthOfS) +
                                       Field("choosing", "double",
                                             "<Apply function='sum'>" + lengthOfS +
                                                 "<Apply function='if'><Constant dataType='boolean'>true</Constant>"
                                                 "<FieldRef field='spent'/></Apply>" +
                                                 lengthOfS + "</Apply>"));
    const Case longText(2, std::string(1'000'000, 'a')), shortText(2, "abc");
    for (int i = 0; i < 3; ++i) {
        const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&longText, document.data.get());
        EXPECT_EQ(values->GetValueByName("choosing")->GetDouble(), 2'000'000);
        EXPECT_EQ(values->GetValueByName("spent"), nullptr);
        EXPECT_EQ(values->GetValueByName("d")->GetDouble(), 1'000'000);
        EXPECT_EQ(document.ValueOf("spent", &shortText), "number 300");
        EXPECT_EQ(document.ValueOf("d", &shortText), "number 3");
    }
}

/// A chain of fields each of which could read a costly one and never does.
TEST(WorkBudget, GivesTheSame_WhateverIsAskedForFirst) {
    std::string fields = Field("costly", "double", "<Apply function='sum'>" + Repeated(lengthOfS, 100) + "</Apply>") +
                         Field("d0", "double", "<FieldRef field='x'/>");
    for (int i = 1; i <= 100; ++i) {
        fields += Field("d" + std::to_string(i), "double",
                        "<Apply function='if'><Constant dataType='boolean'>true</Constant><FieldRef field='d" +
                            std::to_string(i - 1) + "'/><FieldRef field='costly'/></Apply>");
    }
    const DerivedDocument document(caseFields, fields);
    const Case longText(2, std::string(1'000'000, 'a'));
    for (const char* first : {"d100", "d50", "costly"}) {
        const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&longText, document.data.get());
        values->GetValueByName(first);
        EXPECT_EQ(values->GetValueByName("d100")->GetDouble(), 2) << first;
        EXPECT_EQ(values->GetValueByName("costly"), nullptr) << first;
    }
}

TEST(WorkBudget, IsSpent_WhenTermsAreLookedForInManyWords) {
    const std::string index =
        "<TextIndex textField='s' maxLevenshteinDistance='2'><Constant>some term</Constant></TextIndex>";
    const std::string many = "<Apply function='sum'>" + Repeated(index, 150) + "</Apply>";
    const Case longText(2, Repeated("some tern ", 4'000)), shortText(2, "some tern");
    EXPECT_EQ(DerivedDocument(caseFields, Field("d", "double", index)).ValueOf("d", &longText), "number 4000");
    const DerivedDocument document(caseFields, Field("d", "double", many) + NineOthers());
    EXPECT_EQ(document.ValueOf("d", &longText), "absent");
    EXPECT_EQ(document.ValueOf("d", &shortText), "number 150");
}

TEST(WorkBudget, IsSpent_WhenAReplacementHasManyPiecesThatGiveNothing) {
    const std::string replacement = "<Constant>" + Repeated("$1", 100'000) + "</Constant>";
    const DerivedDocument document(
        caseFields,
        Field("d", "string",
              "<Apply function='replace'><FieldRef field='s'/><Constant>a()</Constant>" + replacement + "</Apply>"));
    const Case longText(2, std::string(20'000, 'a')), shortText(2, "bab");
    EXPECT_EQ(document.ValueOf("d", &longText), "absent");
    EXPECT_EQ(document.ValueOf("d", &shortText), "text bb");
}

/// Be it work on texts or very many calls of functions of numbers.
TEST(WorkBudget, EndsTheWork_WhenItIsCancelled) {
    const Case ofText(2, std::string(1'000'000, 'a'));
    std::string numbers = DoublingFunctions(12);
    for (const std::string length = "stringLength"; numbers.find(length) != std::string::npos;)
        numbers.replace(numbers.find(length), length.size(), "abs");
    const std::string field = Field("d", "double", "<Apply function='f12'><FieldRef field='F'/></Apply>");
    for (const bool areTexts : {true, false}) {
        std::string called = field;
        called.replace(called.find("'F'"), 3, areTexts ? "'s'" : "'x'");
        bool isCancelled = true;
        int asked = 0;
        nbscore::Limits limits;
        limits.isCancelled = [&] {
            ++asked;
            return isCancelled;
        };
        const DerivedDocument document(caseFields, (areTexts ? DoublingFunctions(12) : numbers) + called, "UTF-8",
                                       limits);
        EXPECT_THROW(document.ValueOf("d", &ofText), nbscore::CancelledError);
        EXPECT_EQ(asked, 1);
        isCancelled = false;
        EXPECT_EQ(document.ValueOf("d", &ofText), areTexts ? "absent" : "number 8192");
        EXPECT_GT(asked, 10);
    }
}

}  // namespace
