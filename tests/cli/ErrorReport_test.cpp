#include "cli/system/ExitStatus.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <new>
#include <sstream>

#include "framework/VeskException.h"
#include "output/HostError.h"

namespace nbscore {

namespace {

struct Reported {
    int exitStatus;
    std::string text;
};

template <typename Error>
Reported Report(const Error& thrown) {
    std::ostringstream messages;
    try {
        throw thrown;
    } catch (...) {
        const int exitStatus = ReportError(messages, {"model.pmml", "nbscore score --help"});
        return {exitStatus, messages.str()};
    }
}

VeskException MakeRefusal(const DocumentPlace& place) {
    VeskException refusal(VeskException::InvalidContent, "Threshold can't be zero!");
    refusal.SetPlace(place);
    return refusal;
}

const std::string doWhatIsUsual = "  do: " + std::string(adviceForAnyRefusal) + "\n";

}  // namespace

TEST(ErrorReport, NamesPlaceCodeAndPath_WhenADocumentIsRefused) {
    const Reported reported = Report(MakeRefusal({"dir/model.pmml", 12, 5, "/PMML/NaiveBayesModel[1]"}));
    EXPECT_EQ(reported.exitStatus, 3);
    EXPECT_EQ(reported.text, "dir/model.pmml:12:5: error 5: Threshold can't be zero!\n  at /PMML/NaiveBayesModel[1]\n" +
                                 doWhatIsUsual);
}

TEST(ErrorReport, LeavesLineAndPathOut_WhenTheyAreUnknown) {
    EXPECT_EQ(Report(MakeRefusal({"other.pmml", 0, 0, ""})).text,
              "other.pmml: error 5: Threshold can't be zero!\n" + doWhatIsUsual);
}

TEST(ErrorReport, ShowsHowTheElementReads_WhereItIsKnown) {
    EXPECT_EQ(
        Report(MakeRefusal({"m.pmml", 1, 2, "/PMML", "<PMML version=\"4\">"})).text,
        "m.pmml:1:2: error 5: Threshold can't be zero!\n  at /PMML\n  it reads <PMML version=\"4\">\n" + doWhatIsUsual);
}

TEST(ErrorReport, NamesTheDocumentOfTheRun_WhenTheRefusalDoesNot) {
    const Reported reported = Report(VeskException(VeskException::UnknownVariable, "nobody"));
    EXPECT_EQ(reported.exitStatus, 3);
    EXPECT_EQ(reported.text, "model.pmml: error 8: nobody\n" + doWhatIsUsual);
}

TEST(ErrorReport, NamesTheDocument_WhenItsModelCannotScore) {
    const Reported reported = Report(UnscorableModelError("The target declares no values."));
    EXPECT_EQ(reported.exitStatus, 3);
    EXPECT_EQ(reported.text, "model.pmml: error 12: The target declares no values.\n" + doWhatIsUsual);
}

TEST(ErrorReport, PassesFileAndLineOn_WhenCaseDataIsRefused) {
    const Reported reported = Report(CaseDataError("cases.csv", 7, "too few cells"));
    EXPECT_EQ(reported.exitStatus, 1);
    EXPECT_EQ(reported.text, "error: cases.csv:7: too few cells\n");
}

TEST(ErrorReport, HasStatusFour_WhenInputOrOutputFailed) {
    const Reported reported = Report(InputOutputError("cannot write out.csv: No space left on device"));
    EXPECT_EQ(reported.exitStatus, 4);
    EXPECT_EQ(reported.text, "error: cannot write out.csv: No space left on device\n");
}

TEST(ErrorReport, PointsToTheHelp_WhenTheCommandWasCalledWrongly) {
    const Reported reported = Report(CLI::ValidationError("--format", "'xml' is not one of csv|jsonl"));
    EXPECT_EQ(reported.exitStatus, 2);
    EXPECT_EQ(reported.text, "error: --format: 'xml' is not one of csv|jsonl\nTry 'nbscore score --help'.\n");
}

TEST(ErrorReport, CountsAsShellsDo_WhenASignalEndedTheRun) {
    EXPECT_EQ(Report(InterruptedError(SIGINT)).exitStatus, 130);
    EXPECT_EQ(Report(InterruptedError(SIGTERM)).exitStatus, 143);
    EXPECT_EQ(Report(InterruptedError(SIGTERM)).text, "interrupted\n");
}

TEST(ErrorReport, SaysSo_WhenMemoryRunsOut) {
    const Reported reported = Report(std::bad_alloc());
    EXPECT_EQ(reported.exitStatus, 4);
    EXPECT_EQ(reported.text, "error: out of memory\n");
}

TEST(ErrorReport, HasStatusFour_WhenSomethingElseWasThrown) {
    EXPECT_EQ(Report(std::runtime_error("odd")).text, "error: odd\n");
    EXPECT_EQ(Report(std::runtime_error("odd")).exitStatus, 4);
    EXPECT_EQ(Report(42).text, "error: something unknown went wrong\n");
    EXPECT_EQ(Report(42).exitStatus, 4);
}

TEST(ErrorReport, WritesControlCharactersAsEscapes_SoThatInputCannotSteerTheTerminal) {
    const Reported reported = Report(CaseDataError("cases.csv", 2, "red\x1b[31m\nnext\x7f \xc3\xa4"));
    EXPECT_EQ(reported.text, "error: cases.csv:2: red\\x1b[31m\\nnext\\x7f \xc3\xa4\n");
    EXPECT_EQ(Report(CaseDataError("cases.csv", 2, "\u202Ea")).text, "error: cases.csv:2: \\xe2\\x80\\xaea\n");
}

}  // namespace nbscore
