#include <gtest/gtest.h>

#include <limits>

#include "framework/MCMV.h"
#include "output/HostError.h"
#include "support/FakeModel.h"
#include "support/Message.h"
#include "table/AppendResult.h"
#include "table/ScoreWriter.h"

namespace nbscore::test {
namespace {

class ScoreWriterTest : public testing::Test {
protected:
    void SetTarget(std::unique_ptr<BaseDictVar> target) {
        model.AddField(std::move(target), ScoreModel::TargetRole);
        result.Clear();
    }
    void SetScores(ScoreValue* prediction, double confidence, const std::vector<double>& probabilities) {
        result.SetPrediction(prediction);
        result.SetConfidence(confidence);
        if (probabilities.empty()) return;
        const auto& labels = model.GetTargetVar()->GetValueLabelSet()->GetValueLabels();
        for (std::size_t i = 0; i < probabilities.size(); ++i) {
            result.AddValuePercent(labels[i].GetValue(), probabilities[i]);
        }
    }
    std::string Write(const std::vector<std::string>& header = {}, const std::vector<std::string_view>& cells = {}) {
        const auto writer = MakeScoreWriter(model, header, "t.csv", options);
        std::string text;
        writer->AppendHeader(text);
        AppendResult(*writer, model, options, text, cells, result);
        return text;
    }

