#include "factors/ValueRows.h"

#include <gtest/gtest.h>

#include <memory>

#include "framework/MCMV.h"
#include "framework/NumericValue.h"
#include "naivebayes/ModelParts.h"

namespace nbscore {
namespace {

struct TextPredictor {
    std::vector<std::string> texts;
    PredictorTables tables;

    TextPredictor(const ScoreDictVar& var, std::vector<std::string> categories) : texts(std::move(categories)) {
        tables.var = &var;
        tables.kind = PredictorTables::Texts;
        for (const std::string& text : texts)
            tables.texts.push_back(&text);
    }
};

PredictorTables NumberPredictor(const ScoreDictVar& var, PredictorTables::Kind kind, std::vector<double> numbers) {
    PredictorTables tables;
    tables.var = &var;
    tables.kind = kind;
    tables.numbers = std::move(numbers);
    return tables;
}

ValueRows RowsOf(const std::vector<const PredictorTables*>& predictors) {
    return ValueRows(predictors);
}

TEST(ValueRows, GiveEachPredictorItsOwnCodesOfTheSameText) {
    const auto var = test::TextVariable("colour", {});
    const TextPredictor one(*var, {"red", "blue"});
    const TextPredictor other(*var, {"green", "red"});
    const ValueRows rows = RowsOf({&one.tables, &other.tables});
    EXPECT_EQ(rows.GetNumRows(), 5u);
    EXPECT_EQ(rows.GetCode(0, rows.RowOf(std::string_view("red"))), 0);
    EXPECT_EQ(rows.GetCode(1, rows.RowOf(std::string_view("red"))), 1);
    EXPECT_EQ(rows.GetCode(0, rows.RowOf(std::string_view("green"))), -1);
    EXPECT_EQ(rows.GetCode(1, rows.RowOf(std::string_view("green"))), 0);
    EXPECT_EQ(rows.RowOf(std::string_view("white")), unknownRow);
}

TEST(ValueRows, GiveEachPredictorItsOwnCodesOfTheSameNumber) {
    const auto var = test::NumberVariable("rooms", {});
    const PredictorTables one = NumberPredictor(*var, PredictorTables::Numbers, {3.0, 0.0});
    const PredictorTables other = NumberPredictor(*var, PredictorTables::Numbers, {-0.0, 5.0, 3.0});
    const ValueRows rows = RowsOf({&one, &other});
    EXPECT_EQ(rows.GetCode(0, rows.RowOf(0.0)), 1);
    EXPECT_EQ(rows.GetCode(1, rows.RowOf(0.0)), 0);
    EXPECT_EQ(rows.GetCode(0, rows.RowOf(5.0)), -1);
    EXPECT_EQ(rows.GetCode(1, rows.RowOf(std::string_view("3"))), 2);
}

TEST(ValueRows, GiveEachPredictorItsOwnBin) {
    const auto var = test::ContinuousVariable("age");
    const PredictorTables one = NumberPredictor(*var, PredictorTables::Bins, {18.0, 65.0});
    const PredictorTables other = NumberPredictor(*var, PredictorTables::Bins, {30.0});
    const ValueRows rows = RowsOf({&one, &other});
    EXPECT_EQ(rows.GetCode(0, rows.RowOf(20.0)), 1);
    EXPECT_EQ(rows.GetCode(1, rows.RowOf(20.0)), 0);
    EXPECT_EQ(rows.GetCode(1, rows.RowOf(40.0)), 1);
}

TEST(ValueRows, AreTheMissingOne_ForDeclaredMissingValuesOfAContinuousVariableOnly) {
    const auto age = test::ContinuousVariable("age");
    age->AddMissingValue(std::make_unique<NumericValue>(-1.0));
    const PredictorTables bins = NumberPredictor(*age, PredictorTables::Bins, {18.0});
    EXPECT_EQ(RowsOf({&bins}).RowOf(-1.0), missingRow);
    EXPECT_EQ(RowsOf({&bins}).RowOf(MCMV::gMissingValue), missingRow);

    const auto rooms = test::NumberVariable("rooms", {});
    rooms->AddMissingValue(std::make_unique<NumericValue>(-1.0));
    const PredictorTables numbers = NumberPredictor(*rooms, PredictorTables::Numbers, {-1.0});
    EXPECT_EQ(RowsOf({&numbers}).RowOf(-1.0), firstKnownRow);
    EXPECT_EQ(RowsOf({&numbers}).RowOf(MCMV::gMissingValue), unknownRow);
}

TEST(ValueRows, AreTheSame_ForAVisitor) {
    const auto var = test::ContinuousVariable("age");
    const PredictorTables bins = NumberPredictor(*var, PredictorTables::Bins, {18.0});
    const ValueRows rows = RowsOf({&bins});
    rows.Visit([&](const auto& rowOf) {
        for (const double number : {17.0, 18.0, 19.0, MCMV::gMissingValue})
            EXPECT_EQ(rowOf(number), rows.RowOf(number));
        EXPECT_EQ(rowOf(std::string_view("17")), unknownRow);
    });
}

}  // namespace
}  // namespace nbscore
