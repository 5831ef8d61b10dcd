#include "framework/xml/ElementPlaces.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace nbscore {
namespace {

constexpr std::uint64_t highest = 4'294'967'295;

void ExpectMark(const ElementPlaces& places, std::size_t ordinal, std::uint64_t line, std::uint64_t column) {
    EXPECT_EQ(places.Get(ordinal).line, line) << ordinal;
    EXPECT_EQ(places.Get(ordinal).column, column) << ordinal;
}

TEST(ElementPlaces, HoldNumbersAtTheLimit_WhenTheyAreBeyond32Bits) {
    ElementPlaces places;
    places.Add(highest, 7);
    places.Add(highest + 1, 7);
    places.Add(7, highest);
    places.Add(7, highest + 1);
    places.Add(2 * highest + 5, UINT64_MAX);
    ExpectMark(places, 0, highest, 7);
    ExpectMark(places, 1, highest, 7);
    ExpectMark(places, 2, 7, highest);
    ExpectMark(places, 3, 7, highest);
    ExpectMark(places, 4, highest, highest);
}

TEST(ElementPlaces, AreZeros_WhereTheTableDoesNotReach) {
    ElementPlaces places;
    places.Add(3, 4);
    ExpectMark(places, 0, 3, 4);
    ExpectMark(places, 1, 0, 0);
}

}  // namespace
}  // namespace nbscore
