#include <gtest/gtest.h>

#include <string>

#include "framework/transform/DerivedDocument.h"

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

TEST(WorkBudget, IsOneForAllFieldsOfACase) {
    std::string fields = Field("number", "double", "<FieldRef field='x'/>") + Field("text", "double", lengthOfS);
    for (int i = 0; i < 100; ++i)
        fields += Field("d" + std::to_string(i), "double", lengthOfS);
    const DerivedDocument document(caseFields, fields);
    const Case longText(2, std::string(1'000'000, 'a'));
    const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&longText, document.data.get());
    EXPECT_EQ(values->GetValueByName("d0")->GetDouble(), 1'000'000);
    for (int i = 1; i < 99; ++i)
        values->GetValueByName("d" + std::to_string(i));
    EXPECT_EQ(values->GetValueByName("d99"), nullptr);
    EXPECT_EQ(values->GetValueByName("text"), nullptr);
    EXPECT_EQ(values->GetValueByName("number"), nullptr);
    EXPECT_EQ(values->GetValueByName("d0")->GetDouble(), 1'000'000);
}

TEST(WorkBudget, IsFullAgain_WhenTheNextCaseBegins) {
    std::string sum = "<Apply function='sum'>" + Repeated(lengthOfS, 100) + "</Apply>";
    const DerivedDocument document(caseFields, Field("d", "double", sum) + Field("e", "double", lengthOfS));
    const Case longText(2, std::string(1'000'000, 'a')), shortText(2, "abc");
    for (int i = 0; i < 3; ++i) {
        const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&longText, document.data.get());
        EXPECT_EQ(values->GetValueByName("d"), nullptr);  // not the sum of those for which the work sufficed
        EXPECT_EQ(values->GetValueByName("e"), nullptr);
        EXPECT_EQ(document.ValueOf("d", &shortText), "number 300");
        EXPECT_EQ(document.ValueOf("e", &shortText), "number 3");
    }
}

TEST(WorkBudget, IsSpent_WhenTermsAreLookedForInManyWords) {
    const std::string index =
        "<TextIndex textField='s' maxLevenshteinDistance='2'><Constant>some term</Constant></TextIndex>";
    const DerivedDocument document(
        caseFields, Field("d", "double", index) +
                        Field("e", "double", "<Apply function='sum'>" + Repeated(index, 100) + "</Apply>"));
    const Case longText(2, Repeated("some tern ", 40'000));
    EXPECT_EQ(document.ValueOf("d", &longText), "number 40000");
    const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&longText, document.data.get());
    EXPECT_EQ(values->GetValueByName("e"), nullptr);
    EXPECT_EQ(values->GetValueByName("d"), nullptr);
}

}  // namespace
