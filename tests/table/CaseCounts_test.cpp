#include "table/CaseCounts.h"

#include <gtest/gtest.h>

#include <sstream>

#include "framework/CaseFacts.h"
#include "framework/ModelSelfDescription.h"
#include "output/OutputSink.h"
#include "support/FakeModel.h"
#include "table/TableBlockReader.h"
#include "table/TableScorer.h"

namespace nbscore::test {
namespace {

RowCount Rows(std::uint64_t rows, std::uint64_t firstLine) {
    return {.rows = rows, .firstLine = firstLine};
}

TEST(RowCount, KeepsTheFirstLine_WhenMoreRowsAreAdded) {
    RowCount count;
    EXPECT_TRUE(count.Add(7));
    EXPECT_FALSE(count.Add(9));
    EXPECT_EQ(count.rows, 2U);
    EXPECT_EQ(count.firstLine, 7U);
}

TEST(RowCount, TakesTheEarlierLine_WhenCountsOfSeveralThreadsMeet) {
    RowCount count;
    EXPECT_FALSE(count.Add(Rows(0, 0)));
    EXPECT_TRUE(count.Add(Rows(2, 9)));
    EXPECT_FALSE(count.Add(Rows(3, 12)));
    EXPECT_TRUE(count.Add(Rows(1, 4)));
    EXPECT_FALSE(count.Add(Rows(0, 0)));
    EXPECT_EQ(count.rows, 6U);
    EXPECT_EQ(count.firstLine, 4U);
}

std::vector<std::string> TextsOf(const FirstValues& values) {
    std::vector<std::string> texts;
    for (const MetValue& value : values.GetAll())
        texts.push_back(value.text);
    return texts;
}

MetValue ValueAt(std::uint64_t line, const std::string& text) {
    return {.line = line, .field = "x", .text = text};
}

TEST(FirstValues, AreKeptOnceEach_AndOnlyAFew) {
    FirstValues values;
    values.Add(ValueAt(2, "a"));
    values.Add(ValueAt(3, "b"));
    values.Add(ValueAt(4, "a"));
    EXPECT_EQ(TextsOf(values), (std::vector<std::string>{"a", "b"}));
    for (std::uint64_t i = 0; i < 2 * FirstValues::most; ++i)
        values.Add(ValueAt(5 + i, std::to_string(i)));
    EXPECT_TRUE(values.IsFull());
    EXPECT_EQ(values.GetAll().size(), FirstValues::most);
}

TEST(FirstValues, AreTheFirstOfAllRows_WhenThoseOfSeveralThreadsMeet) {
    FirstValues some;
    FirstValues others;
    FirstValues all;
    for (std::uint64_t line = 2; line < 200; ++line) {
        const MetValue value = ValueAt(line, std::to_string(line * line % 37));
        (line / 10 % 2 == 0 ? some : others).Add(value);
        all.Add(value);
    }
    FirstValues met = others;
    met.Add(some);
    EXPECT_EQ(TextsOf(met), TextsOf(all));
    some.Add(others);
    EXPECT_EQ(TextsOf(some), TextsOf(all));
    EXPECT_TRUE(all.IsFull());
}

class FactsResult : public FakeResult, public ResultFacts {
public:
    const CaseFacts& GetFacts() const override { return facts; }

    CaseFacts facts;
};

/// Knows no value of its input but 1, cannot take 2, and finds 3 impossible.
class FactsModel : public FakeModel, public ModelSelfDescription {
public:
    explicit FactsModel(bool tells) : tellsFacts(tells) {
        AddField(MakeNumberField("x"), PredictorRole);
        AddField(MakeTextField("y", {"no", "yes"}), TargetRole);
    }

