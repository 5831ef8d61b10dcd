// What the shared writers of documents write.

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/TemporaryFolder.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::test {
namespace {

TEST(Escaped, HoldsNoMarkup) {
    EXPECT_EQ(Escaped("a<b>&'\"c"), "a&lt;b>&amp;'&quot;c");
    EXPECT_EQ(Escaped(""), "");
}

TEST(Digits, ReadBackAsTheSameNumber) {
    for (const double number : {0.1, -1.0 / 3.0, 5e-324, 1e308})
        EXPECT_EQ(std::strtod(Digits(number).c_str(), nullptr), number);
}

TEST(ModelDocument, HasEachElementOnALine_AndCountsThem) {
    const TemporaryFolder folder;
    const DocumentShape shape{.inputs = 1, .categories = 2, .targetCategories = 1, .type = FieldType::Bins};
    EXPECT_EQ(WriteDocument(shape, folder / "model.pmml"), 27U);
    EXPECT_EQ(folder.Read("model.pmml"), R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML xmlns="http://www.dmg.org/PMML-4_1" version="4.1">
  <Header/>
  <DataDictionary>
    <DataField name="target" optype="categorical" dataType="string">
      <Value value="class0"/>
    </DataField>
    <DataField name="field0" optype="continuous" dataType="double"/>
  </DataDictionary>
  <NaiveBayesModel functionName="classification" threshold="0.001">
    <MiningSchema>
      <MiningField name="target" usageType="predicted"/>
      <MiningField name="field0"/>
    </MiningSchema>
    <BayesInputs>
      <BayesInput fieldName="field0">
        <DerivedField name="field0_bin" optype="categorical" dataType="integer">
          <Discretize field="field0">
            <DiscretizeBin binValue="0">
              <Interval closure="openClosed" rightMargin="0"/>
            </DiscretizeBin>
            <DiscretizeBin binValue="1">
              <Interval closure="openClosed" leftMargin="0"/>
            </DiscretizeBin>
          </Discretize>
        </DerivedField>
        <PairCounts value="0">
          <TargetValueCounts>
            <TargetValueCount value="class0" count="1"/>
          </TargetValueCounts>
        </PairCounts>
        <PairCounts value="1">
          <TargetValueCounts>
            <TargetValueCount value="class0" count="8"/>
          </TargetValueCounts>
        </PairCounts>
      </BayesInput>
    </BayesInputs>
    <BayesOutput fieldName="target">
      <TargetValueCounts>
        <TargetValueCount value="class0" count="100000"/>
      </TargetValueCounts>
    </BayesOutput>
  </NaiveBayesModel>
</PMML>
)");
}

}  // namespace
}  // namespace nbscore::test
