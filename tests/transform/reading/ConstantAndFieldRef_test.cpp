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

TEST(Constant, IsOneText_WhenItComesInPieces) {
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

std::string Number(const std::string& fieldRef) {
    return "<DerivedField name='d' optype='continuous' dataType='double'>" + fieldRef + "</DerivedField>";
}
std::string Text(const std::string& fieldRef) {
    return "<DerivedField name='d' optype='categorical' dataType='string'>" + fieldRef + "</DerivedField>";
}
std::string Value(const std::string& field, const ScoreCaseRecord& record) {
    return DerivedDocument(caseFields, field).ValueOf("d", &record);
}

TEST(FieldRef, GivesTheFieldsValue_WhenItHasOne) {
    EXPECT_EQ(Value(Number("<FieldRef field='x'/>"), Case(1.5, "a")), "number 1.5");
    EXPECT_EQ(Value(Text("<FieldRef field='s'/>"), Case(1.5, " a ")), "text  a ");
}

TEST(FieldRef, IsCastToTheDerivedFieldsKind_WhenTheKindsDiffer) {
    EXPECT_EQ(Value(Text("<FieldRef field='x'/>"), Case(1e22, "a")), "text 1e+22");
    EXPECT_EQ(Value(Number("<FieldRef field='s'/>"), Case(1, " 2.5 ")), "number 2.5");
    EXPECT_EQ(Value(Number("<FieldRef field='s'/>"), Case(1, "two")), "absent");
}

TEST(FieldRef, IsMissing_WhenTheFieldIs) {
    const std::string number = Number("<FieldRef field='x'/>");
    const std::string text = Text("<FieldRef field='s'/>");
    EXPECT_EQ(Value(number, Case()), "absent");
    EXPECT_EQ(Value(number, Case(-9, "a")), "absent");
    EXPECT_EQ(Value(number, Case(NumericValue::GetSysmisValue(), "a")), "absent");
    EXPECT_EQ(Value(text, Case()), "absent");
    EXPECT_EQ(Value(text, Case(1, "NA")), "absent");
    EXPECT_EQ(DerivedDocument(caseFields, number).ValueOf("d", nullptr), "absent");
    EXPECT_EQ(Value(number, BaseCaseRecord({"other"})), "absent");
}

TEST(FieldRef, GivesItsReplacement_WhenTheFieldIsMissing) {
    const std::string number = Number("<FieldRef field='x' mapMissingTo='7'/>");
    EXPECT_EQ(Value(number, Case()), "number 7");
    EXPECT_EQ(Value(number, Case(-9, "a")), "number 7");
    EXPECT_EQ(Value(number, Case(3, "a")), "number 3");
    EXPECT_EQ(Value(Text("<FieldRef field='s' mapMissingTo='007'/>"), Case()), "text 007");
    EXPECT_EQ(Value(Text("<FieldRef field='s' mapMissingTo=''/>"), Case()), "text ");
    EXPECT_EQ(Value(Text("<FieldRef field='x' mapMissingTo='none'/>"), Case()), "text none");
    EXPECT_EQ(Value(Number("<FieldRef field='x' mapMissingTo='none'/>"), Case()), "absent");
}

TEST(FieldRef, ReadsItsReplacementAsTheKindOfTheField) {
    const auto equals = [](const std::string& field, const std::string& constant, const std::string& others = "") {
        return Value(Text("<Apply function='equal'>" + field + "<Constant dataType='string'>" + constant +
                          "</Constant></Apply>") +
                         others,
                     Case());
    };
    EXPECT_EQ(equals("<FieldRef field='x' mapMissingTo='1.0'/>", "1"), "text true");
    EXPECT_EQ(equals("<FieldRef field='s' mapMissingTo='1.0'/>", "1"), "text false");
    const auto parameter = [](const std::string& dataType) {
        return "<DefineFunction name='f' optype='categorical'><ParameterField name='p' " + dataType +
               "/><FieldRef field='p' mapMissingTo='1'/></DefineFunction>";
    };
    const std::string called = "<Apply function='f'><FieldRef field='x'/></Apply>";
    EXPECT_EQ(equals(called, "1.0", parameter("dataType='double'")), "text true");
    EXPECT_EQ(equals(called, "1.0", parameter("")), "text true");
    EXPECT_EQ(equals(called, "1.0", parameter("dataType='string'")), "text false");
    EXPECT_EQ(equals(called, "true", parameter("dataType='boolean'")), "text true");
}

TEST(FieldRef, ReadsTheRecordsTextAsANumber_WhenTheFieldHoldsNumbers) {
    Case record;
    record.SetText(0, "12.5");
    EXPECT_EQ(Value(Number("<FieldRef field='x'/>"), record), "number 12.5");
    record.SetText(0, "twelve");
    EXPECT_EQ(Value(Number("<FieldRef field='x' mapMissingTo='1'/>"), record), "number 1");
}

TEST(FieldRef, GivesTheOtherDerivedFieldsValue_WhenItNamesOne) {
    const std::string fields = Text("<FieldRef field='e' mapMissingTo='gone'/>") +
                               "<DerivedField name='e' optype='continuous' dataType='double'>"
                               "<FieldRef field='x'/><Value value='4' property='missing'/></DerivedField>";
    EXPECT_EQ(Value(fields, Case(2, "a")), "text 2");
    EXPECT_EQ(Value(fields, Case(4, "a")), "text gone");
}

TEST(FieldRef, IsRefused_WhenItNamesNoField) {
    const auto refusal = RefusalOf([] { DerivedDocument(caseFields, Number("\n <FieldRef field='y'/>")); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnknownVariable);
    EXPECT_EQ(refusal->GetMessage(), "\"y\" is no field.");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), "4:2 /PMML/TransformationDictionary[1]/DerivedField[1]/FieldRef[1]");
}

TEST(FieldRef, IsRefused_WhenItNamesNothing) {
    const auto refusal = RefusalOf([] { DerivedDocument(caseFields, Number("<FieldRef/>")); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MissingAttribute);
    EXPECT_EQ(refusal->GetMessage(), "<FieldRef> has no attribute \"field\".");
}

TEST(FieldRef, IsRefusedWithThePlace_WhenTheEncodingCannotHoldAText) {
    const std::string field = "/PMML/TransformationDictionary[1]/DerivedField[1]";
    const std::vector<std::pair<std::string, std::string>> refused{
        {Text("\n<FieldRef field='&#x4E00;'/>"), "4:1 " + field + "/FieldRef[1]"},
        {Text("\n<FieldRef field='s' mapMissingTo='&#x4E00;'/>"), "4:1 " + field + "/FieldRef[1]"},
        {Text("\n<Constant>&#x4E00;</Constant>"), "4:1 " + field + "/Constant[1]"},
        {"<DerivedField name='&#x4E00;' optype='categorical' dataType='string'/>", "3:1 " + field}};
    for (const auto& [transformations, place] : refused) {
        const auto refusal = RefusalOf([&text = transformations] { DerivedDocument(caseFields, text, "ISO-8859-1"); });
        ASSERT_TRUE(refusal) << transformations;
        EXPECT_EQ(refusal->GetCode(), VeskException::UnsupportedEncoding);
        EXPECT_EQ(PlaceText(refusal->GetPlace()), place);
    }
}

}  // namespace
