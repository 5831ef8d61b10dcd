#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace nbscore::test {

/// A small model, with one categorical and one continuous input: apples are red and heavy, pears green and light.
inline const std::string fruitDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4">
  <Header/>
  <DataDictionary>
    <DataField name="colour" optype="categorical" dataType="string">
      <Value value="red"/>
      <Value value="green"/>
    </DataField>
    <DataField name="weight" optype="continuous" dataType="double"/>
    <DataField name="fruit" optype="categorical" dataType="string">
      <Value value="apple"/>
      <Value value="pear"/>
    </DataField>
  </DataDictionary>
  <NaiveBayesModel functionName="classification" threshold="0.001">
    <MiningSchema>
      <MiningField name="colour"/>
      <MiningField name="weight"/>
      <MiningField name="fruit" usageType="predicted"/>
    </MiningSchema>
    <BayesInputs>
      <BayesInput fieldName="colour">
        <PairCounts value="red">
          <TargetValueCounts>
            <TargetValueCount value="apple" count="90"/>
            <TargetValueCount value="pear" count="10"/>
          </TargetValueCounts>
        </PairCounts>
        <PairCounts value="green">
          <TargetValueCounts>
            <TargetValueCount value="apple" count="10"/>
            <TargetValueCount value="pear" count="90"/>
          </TargetValueCounts>
        </PairCounts>
      </BayesInput>
      <BayesInput fieldName="weight">
        <DerivedField name="weight_bin" optype="categorical" dataType="integer">
          <Discretize field="weight">
            <DiscretizeBin binValue="0"><Interval closure="openClosed" rightMargin="150"/></DiscretizeBin>
            <DiscretizeBin binValue="1"><Interval closure="openClosed" leftMargin="150"/></DiscretizeBin>
          </Discretize>
        </DerivedField>
        <PairCounts value="0">
          <TargetValueCounts>
            <TargetValueCount value="apple" count="20"/>
            <TargetValueCount value="pear" count="80"/>
          </TargetValueCounts>
        </PairCounts>
        <PairCounts value="1">
          <TargetValueCounts>
            <TargetValueCount value="apple" count="80"/>
            <TargetValueCount value="pear" count="20"/>
          </TargetValueCounts>
        </PairCounts>
      </BayesInput>
    </BayesInputs>
    <BayesOutput fieldName="fruit">
      <TargetValueCounts>
        <TargetValueCount value="apple" count="100"/>
        <TargetValueCount value="pear" count="100"/>
      </TargetValueCounts>
    </BayesOutput>
  </NaiveBayesModel>
</PMML>
)";

inline const std::string fruitCases = "colour,weight\nred,200\ngreen,100\n";

/// A text with the first occurrence of a piece replaced; the test fails when it has none.
inline std::string Replace(std::string text, std::string_view piece, std::string_view replacement) {
    const std::size_t place = text.find(piece);
    EXPECT_NE(place, std::string::npos) << "the text has no " << piece;
    return place == std::string::npos ? text : text.replace(place, piece.size(), replacement);
}

}  // namespace nbscore::test
