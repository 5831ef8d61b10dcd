#include "verify/VerificationSuite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "framework/VeskException.h"
#include "support/TreeOf.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<VerificationSuite> Read(const std::string& text) {
    return ReadVerificationSuites(*TreeOf(text));
}

/// A model element with test cases, which begin on line 2.
std::string Model(const std::string& verification, const std::string& attributes = "") {
    return "<NaiveBayesModel" + attributes + ">\n<ModelVerification>" + verification +
           "</ModelVerification></NaiveBayesModel>";
}

std::string Document(const std::string& models) {
    return "<PMML>" + models + "</PMML>";
}

std::string Fields(const std::string& fields) {
    return "<VerificationFields>" + fields + "</VerificationFields>";
}

const std::string twoFields = Fields("<VerificationField field='x'/><VerificationField field='y y' column='why'/>");

/// The test cases of rows with the fields "x" and "y y", whose column is "why".
VerificationSuite ReadRows(const std::string& rows) {
    return Read(Document(Model(twoFields + "<InlineTable>" + rows + "</InlineTable>"))).at(0);
}

/// "FIELD=TEXT" for each cell.
std::vector<std::string> CellsOf(const VerificationRow& row) {
    std::vector<std::string> cells;
    for (const VerificationCell& cell : row.cells)
        cells.push_back(std::to_string(cell.field) + "=" + cell.text);
    return cells;
}

/// "CODE LINE MESSAGE", or what was read.
std::string GetRefusal(const std::string& text) {
    try {
        Read(text);
    } catch (const VeskException& refusal) {
        return std::to_string(refusal.GetCode()) + " " + std::to_string(refusal.GetPlace().line) + " " +
               refusal.GetMessage();
    }
    return "read";
}

std::string GetRefusalOf(const std::string& verification) {
    return GetRefusal(Document(Model(verification)));
}

TEST(VerificationReader, FindsNothing_WhenThereAreNoTestCases) {
    EXPECT_THAT(Read("<PMML><NaiveBayesModel><Output/></NaiveBayesModel></PMML>"), IsEmpty());
    EXPECT_THAT(Read("<PMML/>"), IsEmpty());
}

TEST(VerificationReader, ReadsTolerances_OrTakesTheStandardOnes) {
    const VerificationSuite suite =
        Read(Document(Model(Fields("<VerificationField field='x' precision='0.5' zeroThreshold=' 1e-3 '/>\n"
                                   "<VerificationField field='y'/>") +
                            "<InlineTable/>")))
            .at(0);
    ASSERT_EQ(suite.fields.size(), 2U);
    EXPECT_EQ(suite.fields[0].name, "x");
    EXPECT_EQ(suite.fields[0].precision, 0.5);
    EXPECT_EQ(suite.fields[0].zeroThreshold, 1e-3);
    EXPECT_EQ(suite.fields[1].precision, 1e-6);
    EXPECT_EQ(suite.fields[1].zeroThreshold, 1e-16);
    EXPECT_EQ(suite.GetPlaceOfField(1).line, 3U);
    EXPECT_EQ(suite.GetPlaceOfField(1).elementPath,
              "/PMML/NaiveBayesModel[1]/ModelVerification[1]/VerificationFields[1]/VerificationField[2]");
    EXPECT_THAT(suite.rows, IsEmpty());
}

TEST(VerificationReader, ReadsCellsByTheirColumns_InAnyOrder) {
    const VerificationSuite suite = ReadRows("<row><why>b</why><x>1</x></row>\n<row><x>2</x></row>");
    ASSERT_EQ(suite.rows.size(), 2U);
    EXPECT_THAT(CellsOf(suite.rows[0]), ElementsAre("1=b", "0=1"));
    EXPECT_THAT(CellsOf(suite.rows[1]), ElementsAre("0=2"));
    EXPECT_EQ(suite.GetPlaceOfRow(1).line, 3U);
    EXPECT_EQ(suite.GetPlaceOfRow(1).column, 1U);
    EXPECT_EQ(suite.GetPlaceOfRow(1).elementPath,
              "/PMML/NaiveBayesModel[1]/ModelVerification[1]/InlineTable[1]/row[2]");
}

