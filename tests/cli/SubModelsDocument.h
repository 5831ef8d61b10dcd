#pragma once

namespace nbscore::test {

/// Two offers with one answer: "card" depends on the colour, "plan" on nothing.
inline constexpr const char* offersDocument = R"(<?xml version="1.0"?>
<PMML version="4.4">
  <DataDictionary>
    <DataField name="colour" optype="categorical" dataType="string"><Value value="red"/><Value value="green"/></DataField>
    <DataField name="accepts" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
  </DataDictionary>
  <NaiveBayesModel modelName="card" algorithmName="SelfLearning" threshold="0.125">
    <Extension name="meanPerformance" value="0.5"/>
    <Extension name="trainingSampleSize" value="8"/>
    <MiningSchema><MiningField name="colour"/><MiningField name="accepts" usageType="predicted"/></MiningSchema>
    <BayesInputs>
      <BayesInput fieldName="colour">
        <PairCounts value="red"><TargetValueCounts><TargetValueCount value="no" count="1"/><TargetValueCount value="yes" count="3"/></TargetValueCounts></PairCounts>
        <PairCounts value="green"><TargetValueCounts><TargetValueCount value="no" count="3"/><TargetValueCount value="yes" count="1"/></TargetValueCounts></PairCounts>
      </BayesInput>
    </BayesInputs>
    <BayesOutput fieldName="accepts"><TargetValueCounts><TargetValueCount value="no" count="4"/><TargetValueCount value="yes" count="4"/></TargetValueCounts></BayesOutput>
  </NaiveBayesModel>
  <NaiveBayesModel modelName="plan" threshold="0.25">
    <MiningSchema><MiningField name="accepts" usageType="predicted"/></MiningSchema>
    <BayesOutput fieldName="accepts"><TargetValueCounts><TargetValueCount value="no" count="4"/><TargetValueCount value="yes" count="2"/></TargetValueCounts></BayesOutput>
  </NaiveBayesModel>
</PMML>
)";

/// A set without sub-models.
inline constexpr const char* noOffersDocument = R"(<PMML version="4.4">
  <DataDictionary>
    <DataField name="offer" optype="categorical" dataType="string"><Extension name="isSelfLearningTarget" value="true"/></DataField>
  </DataDictionary>
</PMML>
)";

}  // namespace nbscore::test
