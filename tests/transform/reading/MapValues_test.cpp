#include <gtest/gtest.h>

#include <string>

#include "transform/ExpressionProbe.h"

namespace {

std::string Row(const std::string& key, const std::string& out) {
    return "<row><k>" + key + "</k><o>" + out + "</o></row>";
}

std::string Map(const std::string& rows, const std::string& attributes = "", const std::string& field = "s") {
    return "<MapValues outputColumn='o' " + attributes + "><FieldColumnPair field='" + field +
           "' column='k'/><InlineTable>" + rows + "</InlineTable></MapValues>";
}

std::string Mapped(const std::string& rows, const Case& record, const std::string& attributes = "") {
    return Given(Map(rows, attributes), record);
}

TEST(MapValues, GivesTheOutputOfTheMatchingRow) {
    const std::string rows = "<Extension/>" + Row("a", "first") + Row(" b ", "<![CDATA[<2>]]>nd") + Row("c", "");
    EXPECT_EQ(Mapped(rows, Case(1, "a")), "text first");
    EXPECT_EQ(Mapped(rows, Case(1, " b ")), "text <2>nd");
    EXPECT_EQ(Mapped(rows, Case(1, "b")), "absent");
    EXPECT_EQ(Mapped(rows, Case(1, "c")), "text ");
}

TEST(MapValues, IsMissingOrTheDefault_WhenNoRowMatches) {
    EXPECT_EQ(Mapped(Row("a", "1"), Case(1, "A")), "absent");
    EXPECT_EQ(Mapped(Row("a", "1"), Case(1, "A"), "defaultValue='d' mapMissingTo='m'"), "text d");
    EXPECT_EQ(Mapped("", Case(1, "A"), "defaultValue='d'"), "text d");
}

TEST(MapValues, IsMissingOrMapped_WhenAFieldIsMissing) {
    EXPECT_EQ(Mapped(Row("NA", "1"), Case(1, "NA")), "absent");
    EXPECT_EQ(Mapped(Row("NA", "1"), Case(1, "NA"), "defaultValue='d'"), "absent");
    EXPECT_EQ(Mapped(Row("NA", "1"), Case(1, "NA"), "defaultValue='d' mapMissingTo='m'"), "text m");
}

TEST(MapValues, IsMissing_WhenTheMatchingRowHasNoOutput) {
    const std::string rows = Row("a", "1") + "<row><k>b</k></row>";
    EXPECT_EQ(Mapped(rows, Case(1, "b"), "defaultValue='d'"), "absent");
}

TEST(MapValues, ComparesNumbers_WhenTheFieldHoldsNumbers) {
    const std::string map = Map(Row("2.0", "two") + Row("0", "zero") + Row("1e3", "many") + Row("x", "text"), "", "x");
    EXPECT_EQ(Given(map, Case(2, "a")), "text two");
    EXPECT_EQ(Given(map, Case(-0.0, "a")), "text zero");
    EXPECT_EQ(Given(map, Case(1000, "a")), "text many");
    EXPECT_EQ(Given(Map(Row("2.0", "two")), Case(1, "2")), "absent");  // a text field: byte by byte
}

/// What a function that maps its parameter, which has no type, gives for the argument.
std::string MappedParameter(const std::string& rows, const std::string& argument) {
    return Given("<Apply function='f'>" + argument + "</Apply>", Case(1, "true"), "string",
                 "<DefineFunction name='f' optype='categorical'><ParameterField name='p'/>" + Map(rows, "", "p") +
                     "</DefineFunction>");
}

TEST(MapValues, FindsATruthValueByItsWordBeforeItsNumber_WhenTheParameterHasNoType) {
    const std::string yes = "<Apply function='isNotMissing'><FieldRef field='x'/></Apply>";
    const std::string no = "<Apply function='isMissing'><FieldRef field='x'/></Apply>";
    const std::string numbers = Row("1.0", "one") + Row("0", "zero");
    EXPECT_EQ(MappedParameter(numbers, yes), "text one");
    EXPECT_EQ(MappedParameter(numbers, no), "text zero");
    const std::string words = Row("true", "yes") + Row("false", "no");
    EXPECT_EQ(MappedParameter(words, yes), "text yes");
    EXPECT_EQ(MappedParameter(words, no), "text no");
    for (const std::string& both : {numbers + words, words + numbers}) {
        EXPECT_EQ(MappedParameter(both, yes), "text yes");
        EXPECT_EQ(MappedParameter(both, no), "text no");
        EXPECT_EQ(MappedParameter(both, "<Constant>1</Constant>"), "text one");
        EXPECT_EQ(MappedParameter(both, "<FieldRef field='s'/>"), "text yes");
    }
    EXPECT_EQ(MappedParameter(Row("true", "yes") + Row("0", "zero"), no), "text zero");
    EXPECT_EQ(MappedParameter(Row("True", "yes"), yes), "absent");
    // The number itself is not a word.
    EXPECT_EQ(MappedParameter(words, "<Constant>1</Constant>"), "absent");
}

TEST(MapValues, DecidesHowTruthValuesAreWritten_ColumnByColumn) {
    const std::string yes = "<Apply function='isNotMissing'><FieldRef field='x'/></Apply>";
    const auto called = [&](const std::string& rows) {
        return Given("<Apply function='f'>" + yes + yes + "</Apply>", Case(1, "a"), "string",
                     "<DefineFunction name='f' optype='categorical'><ParameterField name='p'/><ParameterField "
                     "name='q'/><MapValues outputColumn='o'><FieldColumnPair field='p' column='k'/><FieldColumnPair "
                     "field='q' column='l'/><InlineTable>" +
                         rows + "</InlineTable></MapValues></DefineFunction>");
    };
    const std::string mixed = "<row><k>1</k><l>true</l><o>mixed</o></row>";
    EXPECT_EQ(called(mixed), "text mixed");
    EXPECT_EQ(called(mixed + "<row><k>true</k><l>other</l><o>2</o></row>"), "absent");
    EXPECT_EQ(called(mixed + "<row><k>true</k><l>true</l><o>words</o></row>"), "text words");
}

TEST(MapValues, LeavesOutputsUnchanged_WhenItsDataTypeIsBoolean) {
    EXPECT_EQ(Mapped(Row("a", "1"), Case(1, "a"), "dataType='boolean'"), "text 1");
    EXPECT_EQ(Mapped(Row("a", "yes"), Case(1, "a"), "dataType='boolean'"), "text yes");
    EXPECT_EQ(
        Given("<Apply function='if'>" + Map(Row("a", "1"), "dataType='boolean'") + "<Constant>t</Constant></Apply>"),
        "text t");
}

TEST(MapValues, GivesNumbers_WhenItsDataTypeSaysSo) {
    EXPECT_EQ(Mapped(Row("a", "007"), Case(1, "a"), "dataType='integer'"), "text 7");
    EXPECT_EQ(Mapped(Row("a", "007"), Case(1, "a"), "dataType='string'"), "text 007");
    EXPECT_EQ(RefusalOfExpression(Map(Row("a", "x"), "dataType='double'")),
              "9 4:112 DerivedField[1]/MapValues[1]/InlineTable[1]/row[1]/o[1]: \"x\" is no number.");
    EXPECT_EQ(RefusalOfExpression(Map(Row("a", "1"), "dataType='double' defaultValue='y'")),
              "9 4:1 DerivedField[1]/MapValues[1]: \"y\" is no number.");
}

TEST(MapValues, ComparesAllFields_WhenThereAreSeveral) {
    const std::string map =
        "<MapValues outputColumn='o'><InlineTable>"
        "<row><n>1</n><t>11</t><o>A</o></row><row><n>11</n><t>1</t><o>B</o></row>"
        "</InlineTable><FieldColumnPair field='x' column='n'/><FieldColumnPair field='s' column='t'/></MapValues>";
    EXPECT_EQ(Given(map, Case(1, "11")), "text A");
    EXPECT_EQ(Given(map, Case(11, "1")), "text B");
    EXPECT_EQ(Given(map, Case(1, "1")), "absent");
    EXPECT_EQ(Given(map, Case(-9, "1")), "absent");
}

TEST(MapValues, TellsKeysApart_WhenTheirPartsJoinToTheSameText) {
    EXPECT_EQ(
        Given("<MapValues outputColumn='o'><FieldColumnPair field='s' column='k'/><FieldColumnPair field='s' "
              "column='l'/><InlineTable><row><k>a:b</k><l>c</l><o>1</o></row><row><k>a</k><l>b:c</l><o>2</o></row>"
              "</InlineTable></MapValues>"),
        "absent");
}

TEST(MapValues, FindsItsCells_WithAndWithoutNamespacePrefix) {
    const std::string prefixed =
        "<MapValues outputColumn='data:o'><FieldColumnPair field='s' column='k'/><InlineTable>"
        "<row xmlns:data='urn:d'><data:k>a</data:k><data:o>1</data:o><data:unused>2</data:unused></row>"
        "<data:row xmlns:data='urn:d'><k>b</k><o>2</o></data:row></InlineTable></MapValues>";
    EXPECT_EQ(Given(prefixed, Case(1, "a")), "text 1");
    EXPECT_EQ(Given(prefixed, Case(1, "b")), "text 2");
    const std::string ofTwoColons =
        "<MapValues outputColumn='o'><FieldColumnPair field='s' column='d:e:k'/><InlineTable><row><k>b</k>"
        "<f:e:k>a</f:e:k><o>1</o></row></InlineTable></MapValues>";
    EXPECT_EQ(Given(ofTwoColons, Case(1, "a")), "text 1") << "a prefix ends at the first colon";
}

TEST(MapValues, MayGiveAKeyColumnAndUseAFieldTwice) {
    EXPECT_EQ(Given("<MapValues outputColumn='k'><FieldColumnPair field='s' column='k'/><FieldColumnPair field='s' "
                    "column='l'/><InlineTable><row><k>a</k><l>a</l></row></InlineTable></MapValues>"),
              "text a");
}

TEST(MapValues, IsRefused_WhenTwoRowsHaveTheSameKeys) {
    EXPECT_EQ(
        RefusalOfExpression(Map(Row("a", "1") + "\n" + Row("a", "1"))),
        "12 5:1 DerivedField[1]/MapValues[1]/InlineTable[1]/row[2]: An earlier row has the same keys as this one.");
    EXPECT_EQ(
        RefusalOfExpression(Map(Row("1", "1") + "\n" + Row("1.0", "2"), "", "x")),
        "12 5:1 DerivedField[1]/MapValues[1]/InlineTable[1]/row[2]: An earlier row has the same keys as this one.");
    EXPECT_EQ(RefusalOfExpression(Map(Row("1", "1") + "\n" + Row("1.0", "2"), "", "s")), "none");
}

TEST(MapValues, IsRefused_WhenRowsLackColumns) {
    EXPECT_EQ(RefusalOfExpression(Map(Row("a", "1") + "\n<row><o>1</o></row>")),
              "5 5:1 DerivedField[1]/MapValues[1]/InlineTable[1]/row[2]: The row has no cell for the column \"k\".");
    EXPECT_EQ(RefusalOfExpression(Map("<row><k>1</k></row>")),
              "5 4:1 DerivedField[1]/MapValues[1]: No row has a cell for the output column \"o\".");
    EXPECT_EQ(RefusalOfExpression(Map("<row><k>1</k>\n<k>1</k></row>")),
              "12 5:1 DerivedField[1]/MapValues[1]/InlineTable[1]/row[1]/k[2]: The row has two cells <k>.");
    EXPECT_EQ(
        RefusalOfExpression(Map("<row><k>\n<b/></k></row>")),
        "1 5:1 DerivedField[1]/MapValues[1]/InlineTable[1]/row[1]/k[1]/b[1]: <b> is not expected in the cell <k>.");
    EXPECT_EQ(RefusalOfExpression(Map("\n<line/>")),
              "1 5:1 DerivedField[1]/MapValues[1]/InlineTable[1]/line[1]: <line> is not expected in <InlineTable>.");
}

TEST(MapValues, IsRefused_WhenItsPartsAreUnknown) {
    const std::string place = " 4:1 DerivedField[1]/MapValues[1]";
    const std::string pair = "<FieldColumnPair field='s' column='k'/>";
    EXPECT_EQ(RefusalOfExpression("<MapValues>" + pair + "<InlineTable/></MapValues>"),
              "2" + place + ": <MapValues> has no attribute \"outputColumn\".");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'><InlineTable/></MapValues>"),
              "1" + place + ": <MapValues> has no <FieldColumnPair>.");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'>" + pair + "</MapValues>"),
              "1" + place + ": <MapValues> has no <InlineTable>.");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'>" + pair + "\n<TableLocator/></MapValues>"),
              "11 5:1 DerivedField[1]/MapValues[1]/TableLocator[1]: <TableLocator> is not supported.");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'>" + pair + "<InlineTable/>\n<InlineTable/></MapValues>"),
              "1 5:1 DerivedField[1]/MapValues[1]/InlineTable[2]: <InlineTable> is not expected in <MapValues>.");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'>" + pair + "\n" + pair + "<InlineTable/></MapValues>"),
              "12 5:1 DerivedField[1]/MapValues[1]/FieldColumnPair[2]: The column \"k\" is paired twice.");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'>\n<FieldColumnPair field='y' column='k'/></MapValues>"),
              "8 5:1 DerivedField[1]/MapValues[1]/FieldColumnPair[1]: \"y\" is no field.");
    EXPECT_EQ(RefusalOfExpression("<MapValues outputColumn='o'>\n<FieldColumnPair field='s'/></MapValues>"),
              "2 5:1 DerivedField[1]/MapValues[1]/FieldColumnPair[1]: <FieldColumnPair> has no attribute \"column\".");
}

TEST(MapValues, HoldsManyRows) {
    std::string rows;
    constexpr int count = 100000;
    for (int i = 0; i < count; ++i)
        rows += Row(std::to_string(i), "o" + std::to_string(i));
    const DerivedDocument document(
        caseFields, "<DerivedField name='d' dataType='string'>" + Map(rows, "", "x") + "</DerivedField>");
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(document.ValueOf("d", std::make_unique<Case>(i, "a").get()), "text o" + std::to_string(i));
}

}  // namespace
