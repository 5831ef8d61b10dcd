#include <gtest/gtest.h>

#include <string>

#include "transform/ExpressionProbe.h"

namespace {

std::string Constant(const std::string& text, const std::string& dataType) {
    return "<Constant dataType='" + dataType + "'>" + text + "</Constant>";
}

std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

/// What the expression gives beside the boolean derived field "b" that has this text, or is missing when it is empty.
std::string Beside(const std::string& text, const std::string& expression, const std::string& functions = "") {
    const std::string content = text.empty() ? "<Constant missing='true'/>" : Constant(text, "string");
    return Given(expression, Case(2, "a"), "string",
                 "<DerivedField name='b' dataType='boolean'>" + content + "</DerivedField>" + functions);
}

/// The same beside the boolean data field "b".
std::string BesideData(const std::string& text, const std::string& expression) {
    const DerivedDocument document("<DataField name='b' dataType='boolean' optype='categorical'/>",
                                   "<DerivedField name='d' dataType='string'>" + expression + "</DerivedField>");
    BaseCaseRecord record({"b"});
    if (!text.empty()) record.SetText(0, text);
    return document.ValueOf("d", &record);
}

/// What it gives beside either field; both results where they differ.
std::string BesideEither(const std::string& text, const std::string& expression) {
    const std::string derived = Beside(text, expression);
    const std::string data = BesideData(text, expression);
    return derived == data ? derived : derived + " but " + data;
}

const std::string b = "<FieldRef field='b'/>";

TEST(BooleanField, ComparesAsATruthValue_WhenItsTextReadsAsOne) {
    const std::string isOne = Apply("equal", b + "<Constant>1</Constant>");
    const std::string isTrue = Apply("equal", b + Constant("true", "string"));
    const std::string isFalse = Apply("isIn", b + Constant("false", "string") + Constant("never", "string"));
    for (const std::string text : {"true", "1"}) {
        EXPECT_EQ(BesideEither(text, isOne), "text true");
        EXPECT_EQ(BesideEither(text, isTrue), "text true");
        EXPECT_EQ(BesideEither(text, isFalse), "text false");
    }
    for (const std::string text : {"false", "0"}) {
        EXPECT_EQ(BesideEither(text, isOne), "text false");
        EXPECT_EQ(BesideEither(text, isTrue), "text false");
        EXPECT_EQ(BesideEither(text, isFalse), "text true");
    }
}

TEST(BooleanField, StaysAText_WhenItReadsAsNoTruthValue) {
    for (const std::string text : {"yes", "TRUE", "1.0", " true"}) {
        EXPECT_EQ(BesideEither(text, b), "text " + text);
        EXPECT_EQ(BesideEither(text, Apply("equal", b + Constant("true", "string"))), "text false");
    }
    EXPECT_EQ(BesideEither("", b), "absent");
}

TEST(BooleanField, IsWrittenAsAWord_WhereExpressionsNeedAText) {
    EXPECT_EQ(BesideEither("1", b), "text true");
    EXPECT_EQ(BesideEither("0", Apply("concat", b + b)), "text falsefalse");
}

TEST(BooleanField, IsANumber_WhereExpressionsNeedOne) {
    EXPECT_EQ(Beside("true", Apply("+", b + b)), "text 2");
    EXPECT_EQ(Beside("true",
                     "<Discretize field='b'><DiscretizeBin binValue='high'><Interval closure='closedOpen' "
                     "leftMargin='1'/></DiscretizeBin></Discretize>"),
              "text high");
}

TEST(BooleanField, HasTheTextThatItsExpressionGave_ToScoring) {
    const auto stored = [](const std::string& expression) {
        const DerivedDocument document(caseFields,
                                       "<DerivedField name='d' dataType='boolean'>" + expression + "</DerivedField>");
        const Case record(2, "a");
        return document.ValueOf("d", &record);
    };
    EXPECT_EQ(stored(Apply("isMissing", "<FieldRef field='x'/>")), "text false");
    EXPECT_EQ(stored(Constant("1", "boolean")), "text true");
    EXPECT_EQ(stored(Constant("1", "string")), "text 1");
    EXPECT_EQ(stored("<FieldRef field='s'/>"), "text a");
}

TEST(BooleanField, IsFoundInATable_HoweverTruthValuesAreWritten) {
    const auto mapped = [](const std::string& key) {
        return "<MapValues outputColumn='o'><FieldColumnPair field='b' column='k'/><InlineTable><row><k>" + key +
               "</k><o>found</o></row></InlineTable></MapValues>";
    };
    for (const std::string text : {"true", "1"}) {
        EXPECT_EQ(Beside(text, mapped("1")), "text found");
        EXPECT_EQ(Beside(text, mapped("true")), "text found");
        EXPECT_EQ(Beside(text, mapped("0")), "absent");
    }
    EXPECT_EQ(Beside("maybe", mapped("maybe")), "text found");
    EXPECT_EQ(RefusalText("<DerivedField name='b' dataType='boolean'><Constant/></DerivedField>"
                          "<DerivedField name='d' dataType='string'><MapValues outputColumn='o'><FieldColumnPair "
                          "field='b' column='k'/><InlineTable><row><k>1</k><o>1</o></row>\n<row><k>true</k><o>2</o>"
                          "</row></InlineTable></MapValues></DerivedField>"),
              "12 4:1 DerivedField[2]/MapValues[1]/InlineTable[1]/row[2]: An earlier row has the same keys as this "
              "one.");
}

TEST(BooleanField, HasAnIndicator_HoweverTruthValuesAreWritten) {
    for (const std::string value : {"true", "1"}) {
        const std::string norm = "<NormDiscrete field='b' value='" + value + "'/>";
        EXPECT_EQ(BesideEither("true", norm), "text 1");
        EXPECT_EQ(BesideEither("1", norm), "text 1");
        EXPECT_EQ(BesideEither("false", norm), "text 0");
        EXPECT_EQ(Beside("maybe", norm), "text 0");
    }
    EXPECT_EQ(Beside("maybe", "<NormDiscrete field='b' value='maybe'/>"), "text 1");
}

TEST(BooleanField, IsReplacedByATruthValue_WhereTheTextReadsAsOne) {
    EXPECT_EQ(Beside("", "<FieldRef field='b' mapMissingTo='1'/>"), "text true");
    EXPECT_EQ(Beside("", "<FieldRef field='b' mapMissingTo='none'/>"), "text none");
}

TEST(BooleanField, IsPassedToFunctionsAsATruthValue) {
    const auto function = [](const std::string& dataType, const std::string& body) {
        return "<DefineFunction name='f' optype='categorical'><ParameterField name='p' " + dataType + "/>" + body +
               "</DefineFunction>";
    };
    const std::string p = "<FieldRef field='p'/>";
    const std::string call = Apply("f", b);
    EXPECT_EQ(Beside("1", call, function("", Apply("equal", p + Constant("true", "string")))), "text true");
    EXPECT_EQ(Beside("1", call, function("dataType='double'", Apply("+", p + p))), "text 2");
    EXPECT_EQ(Beside("1", call, function("dataType='string'", p)), "text true");
    EXPECT_EQ(Beside("maybe", call, function("dataType='boolean'", Apply("isMissing", p))), "text true");
    EXPECT_EQ(Beside("maybe", call, function("", Apply("isValid", p))), "text false");
    EXPECT_EQ(Beside("0", call, function("", Apply("isValid", p))), "text true");
}

}  // namespace
