#include "adapt/DocumentAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AdaptedDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A document with this in its dictionary, and these model elements, on lines 3 and up.
std::string Document(const std::string& dictionary, const std::string& models) {
    return "<PMML version='4.4'>\n<DataDictionary>" + dictionary + "</DataDictionary>\n" + models + "</PMML>";
}

TEST(DocumentAdapter, ChangesNothing_WhenTheDocumentNeedsNoAdapting) {
    const Adapted adapted = Adapt(Document(
        "<DataField name='x'><Extension name='a' value='b'/><Value value='1'/></DataField>",
        "<NaiveBayesModel threshold='1'><Extension name='v'/><MiningSchema><Extension/><MiningField name='x'/>"
        "</MiningSchema><BayesInputs><Extension/></BayesInputs><BayesOutput fieldName='y'/></NaiveBayesModel>"));
    EXPECT_THAT(adapted.changes, IsEmpty());
    EXPECT_THAT(adapted.text, HasSubstr("<BayesInputs><Extension/></BayesInputs>"));
}

TEST(DocumentAdapter, ReadsTargetAsPredicted) {
    const Adapted adapted =
        Adapt(Document("",
                       "<NaiveBayesModel><MiningSchema>\n<MiningField name='x' usageType='active'/>\n"
                       "<MiningField name='y' usageType='target'/></MiningSchema></NaiveBayesModel>"));
    EXPECT_THAT(adapted.changes, ElementsAre("5: usageType \"target\" is read as \"predicted\""));
    EXPECT_THAT(adapted.text, HasSubstr("<MiningField name=\"y\" usageType=\"predicted\"/>"));
    EXPECT_THAT(adapted.text, HasSubstr("<MiningField name=\"x\" usageType=\"active\"/>"));
}

TEST(DocumentAdapter, NamesTheOutputAfterTheSchemasTarget) {
    const Adapted adapted =
        Adapt(Document("",
                       "<NaiveBayesModel><MiningSchema><MiningField name='y' usageType='target'/></MiningSchema>\n"
                       "<BayesOutput/></NaiveBayesModel>"));
    EXPECT_EQ(adapted.changes.back(), "4: fieldName is \"y\", the schema's target");
    EXPECT_THAT(adapted.text, HasSubstr("<BayesOutput fieldName=\"y\"/>"));
}

TEST(DocumentAdapter, RefusesAnOutput_WhoseTargetIsNotClear) {
    EXPECT_EQ(GetRefusal(Document("",
                                  "<NaiveBayesModel><MiningSchema><MiningField name='y'/></MiningSchema>\n"
                                  "<BayesOutput/></NaiveBayesModel>")),
              "4: The output names no field, and its model's schema has no target.");
    EXPECT_EQ(GetRefusal(Document("",
                                  "<NaiveBayesModel><MiningSchema><MiningField name='y' usageType='target'/>"
                                  "<MiningField name='z' usageType='predicted'/></MiningSchema>\n"
                                  "<BayesOutput/></NaiveBayesModel>")),
              "4: The output names no field, and its model's schema has several targets.");
}

TEST(DocumentAdapter, RemovesElementsThatScoringDoesNotNeed) {
    const Adapted adapted = Adapt(Document(
        "<Extension><DataField name='no'/></Extension>\n<DataField name='x'/><Taxonomy name='t'/>",
        "<NaiveBayesModel><BayesInputs><BayesInput fieldName='x'>\n<Extension><Extension/></Extension>"
        "<PairCounts value='a'><Extension/><TargetValueCounts><Extension/></TargetValueCounts></PairCounts>"
        "</BayesInput></BayesInputs><BayesOutput fieldName='y'><Extension/><a/></BayesOutput></NaiveBayesModel>"));
    EXPECT_THAT(adapted.changes, ElementsAre("2: <Extension> is left out: it means nothing for scoring",
                                             "3: <Taxonomy> is left out: it means nothing for scoring",
                                             "5: <Extension> is left out: it means nothing for scoring",
                                             "5: <Extension> is left out: it means nothing for scoring",
                                             "5: <Extension> is left out: it means nothing for scoring",
                                             "5: <Extension> is left out: it means nothing for scoring"));
    EXPECT_THAT(adapted.text, Not(HasSubstr("Extension")));
    EXPECT_THAT(adapted.text, Not(HasSubstr("Taxonomy")));
    EXPECT_THAT(adapted.text, HasSubstr("<a/>"));
}

