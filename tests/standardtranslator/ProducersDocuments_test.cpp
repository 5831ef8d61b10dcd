// Documents in the manners of their producers, and answers that were worked out by hand from the rule.

#include <gtest/gtest.h>

#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

/// Continuous inputs in an extension, behind a categorical one that only fills a place.
const std::string olderR = R"(<PMML version="3.2" xmlns="http://www.dmg.org/PMML-3_2">
 <Header copyright="c"><Application name="a" version="1"/><Timestamp>2010-01-01</Timestamp></Header>
 <DataDictionary numberOfFields="3">
  <DataField name="kind" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/></DataField>
  <DataField name="DiscretePlaceHolder" optype="categorical" dataType="string"><Value value="pseudoValue"/></DataField>
  <DataField name="length" optype="continuous" dataType="double"/>
 </DataDictionary>
 <NaiveBayesModel modelName="m" functionName="classification" threshold="0">
  <MiningSchema>
   <MiningField name="kind" usageType="predicted"/>
   <MiningField name="length" usageType="active"/>
   <MiningField name="DiscretePlaceHolder" usageType="active" missingValueReplacement="pseudoValue"/>
  </MiningSchema>
  <Output>
   <OutputField name="Predicted_kind" feature="predictedValue"/>
   <OutputField name="Probability_a" optype="continuous" dataType="double" feature="probability" value="a"/>
   <OutputField name="Probability_b" optype="continuous" dataType="double" feature="probability" value="b"/>
  </Output>
  <BayesInputs>
   <Extension>
    <BayesInput fieldName="length">
     <TargetValueStats>
      <TargetValueStat value="a"><GaussianDistribution mean="5" variance="1"/></TargetValueStat>
      <TargetValueStat value="b"><GaussianDistribution mean="7" variance="4"/></TargetValueStat>
     </TargetValueStats>
    </BayesInput>
   </Extension>
   <BayesInput fieldName="DiscretePlaceHolder">
    <PairCounts value="pseudoValue">
     <TargetValueCounts><TargetValueCount value="a" count="30"/><TargetValueCount value="b" count="1"/>
      </TargetValueCounts>
    </PairCounts>
   </BayesInput>
  </BayesInputs>
  <BayesOutput fieldName="kind">
   <TargetValueCounts><TargetValueCount value="a" count="30"/><TargetValueCount value="b" count="20"/>
      </TargetValueCounts>
  </BayesOutput>
 </NaiveBayesModel>
</PMML>)";

TEST(ProducersDocuments, OfAnOlderR) {
    const ScoredCase scored = ScoreCase(olderR, {{"length", "6"}});
    const std::vector<double> expected = Shares({30 * GaussianDensity(6, 5, 1), 20 * GaussianDensity(6, 7, 4)});
    ExpectProbabilities(scored, expected);
    EXPECT_EQ(scored.outputs.at("Predicted_kind"), OutputValue(std::string("a")));
    EXPECT_DOUBLE_EQ(std::get<double>(scored.outputs.at("Probability_b")), expected[1]);
}

