#include <gtest/gtest.h>

#include <string>

#include "transform/ExpressionProbe.h"

namespace {

const std::string fields =
    "<DataField name='x' dataType='double' optype='continuous'><Value value='-9' property='missing'/>"
    "<Value value='7' property='invalid'/><Interval closure='closedOpen' leftMargin='0' rightMargin='10'/><Interval "
    "closure='openOpen' leftMargin='20'/>"
    "</DataField>"
    "<DataField name='s' dataType='string' optype='categorical'><Value value='NA' property='missing'/>"
    "<Value value='a'/><Value value='b'/></DataField>";

std::string Field(const std::string& name, const std::string& dataType, const std::string& content) {
    return "<DerivedField name='" + name + "' dataType='" + dataType + "'>" + content + "</DerivedField>";
}

/// Whether the argument is valid, with other derived fields beside it.
std::string Valid(const std::string& argument, const Case& record, const std::string& others = "") {
    const DerivedDocument document(fields,
                                   Field("d", "string", "<Apply function='isValid'>" + argument + "</Apply>") + others);
    return document.ValueOf("d", &record);
}

const std::string x = "<FieldRef field='x'/>";
const std::string s = "<FieldRef field='s'/>";

TEST(Validity, IsThatOfAnIntervalOfTheField) {
    EXPECT_EQ(Valid(x, Case(0, "a")), "text true");
    EXPECT_EQ(Valid(x, Case(10, "a")), "text false");
    EXPECT_EQ(Valid(x, Case(20, "a")), "text false");
    EXPECT_EQ(Valid(x, Case(1e300, "a")), "text true");
}

TEST(Validity, IsThatOfADeclaredValue) {
    EXPECT_EQ(Valid(s, Case(0, "b")), "text true");
    EXPECT_EQ(Valid(s, Case(0, "c")), "text false");
    EXPECT_EQ(Valid(s, Case(0, "")), "text false");
}

TEST(Validity, IsNeverThatOfAMissingValue) {
    EXPECT_EQ(Valid(x, Case(-9, "a")), "text false");
    EXPECT_EQ(Valid(s, Case(0, "NA")), "text false");
    EXPECT_EQ(Valid(s, Case()), "text false");
}

TEST(Validity, IsThatOfANumber_WhenTheFieldIsNumeric) {
    Case record;
    record.SetText(0, "5");
    EXPECT_EQ(Valid(x, record), "text true");
    record.SetText(0, "five");
    EXPECT_EQ(Valid(x, record), "text false");
    EXPECT_EQ(
        Valid("<FieldRef field='e'/>", Case(), Field("e", "double", "<Constant dataType='double'>NaN</Constant>")),
        "text false");
}

TEST(Validity, IsThatOfADerivedFieldsOwnDeclaration) {
    const std::string values = x + "<Value value='2'/><Value value='3'/>";
    EXPECT_EQ(Valid("<FieldRef field='e'/>", Case(2, "a"), Field("e", "double", values)), "text true");
    EXPECT_EQ(Valid("<FieldRef field='e'/>", Case(4, "a"), Field("e", "double", values)), "text false");
    EXPECT_EQ(Valid("<FieldRef field='e'/>", Case(15, "a"), Field("e", "double", x)), "text true");
}

TEST(Validity, IsThatOfAReplacement_WhenAMissingFieldHasOne) {
    EXPECT_EQ(Valid("<FieldRef field='x' mapMissingTo='50'/>", Case(-9, "a")), "text true");
    EXPECT_EQ(Valid("<FieldRef field='x' mapMissingTo='50'/>", Case(15, "a")), "text false");
}

TEST(Validity, IsThatOfAnyResult_WhenTheArgumentIsNoField) {
    EXPECT_EQ(Valid("<Apply function='+'>" + x + x + "</Apply>", Case(15, "a")), "text true");
    EXPECT_EQ(Valid("<Apply function='+'>" + x + x + "</Apply>", Case(-9, "a")), "text false");
}

TEST(Validity, IsNeverThatOfANan_ButThatOfAnInfinity) {
    const auto divided = [](const std::string& number) {
        return "<Apply function='/' invalidValueTreatment='asIs'><Constant>" + number +
               "</Constant><Constant>0</Constant></Apply>";
    };
    EXPECT_EQ(Valid(divided("0"), Case(1, "a")), "text false");
    EXPECT_EQ(Valid(divided("1"), Case(1, "a")), "text true");
    EXPECT_EQ(Valid(divided("-1"), Case(1, "a")), "text true");
    const std::string function = "<DefineFunction name='f' optype='categorical'><ParameterField name='p'/><Apply " +
                                 std::string("function='isValid'><FieldRef field='p'/></Apply></DefineFunction>");
    const auto called = [&](const std::string& number) {
        return Given("<Apply function='f'>" + divided(number) + "</Apply>", Case(1, "a"), "string", function);
    };
    EXPECT_EQ(called("0"), "text false");
    EXPECT_EQ(called("1"), "text true");
}

TEST(Validity, IsThatOfAnInfinity_WhereAnIntervalHasNoMarginOnItsSide) {
    const auto infinite = [](const std::string& number) {
        return Field(
            "e", "double",
            "<Constant dataType='double'>" + number + "</Constant><Interval closure='openOpen' leftMargin='0'/>");
    };
    EXPECT_EQ(Valid("<FieldRef field='e'/>", Case(), infinite("INF")), "text true");
    EXPECT_EQ(Valid("<FieldRef field='e'/>", Case(), infinite("-INF")), "text false");
}

TEST(Validity, IsNeverThatOfAValueDeclaredInvalid) {
    EXPECT_EQ(Valid(x, Case(7, "a")), "text false");
    EXPECT_EQ(Valid(x, Case(7.5, "a")), "text true");
    const std::string e = "<FieldRef field='e'/>";
    const std::string text = Field("e", "string", s + "<Value value='a' property='invalid'/>");
    EXPECT_EQ(Valid(e, Case(1, "a"), text), "text false");
    EXPECT_EQ(Valid(e, Case(1, "b"), text), "text true");
    const std::string number = Field("e", "double", x + "<Value value='2.0' property='invalid'/>");
    EXPECT_EQ(Valid(e, Case(2, "a"), number), "text false");
    EXPECT_EQ(Valid(e, Case(3, "a"), number), "text true");
    const std::string both = Field("e", "string",
                                   s + "<Value value='a'/><Value value='a' property='invalid'/><Value value='b'/>"
                                       "<Value value='c' property='invalid'/>");
    EXPECT_EQ(Valid(e, Case(1, "a"), both), "text false");
    EXPECT_EQ(Valid(e, Case(1, "b"), both), "text true");
    EXPECT_EQ(Valid(e, Case(1, "c"), both), "text false");
    const std::string inside =
        Field("e", "double",
              x + "<Interval closure='closedClosed' leftMargin='0' rightMargin='5'/><Value value='2' "
                  "property='invalid'/>");
    EXPECT_EQ(Valid(e, Case(1, "a"), inside), "text true");
    EXPECT_EQ(Valid(e, Case(2, "a"), inside), "text false");
}

TEST(Validity, LeavesAValueDeclaredInvalidAsItIs) {
    const std::string declared = Field("d", "string", s + "<Value value='a' property='invalid'/>");
    const DerivedDocument document(fields, declared);
    const Case record(1, "a");
    EXPECT_EQ(document.ValueOf("d", &record), "text a");
    EXPECT_EQ(document.derived->GetVar("d")->GetValueLabelSet(), nullptr);
}

TEST(Validity, IsThatOfATruthValue_WhenTheFieldIsBoolean) {
    const std::string e = "<FieldRef field='e'/>";
    const auto constant = [](const std::string& text, const std::string& values = "") {
        return Field("e", "boolean", "<Constant dataType='string'>" + text + "</Constant>" + values);
    };
    EXPECT_EQ(Valid(e, Case(), constant("true")), "text true");
    EXPECT_EQ(Valid(e, Case(), constant("0")), "text true");
    EXPECT_EQ(Valid(e, Case(), constant("yes")), "text false");
    EXPECT_EQ(Valid(e, Case(), constant("yes", "<Value value='yes'/>")), "text false");
    EXPECT_EQ(Valid(e, Case(), constant("1", "<Value value='true'/>")), "text true");
    EXPECT_EQ(Valid(e, Case(), constant("0", "<Value value='true'/>")), "text false");
    EXPECT_EQ(Valid(e, Case(), constant("true", "<Value value='1' property='invalid'/>")), "text false");
}

}  // namespace