TEST(DocumentAdapter, LeavesNoInputsOut) {
    const std::string inInput =
        "<NaiveBayesModel><BayesInputs><BayesInput fieldName='x'><Extension><v:BayesInput/>"
        "</Extension></BayesInput></BayesInputs></NaiveBayesModel>";
    EXPECT_THAT(Adapt(Document("", inInput)).text, HasSubstr("<v:BayesInput/>"));
    const std::string inSet =
        "<NaiveBayesModel algorithmName='SelfLearning' modelName='a'><Extension><BayesInputs>"
        "<BayesInput fieldName='x'/></BayesInputs></Extension></NaiveBayesModel>";
    EXPECT_THAT(Adapt(Document("", inSet)).text, HasSubstr("<BayesInput "));
}

TEST(DocumentAdapter, LooksForNoModel_InWhatItLeavesOut) {
    const std::string model = "<NaiveBayesModel algorithmName='SelfLearning'>\n<BayesOutput/></NaiveBayesModel>";
    const std::string left = "<Extension> is left out: it means nothing for scoring";
    EXPECT_THAT(Adapt(Document("<Extension>" + model + "</Extension>", "")).changes, ElementsAre("2: " + left));
    EXPECT_THAT(Adapt(Document("", "<NaiveBayesModel algorithmName='SelfLearning' modelName='a'><Extension>" + model +
                                       "</Extension></NaiveBayesModel>"))
                    .changes,
                ElementsAre("3: " + left));
}

TEST(DocumentAdapter, KeepsAnExtensionOfAnInput_ThatHoldsCounts) {
    const std::string text =
        "<NaiveBayesModel><BayesInputs><BayesInput fieldName='x'><Extension><Deep>"
        "<TargetValueStats/></Deep></Extension></BayesInput></BayesInputs><BayesOutput "
        "fieldName='y'><Extension><TargetValueCounts/></Extension></BayesOutput></NaiveBayesModel>";
    EXPECT_THAT(Adapt(Document("", text)).changes, testing::IsEmpty());
}

TEST(DocumentAdapter, LeavesOutASubModelsExtension_OnlyWhenItIsNoFigureAndNoNumber) {
    const Adapted adapted = Adapt(Document("",
                                           "<NaiveBayesModel algorithmName='SelfLearning' modelName='a'>"
                                           "<Extension name='v' value='text'/><Extension name='w'/>"
                                           "<Extension name='kept' value='1'/>"
                                           "<Extension name='meanPerformance' value='bad'/></NaiveBayesModel>"));
    EXPECT_EQ(adapted.changes.size(), 2U);
    EXPECT_THAT(adapted.text, Not(HasSubstr("name=\"v\"")));
    EXPECT_THAT(adapted.text, Not(HasSubstr("name=\"w\"")));
    EXPECT_THAT(adapted.text, HasSubstr("name=\"kept\""));
    EXPECT_THAT(adapted.text, HasSubstr("name=\"meanPerformance\""));
}

TEST(DocumentAdapter, GivesASubModelWithoutNameAnEmptyOne) {
    const Adapted adapted =
        Adapt(Document("", "<NaiveBayesModel algorithmName='SelfLearning'/>\n<NaiveBayesModel modelName='b'/>"));
    EXPECT_THAT(adapted.changes, ElementsAre("3: modelName is empty: the document gives none"));
    EXPECT_THAT(adapted.text, HasSubstr("modelName=\"\""));
}

TEST(DocumentAdapter, LeavesModelsAlone_ThatAreNotRead) {
    EXPECT_THAT(Adapt(Document("", "<NaiveBayesModel/><NaiveBayesModel><BayesOutput/></NaiveBayesModel>")).changes,
                IsEmpty());
}

TEST(DocumentAdapter, ListsDerivedInputsOnce) {
    const std::string text =
        "<PMML><DataDictionary/>\n<TransformationDictionary><DerivedField name='d'/><DerivedField name='e'/>"
        "<DerivedField name='unused'/></TransformationDictionary><NaiveBayesModel><MiningSchema><MiningField name='x'/>"
        "<Extension extender='scoring.nbscore' name='DerivedFields'><MiningField name='e'/></Extension></MiningSchema>"
        "<BayesInputs>\n<BayesInput fieldName='d'/><BayesInput fieldName='d'/>\n<BayesInput fieldName='e'/>"
        "<BayesInput fieldName='x'/><BayesInput fieldName='nobody'/></BayesInputs></NaiveBayesModel></PMML>";
    const Adapted adapted = Adapt(text);
    EXPECT_THAT(adapted.changes, ElementsAre("3: the derived field \"d\" is listed in the schema as an input"));
    EXPECT_THAT(adapted.text, HasSubstr("<Extension extender=\"scoring.nbscore\" name=\"DerivedFields\">"
                                        "<MiningField name=\"d\"/></Extension></MiningSchema>"));
}

