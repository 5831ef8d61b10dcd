// Files whose names hold blanks and letters beyond ASCII, wherever the command takes a file.

#include <filesystem>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Greek, Chinese, and a letter beyond the first plane of Unicode.
const std::string letters = "h\xC3\xA9 \xCE\xA9\xE6\xA8\xA1 \xF0\x90\x8D\x88";

class PathNames : public CommandTest {
protected:
    PathNames() {
        std::filesystem::create_directory(folder / letters);
        folder.Write(Inside("model.pmml"), fruitDocument);
        folder.Write(Inside("cases.csv"), fruitCases);
    }

    static std::string Inside(const std::string& name) { return letters + "/" + name; }
};

TEST_F(PathNames, AreTakenForDocumentTableAndOutput) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    const CommandResult result =
        Run({"score", Inside("model.pmml"), Inside("cases.csv"), "-o", Inside("out " + letters + ".csv")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(folder.Read(Inside("out " + letters + ".csv")), expected);
}

TEST_F(PathNames, AreTakenForThePlugin) {
    const std::string plugin = Inside(std::filesystem::path(NBSCORE_PLUGIN).filename().string());
    std::filesystem::copy_file(NBSCORE_PLUGIN, folder / plugin);
    const CommandResult result = Run({"score", "model.pmml", "cases.csv", "--plugin", plugin});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, Run({"score", "model.pmml", "cases.csv"}).out);
}

TEST_F(PathNames, AreTakenForTheFolderThatTheCommandRunsIn) {
    CommandCall call = MakeCall({"score", "model.pmml", "cases.csv", "-o", "out.csv"});
    call.workingFolder = folder / letters;
    EXPECT_EQ(RunCommand(call).exitStatus, 0);
    EXPECT_EQ(folder.Read(Inside("out.csv")), Run({"score", "model.pmml", "cases.csv"}).out);
}

TEST_F(PathNames, AreReportedAsTheyWereGiven) {
    EXPECT_EQ(Run({"score", "model.pmml", Inside("none.csv")}).err,
              "error: cannot read " + Inside("none.csv") + ": No such file or directory\n");
    EXPECT_THAT(Run({"score", Inside("none.pmml")}).err, HasSubstr('"' + Inside("none.pmml") + '"'));
    EXPECT_THAT(Run({"score", "model.pmml", "cases.csv", "-o", letters}).err,
                StartsWith("error: cannot write " + letters + ": "));
    EXPECT_THAT(Run({"score", "model.pmml", "cases.csv", "--plugin", Inside("none")}).err,
                StartsWith("error: cannot load " + Inside("none") + ": "));
}

TEST_F(PathNames, StandBesideTextsOfAnyLetters) {
    std::string document = fruitDocument;
    while (document.find("apple") != std::string::npos)
        document = Replace(document, "apple", letters);
    folder.Write("model.pmml", document);
    const std::string scored = Run({"score", "model.pmml", "cases.csv"}).out;
    EXPECT_THAT(scored, HasSubstr("probability_" + letters));
    EXPECT_THAT(scored, HasSubstr("\nred,200," + letters + ","));
}

TEST_F(PathNames, NameTablesWithWindowsLineEnds) {
    std::string table = fruitCases;
    for (std::size_t end = 0; (end = table.find('\n', end)) != std::string::npos; end += 2)
        table.insert(end, "\r");
    folder.Write(Inside("crlf.csv"), table);
    EXPECT_EQ(Run({"score", "model.pmml", Inside("crlf.csv")}).out, Run({"score", "model.pmml", "cases.csv"}).out);
}

}  // namespace
}  // namespace nbscore::test
