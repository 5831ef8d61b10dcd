#include "support/CollidingKeys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <unordered_set>

namespace nbscore::test {
namespace {

#ifdef __GLIBCXX__

template <typename Key>
std::size_t CountHashes(const std::vector<Key>& keys) {
    std::set<std::size_t> hashes;
    for (const Key& key : keys)
        hashes.insert(std::hash<Key>()(key));
    return hashes.size();
}

template <typename Key>
std::size_t CountDifferent(const std::vector<Key>& keys) {
    return std::set<Key>(keys.begin(), keys.end()).size();
}

TEST(CollidingKeys, AreTextsWithOneHash) {
    const std::vector<std::string> texts = CollidingTexts(1000);
    EXPECT_EQ(CountDifferent(texts), 1000U);
    EXPECT_EQ(CountHashes(texts), 1U);
}

TEST(CollidingKeys, AreTextsWithOneHash_AfterAPrefix) {
    for (const std::string prefix : {"$", "12345678", "123:567:9"}) {
        std::vector<std::string> texts = CollidingTexts(1000, prefix);
        EXPECT_EQ(CountDifferent(texts), 1000U);
        for (std::string& text : texts)
            text = prefix + text;
        EXPECT_EQ(CountHashes(texts), 1U);
    }
}

TEST(CollidingKeys, AreNumbersInOneBucket) {
    const std::vector<double> numbers = CollidingNumbers(3000);
    EXPECT_EQ(CountDifferent(numbers), 3000U);
    std::unordered_set<double> table;
    for (const double number : numbers)
        table.insert(number);
    EXPECT_EQ(table.bucket_size(table.bucket(numbers.front())), 3000U);
}

TEST(CollidingKeys, AreWordsWithOneHash) {
    std::vector<std::u32string> words;
    for (const std::string& word : CollidingWords()) {
        std::u32string& letters = words.emplace_back();
        for (std::size_t i = 0; i < word.size(); ++i) {
            if (i % 4 == 0) letters += U'\0';
            letters.back() = (letters.back() << 8) | static_cast<unsigned char>(word[i]);
        }
    }
    EXPECT_EQ(CountDifferent(words), 14'641U);
    EXPECT_EQ(CountHashes(words), 1U);
}

#endif

}  // namespace
}  // namespace nbscore::test