TEST(VerificationReader, MatchesCells_WhateverPrefixTheyOrTheColumnHave) {
    EXPECT_THAT(CellsOf(ReadRows("<row><d:x>1</d:x><why>2</why></row>").rows.at(0)), ElementsAre("0=1", "1=2"));
    const std::string prefixed = Fields("<VerificationField field='x' column='d:x'/>") + "<InlineTable>";
    EXPECT_THAT(CellsOf(Read(Document(Model(prefixed + "<row><x>1</x></row></InlineTable>")))[0].rows.at(0)),
                ElementsAre("0=1"));
    EXPECT_THAT(CellsOf(Read(Document(Model(prefixed + "<row><d:x>1</d:x></row></InlineTable>")))[0].rows.at(0)),
                ElementsAre("0=1"));
    const std::string ofTwoColons = Fields("<VerificationField field='x' column='d:e:x'/>") + "<InlineTable>";
    EXPECT_THAT(
        CellsOf(Read(Document(Model(ofTwoColons + "<row><x>2</x><f:e:x>1</f:e:x></row></InlineTable>")))[0].rows.at(0)),
        ElementsAre("0=1"))
        << "a prefix ends at the first colon";
}

TEST(VerificationReader, LeavesBlankCellsOut_AndTakesTextsAsTheyStand) {
    EXPECT_THAT(CellsOf(ReadRows("<row><x/><why> \n</why></row>").rows.at(0)), IsEmpty());
    EXPECT_THAT(CellsOf(ReadRows("<row><x> a<!-- no -->b<![CDATA[<c>]]></x><!-- no --></row>").rows.at(0)),
                ElementsAre("0= ab<c>"));
}

TEST(VerificationReader, ReportsEachUnknownColumnOnce) {
    const VerificationSuite suite = ReadRows("<row><x>1</x><z><deep/></z></row>\n<row><z>1</z><w/></row>");
    ASSERT_EQ(suite.unusedColumns.size(), 2U);
    EXPECT_EQ(suite.unusedColumns[0].name, "z");
    EXPECT_EQ(suite.unusedColumns[0].line, 2U);
    EXPECT_EQ(suite.unusedColumns[1].name, "w");
    EXPECT_EQ(suite.unusedColumns[1].line, 3U);
}

TEST(VerificationReader, ReadsRows_ThatStandBeforeTheirFields) {
    const VerificationSuite suite =
        Read(Document(Model("<InlineTable>\n<row><x>1</x></row></InlineTable>\n" + twoFields))).at(0);
    EXPECT_THAT(CellsOf(suite.rows.at(0)), ElementsAre("0=1"));
    EXPECT_EQ(suite.GetPlaceOfRow(0).line, 3U);
    EXPECT_EQ(suite.GetPlaceOfField(0).line, 4U);
}

TEST(VerificationReader, ReadsWhatTheOutputDeclares) {
    const std::string output =
        "<Output><Extension/><OutputField name='a'/><OutputField/>"
        "<OutputField name='b' feature='probability' value='v' targetField='t' rank='2' segmentId='s'/></Output>";
    const std::string model = Model(twoFields + "<InlineTable/>");
    const std::string document = Document(model.substr(0, model.rfind("</N")) + output + "</NaiveBayesModel>");
    const std::vector<OutputDeclaration> outputs = Read(document).at(0).outputs;
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_EQ(outputs[0].name, "a");
    EXPECT_EQ(outputs[0].feature, "predictedValue");
    EXPECT_EQ(outputs[0].rank, 1);
    EXPECT_EQ(outputs[1].feature, "probability");
    EXPECT_EQ(outputs[1].value, "v");
    EXPECT_EQ(outputs[1].targetField, "t");
    EXPECT_EQ(outputs[1].segment, "s");
    EXPECT_EQ(outputs[1].rank, 2);
    EXPECT_EQ(GetRefusal(Document("<NaiveBayesModel><ModelVerification>" + twoFields +
                                  "<InlineTable/></ModelVerification><Output><OutputField name='a'/>"
                                  "<OutputField name='a'/></Output></NaiveBayesModel>")),
              "12 1 The output field \"a\" is declared twice.");
}

TEST(VerificationReader, ReadsEverySubModels_ButOnlyTheFirstOfSingleModels) {
    const std::string suite = twoFields + "<InlineTable/>";
    EXPECT_EQ(Read(Document(Model(suite) + Model("<Broken/>"))).size(), 1U);
    const std::vector<VerificationSuite> all =
        Read(Document(Model(suite, " algorithmName='SelfLearning'") + "<NaiveBayesModel/>\n" + Model(suite)));
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].modelIndex, 0U);
    EXPECT_EQ(all[1].modelIndex, 2U);
    EXPECT_EQ(all[1].GetPlaceOfField(0).line, 4U);
}

