// What becomes of blanks in documents with derived fields; see DocumentAdapter_test for those without.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AdaptedDocument.h"

namespace nbscore::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A document with these data fields on line 2, derived ones on line 3 and inputs on line 4; the target is "y".
std::string Document(const std::string& dataFields, const std::string& derivedFields, const std::string& inputs) {
    return "<PMML><DataDictionary>\n" + dataFields + "</DataDictionary><TransformationDictionary>\n" + derivedFields +
           "</TransformationDictionary><NaiveBayesModel><MiningSchema><MiningField name='y' usageType='predicted'/>"
           "</MiningSchema><BayesInputs>\n" +
           inputs + "</BayesInputs><BayesOutput fieldName='y'/></NaiveBayesModel></PMML>";
}

std::string Field(const std::string& kind, const std::string& name, const std::string& dataType,
                  const std::string& content) {
    return "<" + kind + " name='" + name + "' dataType='" + dataType + "'>" + content + "</" + kind + ">";
}
std::string Data(const std::string& name, const std::string& dataType, const std::string& content = "") {
    return Field("DataField", name, dataType, content);
}
std::string Derived(const std::string& name, const std::string& dataType, const std::string& content) {
    return Field("DerivedField", name, dataType, content);
}
std::string Input(const std::string& name, const std::string& content) {
    return "<BayesInput fieldName='" + name + "'>" + content + "</BayesInput>";
}

const std::string readsX = "<FieldRef field='x'/>";

TEST(BlankRemoval, TakesThemOffNames_WhereverExpressionsReadThem) {
    const Adapted adapted = Adapt(Document(
        Data(" x", "string") + Data("s", "string") + Data("t", "string") + Data("u", "double"),
        Derived("a\t", "string",
                "<MapValues outputColumn=' o'><FieldColumnPair field='x ' column=' c'/><FieldColumnPair field='s ' "
                "column='d'/><InlineTable><row><c>1 </c><d> 2</d><o> 3</o></row></InlineTable></MapValues>") +
            Derived("b", "double",
                    "<Apply function='+'><NormContinuous field=' u'/><NormDiscrete field='t ' value=' v'/>"
                    "<Discretize field='u  '/><TextIndex textField=' s'><FieldRef field=' a'/></TextIndex>"
                    "<Constant> 1</Constant></Apply>") +
            "<DefineFunction name='f'><ParameterField name=' p'/><FieldRef field=' p'/></DefineFunction>",
        Input(" a", "")));
    for (const char* text :
         {"<DataField dataType=\"string\" name=\"x\"", "<DerivedField dataType=\"string\" name=\"a\"",
          "<FieldColumnPair column=\" c\" field=\"x\"/>", "<FieldColumnPair column=\"d\" field=\"s\"/>",
          "<c>1 </c><d> 2</d><o> 3</o>", "outputColumn=\" o\"", "<NormContinuous field=\"u\"/>",
          "<NormDiscrete field=\"t\" value=\" v\"/>", "<Discretize field=\"u\"/>", "textField=\"s\"",
          "<FieldRef field=\"a\"/>", "<Constant> 1</Constant>", "<ParameterField name=\" p\"/>",
          "<FieldRef field=\" p\"/>", "<BayesInput fieldName=\"a\"/>"}) {
        EXPECT_THAT(adapted.text, HasSubstr(text));
    }
    EXPECT_THAT(adapted.changes, Not(Contains(HasSubstr("not: "))));
}

TEST(BlankRemoval, TakesThemOffNamesInTheListOfDerivedInputs) {
    const std::string text =
        "<PMML><DataDictionary/><TransformationDictionary><DerivedField name=' d'/></TransformationDictionary>"
        "<NaiveBayesModel><MiningSchema><Extension extender='scoring.nbscore' name='DerivedFields'>"
        "<MiningField name=' d'/></Extension><Extension name='other'><MiningField name=' d'/></Extension>"
        "</MiningSchema></NaiveBayesModel></PMML>";
    EXPECT_THAT(Adapt(text).text,
                HasSubstr("name=\"DerivedFields\"><MiningField name=\"d\"/></Extension><Extension name=\"other\">"
                          "<MiningField name=\" d\"/>"));
}

TEST(BlankRemoval, TakesThemOffTheFieldsOfTestCases_ButNotOffResultsAndCells) {
    const std::string text =
        "<PMML><DataDictionary><DataField name=' x'/></DataDictionary><NaiveBayesModel><ModelVerification>"
        "<VerificationFields><VerificationField field='x '/><VerificationField field=' p'/></VerificationFields>"
        "<InlineTable><row><x> a</x></row></InlineTable></ModelVerification></NaiveBayesModel></PMML>";
    const Adapted adapted = Adapt(text);
    EXPECT_EQ(adapted.changes.size(), 2U);
    EXPECT_THAT(adapted.text, HasSubstr("<VerificationField field=\"x\"/><VerificationField field=\" p\"/>"));
    EXPECT_THAT(adapted.text, HasSubstr("<x> a</x>"));
}