/// Every field tolerates nothing invalid, some replace missing values, and a category never occurred.
const std::string newerR = R"(<PMML version="4.2" xmlns="http://www.dmg.org/PMML-4_2">
 <DataDictionary>
  <DataField name="class" optype="categorical" dataType="string"><Value value="x"/><Value value="y"/>
      <Value value="z"/></DataField>
  <DataField name="leaf" optype="categorical" dataType="string"><Value value="0"/><Value value="1"/></DataField>
  <DataField name="size" optype="continuous" dataType="double"/>
 </DataDictionary>
 <NaiveBayesModel functionName="classification" threshold="0.001">
  <MiningSchema>
   <MiningField name="class" usageType="predicted" invalidValueTreatment="returnInvalid"/>
   <MiningField name="leaf" usageType="active" invalidValueTreatment="returnInvalid" missingValueReplacement="1"/>
   <MiningField name="size" usageType="active" invalidValueTreatment="returnInvalid"/>
  </MiningSchema>
  <BayesInputs>
   <BayesInput fieldName="leaf">
    <PairCounts value="0"><TargetValueCounts>
     <TargetValueCount value="x" count="6"/><TargetValueCount value="y" count="1"/>
      <TargetValueCount value="z" count="NaN"/>
    </TargetValueCounts></PairCounts>
    <PairCounts value="1"><TargetValueCounts>
     <TargetValueCount value="x" count="2"/><TargetValueCount value="y" count="3"/>
      <TargetValueCount value="z" count="NaN"/>
    </TargetValueCounts></PairCounts>
   </BayesInput>
   <BayesInput fieldName="size">
    <TargetValueStats>
     <TargetValueStat value="x"><GaussianDistribution mean="1.5" variance="0.25"/></TargetValueStat>
     <TargetValueStat value="y"><GaussianDistribution mean="2" variance="0.5"/></TargetValueStat>
     <TargetValueStat value="z"><GaussianDistribution mean="NaN" variance="NaN"/></TargetValueStat>
    </TargetValueStats>
   </BayesInput>
  </BayesInputs>
  <BayesOutput fieldName="class">
   <TargetValueCounts>
    <TargetValueCount value="x" count="8"/><TargetValueCount value="y" count="4"/>
      <TargetValueCount value="z" count="1"/>
   </TargetValueCounts>
  </BayesOutput>
 </NaiveBayesModel>
</PMML>)";

TEST(ProducersDocuments, OfANewerR) {
    ExpectProbabilities(ScoreCase(newerR, {{"leaf", ""}, {"size", "1"}}),
                        Shares({8 * 2.0 / 8 * GaussianDensity(1, 1.5, 0.25), 4 * 3.0 / 4 * GaussianDensity(1, 2, 0.5),
                                1 * 0.001 * 0.001}));
    const ScoredCase invalid = ScoreCase(newerR, {{"leaf", "2"}, {"size", "1"}});
    EXPECT_EQ(invalid.prediction, "none");
    EXPECT_EQ(invalid.facts.field, "leaf");
}

/// Blanks everywhere, counts with a point, intervals that the data may leave, no threshold.
const std::string workflow = R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML version="4.2" xmlns="http://www.dmg.org/PMML-4_2">
  <Header copyright="u"/>
  <DataDictionary numberOfFields="3">
    <DataField name="width" optype="continuous" dataType="double">
      <Interval closure="closedClosed" leftMargin="0.1" rightMargin="2.5"/>
    </DataField>
    <DataField name="colour" optype="categorical" dataType="string">
      <Value value="red"/>
      <Value value="blue"/>
    </DataField>
    <DataField name="class" optype="categorical" dataType="string">
      <Value value="a"/>
      <Value value="b"/>
    </DataField>
  </DataDictionary>
  <NaiveBayesModel threshold="0.0" modelName="m" functionName="classification">
    <MiningSchema>
      <MiningField name="width" invalidValueTreatment="asIs"/>
      <MiningField name="colour" invalidValueTreatment="asIs"/>
      <MiningField name="class" invalidValueTreatment="asIs" usageType="target"/>
    </MiningSchema>
    <BayesInputs>
      <BayesInput fieldName="width">
        <TargetValueStats>
          <TargetValueStat value="a">
            <GaussianDistribution mean="0.25" variance="0.01"/>
          </TargetValueStat>
          <TargetValueStat value="b">
            <GaussianDistribution mean="1.75" variance="1.0"/>
          </TargetValueStat>
        </TargetValueStats>
      </BayesInput>
      <BayesInput fieldName="colour">
        <PairCounts value="red">
          <TargetValueCounts>
            <TargetValueCount value="a" count="3.0"/>
            <TargetValueCount value="b" count="0.0"/>
          </TargetValueCounts>
        </PairCounts>
        <PairCounts value="blue">
          <TargetValueCounts>
            <TargetValueCount value="a" count="1.0"/>
            <TargetValueCount value="b" count="5.0"/>
          </TargetValueCounts>
        </PairCounts>
      </BayesInput>
    </BayesInputs>
    <BayesOutput fieldName="class">
      <TargetValueCounts>
        <TargetValueCount value="a" count="4.0"/>
        <TargetValueCount value="b" count="5.0"/>
      </TargetValueCounts>
    </BayesOutput>
  </NaiveBayesModel>
