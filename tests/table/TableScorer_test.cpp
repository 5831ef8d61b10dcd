#include "table/TableScorer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <sstream>
#include <utility>

#include "output/HostError.h"
#include "output/OutputFile.h"
#include "support/DribblingBuffer.h"
#include "support/FakeModel.h"
#include "support/FakeSet.h"
#include "support/Message.h"
#include "support/TemporaryFolder.h"
#include "table/TableBlockReader.h"

namespace nbscore::test {
namespace {

class TextSink : public OutputSink {
public:
    void Write(std::string_view bytes) override {
        text += bytes;
        ++writes;
    }
    void Commit() override { committed = true; }

    std::string text;
    int writes = 0;
    bool committed = false;
};

/// Predicts "yes" with probability x, where x is what the case's only predictor says; 0 when it is absent.
void ScoreByX(const ScoreDictVar& target, const ScoreCaseRecord& record, FakeResult& result) {
    const ScoreValue* const value = record.GetValueByIndex(0);
    const double x = value == nullptr ? 0.0 : value->GetDouble();
    const auto& labels = target.GetValueLabelSet()->GetValueLabels();
    result.SetPrediction(new StringValue(x > 0.5 ? "yes" : "no"));
    result.SetConfidence(x > 0.5 ? x : 1.0 - x);
    result.Clear();
    result.AddValuePercent(labels[0].GetValue(), 1.0 - x);
    result.AddValuePercent(labels[1].GetValue(), x);
}

class TableScorerTest : public testing::Test {
protected:
    TableScorerTest() {
        model.AddField(MakeNumberField("x"), ScoreModel::PredictorRole);
        model.AddField(MakeTextField("y", {"no", "yes"}), ScoreModel::TargetRole);
        model.SetRule([this](const ScoreCaseRecord& record, FakeResult& result) {
            ScoreByX(*model.GetTargetVar(), record, result);
        });
    }

    ScoringSummary Score(const std::string& table) {
        std::istringstream input(table);
        return ScoreTable(model, input, "t.csv", output, options, {});
    }
    std::string GetFault(const std::string& table) {
        return GetMessageOf<CaseDataError>([this, &table] { Score(table); });
    }

