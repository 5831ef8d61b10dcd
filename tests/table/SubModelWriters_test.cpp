#include <gtest/gtest.h>

#include <limits>

#include "output/HostError.h"
#include "support/FakeSet.h"
#include "support/Message.h"
#include "table/AppendResult.h"
#include "table/ScoreWriter.h"

namespace nbscore::test {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

class SubModelWritersTest : public testing::Test {
protected:
    std::string Write(const std::vector<std::string>& header = {"id"},
                      const std::vector<std::string_view>& cells = {"7"}) {
        const auto writer = MakeScoreWriter(set, header, "t.csv", options);
        std::string text;
        writer->AppendHeader(text);
        AppendResult(*writer, set, options, text, cells, FakeSetResult(set.scores));
        return text;
    }
    void ExpectClash(const std::string& name) {
        EXPECT_EQ(GetMessageOf<CaseDataError>([this, &name] {
                      MakeScoreWriter(set, {"x", name}, "t.csv", options);
                  }),
                  "t.csv:1: the column \"" + name +
                      "\", which scoring adds, is in the table already: choose another prefix for the added columns "
                      "(--prefix)");
    }

    FakeSet set{{{"card", 0.25, 0.5, 0.125}, MakeScore("plan", 0.75), MakeScore("", notANumber), MakeScore("x,y", 1)}};
    ScoreWriterOptions options;
};

TEST_F(SubModelWritersTest, CsvHasAColumnForEachSubModel_ByDefault) {
    EXPECT_EQ(Write(), "id,score_card,score_plan,score_2,\"score_x,y\"\n7,0.25,0.75,nan,1\n");
}

TEST_F(SubModelWritersTest, CsvHasTheBestInOrder_WhenAskedFor) {
    options.subModels.best = 3;
    EXPECT_EQ(Write(),
              "id,best_1_model,best_1_score,best_2_model,best_2_score,best_3_model,best_3_score\n"
              "7,\"x,y\",1,plan,0.75,card,0.25\n");
    options.subModels.best = 9;
    options.onlyScores = true;
    EXPECT_EQ(
        Write(),
        "best_1_model,best_1_score,best_2_model,best_2_score,best_3_model,best_3_score,best_4_model,best_4_score\n"
        "\"x,y\",1,plan,0.75,card,0.25,2,nan\n");
}

TEST_F(SubModelWritersTest, CsvHasARowForEachSubModel_WhenLong) {
    options.subModels.longRows = true;
    EXPECT_EQ(Write(),
              "id,model,score,assessment_mean,assessment_std_dev\n"
              "7,card,0.25,0.5,0.125\n7,plan,0.75,,\n7,2,nan,,\n7,\"x,y\",1,,\n");
    options.subModels.best = 1;
    options.predictionOnly = true;
    EXPECT_EQ(Write(), "id,model,score\n7,\"x,y\",1\n");
}

TEST_F(SubModelWritersTest, AnAssessmentIsWrittenAnew_WhenItChangesFromCaseToCase) {
    set.scores.resize(1);
    for (const bool isCsv : {true, false}) {
        options.format = isCsv ? ScoreFormat::Csv : ScoreFormat::JsonLines;
        options.subModels.longRows = isCsv;
        const auto writer = MakeScoreWriter(set, {"id"}, "t.csv", options);
        std::vector<std::string> texts;
        for (const double mean : {0.5, 0.5, -0.0, 0.0}) {
            set.scores[0].assessmentMean = mean;
            AppendResult(*writer, set, options, texts.emplace_back(), {"7"}, FakeSetResult(set.scores));
        }
        EXPECT_EQ(texts[0], texts[1]);
        EXPECT_NE(texts[0].find("0.5"), std::string::npos);
        EXPECT_NE(texts[2].find("-0"), std::string::npos);
        EXPECT_EQ(texts[3].find("-0"), std::string::npos);
        EXPECT_EQ(texts[3].find("0.5"), std::string::npos);
    }
}

TEST_F(SubModelWritersTest, CsvFollowsDelimiterAndPrefix_WhenGiven) {
    options.delimiter = ';';
    options.prefix = "nb_";
    EXPECT_EQ(Write(), "id;nb_score_card;nb_score_plan;nb_score_2;nb_score_x,y\n7;0.25;0.75;nan;1\n");
    options.subModels.best = 1;
    EXPECT_EQ(Write(), "id;nb_best_1_model;nb_best_1_score\n7;x,y;1\n");
    options.subModels.longRows = true;
    EXPECT_EQ(Write(), "id;nb_model;nb_score;nb_assessment_mean;nb_assessment_std_dev\n7;x,y;1;;\n");
}

TEST_F(SubModelWritersTest, CsvIsRefused_WhenAnInputColumnHasTheName) {
    ExpectClash("score_card");
    options.subModels.best = 1;
    ExpectClash("best_1_score");
    options.subModels.longRows = true;
    ExpectClash("assessment_mean");
}

TEST_F(SubModelWritersTest, JsonListsTheModels_WithNullForWhatWasNeverSet) {
    options.format = ScoreFormat::JsonLines;
    set.scores.resize(2);
    set.scores[1].modelName = "a\"b";
    EXPECT_EQ(Write(),
              "{\"models\": [{\"name\": \"card\", \"score\": 0.25, \"assessment_mean\": 0.5, \"assessment_std_dev\": "
              "0.125}, {\"name\": \"a\\\"b\", \"score\": 0.75, \"assessment_mean\": null, \"assessment_std_dev\": "
              "null}]}\n");
}

TEST_F(SubModelWritersTest, JsonListsTheBest_WhenAskedFor) {
    options.format = ScoreFormat::JsonLines;
    options.subModels.best = 2;
    options.predictionOnly = true;
    EXPECT_EQ(Write(), "{\"models\": [{\"name\": \"x,y\", \"score\": 1}, {\"name\": \"plan\", \"score\": 0.75}]}\n");
}

TEST_F(SubModelWritersTest, JsonNamesStandAsTheyAre_AndScoresThatAreNoNumberAreNull) {
    options.format = ScoreFormat::JsonLines;
    options.predictionOnly = true;
    set.scores = {MakeScore("", notANumber), MakeScore("", 0.5)};
    EXPECT_EQ(Write(), "{\"models\": [{\"name\": \"\", \"score\": null}, {\"name\": \"\", \"score\": 0.5}]}\n");
}

TEST_F(SubModelWritersTest, CasesHaveNoScores_WhenThereAreNoSubModels) {
    set.scores.clear();
    EXPECT_EQ(Write(), "id\n7\n");
    options.subModels.best = 2;
    EXPECT_EQ(Write(), "id\n7\n");
    options.subModels.longRows = true;
    EXPECT_EQ(Write(), "id,model,score,assessment_mean,assessment_std_dev\n");
    options.format = ScoreFormat::JsonLines;
    EXPECT_EQ(Write(), "{\"models\": []}\n");
}

TEST_F(SubModelWritersTest, ResultIsRefused_WhenItDoesNotHoldAScoreForEachSubModel) {
    for (const ScoreFormat format : {ScoreFormat::Csv, ScoreFormat::JsonLines}) {
        options.format = format;
        const auto writer = MakeScoreWriter(set, {}, "t.csv", options);
        std::string text;
        const auto getFault = [&](const ScoreResult& result) {
            return GetMessageOf<UnscorableModelError>([&] { AppendResult(*writer, set, options, text, {}, result); });
        };
        EXPECT_EQ(getFault(FakeSetResult({MakeScore("card", 1)})), "The model gave 1 score for its 4 sub-models.");
        EXPECT_EQ(getFault(FakeSetResult()), "The model's results are no scores of sub-models.");
        EXPECT_EQ(getFault(FakeResult()), "The model's results are no scores of sub-models.");
        EXPECT_EQ(text, "");
    }
}

}  // namespace
}  // namespace nbscore::test