</PMML>)";

TEST(ProducersDocuments, OfAWorkflow) {
    ExpectProbabilities(ScoreCase(workflow, {{"width", "2.75"}, {"colour", "blue"}}),
                        Shares({4 * GaussianDensity(2.75, 0.25, 0.01) / 4, 5 * GaussianDensity(2.75, 1.75, 1.0)}));
    ExpectProbabilities(ScoreCase(workflow, {{"width", "1"}, {"colour", "red"}}), {1, 0});
    ExpectProbabilities(ScoreCase(workflow, {{"width", ""}, {"colour", "green"}}), Shares({4, 5}));
}

/// Target and inputs are doubles; counts are fractions.
TEST(ProducersDocuments, OfACluster) {
    StandardDocument document;
    const std::string values = ValueElements({"0.0", "1.0"});
    document.dataFields = DataField("word", FieldType::Numbers, values);
    document.target = DataField("fruit", FieldType::Numbers, values);
    document.miningFields = MiningField("word");
    document.threshold = "0";
    const auto counts = [](const std::string& first, const std::string& second) {
        return TargetValueCounts(TargetValueCount("0.0", first) + TargetValueCount("1.0", second));
    };
    document.inputs =
        BayesInput("word", PairCounts("0.0", counts("0.75", "0.125")) + PairCounts("1.0", counts("0.25", "0.875")));
    document.targetCounts = TargetValueCount("0.0", "0.5") + TargetValueCount("1.0", "1.5");
    const ScoredCase scored = ScoreCase(document, {{"word", "1"}});
    EXPECT_EQ(scored.prediction, "1");
    ExpectProbabilities(scored, Shares({0.5 * 0.25, 1.5 * 0.875}));
}

/// Nothing is declared; an element more stands around inputs and output.
const std::string undeclared = R"(<PMML version="3.2">
 <DataDictionary>
  <DataField name="outlook" optype="categorical" dataType="string"/>
  <DataField name="play" optype="categorical" dataType="string"/>
 </DataDictionary>
 <NaiveBayesModel functionName="classification" threshold="0.01">
  <MiningSchema><MiningField name="outlook"/><MiningField name="play" usageType="predicted"/></MiningSchema>
  <NaiveBayes>
   <BayesInputs>
    <BayesInput fieldName="outlook">
     <PairCounts value="1.0"><TargetValueCounts><TargetValueCount value="yes" count="2"/></TargetValueCounts>
      </PairCounts>
     <PairCounts value="2.0"><TargetValueCounts><TargetValueCount value="no" count="3"/></TargetValueCounts>
      </PairCounts>
    </BayesInput>
   </BayesInputs>
   <BayesOutput fieldName="play">
    <TargetValueCounts><TargetValueCount value="no" count="3"/><TargetValueCount value="yes" count="2"/>
      </TargetValueCounts>
   </BayesOutput>
  </NaiveBayes>
 </NaiveBayesModel>
</PMML>)";

TEST(ProducersDocuments, ThatDeclareNothing) {
    const ScoredCase scored = ScoreCase(undeclared, {{"outlook", "1.0"}});
    EXPECT_EQ(scored.prediction, "yes");
    ExpectProbabilities(scored, Shares({3 * 0.01, 2}));
    const ScoredCase unknown = ScoreCase(undeclared, {{"outlook", "1"}});
    ExpectProbabilities(unknown, Shares({3, 2}));
    EXPECT_EQ(unknown.unknown.size(), 1U);
}

}  // namespace
}  // namespace nbscore::test
