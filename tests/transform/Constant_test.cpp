#include <gtest/gtest.h>

#include <string>

#include "transform/DerivedDocument.h"

namespace {

/// The constant's value in a derived field of this data type.
std::string In(const std::string& dataType, const std::string& constant) {
    const DerivedDocument document(
        "", "<DerivedField name='d' optype='categorical' dataType='" + dataType + "'>" + constant + "</DerivedField>");
    return document.ValueOf("d", nullptr);
}

TEST(Constant, IsANumber_WhenItsWholeTextIsOne) {
    EXPECT_EQ(In("double", "<Constant>1.50</Constant>"), "number 1.5");
    EXPECT_EQ(In("string", "<Constant> 1.50 </Constant>"), "text 1.5");
    EXPECT_EQ(In("string", "<Constant>1.50 m</Constant>"), "text 1.50 m");
}

TEST(Constant, IsAText_WhenItsDataTypeSaysSo) {
    EXPECT_EQ(In("string", "<Constant dataType='string'> 007 </Constant>"), "text  007 ");
    EXPECT_EQ(In("string", "<Constant dataType='date'>2024-02-29</Constant>"), "text 2024-02-29");
    EXPECT_EQ(In("double", "<Constant dataType='string'>007</Constant>"), "number 7");
    EXPECT_EQ(In("double", "<Constant dataType='string'>seven</Constant>"), "absent");
}

TEST(Constant, IsANumber_WhenItsDataTypeSaysSo) {
    EXPECT_EQ(In("string", "<Constant dataType='integer'>007</Constant>"), "text 7");
    EXPECT_EQ(In("string", "<Constant dataType='float'>0.5e1</Constant>"), "text 5");
    EXPECT_EQ(In("string", "<Constant dataType='double'>NaN</Constant>"), "text nan");
    EXPECT_EQ(In("string", "<Constant dataType='double'>INF</Constant>"), "text inf");
    EXPECT_EQ(In("string", "<Constant dataType='float'>-INF</Constant>"), "text -inf");
}

TEST(Constant, IsATruthValue_WhenItsDataTypeSaysSo) {
    for (const std::string word : {"true", "1"}) {
        EXPECT_EQ(In("string", "<Constant dataType='boolean'>" + word + "</Constant>"), "text true");
        EXPECT_EQ(In("double", "<Constant dataType='boolean'>" + word + "</Constant>"), "number 1");
    }
    EXPECT_EQ(In("string", "<Constant dataType='boolean'>0</Constant>"), "text false");
    EXPECT_EQ(In("string", "<Constant dataType='boolean'/>"), "absent");
    const auto refusal = RefusalOf([] { In("string", "<Constant dataType='boolean'>yes</Constant>"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::InvalidContent);
    EXPECT_EQ(refusal->GetMessage(), "\"yes\" is no truth value: true, false, 1 or 0.");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), "3:63 /PMML/TransformationDictionary[1]/DerivedField[1]/Constant[1]");
}

TEST(Constant, IsTheEmptyTextOrMissing_WhenItHoldsNothing) {
    EXPECT_EQ(In("string", "<Constant/>"), "text ");
    EXPECT_EQ(In("string", "<Constant dataType='string'></Constant>"), "text ");
    EXPECT_EQ(In("string", "<Constant dataType='double'/>"), "absent");
    EXPECT_EQ(In("double", "<Constant/>"), "absent");
}

TEST(Constant, IsMissing_WhenItSaysSo) {
    EXPECT_EQ(In("string", "<Constant missing='true'>a</Constant>"), "absent");
    EXPECT_EQ(In("string", "<Constant missing='1'>a</Constant>"), "absent");
    EXPECT_EQ(In("string", "<Constant missing='false'>a</Constant>"), "text a");
    const auto refusal = RefusalOf([] { In("string", "<Constant missing='yes'>a</Constant>"); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::InvalidContent);
    EXPECT_EQ(refusal->GetMessage(), "\"yes\" is no \"missing\" of <Constant>: true, 1, false or 0.");
}

TEST(Constant, IsOneText_WhenItStandsInPieces) {
    EXPECT_EQ(In("string", "<Constant>a<![CDATA[<b>]]><!-- c -->&amp;<?p?>d</Constant>"), "text a<b>&d");
}

TEST(Constant, IsRefusedWithItsPlace_WhenItIsNotWhatItsDataTypeSays) {
    for (const char* constant :
         {"<Constant dataType='double'>one</Constant>", "<Constant dataType='float'> </Constant>",
          "<Constant dataType='integer'>INF</Constant>"}) {
        const auto refusal = RefusalOf([&] { In("double", constant); });
        ASSERT_TRUE(refusal) << constant;
        EXPECT_EQ(refusal->GetCode(), VeskException::InvalidNumber);
        EXPECT_EQ(PlaceText(refusal->GetPlace()), "3:63 /PMML/TransformationDictionary[1]/DerivedField[1]/Constant[1]");
    }
    EXPECT_EQ(RefusalOf([] { In("double", "<Constant dataType='double'>one</Constant>"); })->GetMessage(),
              "\"one\" is no number.");
}

}  // namespace
