#include <filesystem>

#include "cli/CommandTest.h"
#include "support/FitsPattern.h"

namespace nbscore::test {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct RefusedTable {
    std::string name;
    std::string table;
    /// What the message must match as a whole.
    std::string errorPattern;
};

void PrintTo(const RefusedTable& refused, std::ostream* out) {
    *out << refused.name;
}

const std::vector<RefusedTable> refusedTables = {
    {"NothingAtAll", "", "error: cases.csv: .+"},
    {"OnlyAHeader", "colour,weight\n", "error: cases.csv: .+"},
    {"NoHeader", "red,200\ngreen,100\n", "error: cases.csv:1: .*colour.*"},
    {"MissingColumn", "colour,size\nred,200\n", "error: cases.csv:1: .*weight.*"},
    {"DuplicateColumn", "colour,weight,colour\nred,200,red\n", "error: cases.csv:1: .*colour.*"},
    {"NameClash", "colour,weight,confidence\nred,200,1\n", "error: cases.csv:1: .*confidence.*--prefix.*"},
    {"RowTooShort", "colour,weight\nred,200\nred\n", "error: cases.csv:3: .+"},
    {"RowTooLong", "colour,weight\nred,200\nred,200,1\n", "error: cases.csv:3: .+"},
    {"NulByte", "colour,weight\nred,200\nr\0d,200\n"s, "error: cases.csv:3: .*NUL.*"},
    {"OpenQuote", "colour,weight\nred,200\n\"red,200\n", "error: cases.csv:3: .*quote.*"},
    {"StrayQuote", "colour,weight\nre\"d,200\n", "error: cases.csv:2: .*quote.*"},
    {"NoUtf8", "colour,weight\nr\xe4,200\n", "error: cases.csv:2: .*UTF-8.*"},
    {"NoNumber", "colour,weight\nred,200\n\"a\nb\",12x\n", "error: cases.csv:3: .*weight.*12x.*"},
    {"WrongDelimiter", "colour;weight\nred;200\n", "error: cases.csv:1: .*colour.*"},
};

class RefusedTableTest : public CommandTest, public testing::WithParamInterface<RefusedTable> {};

}  // namespace

TEST_P(RefusedTableTest, EndsWithStatusOneAndSaysWhere) {
    folder.Write("cases.csv", GetParam().table);
    folder.Write("out.csv", "earlier");

    const CommandResult result = Run({"score", "model.pmml", "cases.csv", "-o", "out.csv"});

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, FitsPattern(GetParam().errorPattern + "\n"));
    EXPECT_EQ(folder.Read("out.csv"), "earlier");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml", "out.csv"));
}

INSTANTIATE_TEST_SUITE_P(Tables, RefusedTableTest, testing::ValuesIn(refusedTables),
                         [](const auto& instance) { return instance.param.name; });

using UnreadableTableTest = CommandTest;

TEST_F(UnreadableTableTest, EndsWithStatusFour_WhenItIsNotThere) {
    const CommandResult result = Run({"score", "model.pmml", "nothere.csv", "-o", "out.csv"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "error: cannot read nothere.csv: No such file or directory\n");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "model.pmml"));
}

TEST_F(UnreadableTableTest, EndsWithStatusFour_WhenItIsAFolder) {
    std::filesystem::create_directory(folder.GetPath() / "folder");
    const CommandResult result = Run({"score", "model.pmml", "folder", "-o", "out.csv"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "error: cannot read folder: Is a directory\n");
    EXPECT_THAT(folder.List(), ElementsAre("cases.csv", "folder", "model.pmml"));
}

TEST_F(UnreadableTableTest, CannotSteerTheTerminalThroughAMessage) {
    const CommandResult result = Run({"score", "model.pmml"}, "colour,weight\nred,\x1b[31m\n");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
    EXPECT_THAT(result.err, HasSubstr("[31m"));
    EXPECT_THAT(result.err, StartsWith("error: standard input:2: "));
}

}  // namespace nbscore::test
