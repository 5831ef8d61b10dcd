#include "batch/RowLists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <limits>
#include <string>

#include "naivebayes/ModelParts.h"

namespace nbscore {
namespace {

using testing::ElementsAre;

/// One sub-model for each list of predictors that is added; a field of each variable, in the order of the predictors.
class RowListsTest : public testing::Test {
protected:
    PredictorTables Reading(const ScoreDictVar& var, std::vector<std::string> categories) {
        PredictorTables predictor;
        predictor.var = &var;
        predictor.kind = PredictorTables::Texts;
        for (std::string& category : categories)
            predictor.texts.push_back(&texts.emplace_back(std::move(category)));
        return predictor;
    }

    void Add(std::vector<PredictorTables> predictors) {
        for (const PredictorTables& predictor : predictors)
            inputs.push_back(predictor.var == word.get() ? 0 : 1);
        set.classifiers.emplace_back();
        set.classifiers.back().predictors = std::move(predictors);
    }

    RowLists Make() const { return RowLists(set, inputs); }

    std::unique_ptr<BaseDictVar> word = test::TextVariable("word", {});
    std::unique_ptr<BaseDictVar> other = test::TextVariable("other", {});
    std::deque<std::string> texts;
    ModelTables set;
    std::vector<std::size_t> inputs;
};

TEST_F(RowListsTest, HasOneReaderForAField_AndOneListForEachDifferentTable) {
    Add({Reading(*word, {"a", "b"}), Reading(*other, {"c"})});
    Add({Reading(*other, {"c"}), Reading(*word, {"b", "a"})});
    Add({Reading(*word, {"a", "b"})});
    Add({Reading(*word, {"d"})});
    const RowLists lists = Make();
    ASSERT_EQ(lists.GetReaders().size(), 2u);
    EXPECT_EQ(lists.GetReaders()[0].input, 0u);
    EXPECT_EQ(lists.GetReaders()[1].input, 1u);
    EXPECT_THAT(lists.GetListsOfPredictors(), ElementsAre(0, 3, 3, 1, 0, 2));
    EXPECT_EQ(lists.CountNarrow(), 4u);
    EXPECT_EQ(lists.CountWide(), 0u);
    // Of the reader: missing, unknown, a, b, d.
    EXPECT_THAT(lists.Get(0).rows, ElementsAre(0, 0, 1, 2, 0));
    EXPECT_THAT(lists.Get(1).rows, ElementsAre(0, 0, 2, 1, 0));
    EXPECT_THAT(lists.Get(2).rows, ElementsAre(0, 0, 0, 0, 1));
    EXPECT_EQ(lists.Get(0).numRows, 3u);
    EXPECT_EQ(lists.Get(2).numRows, 2u);
}

TEST_F(RowListsTest, HasTwoReaders_OfAVariableThatIsReadInTwoWays) {
    PredictorTables numbers = Reading(*word, {});
    numbers.kind = PredictorTables::Numbers;
    numbers.numbers = {1.0};
    Add({Reading(*word, {"1"})});
    Add({numbers});
    const RowLists lists = Make();
    ASSERT_EQ(lists.GetReaders().size(), 2u);
    EXPECT_EQ(lists.GetReaders()[0].list, 0u);
    EXPECT_EQ(lists.GetReaders()[1].list, 1u);
}

TEST_F(RowListsTest, IsEmpty_WithoutPredictors) {
    Add({});
    const RowLists lists = Make();
    EXPECT_TRUE(lists.GetReaders().empty());
    EXPECT_TRUE(lists.GetListsOfPredictors().empty());
}

TEST_F(RowListsTest, TellsListsApartWhoseRowsFitIntoBytes) {
    std::vector<std::string> most;
    for (int i = 0; i < 255; ++i)
        most.push_back(std::to_string(i));
    Add({Reading(*word, most)});
    most.push_back("one more");
    Add({Reading(*other, most)});
    const RowLists lists = Make();
    EXPECT_TRUE(lists.Get(0).IsNarrow());
    EXPECT_FALSE(lists.Get(1).IsNarrow());
    EXPECT_EQ(lists.CountNarrow(), 1u);
    EXPECT_EQ(lists.CountWide(), 1u);
}

TEST_F(RowListsTest, DividesTablesAmongReaders_WhenTheirCategoriesDifferMuch) {
    constexpr std::size_t subModels = 100;
    for (std::size_t m = 0; m < subModels; ++m) {
        std::vector<std::string> own;
        for (int i = 0; i < 50; ++i)
            own.push_back(std::to_string(m) + " " + std::to_string(i));
        Add({Reading(*word, own)});
    }
    const RowLists lists = Make();
    EXPECT_GT(lists.GetReaders().size(), 1u);
    EXPECT_LT(lists.GetReaders().size(), subModels);
    std::size_t entries = 0;
    for (std::size_t list = 0; list < subModels; ++list)
        entries += lists.Get(list).rows.size();
    EXPECT_LT(entries, 4 * subModels * 51 + lists.GetReaders().size() * 100'000);
}

TEST_F(RowListsTest, TakesCutpointsThatAreNoNumbers_AsOneTable) {
    PredictorTables bins = Reading(*word, {});
    bins.kind = PredictorTables::Bins;
    bins.numbers = {std::numeric_limits<double>::quiet_NaN(), 1.0};
    Add({bins});
    Add({bins});
    const RowLists lists = Make();
    EXPECT_EQ(lists.GetReaders().size(), 1u);
    EXPECT_THAT(lists.GetListsOfPredictors(), ElementsAre(0, 0));
}

}  // namespace
}  // namespace nbscore
