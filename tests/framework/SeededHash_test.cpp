#include "framework/SeededHash.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace nbscore {
namespace {

/// Numbers that everybody may know: what is found of one of them is found in every run.
std::vector<HashSeed> SomeSeeds() {
    std::mt19937_64 random(7);
    std::vector<HashSeed> seeds;
    for (int i = 0; i < 20; ++i)
        seeds.push_back(HashSeed({random(), random(), random(), random()}));
    return seeds;
}

template <typename Key>
std::size_t CountHashes(const std::vector<Key>& keys, const HashSeed& seed) {
    std::set<std::uint64_t> hashes;
    for (const Key& key : keys)
        hashes.insert(seed.Hash(key));
    return hashes.size();
}

RC_GTEST_PROP(WholeProduct, IsTheSame_ByHalves, (std::uint64_t a, std::uint64_t b)) {
    for (const std::uint64_t factor : {a, ~a, std::uint64_t{0}, ~std::uint64_t{0}}) {
        RC_ASSERT(WholeProduct::ByHalves(factor, b).low == factor * b);
        RC_ASSERT(WholeProduct::ByHalves(factor, b).high == WholeProduct::Of(factor, b).high);
        RC_ASSERT(WholeProduct::ByHalves(factor, ~b).high == WholeProduct::Of(factor, ~b).high);
    }
}

TEST(WholeProduct, IsOfAllBits) {
    EXPECT_EQ(WholeProduct::ByHalves(~std::uint64_t{0}, ~std::uint64_t{0}).high, ~std::uint64_t{0} - 1);
    EXPECT_EQ(WholeProduct::ByHalves(~std::uint64_t{0}, ~std::uint64_t{0}).low, 1U);
    EXPECT_EQ(WholeProduct::ByHalves(std::uint64_t{1} << 40, std::uint64_t{1} << 50).high, std::uint64_t{1} << 26);
}

/// 1,024 texts: in each some words have their upper bit changed, and this is done to the bytes, the last one first, of
/// the words that stand so far behind them.
std::vector<std::string> TextsWithUndoneChanges(std::size_t distance, const std::string& undoing) {
    std::vector<std::string> texts;
    for (std::size_t number = 0; number < 1024; ++number) {
        std::string& text = texts.emplace_back(10 * 2 * distance, 'a');
        for (std::size_t bit = 0; bit < 10; ++bit) {
            if ((number >> bit) % 2 == 0) continue;
            const std::size_t place = bit * 2 * distance;
            text[place + 7] ^= '\x80';
            for (std::size_t i = 0; i < 8; ++i)
                text[place + distance + 7 - i] ^= undoing[i];
        }
    }
    return texts;
}

/// A change of a word's upper bit changes its product with a known odd number in the upper bit alone, whatever the seed
/// is: where nothing but shifts follows, the next words can undo it. So can those of blocks of any other size.
TEST(SeededHash, TellsTextsApart_WhoseUpperBitsChangeTogether) {
    const std::string upperBit("\x80\0\0\0\0\0\0\0", 8);
    const std::string bothHalves("\x80\0\0\0\x80\0\0\0", 8);
    for (std::size_t distance = 8; distance <= 32; distance += 8) {
        for (const std::string& undoing : {upperBit, bothHalves}) {
            const std::vector<std::string> texts = TextsWithUndoneChanges(distance, undoing);
            for (const HashSeed& seed : SomeSeeds())
                EXPECT_EQ(CountHashes(texts, seed), 1024U);
        }
    }
}

/// Long and short texts that differ in a single byte or in their length.
TEST(SeededHash, TellsTextsApart_WhoseLengthIsAny) {
    std::vector<std::string> texts;
    for (std::size_t length = 0; length < 70; ++length) {
        texts.emplace_back(length, 'a');
        texts.emplace_back(length, '\0');
        for (std::size_t place = 0; place < length; ++place) {
            texts.emplace_back(length, 'a');
            texts.back()[place] = 'b';
        }
    }
    texts.erase(texts.begin());  // the empty one is there twice
    for (const HashSeed& seed : SomeSeeds())
        EXPECT_EQ(CountHashes(texts, seed), texts.size());
}

/// The last words of a text may overlap: of different texts they can be the same ones.
TEST(SeededHash, TellsTextsApart_WhoseLastWordsAreTheSame) {
    const std::vector<std::string> texts = {
        "abcdefgh"
        "hijklmn",
        "abcdefgh"
        "hhijklmn",
        "aaaa",
        "aaaaa",
        "aaa",
        "aa",
        "a",
        std::string(16, 'a'),
        std::string(17, 'a'),
        std::string(32, 'a')};
    for (const HashSeed& seed : SomeSeeds())
        EXPECT_EQ(CountHashes(texts, seed), texts.size());
}

TEST(SeededHash, TellsNumbersApart_WhoseBitsAreFew) {
    std::vector<double> numbers = {0.0};
    for (int bit = 0; bit < 63; ++bit) {
        for (int other = bit; other < 63; ++other) {
            const std::uint64_t bits = (std::uint64_t{1} << bit) | (std::uint64_t{1} << other);
            numbers.push_back(std::bit_cast<double>(bits));
        }
    }
    for (const HashSeed& seed : SomeSeeds())
        EXPECT_EQ(CountHashes(numbers, seed), numbers.size());
}

TEST(SeededHash, IsTheSame_ForBothZeros) {
    EXPECT_EQ(SeededHash()(0.0), SeededHash()(-0.0));
}

TEST(SeededHash, IsAnotherUnderEverySeed) {
    std::set<std::uint64_t> hashes;
    for (std::uint64_t number = 0; number < 1000; ++number)
        hashes.insert(HashSeed::OfProcess().Derive(number).Hash("text"));
    EXPECT_EQ(hashes.size(), 1000U);
    EXPECT_EQ(HashSeed::OfProcess(), HashSeed::OfProcess());
}

TEST(SeededHash, ScattersNamesThatAreCounted) {
    SeededSet<std::string> names;
    for (int i = 0; i < 100'000; ++i)
        names.insert("field" + std::to_string(i));
    std::size_t most = 0;
    for (std::size_t place = 0; place < names.bucket_count(); ++place)
        most = std::max(most, names.bucket_size(place));
    EXPECT_LE(most, 20U);  // random hashes would hardly ever put more together
}

TEST(SeededMap, FindsByViews) {
    SeededMap<std::string, int> map;
    map.emplace("one", 1);
    EXPECT_EQ(map.find(std::string_view("one two").substr(0, 3))->second, 1);
    EXPECT_FALSE(map.contains("two"));
}

TEST(SeededSet, HoldsTextsOfWideCharacters) {
    SeededSet<std::u32string> words = {U"one", U"two"};
    EXPECT_TRUE(words.contains(U"one"));
    EXPECT_FALSE(words.contains(std::u32string_view(U"three")));
}

TEST(SeededSet, HoldsValuesOfSeveralKinds) {
    using Value = std::variant<std::monostate, double, bool, std::string>;
    const SeededSet<Value> values = {Value(), Value(1.0), Value(true), Value("1")};
    EXPECT_EQ(values.size(), 4U);
    EXPECT_TRUE(values.contains(Value(1.0)));
    EXPECT_TRUE(values.contains(Value(std::string("1"))));
    EXPECT_FALSE(values.contains(Value(false)));
}

}  // namespace
}  // namespace nbscore