    FakeModel model;
    FakeResult result;
    ScoreWriterOptions options;
};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST_F(ScoreWriterTest, CsvHasInputThenScores_ByDefault) {
    SetTarget(MakeTextField("y", {"no", "yes"}));
    SetScores(new StringValue("yes"), 0.75, {0.25, 0.75});
    EXPECT_EQ(Write({"id", "note"}, {"1", "a,b"}),
              "id,note,predicted_y,confidence,probability_no,probability_yes\n"
              "1,\"a,b\",yes,0.75,0.25,0.75\n");
}

TEST_F(ScoreWriterTest, ACopyWritesTheSame) {
    SetTarget(MakeTextField("y", {"no", "yes"}));
    SetScores(new StringValue("yes"), 0.75, {0.25, 0.75});
    for (const ScoreFormat format : {ScoreFormat::Csv, ScoreFormat::JsonLines}) {
        options.format = format;
        std::string expected;
        const auto writer = MakeScoreWriter(model, {"id"}, "t.csv", options);
        AppendResult(*writer, model, {}, expected, {"1"}, result);
        std::string text;
        AppendResult(*writer->Copy(), model, {}, text, {"1"}, result);
        EXPECT_EQ(text, expected);
    }
}

TEST_F(ScoreWriterTest, CsvHasScoresOnly_WhenAskedFor) {
    SetTarget(MakeTextField("y", {"no", "yes"}));
    SetScores(new StringValue("no"), 1.0, {1.0, 1e-7});
    options.onlyScores = true;
    EXPECT_EQ(Write({"id"}, {"1"}), "predicted_y,confidence,probability_no,probability_yes\nno,1,1,1e-07\n");
}

TEST_F(ScoreWriterTest, CsvHasThePredictionOnly_WhenAskedFor) {
    SetTarget(MakeTextField("y", {"no", ""}));
    SetScores(new StringValue(""), -1.0, {});
    options.predictionOnly = true;
    EXPECT_EQ(Write({"id"}, {"1"}), "id,predicted_y\n1,\n");
    options.onlyScores = true;
    EXPECT_EQ(Write({"id"}, {"1"}), "predicted_y\n\"\"\n");
}

TEST_F(ScoreWriterTest, CsvFollowsDelimiterAndPrefix_WhenGiven) {
    SetTarget(MakeTextField("y", {"n;o", "y\"es"}));
    SetScores(new StringValue("n;o"), 0.5, {0.5, 0.5});
    options.delimiter = ';';
    options.prefix = "nb_";
    EXPECT_EQ(Write({"a,b"}, {"x"}),
              "a,b;nb_predicted_y;nb_confidence;\"nb_probability_n;o\";\"nb_probability_y\"\"es\"\n"
              "x;\"n;o\";0.5;0.5;0.5\n");
}

TEST_F(ScoreWriterTest, CsvQuotesNumbers_WhenTheDelimiterIsOneOfTheirCharacters) {
    SetTarget(MakeTextField("y", {"a"}));
    SetScores(new StringValue("a"), 0.5, {0.5});
    options.delimiter = '.';
    options.onlyScores = true;
    EXPECT_EQ(Write(), "predicted_y.confidence.probability_a\na.\"0.5\".\"0.5\"\n");
}

TEST_F(ScoreWriterTest, CsvWritesNumbersThatAreNone_InWords) {
    SetTarget(MakeTextField("y", {"a", "b", "c"}));
    SetScores(new StringValue("a"), notANumber, {infinity, -infinity, MCMV::gMissingValue});
    options.onlyScores = true;
    EXPECT_EQ(Write(), "predicted_y,confidence,probability_a,probability_b,probability_c\na,nan,inf,-inf,\n");
}

TEST_F(ScoreWriterTest, CsvIsRefusedWithTheWayOut_WhenAnInputColumnHasTheName) {
    SetTarget(MakeTextField("y", {"a"}));
    const std::string hint =
        ", which scoring adds, is in the table already: choose another prefix for the added columns (--prefix)";
    const auto getFault = [this](const std::string& name) {
        return GetMessageOf<CaseDataError>([this, &name] { MakeScoreWriter(model, {"x", name}, "t.csv", options); });
    };
    EXPECT_EQ(getFault("predicted_y"), "t.csv:1: the column \"predicted_y\"" + hint);
    EXPECT_EQ(getFault("confidence"), "t.csv:1: the column \"confidence\"" + hint);
    EXPECT_EQ(getFault("probability_a"), "t.csv:1: the column \"probability_a\"" + hint);
}

TEST_F(ScoreWriterTest, CsvIsFine_WhenTheClashingNameIsPrefixedOrNotWritten) {
    SetTarget(MakeTextField("y", {"a"}));
    const std::vector<std::string> header = {"confidence"};
    options.prefix = "nb_";
    EXPECT_NO_THROW(MakeScoreWriter(model, header, "t.csv", options));
    options.prefix.clear();
    options.onlyScores = true;
    EXPECT_NO_THROW(MakeScoreWriter(model, header, "t.csv", options));
    options.onlyScores = false;
    options.predictionOnly = true;
    EXPECT_NO_THROW(MakeScoreWriter(model, header, "t.csv", options));
}

TEST_F(ScoreWriterTest, JsonHasOneObjectALine_WithTheKeysInOrder) {
    SetTarget(MakeTextField("y", {"no", "yes"}));
    SetScores(new StringValue("yes"), 0.75, {0.25, 0.75});
    options.format = ScoreFormat::JsonLines;
    options.prefix = "ignored_";
    EXPECT_EQ(Write({"confidence"}, {"1"}),
              "{\"prediction\": \"yes\", \"confidence\": 0.75, \"probabilities\": {\"no\": 0.25, \"yes\": 0.75}}\n");
}

TEST_F(ScoreWriterTest, JsonHasThePredictionOnly_WhenAskedFor) {
    SetTarget(MakeTextField("y", {"no", "yes"}));
    SetScores(new StringValue("yes"), -1.0, {});
    options.format = ScoreFormat::JsonLines;
    options.predictionOnly = true;
    EXPECT_EQ(Write(), "{\"prediction\": \"yes\"}\n");
}

TEST_F(ScoreWriterTest, JsonPredictionIsANumber_WhenTheTargetIsNumeric) {
    auto target = MakeNumberField("y");
    target->AddValidValue(std::make_unique<NumericValue>(1.0), "");
    target->AddValidValue(std::make_unique<NumericValue>(2.5), "");
    SetTarget(std::move(target));
    SetScores(new NumericValue(2.5), 1e22, {1e-300, 0.1});
    options.format = ScoreFormat::JsonLines;
    EXPECT_EQ(Write(),
              "{\"prediction\": 2.5, \"confidence\": 1e+22, \"probabilities\": {\"1\": 1e-300, \"2.5\": 0.1}}\n");
}

TEST_F(ScoreWriterTest, JsonHasNull_WhereItCannotHoldANumber) {
    SetTarget(MakeNumberField("y"));
    SetScores(new NumericValue(MCMV::gMissingValue), infinity, {});
    options.format = ScoreFormat::JsonLines;
    EXPECT_EQ(Write(), "{\"prediction\": null, \"confidence\": null, \"probabilities\": {}}\n");
    result.SetConfidence(notANumber);
    EXPECT_EQ(Write(), "{\"prediction\": null, \"confidence\": null, \"probabilities\": {}}\n");
}

TEST_F(ScoreWriterTest, JsonCategoryAppearsOnce_WhenItIsDeclaredTwice) {
    SetTarget(MakeTextField("y", {"a", "b", "a"}));
    SetScores(new StringValue("b"), 0.5, {0.5, 0.5});
    options.format = ScoreFormat::JsonLines;
    EXPECT_EQ(Write(), "{\"prediction\": \"b\", \"confidence\": 0.5, \"probabilities\": {\"a\": 0.5, \"b\": 0.5}}\n");
}

TEST_F(ScoreWriterTest, JsonTextsAreEscaped_WhenTheyMust) {
    SetTarget(MakeTextField("y", {"a\"b\\\n\x01", "\xC3\xA4", "\x80"}));
    SetScores(new StringValue("\xF0\x9F\x98\x80\t"), 0.5, {0.5, 0.25, 0.25});
    options.format = ScoreFormat::JsonLines;
    EXPECT_EQ(Write(),
              "{\"prediction\": \"\xF0\x9F\x98\x80\\t\", \"confidence\": 0.5, \"probabilities\": "
              "{\"a\\\"b\\\\\\n\\u0001\": 0.5, \"\xC3\xA4\": 0.25, \"\xEF\xBF\xBD\": 0.25}}\n");
}

TEST_F(ScoreWriterTest, ResultIsRefused_WhenItIsNoClassification) {
    /// A result that holds a prediction and nothing else.
    class BareResult : public ScoreResult {
        void SetPrediction(ScoreValue*) override {}
        const ScoreValue* GetPrediction() const override { return nullptr; }
        void AddAdvice(ResultAdvice) override {}
        std::vector<ResultAdvice> GetAdvice() override { return {}; }
        void RemoveAdvice() override {}
        const ScoreDictVar* GetTarget() const override { return nullptr; }
        void SetConfidence(double) override {}
        double GetConfidence() const override { return 0.0; }
        ResultType GetScoreResultType() override { return ScoreResult::NaiveBayesClsResult; }
    } bare;
    SetTarget(MakeTextField("y", {"a"}));
    for (const ScoreFormat format : {ScoreFormat::Csv, ScoreFormat::JsonLines}) {
        options.format = format;
        const auto writer = MakeScoreWriter(model, {}, "t.csv", options);
        std::string text;
        EXPECT_THROW(AppendResult(*writer, model, {}, text, {}, bare), UnscorableModelError);
        EXPECT_THROW(AppendResult(*writer, model, {}, text, {}, FakeResult()), UnscorableModelError);
    }
}

TEST_F(ScoreWriterTest, ThereIsNone_WhenTheModelIsOfAnotherKindOrHasNoTarget) {
    class OtherModel : public FakeModel {
        ModelType GetModelType() override { return static_cast<ModelType>(22); }
    } other;
    EXPECT_EQ(GetMessageOf<UnscorableModelError>([&] { MakeScoreWriter(other, {}, "t.csv", options); }),
              "Results of models of type 22 cannot be written.");
    EXPECT_THROW(MakeScoreWriter(model, {}, "t.csv", options), UnscorableModelError);
}

}  // namespace
}  // namespace nbscore::test
