#include "translator/ElementReaders.h"

#include <gtest/gtest.h>

#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

struct Mark {
    bool found = false;
    std::string targetName;
};

/// Runs the reader alone over the DataDictionary of a document.
ParseOutcome ReadAlone(const TestDocument& document, const std::string& encoding, Mark& mark) {
    DocumentVisitor visitor([&](const DocumentTree& tree, const Transcoder& transcoder) {
        mark.found =
            ReadDictionaryExtension(transcoder, tree.GetRoot().GetChild(Name::DataDictionary), mark.targetName);
    });
    return ParseWith(visitor, document.Text(), encoding);
}

/// The same, of such fields.
Mark ReadFields(const std::string& dataFields) {
    TestDocument document;
    document.dataFields = dataFields;
    Mark mark;
    const ParseOutcome outcome = ReadAlone(document, "UTF-8", mark);
    EXPECT_FALSE(outcome.refusal) << outcome.refusal->GetMessage();
    return mark;
}

std::string MarkedField(const std::string& name, const std::string& value = "true") {
    return "<DataField name=\"" + name + "\" optype=\"categorical\" dataType=\"string\">" +
           "<Extension name=\"isSelfLearningTarget\" value=\"" + value + "\"/></DataField>\n";
}

TEST(DictionaryExtensionReader, AnswersTheField_WhenItIsMarked) {
    const Mark mark = ReadFields("<DataField name=\"first\"/>" + MarkedField("offer"));
    EXPECT_TRUE(mark.found);
    EXPECT_EQ(mark.targetName, "offer");
}

TEST(DictionaryExtensionReader, AnswersTheFirstField_WhenTwoAreMarked) {
    EXPECT_EQ(ReadFields(MarkedField("one") + MarkedField("two")).targetName, "one");
}

TEST(DictionaryExtensionReader, FindsNothing_WhenTheMarkDiffersInCase) {
    EXPECT_FALSE(ReadFields(MarkedField("offer", "TRUE")).found);
    EXPECT_FALSE(ReadFields(MarkedField("offer", "True")).found);
    EXPECT_FALSE(
        ReadFields(R"(<DataField name="offer"><Extension name="isselflearningtarget" value="true"/></DataField>)")
            .found);
}

TEST(DictionaryExtensionReader, FindsNothing_WhenAnExtensionLacksNameOrValue) {
    EXPECT_FALSE(ReadFields(R"(<DataField name="offer"><Extension value="true"/></DataField>)").found);
    EXPECT_FALSE(ReadFields(R"(<DataField name="offer"><Extension name="isSelfLearningTarget"/></DataField>)").found);
    EXPECT_FALSE(ReadFields(R"(<DataField name="offer"><Extension/></DataField>)").found);
}

TEST(DictionaryExtensionReader, FindsTheMark_WhenItStandsDeepInside) {
    EXPECT_TRUE(ReadFields(R"(<DataField name="offer"><Value value="a"><Extension><Extension/>
        <Extension name="isSelfLearningTarget" value="true"/></Extension></Value></DataField>)")
                    .found);
}

TEST(DictionaryExtensionReader, LooksNoFurther_WhenAFieldIsMarked) {
    const Mark mark = ReadFields(MarkedField("offer") + "<DataField/><Extension/>");
    EXPECT_EQ(mark.targetName, "offer");
}

TEST(DictionaryExtensionReader, DoesNotTakeTheMarkOfTheNextField) {
    EXPECT_EQ(ReadFields("<DataField name=\"a\"><Extension/></DataField>" + MarkedField("b")).targetName, "b");
}

TEST(DictionaryExtensionReader, Refuses_WhenThereIsNoDictionaryElement) {
    std::string name;
    const Transcoder transcoder("UTF-8");
    const ParseOutcome outcome = OutcomeOf([&]() -> ScoreModel* {
        ReadDictionaryExtension(transcoder, {}, name);
        return nullptr;
    });
    ASSERT_TRUE(outcome.refusal);
    EXPECT_EQ(outcome.refusal->GetCode(), 1);
    EXPECT_EQ(outcome.refusal->GetMessage(), "<DataDictionary is required !!");
}

TEST(DictionaryExtensionReader, Refuses_WhenAChildIsNoDataField) {
    for (const std::string child : {"Extension", "Taxonomy"}) {
        TestDocument document;
        document.dataFields += "\n<" + child + "/>";
        EXPECT_TRUE(IsRefusedAs(
            Parse(document.Text()), document.Text(),
            {1, "<DataField> is required here!!", "<" + child, "/PMML/DataDictionary[1]/" + child + "[1]"}));
    }
}

TEST(DictionaryExtensionReader, Refuses_WhenAFieldHasNoName) {
    for (const std::string field : {"<DataField optype=\"categorical\"/>", "<DataField name=\"\"/>"}) {
        TestDocument document;
        document.dataFields += "\n" + field;
        EXPECT_TRUE(IsRefusedAs(
            Parse(document.Text()), document.Text(),
            {1, "<DataField>'s name can't be null string !!", field, "/PMML/DataDictionary[1]/DataField[4]"}));
    }
}

TEST(DictionaryExtensionReader, Refuses_WhenTheEncodingLacksACharacterOfAName) {
    TestDocument document;
    document.dataFields += "\n<DataField name=\"&#x4E00;\"/>";
    Mark mark;
    EXPECT_TRUE(IsRefusedAs(ReadAlone(document, "ISO-8859-1", mark), document.Text(),
                            {10, "The encoding \"ISO-8859-1\" cannot hold the text \"\xE4\xB8\x80\".",
                             "<DataField name=\"&#x4E00;", "/PMML/DataDictionary[1]/DataField[4]"}));
}

}  // namespace
}  // namespace nbscore::test