TEST(VerificationReader, RefusesPartsThatAreMissingOrNotSupported) {
    EXPECT_EQ(GetRefusalOf("<InlineTable/>"), "1 2 <VerificationFields> is required in <ModelVerification>.");
    EXPECT_EQ(GetRefusalOf(twoFields), "1 2 <InlineTable> is required in <ModelVerification>.");
    EXPECT_EQ(GetRefusalOf(Fields("") + "<InlineTable/>"), "1 2 At least one <VerificationField> is required.");
    EXPECT_EQ(GetRefusalOf(twoFields + "\n<TableLocator/>"),
              "11 3 <TableLocator> is not supported: test cases stand in an <InlineTable>.");
    EXPECT_EQ(GetRefusalOf(twoFields + "<InlineTable/>\n<InlineTable/>"),
              "12 3 There may be only one <InlineTable> in a <ModelVerification>.");
}

TEST(VerificationReader, RefusesFieldsThatSayTooLittleOrContradict) {
    const auto refusal = [](const std::string& fields) { return GetRefusalOf(Fields(fields) + "<InlineTable/>"); };
    EXPECT_EQ(refusal("<VerificationField column='x'/>"), "2 2 A <VerificationField> must say its field.");
    EXPECT_EQ(refusal("<VerificationField field=''/>"), "2 2 A <VerificationField> must say its field.");
    EXPECT_EQ(refusal("<VerificationField field='x' precision='-1'/>"), "5 2 The precision may not be negative.");
    EXPECT_EQ(refusal("<VerificationField field='x' zeroThreshold='-1'/>"),
              "5 2 The zeroThreshold may not be negative.");
    EXPECT_EQ(refusal("<VerificationField field='x' precision='NaN'/>"), "9 2 \"NaN\" is no number.");
    EXPECT_EQ(refusal("<VerificationField field='x'/>\n<VerificationField field='x' column='y'/>"),
              "12 3 The verification field \"x\" is there twice.");
    EXPECT_EQ(refusal("<VerificationField field='x'/>\n<VerificationField field='y' column='x'/>"),
              "12 3 The column \"x\" is given to two verification fields.");
}

TEST(VerificationReader, RefusesRowsThatAreNoListsOfCells) {
    const auto refusal = [](const std::string& rows) {
        return GetRefusalOf(twoFields + "<InlineTable>\n" + rows + "</InlineTable>");
    };
    EXPECT_EQ(refusal("<row><x>1<b/></x></row>"), "5 3 A cell of a test case holds text and no elements.");
    EXPECT_EQ(refusal("<row>1<x/></row>"), "5 3 A row of test cases holds cells and no text between them.");
    EXPECT_EQ(refusal("<row/>\n<row><x>1</x><d:x/></row>"), "12 4 The row has two cells of the column \"x\".");
    EXPECT_EQ(refusal("<row><x>1</x></row><row><x>1</x></row>"), "read");
}

TEST(VerificationReader, RefusesCountsThatAreNotTrue) {
    const auto refusal = [](const std::string& counts) {
        return GetRefusal("<PMML><NaiveBayesModel><ModelVerification " + counts + ">" + twoFields +
                          "<InlineTable><row/></InlineTable></ModelVerification></NaiveBayesModel></PMML>");
    };
    EXPECT_EQ(refusal("recordCount='1' fieldCount='2'"), "read");
    EXPECT_EQ(refusal("recordCount='2'"), "12 1 The recordCount is 2, and there is 1 row.");
    EXPECT_EQ(refusal("recordCount='-1'"), "12 1 The recordCount is -1, and there is 1 row.");
    EXPECT_EQ(refusal("fieldCount='1'"), "12 1 The fieldCount is 1, and there are 2 verification fields.");
    EXPECT_EQ(refusal("fieldCount='x'").substr(0, 4), "9 1 ");
}

TEST(VerificationReader, KeepsManyFieldsTimesManyRowsSmall) {
    std::string fields;
    std::string rows;
    for (int i = 0; i < 20000; ++i) {
        fields += "<VerificationField field='f" + std::to_string(i) + "'/>";
        rows += "<row/>";
    }
    const VerificationSuite suite =
        Read(Document(Model(Fields(fields) + "<InlineTable>" + rows + "</InlineTable>"))).at(0);
    ASSERT_EQ(suite.rows.size(), 20000U);
    std::size_t cells = 0;
    for (const VerificationRow& row : suite.rows)
        cells += row.cells.capacity();
    EXPECT_EQ(cells, 0U);
}

}  // namespace
}  // namespace nbscore::test