    ModelDescription Describe() const override {
        ModelDescription description;
        description.classifiers.emplace_back().inputs.emplace_back().name = name;
        return description;
    }

    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool) override {
        if (result == nullptr) result = tellsFacts ? new FactsResult : new FakeResult;
        static_cast<FakeResult&>(*result).SetPrediction(new StringValue("no"));
        if (tellsFacts) static_cast<FactsResult&>(*result).facts = FactsOf(record->GetValueByIndex(0));
        return {};
    }

private:
    CaseFacts FactsOf(const ScoreValue* value) const {
        CaseFacts facts;
        if (value == nullptr) return facts;
        const double x = value->GetDouble();
        if (x == 1.0) facts.usable = 1;
        if (x == 2.0) {
            facts.outcome = CaseOutcome::InvalidValue;
            facts.field = name;
        } else if (x == 3.0) {
            facts.usable = 1;
            facts.outcome = CaseOutcome::NothingPossible;
        } else if (x > 3.0) {
            facts.unknown.push_back({&name, "<" + value->GetString() + ">"});
        }
        return facts;
    }

    bool tellsFacts;
    std::string name = "x";
};

class NoSink : public OutputSink {
public:
    void Write(std::string_view) override {}
    void Commit() override {}
};

CaseCounts CountsOf(const std::string& table, std::size_t threads = 1, bool tells = true) {
    FactsModel model(tells);
    std::istringstream input(table);
    NoSink sink;
    TableScorerOptions options;
    options.threads = threads;
    return ScoreTable(model, input, "t.csv", sink, options, {}).counts;
}

void ExpectCount(const RowCount& count, std::uint64_t rows, std::uint64_t firstLine) {
    EXPECT_EQ(count.rows, rows);
    EXPECT_EQ(count.firstLine, firstLine);
}

TEST(CaseCounts, AreWhatResultsTell_WhenAModelIsScoredCaseByCase) {
    const CaseCounts counts = CountsOf("x\n1\n5\n2\n6\n3\n2\n\"\"\n");
    EXPECT_TRUE(counts.areTold);
    ASSERT_EQ(counts.fields.size(), 1U);
    EXPECT_EQ(counts.fields[0].field, "x");
    ExpectCount(counts.fields[0].unknown, 2, 3);
    EXPECT_EQ(counts.fields[0].unknownValues.GetAll().front().text, "<5>");
    ExpectCount(counts.nothingKnown, 3, 3);
    ExpectCount(counts.invalid, 2, 4);
    ASSERT_EQ(counts.invalidValues.GetAll().size(), 1U);
    EXPECT_EQ(counts.invalidValues.GetAll().front().field, "x");
    EXPECT_EQ(counts.invalidValues.GetAll().front().text, "2");
    ExpectCount(counts.nothingPossible, 1, 6);
}

TEST(CaseCounts, AreNotTold_WhenResultsTellNothing) {
    const CaseCounts counts = CountsOf("x\n1\n5\n", 1, false);
    EXPECT_FALSE(counts.areTold);
    ExpectCount(counts.nothingKnown, 0, 0);
}

TEST(CaseCounts, AreTheSame_OnAnyNumberOfThreads) {
    std::string table = "x\n";
    for (std::size_t i = 0; i < TableBlockReader::pieceBytes; ++i)
        table += "1\n";
    const std::size_t lineOfFirst = TableBlockReader::pieceBytes + 2;
    for (std::size_t i = 0; i < TableBlockReader::pieceBytes; ++i)
        table += "7\n8\n";
    for (const std::size_t threads : {1U, 2U, 4U}) {
        const CaseCounts counts = CountsOf(table, threads);
        ExpectCount(counts.fields.at(0).unknown, 2 * TableBlockReader::pieceBytes, lineOfFirst);
        EXPECT_EQ(TextsOf(counts.fields[0].unknownValues), (std::vector<std::string>{"<7>", "<8>"}));
        ExpectCount(counts.nothingKnown, 2 * TableBlockReader::pieceBytes, lineOfFirst);
    }
}

}  // namespace
}  // namespace nbscore::test