/// A document of a text input "c" and a target of the value " no", with this output and these test cases on line 2.
std::string Tested(const std::string& values, const std::string& output, const std::string& fields,
                   const std::string& cells) {
    return "<PMML><DataDictionary>" + Data("c", "string", values) + Data("y", "string", "<Value value=' no'/>") +
           "</DataDictionary><NaiveBayesModel><MiningSchema><MiningField name='y' usageType='predicted'/>"
           "</MiningSchema>\n<Output>" +
           output + "</Output><ModelVerification><VerificationFields>" + fields +
           "</VerificationFields><InlineTable><row>" + cells + "</row></InlineTable></ModelVerification><BayesInputs>" +
           Input("c", "<PairCounts value=' r'/>") +
           "</BayesInputs><BayesOutput fieldName='y'/></NaiveBayesModel></PMML>";
}

TEST(BlankRemoval, LeavesThemAroundTexts_ThatTestCasesNameWithThem) {
    const std::string y =
        "1: not: the blanks around the values of \"y\" stay: test cases of the document name one with them";
    const std::string c =
        "2: not: the blanks around the values of \"c\" stay: test cases of the document name one with them";
    const std::string withoutY = "1: the blanks around value \" no\" are taken off";
    const std::string withoutC = "2: the blanks around value \" r\" are taken off";
    EXPECT_THAT(Adapt(Tested("", "", "", "<p> no</p>")).changes, ElementsAre(y, withoutC));
    EXPECT_THAT(Adapt(Tested("", "<OutputField value=' no'/>", "", "")).changes, ElementsAre(y, withoutC));
    EXPECT_THAT(Adapt(Tested("", "", "<VerificationField field='probability_ no'/>", "")).changes,
                ElementsAre(y, withoutC));
    EXPECT_THAT(Adapt(Tested("", "", "", "<c> r</c>")).changes, ElementsAre(withoutY, c));
    EXPECT_THAT(
        Adapt(Tested("", "", "<VerificationField field='probability_no'/>", "<p>no</p><c>r</c><c> </c>")).changes,
        ElementsAre(withoutY, withoutC));
    EXPECT_THAT(Adapt(Tested("<Value value='r'/>", "", "", "<c> r</c>")).changes, ElementsAre(withoutY, withoutC));
}

TEST(BlankRemoval, TakesThemOffTheTargetsName_InTestCasesAndOutputsToo) {
    const std::string text =
        "<PMML><DataDictionary><DataField name=' y '/></DataDictionary><NaiveBayesModel><MiningSchema>"
        "<MiningField name=' y ' usageType='target'/></MiningSchema><Output><OutputField targetField=' y '/></Output>"
        "<ModelVerification><VerificationFields><VerificationField field='predicted_ y '/>"
        "<VerificationField field='predicted_ z'/></VerificationFields></ModelVerification></NaiveBayesModel></PMML>";
    const Adapted adapted = Adapt(text);
    EXPECT_THAT(adapted.changes, Contains("1: the blanks around the target in field \"predicted_ y \" are taken off"));
    EXPECT_THAT(adapted.text, HasSubstr("<OutputField targetField=\"y\"/>"));
    EXPECT_THAT(adapted.text, HasSubstr("field=\"predicted_y\"/><VerificationField field=\"predicted_ z\"/>"));
}

TEST(BlankRemoval, IsRefused_WhereAValueWouldBecomeOneThatStandsForMissingOrInvalid) {
    for (const char* property : {"missing", "invalid"}) {
        const std::string standIn = std::string("<Value value='NA' property='") + property + "'/>";
        const char* const refusal = "4: Without the blanks around it, \" NA \" would be the same as \"NA\".";
        EXPECT_EQ(GetRefusal(Document(Data("x", "string", standIn), "", Input("x", "<PairCounts value=' NA '/>"))),
                  refusal);
        EXPECT_EQ(GetRefusal(Document(Data("x", "string", "\n\n<Value value=' NA '/>" + standIn), "", "")), refusal);
    }
}

TEST(BlankRemoval, LeavesValuesThatStandForMissingOnes_ButNoneCalledValid) {
    const Adapted adapted = Adapt(Document(
        Data("x", "string", "<Value value=' a' property='valid'/><Value value=' b' property='missing'/>"), "", ""));
    EXPECT_THAT(adapted.changes, ElementsAre("2: the blanks around value \" a\" are taken off"));
}

TEST(BlankRemoval, TakesThemOffTheFieldThatAnInputsBinsName) {
    const Adapted adapted = Adapt(Document(
        Data(" x", "double"), "", Input(" x", "<DerivedField name='bins'><Discretize field=' x'/></DerivedField>")));
    EXPECT_THAT(adapted.text, HasSubstr("<BayesInput fieldName=\"x\">"));
    EXPECT_THAT(adapted.text, HasSubstr("<Discretize field=\"x\"/>"));
}