    FakeModel model;
    TextSink output;
    TableScorerOptions options;
};

const std::string tableOfThree = "id,x\na,0.25\n\"b\nb\",\nc,1\n";
const std::string scoresOfThree =
    "id,x,predicted_y,confidence,probability_no,probability_yes\n"
    "a,0.25,no,0.75,0.75,0.25\n"
    "\"b\nb\",,no,1,1,0\n"
    "c,1,yes,1,0,1\n";

TEST_F(TableScorerTest, EveryRowIsScored_InOrder) {
    const ScoringSummary summary = Score(tableOfThree);
    EXPECT_EQ(output.text, scoresOfThree);
    EXPECT_EQ(summary.rows, 3U);
    EXPECT_EQ(summary.firstNonFiniteLine, 0U);
    EXPECT_FALSE(output.committed);
}

TEST_F(TableScorerTest, OutputIsTheSame_HoweverSlowlyInputComes) {
    for (std::size_t size = 1; size <= tableOfThree.size(); ++size) {
        output.text.clear();
        DribblingBuffer buffer(tableOfThree, size);
        std::istream input(&buffer);
        ScoreTable(model, input, "t.csv", output, options, {});
        EXPECT_EQ(output.text, scoresOfThree) << size;
    }
}

TEST_F(TableScorerTest, JsonIsWritten_WhenAskedFor) {
    options.output.format = ScoreFormat::JsonLines;
    Score("x\n1\n");
    EXPECT_EQ(output.text,
              "{\"prediction\": \"yes\", \"confidence\": 1, \"probabilities\": {\"no\": 0, \"yes\": 1}}\n");
}

TEST_F(TableScorerTest, ModelsOwnSwitchIsSet_WhenOnlyThePredictionIsWanted) {
    options.output.predictionOnly = true;
    Score("x\n1\n");
    EXPECT_TRUE(model.GetPredictionOnly());
    EXPECT_EQ(output.text, "x,predicted_y\n1,yes\n");
    options.output.predictionOnly = false;
    Score("x\n1\n");
    EXPECT_FALSE(model.GetPredictionOnly());
}

TEST_F(TableScorerTest, TableIsRefused_WhenItHasNoHeader) {
    EXPECT_EQ(GetFault(""), "t.csv: the table is empty: it has no header");
    options.allowEmpty = true;
    EXPECT_EQ(GetFault("\xEF\xBB\xBF"), "t.csv: the table is empty: it has no header");
}

TEST_F(TableScorerTest, TableIsRefusedAndNothingIsWritten_WhenItHasNoCases) {
    EXPECT_EQ(GetFault("x\n"), "t.csv: the table has a header and no cases");
    EXPECT_EQ(output.writes, 0);
}

TEST_F(TableScorerTest, HeaderIsWritten_WhenATableMayBeEmpty) {
    options.allowEmpty = true;
    EXPECT_EQ(Score("x\n").rows, 0U);
    EXPECT_EQ(output.text, "x,predicted_y,confidence,probability_no,probability_yes\n");
}

TEST_F(TableScorerTest, RowIsRefusedWithItsLine_WhenItIsBad) {
    EXPECT_EQ(GetFault("id,x\n\"a\nb\",1\nc,one\n"), "t.csv:4: column \"x\": \"one\" is no number");
    EXPECT_EQ(GetFault("id,x\na,1\n\n"), "t.csv:3: the row has 1 cell, the header has 2");
    EXPECT_EQ(GetFault("id\na\n"), "t.csv:1: the header lacks the column \"x\", which the model needs");
    EXPECT_EQ(output.writes, 0);
}

TEST_F(TableScorerTest, OptionsReachTheirParts_WhenSet) {
    options.cases.badValues = BadValues::Missing;
    options.delimiter = ';';
    options.output.delimiter = '\t';
    Score("x\n?\n");
    EXPECT_EQ(output.text, "x\tpredicted_y\tconfidence\tprobability_no\tprobability_yes\n?\tno\t1\t1\t0\n");
}

TEST_F(TableScorerTest, FirstLineWithANonFiniteNumberIsReported_WhenThereIsOne) {
    model.SetRule([this](const ScoreCaseRecord& record, FakeResult& result) {
        ScoreByX(*model.GetTargetVar(), record, result);
        const double x = record.GetValueByIndex(0)->GetDouble();
        if (x == 2.0) result.SetConfidence(std::numeric_limits<double>::quiet_NaN());
    });
    EXPECT_EQ(Score("x\n1\n1\n2\n2\n").firstNonFiniteLine, 4U);
    StringValue otherCategory("other");
    model.SetRule([this, &otherCategory](const ScoreCaseRecord& record, FakeResult& result) {
        ScoreByX(*model.GetTargetVar(), record, result);
        result.AddValuePercent(&otherCategory, std::numeric_limits<double>::infinity());
    });
    EXPECT_EQ(Score("x\n1\n").firstNonFiniteLine, 2U);
}

/// A table of so many cases that it is read in several blocks.
std::string MakeLongTable(std::size_t rows) {
    std::string table = "x\n";
    for (std::size_t i = 0; i < rows; ++i) {
        table += i % 3 == 0 ? "0.25\n" : "0.75\n";
    }
    return table;
}

constexpr std::size_t rowsOfSeveralBlocks = 5 * TableBlockReader::pieceBytes / 6;

TEST_F(TableScorerTest, OutputComesInBlocks_WhenThereIsMuch) {
    EXPECT_EQ(Score(MakeLongTable(rowsOfSeveralBlocks)).rows, rowsOfSeveralBlocks);
    EXPECT_GE(output.writes, 4);
    EXPECT_LT(static_cast<std::size_t>(output.writes), output.text.size() / 100'000);
}

TEST_F(TableScorerTest, OutputIsTheSame_OnAnyNumberOfThreads) {
    const std::string table = MakeLongTable(3 * rowsOfSeveralBlocks);
    Score(table);
    const std::string onOne = std::exchange(output.text, {});
    for (const std::size_t threads : {2U, 3U, 8U}) {
        options.threads = threads;
        EXPECT_EQ(Score(table).rows, 3 * rowsOfSeveralBlocks);
        EXPECT_TRUE(output.text == onOne) << threads;
        output.text.clear();
    }
}

TEST_F(TableScorerTest, FirstFaultIsReported_OnAnyNumberOfThreads) {
    const std::string good = MakeLongTable(rowsOfSeveralBlocks);
    const std::string line = std::to_string(rowsOfSeveralBlocks + 2);
    const std::string table = good + "bad\n" + good.substr(2) + "1,2\n" + good.substr(2) + "\"open";
    for (const std::size_t threads : {1U, 2U, 8U}) {
        options.threads = threads;
        output.text.clear();
        EXPECT_EQ(GetFault(table), "t.csv:" + line + ": column \"x\": \"bad\" is no number") << threads;
    }
}

TEST_F(TableScorerTest, FailureOfTheOutputEndsTheRun_OnAnyNumberOfThreads) {
    class FullSink : public TextSink {
        void Write(std::string_view bytes) override {
            if (writes >= 3) throw InputOutputError("full");
            TextSink::Write(bytes);
        }
    };
    for (const std::size_t threads : {1U, 2U, 8U}) {
        options.threads = threads;
        FullSink full;
        std::istringstream input(MakeLongTable(4 * rowsOfSeveralBlocks));
        EXPECT_EQ(GetMessageOf<InputOutputError>([&] { ScoreTable(model, input, "t.csv", full, options, {}); }),
                  "full");
        EXPECT_EQ(full.writes, 3);
    }
}

TEST_F(TableScorerTest, ProgressIsReported_NowAndThenAndAtTheEnd) {
    const std::string table = MakeLongTable(rowsOfSeveralBlocks);
    std::vector<std::uint64_t> rows;
    std::uint64_t bytes = 0;
    std::istringstream input(table);
    ScoreTable(model, input, "t.csv", output, options, [&](const ScoringProgress& progress) {
        rows.push_back(progress.rows);
        bytes = progress.inputBytes;
    });
    EXPECT_GE(rows.size(), 4U);
    EXPECT_TRUE(std::ranges::is_sorted(rows));
    EXPECT_EQ(rows.back(), rowsOfSeveralBlocks);
    EXPECT_EQ(bytes, table.size());
}

TEST_F(TableScorerTest, RunEnds_WhenProgressThrows) {
    std::istringstream input("x\n1\n");
    EXPECT_THROW(
        ScoreTable(model, input, "t.csv", output, options, [](const ScoringProgress&) { throw InterruptedError(2); }),
        InterruptedError);
}

TEST_F(TableScorerTest, ErrorOfTheModelIsReported_WhenScoringThrows) {
    model.SetRule([](const ScoreCaseRecord&, FakeResult&) { throw std::runtime_error("no idea"); });
    std::istringstream input("x\n1\n");
    EXPECT_EQ(GetMessageOf<InputOutputError>([&] { ScoreTable(model, input, "t.csv", output, options, {}); }),
              "scoring failed: no idea");
}

TEST_F(TableScorerTest, FileIsReplacedByItsScores_WhenInputAndOutputAreOne) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "t.csv", tableOfThree);
    {
        std::ifstream input(folder / "t.csv", std::ios::binary);
        OutputFile file(folder / "t.csv");
        ScoreTable(model, input, "t.csv", file, options, {});
        input.close();  // Windows replaces no file that is open
        file.Commit();
    }
    EXPECT_EQ(ReadWholeFile(folder / "t.csv"), scoresOfThree);
}

TEST_F(TableScorerTest, FolderIsRefused_WhenItIsGivenAsTheTable) {
    const TemporaryFolder folder;
    std::ifstream input(folder.GetPath(), std::ios::binary);
    EXPECT_THROW(ScoreTable(model, input, "t.csv", output, options, {}), InputOutputError);
}

TEST(TableScorerOfSets, FindsTheFirstScoreThatIsNoNumber) {
    const auto findLine = [](double score) {
        FakeSet set({MakeScore("a", 0.5), MakeScore("b", score)});
        std::istringstream input("id\n1\n2\n");
        TextSink output;
        return ScoreTable(set, input, "t.csv", output, {}, {}).firstNonFiniteLine;
    };
    EXPECT_EQ(findLine(0.25), 0U);
    EXPECT_EQ(findLine(std::numeric_limits<double>::infinity()), 2U);
    EXPECT_EQ(findLine(std::numeric_limits<double>::quiet_NaN()), 2U);
}

}  // namespace
}  // namespace nbscore::test
