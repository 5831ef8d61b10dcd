#include "table/CsvBatchWriter.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "framework/MCMV.h"
#include "framework/StringValue.h"
#include "support/FakeModel.h"
#include "table/CsvScoreWriter.h"

namespace nbscore::test {
namespace {

constexpr std::size_t untilTheEnd = std::numeric_limits<std::size_t>::max();

/// Numbers of many lengths, and what is no usual number.
double DrawNumber(std::mt19937_64& random) {
    constexpr double strange[] = {0.0,
                                  -0.0,
                                  1.0,
                                  5e-324,
                                  std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN(),
                                  -1.7976931348623157e+308};
    switch (random() % 8) {
        case 0:
            return strange[random() % std::size(strange)];
        case 1:
            return MCMV::gMissingValue;
        case 2:
            return static_cast<double>(random() % 100) / 8;
        default:
            return std::uniform_real_distribution<double>(0.0, 1.0)(random);
    }
}

/// Cases with what came of them.
struct DrawnCases {
    std::vector<std::string> rows;
    std::vector<std::string_view> views;
    std::vector<std::unique_ptr<const ScoreValue>> predictions;
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    std::vector<double> numbers;
    std::size_t numbersOfCase;

    /// @param categories none for a set.
    DrawnCases(std::size_t cases, std::size_t numbersEach, const std::vector<std::string>& categories,
               unsigned long seed)
        : numbersOfCase(numbersEach) {
        std::mt19937_64 random(seed);
        for (const std::string& category : categories)
            predictions.push_back(std::make_unique<StringValue>(category));
        for (std::size_t i = 0; i < cases; ++i) {
            rows.push_back("row," + std::string(random() % 40, 'x'));
            for (std::size_t k = 0; k < numbersOfCase; ++k)
                numbers.push_back(DrawNumber(random));
            if (categories.empty()) continue;
            predicted.push_back(static_cast<std::int32_t>(random() % categories.size()));
            const bool isAmongProbabilities = numbersOfCase > 0 && random() % 4 > 0;
            confidence.push_back(isAmongProbabilities ? numbers[i * numbersOfCase + random() % numbersOfCase]
                                                      : DrawNumber(random));
        }
        views.assign(rows.begin(), rows.end());
    }