TEST(BlankRemoval, RemovesThemFromNumbers_EvenWhenExpressionsReadThem) {
    const Adapted adapted =
        Adapt(Document(Data("x", "double", "<Value value=' 1'/><Value value=' -9' property='missing'/>"),
                       Derived("d", "integer", readsX + "<Value value='2 '/>") + Derived("e", "string", readsX),
                       Input("x", "<PairCounts value='1 '/>") + Input("d", "<PairCounts value=' 2'/>") +
                           Input("e", "<DerivedField name='bins'/><PairCounts value=' 0'/>")));
    EXPECT_EQ(adapted.changes.size(), 7U);  // two of them list "d" and "e" as inputs
    EXPECT_THAT(adapted.changes, Not(Contains(HasSubstr("not: "))));
    EXPECT_THAT(adapted.text, HasSubstr("value=\" -9\""));
    for (const char* text : {"<Value value=\"1\"/>", "<Value value=\"2\"/>", "<PairCounts value=\"1\"/>",
                             "<PairCounts value=\"2\"/>", "<PairCounts value=\"0\"/>"}) {
        EXPECT_THAT(adapted.text, HasSubstr(text));
    }
}

TEST(BlankRemoval, TakesThemOffTextsThatNoExpressionReads) {
    const Adapted adapted = Adapt(Document(
        Data("x", "string") + Data("z", "string", "<Value value=' a'/>") + Data("y", "string", "<Value value=' no'/>"),
        Derived("d", "string", readsX),
        Input("z",
              "<PairCounts value='a '><TargetValueCounts><TargetValueCount value='no '/>"
              "</TargetValueCounts></PairCounts>")));
    EXPECT_EQ(adapted.changes.size(), 4U);
    EXPECT_THAT(adapted.changes, Not(Contains(HasSubstr("not: "))));
}

TEST(BlankRemoval, LeavesThemAroundTextsThatAnExpressionReads) {
    const std::string document = Document(Data(" x", "string", "<Value value=' a'/>\n<Value value='b '/>"),
                                          Derived("d", "string", readsX), Input("x", "<PairCounts value=' a'/>"));
    const Adapted adapted = Adapt(document);
    EXPECT_THAT(adapted.changes, ElementsAre("2: the blanks around name \" x\" are taken off",
                                             "2: not: the blanks around the values of \" x\" stay: the derived field "
                                             "\"d\" reads it, and may tell texts with blanks from others"));
    for (const char* text : {"<Value value=\" a\"/>", "<Value value=\"b \"/>", "<PairCounts value=\" a\"/>"}) {
        EXPECT_THAT(adapted.text, HasSubstr(text));
    }
}

TEST(BlankRemoval, LeavesThemAroundTheTargetsTexts_WhenAnExpressionReadsIt) {
    const Adapted adapted = Adapt(Document(Data("y", "string") + Data("z", "double"),
                                           Derived("d", "double", "<NormDiscrete field='y' value=' a'/>"),
                                           Input("z",
                                                 "<PairCounts value=' 1'>\n<TargetValueCounts><TargetValueCount "
                                                 "value=' a'/></TargetValueCounts></PairCounts>")));
    EXPECT_THAT(adapted.changes, ElementsAre("4: the blanks around value \" 1\" are taken off",
                                             HasSubstr("5: not: the blanks around the values of \"y\" stay: ")));
    EXPECT_THAT(adapted.text, HasSubstr("<TargetValueCount value=\" a\"/>"));
}

TEST(BlankRemoval, LeavesThemAroundTextsThatAnExpressionGives) {
    const Adapted adapted =
        Adapt(Document(Data("x", "double"), Derived("d", "string", readsX), Input("d", "\n<PairCounts value=' a'/>")));
    EXPECT_THAT(adapted.changes,
                ElementsAre("4: the derived field \"d\" is listed in the schema as an input",
                            "5: not: the blanks around the values of \"d\" stay: its expression may give texts with "
                            "blanks"));
    EXPECT_THAT(adapted.text, HasSubstr("<PairCounts value=\" a\"/>"));
}

TEST(BlankRemoval, LeavesThemAroundNames_ThatTellADerivedFieldFromAnother) {
    const Adapted adapted = Adapt(Document(
        Data(" x", "double") + Data(" z", "double"),
        Derived("x", "double", "<FieldRef field=' x'/>") + "\n" + Derived("x\t", "double", readsX), Input(" x", "")));
    EXPECT_THAT(
        adapted.changes,
        ElementsAre("2: not: the blanks around name \" x\" stay: without them another field would have the same name",
                    "2: the blanks around name \" z\" are taken off",
                    "4: not: the blanks around name \"x \" stay: without them another field would have the same name"));
    EXPECT_THAT(adapted.text, HasSubstr("<BayesInput fieldName=\" x\"/>"));
    EXPECT_THAT(adapted.text, HasSubstr("name=\"x\"><FieldRef field=\" x\"/>"));
}

}  // namespace
}  // namespace nbscore::test
