#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "batch/InstructionSets.h"
#include "batch/Loops.h"
#include "support/documents/RandomDraws.h"

namespace nbscore {
namespace {

class ByteLoops : public test::WithInstructionSet {};

constexpr std::size_t sizesOfLists[] = {1, 2, 9, 15, 16, 17, 31, 32, 33, 64, 100, 128, 129, 130, 200, 255, 256};

template <typename Code>
int LastCode(std::size_t size) {
    return std::min(static_cast<int>(size) - 2,
                    static_cast<int>(std::min<long long>(std::numeric_limits<Code>::max(), 1 << 20)));
}

template <typename Code>
void ExpectPlaces(test::Randomness& random) {
    for (const std::size_t size : sizesOfLists) {
        for (std::size_t count = 0; count < 200; count += count < 70 ? 1 : 13) {
            std::vector<Code> codes;
            for (std::size_t i = 0; i < count; ++i)
                codes.push_back(static_cast<Code>(test::Between(-1, LastCode<Code>(size), random)));
            std::vector<std::uint8_t> places(count);
            ASSERT_TRUE(NarrowCodes(codes, size, places.data())) << size;
            for (std::size_t i = 0; i < count; ++i)
                ASSERT_EQ(places[i], codes[i] + 1);
        }
    }
}

TEST_P(ByteLoops, TellThePlaceOfEachCode) {
    test::Randomness random(1);
    ExpectPlaces<std::int8_t>(random);
    ExpectPlaces<std::int16_t>(random);
    ExpectPlaces<std::int32_t>(random);
}

template <typename Code>
void ExpectRefused() {
    using Limits = std::numeric_limits<Code>;
    for (const std::size_t size : sizesOfLists) {
        for (const std::size_t count : {1U, 15U, 64U, 131U}) {
            std::vector<std::uint8_t> places(count);
            std::vector<long long> wrong = {-2, -3, Limits::min(), Limits::min() + 1};
            if (static_cast<long long>(size) - 1 <= Limits::max()) {
                wrong.insert(wrong.end(), {static_cast<long long>(size) - 1, Limits::max()});
            }
            for (std::size_t place = 0; place < count; ++place) {
                for (const long long code : wrong) {
                    std::vector<Code> codes(count, -1);
                    codes[place] = static_cast<Code>(code);
                    ASSERT_FALSE(NarrowCodes(codes, size, places.data()))
                        << code << " at " << place << " of " << count << ", list of " << size;
                }
            }
        }
    }
}

TEST_P(ByteLoops, RefuseACodeOutsideTheList_WhereverItStands) {
    ExpectRefused<std::int8_t>();
    ExpectRefused<std::int16_t>();
    ExpectRefused<std::int32_t>();
}

TEST_P(ByteLoops, ReplaceEachPlaceByWhatStandsThere) {
    test::Randomness random(2);
    for (const std::size_t size : sizesOfLists) {
        std::vector<FactorRow> list;
        for (std::size_t i = 0; i < size; ++i)
            list.push_back(static_cast<FactorRow>((i * 37 + 11) % 256));
        for (std::size_t count = 0; count < 200; count += count < 70 ? 1 : 13) {
            std::vector<std::uint8_t> places;
            for (std::size_t i = 0; i < count; ++i)
                places.push_back(static_cast<std::uint8_t>(test::Between(0, static_cast<int>(size) - 1, random)));
            std::vector<std::uint8_t> found(RoundUpCases(count));
            places.resize(found.size());
            MapBytes(ByteList(list), places.data(), count, found.data());
            for (std::size_t i = 0; i < count; ++i)
                ASSERT_EQ(found[i], list[places[i]]) << size;
            MapBytes(ByteList(list), places.data(), count, places.data());
            ASSERT_EQ(places, found);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, ByteLoops, testing::ValuesIn(test::InstructionSets()),
                         test::NameOfInstructionSet);

}  // namespace
}  // namespace nbscore
