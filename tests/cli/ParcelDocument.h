#pragma once

#include <string>

namespace nbscore::test {

/// A document as other software writes it: a threshold of 0, a distribution, and an Output that names the columns.
/// Parcels and letters have 4 training cases each. Of the coloured ones, all red are letters; green ones were never
/// seen. Letters weigh 1 on average, parcels 3, with a variance of 1.
inline const std::string parcelDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML version="4.2" xmlns="http://www.dmg.org/PMML-4_2">
  <Header><Application name="Exporter" version="3.1"/></Header>
  <DataDictionary>
    <DataField name="colour" optype="categorical" dataType="string">
      <Value value="red"/>
      <Value value="blue"/>
      <Value value="green"/>
    </DataField>
    <DataField name="weight" optype="continuous" dataType="double"/>
    <DataField name="stamp" optype="categorical" dataType="string">
      <Value value="old"/>
      <Value value="new"/>
    </DataField>
    <DataField name="kind" optype="categorical" dataType="string">
      <Value value="letter"/>
      <Value value="parcel"/>
    </DataField>
  </DataDictionary>
  <NaiveBayesModel functionName="classification" threshold="0">
    <MiningSchema>
      <MiningField name="colour"/>
      <MiningField name="weight"/>
      <MiningField name="stamp"/>
      <MiningField name="kind" usageType="target"/>
    </MiningSchema>
    <Output>
      <OutputField name="Predicted_kind" feature="predictedValue" optype="categorical" dataType="string"/>
      <OutputField name="Probability_letter" feature="probability" value="letter" optype="continuous" dataType="double"/>
    </Output>
    <BayesInputs>
      <BayesInput fieldName="colour">
        <PairCounts value="red">
          <TargetValueCounts>
            <TargetValueCount value="letter" count="3"/>
            <TargetValueCount value="parcel" count="0"/>
          </TargetValueCounts>
        </PairCounts>
        <PairCounts value="blue">
          <TargetValueCounts>
            <TargetValueCount value="letter" count="1"/>
            <TargetValueCount value="parcel" count="4"/>
          </TargetValueCounts>
        </PairCounts>
        <PairCounts value="green">
          <TargetValueCounts>
            <TargetValueCount value="letter" count="0"/>
            <TargetValueCount value="parcel" count="0"/>
          </TargetValueCounts>
        </PairCounts>
      </BayesInput>
      <BayesInput fieldName="weight">
        <TargetValueStats>
          <TargetValueStat value="letter"><GaussianDistribution mean="1" variance="1"/></TargetValueStat>
          <TargetValueStat value="parcel"><GaussianDistribution mean="3" variance="1"/></TargetValueStat>
        </TargetValueStats>
      </BayesInput>
    </BayesInputs>
    <BayesOutput fieldName="kind">
      <TargetValueCounts>
        <TargetValueCount value="letter" count="4"/>
        <TargetValueCount value="parcel" count="4"/>
      </TargetValueCounts>
    </BayesOutput>
  </NaiveBayesModel>
</PMML>
)";

}  // namespace nbscore::test