TEST(DocumentAdapter, ListsADerivedInput_ThatOnlyAnotherExtensionNames) {
    const std::string text =
        "<PMML><DataDictionary/><TransformationDictionary><DerivedField name='d'/></TransformationDictionary>"
        "<NaiveBayesModel><MiningSchema><Extension extender='somebody' name='DerivedFields'><MiningField name='d'/>"
        "</Extension></MiningSchema>\n<BayesInputs><BayesInput fieldName='d'/></BayesInputs></NaiveBayesModel></PMML>";
    EXPECT_THAT(Adapt(text).changes, ElementsAre("2: the derived field \"d\" is listed in the schema as an input"));
}

TEST(DocumentAdapter, TakesBlanksOffNamesAndValues) {
    const Adapted adapted = Adapt(Document(
        "<DataField name=' x '><Value value='\ta'/><Value value='b c'/></DataField>",
        "<NaiveBayesModel><MiningSchema><MiningField name='x '/></MiningSchema><BayesInputs>\n"
        "<BayesInput fieldName=' x'><PairCounts value=' a'><TargetValueCounts><TargetValueCount value=' y '/>"
        "</TargetValueCounts></PairCounts></BayesInput></BayesInputs>\n<BayesOutput fieldName=' t'><TargetValueCounts>"
        "<TargetValueCount value='y '/></TargetValueCounts></BayesOutput></NaiveBayesModel>"));
    EXPECT_EQ(adapted.changes.size(), 8U);
    EXPECT_EQ(adapted.changes.front(), "2: the blanks around name \" x \" are taken off");
    for (const char* text :
         {"<DataField name=\"x\"", "<Value value=\"a\"", "<Value value=\"b c\"", "<MiningField name=\"x\"",
          "fieldName=\"x\"", "<PairCounts value=\"a\"", "<TargetValueCount value=\"y\"", "fieldName=\"t\""}) {
        EXPECT_THAT(adapted.text, HasSubstr(text));
    }
}

TEST(DocumentAdapter, LeavesBlanksAlone_WhereTheyMayMeanSomething) {
    EXPECT_THAT(
        Adapt(Document("<DataField name='x'><Value value='  '/><Value value=' ' property='missing'/></DataField>", ""))
            .changes,
        IsEmpty());
}

TEST(DocumentAdapter, RefusesToMakeTwoValuesOne) {
    EXPECT_EQ(GetRefusal(Document("<DataField name='x'>\n<Value value='a'/>\n<Value value='a '/></DataField>", "")),
              "4: Without the blanks around it, \"a \" would be the same as \"a\".");
    EXPECT_EQ(GetRefusal(Document("<DataField name='x'/>\n<DataField name=' x'/>", "")),
              "3: Without the blanks around it, \" x\" would be the same as \"x\".");
    EXPECT_EQ(GetRefusal(Document("",
                                  "<NaiveBayesModel><BayesInputs><BayesInput><PairCounts value=' a'/>\n"
                                  "<PairCounts value='a'/></BayesInput></BayesInputs></NaiveBayesModel>")),
              "4: Without the blanks around it, \"a\" would be the same as \" a\".");
    EXPECT_EQ(GetRefusal(Document("<DataField name='x'><Value value='a'/><Value value='a'/></DataField>", "")),
              "adapted");
}

TEST(DocumentAdapter, RefusesToMakeTwoValuesOne_WhateverBlanksCanGoBefore) {
    EXPECT_EQ(GetRefusal(Document("<DataField name=' x '>\n<Value value=' b '/>\n<Value value=' a '/>\n"
                                  "<Value value='a'/></DataField>",
                                  "")),
              "5: Without the blanks around it, \"a\" would be the same as \" a \".");
    EXPECT_EQ(GetRefusal(Document("<DataField name='x'><Value value=' b '/></DataField>\n<DataField name=' y '/>\n"
                                  "<DataField name='y'/>",
                                  "")),
              "4: Without the blanks around it, \"y\" would be the same as \" y \".");
}

TEST(DocumentAdapter, RefusesAtThePlaceInTheOriginal_WhateverWasChangedBefore) {
    EXPECT_EQ(GetRefusal(Document("<Extension/><Extension/><Taxonomy/>\n<DataField name='x'/>\n<DataField name='x '/>",
                                  "<NaiveBayesModel/>")),
              "4: Without the blanks around it, \"x \" would be the same as \"x\".");
    EXPECT_EQ(GetRefusal(Document("<Extension/>\n<Extension/>\n<Taxonomy/>",
                                  "<NaiveBayesModel>\n<BayesOutput/></NaiveBayesModel>")),
              "6: The output names no field, and its model's schema has no target.");
}

TEST(DocumentAdapter, TakesTimeInProportion_WhenVeryManyThingsChange) {
    std::string fields;
    for (int i = 0; i < 20'000; ++i)
        fields += "<Extension/><DataField name=' f" + std::to_string(i) + "'/>";
    EXPECT_EQ(Adapt(Document(fields, "<NaiveBayesModel/>")).changes.size(), 40'000U);
}

}  // namespace
}  // namespace nbscore::test
