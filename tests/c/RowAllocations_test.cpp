// Rows of the C interface ask for no memory. A program of its own: it counts how often memory is asked for, in the
// library too.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "c/Handles.h"
#include "support/CountedAllocations.h"

namespace nbscore::test {
namespace {

/// Sets every field to texts, a number and nothing, and scores each time.
long CountAllocationsOf(const std::string& document, std::int32_t rule) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    reading.rule = rule;
    const ModelHandle model = OpenFile(NBSCORE_EXAMPLES + document, &reading);
    ErrorHandle error;
    const RowHandle held = Give<RowHandle>(error, nbscore_row_make, model.get());
    nbscore_row* const row = held.get();
    const std::string text(200, 'w');
    nbscore_answer answer;
    std::array<nbscore_ranked, 10> best;
    std::size_t given = 0;
    const bool isSet = nbscore_row_best(row, best.data(), 1, &given, nullptr) == NBSCORE_OK;
    const auto score = [&] {
        EXPECT_EQ(NBSCORE_OK, nbscore_row_score(row, &answer, nullptr));
        if (!isSet) return;
        EXPECT_EQ(NBSCORE_OK, nbscore_row_best(row, best.data(), best.size(), &given, nullptr));
    };
    // A field of numbers refuses a text, with an error that does ask for memory.
    const auto takesTexts = [&](std::size_t field) {
        return nbscore_row_set_text(row, field, "x", 1, nullptr) == NBSCORE_OK;
    };
    std::size_t fields = 0;
    while (nbscore_field_name(model.get(), fields) != nullptr)
        ++fields;
    EXPECT_GT(fields, 1U);
    const auto setAll = [&] {
        long asked = 0;
        for (std::size_t field = 0; field < fields; ++field) {
            const bool isText = takesTexts(field);
            const long before = CountAllocations();
            if (isText) {
                nbscore_row_set_text(row, field, text.data(), text.size(), nullptr);
                score();
            }
            nbscore_row_set_number(row, field, -2.5, nullptr);
            score();
            nbscore_row_set_missing(row, field, nullptr);
            score();
            asked += CountAllocations() - before;
        }
        return asked;
    };
    // The first texts of their length may need room.
    setAll();
    return setAll();
}

TEST(CRowAllocations, AreNone_OfASingleClassifier) {
    ASSERT_GT(CountAllocations(), 0);
    EXPECT_EQ(0, CountAllocationsOf("/titanic/titanic.pmml", NBSCORE_RULE_SMOOTHED));
}

TEST(CRowAllocations, AreNone_OfASet_ItsBestIncluded) {
    EXPECT_EQ(0, CountAllocationsOf("/offers/offers.pmml", NBSCORE_RULE_SMOOTHED));
}

TEST(CRowAllocations, AreNone_ByTheStandardsRule) {
    EXPECT_EQ(0, CountAllocationsOf("/iris/iris.pmml", NBSCORE_RULE_STANDARD));
}

}  // namespace
}  // namespace nbscore::test