    ScoredBatch GetBatch() const { return {predictions, predicted, confidence, numbers, numbersOfCase}; }
    ScoredCase GetCase(std::size_t i, std::vector<double>& filledUp) const {
        ScoredCase scored;
        const auto own = std::span(numbers).subspan(i * numbersOfCase, numbersOfCase);
        if (predictions.empty()) {
            scored.scores = own;
            return scored;
        }
        scored.predictedCategory = static_cast<std::size_t>(predicted[i]);
        scored.prediction = predictions[*scored.predictedCategory].get();
        scored.confidence = confidence[i];
        filledUp.assign(own.begin(), own.end());
        filledUp.resize(predictions.size(), MCMV::gMissingValue);
        scored.probabilities = filledUp;
        return scored;
    }
};

/// One case after the other.
std::string WriteEach(CsvScoreWriter writer, const DrawnCases& cases) {
    std::string text;
    std::vector<double> filledUp;
    for (std::size_t i = 0; i < cases.views.size(); ++i)
        writer.AppendCase(text, {{}, cases.views[i]}, cases.GetCase(i, filledUp));
    return text;
}

std::string WriteAtOnce(const CsvScoreWriter& writer, const DrawnCases& cases) {
    std::string text = "in front";
    EXPECT_EQ(writer.MakeBatchWriter()->Append(text, cases.views, cases.GetBatch(), untilTheEnd), cases.views.size());
    EXPECT_TRUE(text.starts_with("in front"));
    return text.substr(8);
}

const std::vector<std::string> categories = {"no", "", "perhaps; or \"not\"", std::string(300, 'y')};

TEST(CsvBatchWriter, WritesWhatIsWrittenCaseByCase_OfASingleClassifier) {
    const auto target = MakeTextField("y", categories);
    for (const char delimiter : {',', ';', '\t'}) {
        ScoreWriterOptions options;
        options.delimiter = delimiter;
        const CsvScoreWriter writer(*target, {"a", "b"}, "t.csv", options);
        for (unsigned long seed = 1; seed <= 20; ++seed) {
            const DrawnCases cases(200, seed % 5, categories, seed);
            ASSERT_EQ(WriteAtOnce(writer, cases), WriteEach(writer, cases)) << seed;
        }
    }
}

TEST(CsvBatchWriter, WritesWhatIsWrittenCaseByCase_OfThePredictionAlone) {
    const auto target = MakeTextField("y", categories);
    ScoreWriterOptions options;
    options.predictionOnly = true;
    const CsvScoreWriter writer(*target, {"a", "b"}, "t.csv", options);
    const DrawnCases cases(500, 0, categories, 1);
    EXPECT_EQ(WriteAtOnce(writer, cases), WriteEach(writer, cases));
}

TEST(CsvBatchWriter, WritesWhatIsWrittenCaseByCase_OfASet) {
    const std::vector<std::string> names(70, "m");
    const CsvScoreWriter writer(names, {"a", "b"}, "t.csv", {});
    const DrawnCases cases(500, names.size(), {}, 1);
    EXPECT_EQ(WriteAtOnce(writer, cases), WriteEach(writer, cases));
}

TEST(CsvBatchWriter, StopsBehindTheCaseThatMakesTheTextLongEnough_AndGoesOnFromAnyCase) {
    const auto target = MakeTextField("y", categories);
    const CsvScoreWriter writer(*target, {"a", "b"}, "t.csv", {});
    const DrawnCases cases(300, 4, categories, 7);
    const auto batchWriter = writer.MakeBatchWriter();
    std::string whole;
    std::string text;
    for (std::size_t done = 0; done < cases.views.size(); text.clear()) {
        const std::size_t count =
            batchWriter->Append(text, std::span(cases.views).subspan(done), cases.GetBatch().From(done), 1000);
        ASSERT_GT(count, 0U);
        done += count;
        EXPECT_TRUE(text.size() >= 1000 || done == cases.views.size());
        EXPECT_LT(text.rfind('\n', text.size() - 2) + 1, 1000U) << "all but the last case are not long enough";
        whole += text;
    }
    EXPECT_EQ(whole, WriteEach(writer, cases));
}

TEST(CsvBatchWriter, ThereIsNone_WhenMoreIsWrittenThanRowsAndTheirScores) {
    const auto target = MakeTextField("y", categories);
    const auto makesOne = [&](const auto& ask, const std::vector<std::string>& header = {"a"}) {
        ScoreWriterOptions options;
        ask(options);
        return CsvScoreWriter(*target, header, "t.csv", options).MakeBatchWriter() != nullptr;
    };
    const auto forNothing = [](ScoreWriterOptions&) {};
    EXPECT_TRUE(makesOne(forNothing));
    EXPECT_FALSE(makesOne(forNothing, {}));
    EXPECT_FALSE(makesOne([](auto& options) { options.onlyScores = true; }));
    EXPECT_FALSE(makesOne([](auto& options) { options.delimiter = '.'; })) << "numbers need quotes";
    EXPECT_FALSE(makesOne([](auto& options) { options.reasons.most = 2; }));
    const auto makesOneOfSet = [](const SubModelOptions& subModels) {
        ScoreWriterOptions options;
        options.subModels = subModels;
        const std::vector<std::string> names = {"m", "n"};
        return CsvScoreWriter(names, {"a"}, "t.csv", options).MakeBatchWriter() != nullptr;
    };
    EXPECT_TRUE(makesOneOfSet({false, std::nullopt}));
    EXPECT_FALSE(makesOneOfSet({false, 2}));
    EXPECT_FALSE(makesOneOfSet({true, std::nullopt}));
}

}  // namespace
}  // namespace nbscore::test
