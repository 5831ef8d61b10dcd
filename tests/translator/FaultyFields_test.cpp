// Fields whose declarations are wrong: a document is refused for those that are used, and for no others.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

/// Kinds of declarations that are wrong, all of a field "faulty".
const std::vector<std::string> faultyDeclarations = {
    R"(<DataField name="faulty" optype="categorical" dataType="integer"><Value value="1"/><Value value="N/A"/></DataField>)",
    R"(<DataField name="faulty" dataType="double"><Value value="N/A"/></DataField>)",
    R"(<DataField name="faulty" optype="nominal" dataType="string"/>)",
    R"(<DataField name="faulty" dataType="double"><Value value="1" property="good"/></DataField>)",
    R"(<DataField name="faulty" optype="categorical" dataType="string"><Value/></DataField>)",
    R"(<DataField name="faulty" optype="continuous" dataType="double"><Interval leftMargin="1"/></DataField>)",
    R"(<DataField name="faulty" optype="continuous" dataType="double"><Interval closure="openOpen" leftMargin="a"/></DataField>)"};

TestDocument With(const std::string& declaration) {
    TestDocument document;
    document.dataFields += declaration;
    return document;
}

/// The refusal's message, or what the model's inputs are.
std::string Read(const TestDocument& document) {
    const ParseOutcome outcome = Parse(document.Text());
    return outcome.model ? "read" : outcome.refusal->GetPlace().elementPath + ": " + outcome.refusal->GetMessage();
}

/// What any use of the field is refused for.
std::vector<std::string> RefusalsOf(const std::function<void(TestDocument&)>& use) {
    std::vector<std::string> refusals;
    for (const std::string& declaration : faultyDeclarations) {
        TestDocument document = With(declaration);
        use(document);
        refusals.push_back(Read(document));
    }
    return refusals;
}

const std::string fieldPath = "/PMML/DataDictionary[1]/DataField[4]";
const std::vector<std::string> allRefused = {
    fieldPath + "/Value[2]: \"N/A\" is no number.",
    fieldPath + "/Value[1]: \"N/A\" is no number.",
    fieldPath + ": \"nominal\" is no optype: continuous, ordinal or categorical.",
    fieldPath + "/Value[1]: \"good\" is no property of a value: valid, invalid or missing.",
    fieldPath + "/Value[1]: <Value> has no attribute \"value\".",
    fieldPath + "/Interval[1]: <Interval> has no attribute \"closure\".",
    fieldPath + "/Interval[1]: \"a\" is no number."};
const std::vector<std::string> allRead(faultyDeclarations.size(), "read");

std::string Derived(const std::string& name, const std::string& source) {
    return "<DerivedField name=\"" + name + "\" optype=\"categorical\" dataType=\"string\"><FieldRef field=\"" +
           source + "\"/></DerivedField>";
}

/// Two derived fields, one computed from the other, and that from a field.
std::string DerivedInTwoSteps(const std::string& source) {
    return "<TransformationDictionary>" + Derived("first", source) + Derived("second", "first") +
           "</TransformationDictionary>";
}

TEST(FaultyFields, AreNoReasonToRefuse_WhereNothingUsesThem) {
    EXPECT_EQ(RefusalsOf([](TestDocument&) {}), allRead);
    EXPECT_EQ(RefusalsOf([](TestDocument& document) {
                  document.miningSchema += R"(<MiningField name="faulty" usageType="supplementary"/>)";
              }),
              allRead);
    EXPECT_EQ(RefusalsOf([](TestDocument& document) { document.transformations = DerivedInTwoSteps("faulty"); }),
              allRead);
}

TEST(FaultyFields, AreRefused_WhereASchemaListsThemAsActiveOrTarget) {
    EXPECT_EQ(RefusalsOf([](TestDocument& document) { document.miningSchema += R"(<MiningField name="faulty"/>)"; }),
              allRefused);
    EXPECT_EQ(RefusalsOf([](TestDocument& document) {
                  document.miningSchema = R"(<MiningField name="faulty" usageType="predicted"/>)";
              }),
              allRefused);
}

TEST(FaultyFields, AreRefused_WhereAnInputIsComputedFromThem) {
    const auto readSecond = [](TestDocument& document) {
        document.transformations = DerivedInTwoSteps("faulty");
        document.miningSchema += R"(<Extension extender="scoring.nbscore" name="DerivedFields">
            <MiningField name="second"/></Extension>)";
        document.bayesInputs += R"(<BayesInput fieldName="second"><PairCounts value="1"><TargetValueCounts>
            <TargetValueCount value="yes" count="1"/></TargetValueCounts></PairCounts></BayesInput>)";
    };
    EXPECT_EQ(RefusalsOf(readSecond), allRefused);
    EXPECT_EQ(RefusalsOf([&](TestDocument& document) {
                  readSecond(document);
                  document.transformations = DerivedInTwoSteps("outlook");
              }),
              allRead);
}

TEST(FaultyFields, AreNoReasonToRefuse_WhereAnotherOfTheNameStandsBefore) {
    TestDocument document;
    document.dataFields += R"(<DataField name="outlook" optype="categorical" dataType="integer"><Value value="N/A"/>
        </DataField>)";
    EXPECT_EQ(Read(document), "read");
}

TEST(FaultyFields, StandInTheDictionary_WithTheirStorageType) {
    const ParseOutcome outcome = Parse(With(faultyDeclarations.front()).Text());
    ASSERT_TRUE(outcome.model);
    const ScoreDictVar* const var = outcome.model->GetDictionary()->GetVar("faulty");
    ASSERT_NE(var, nullptr);
    EXPECT_EQ(var->GetStorageType(), ScoreDictVar::NumericStorage);
    EXPECT_EQ(var->GetValueLabelSet(), nullptr);
}

}  // namespace
}  // namespace nbscore::test
