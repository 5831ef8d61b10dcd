#include "support/CollidingKeys.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace nbscore::test {
namespace {

/// The library's hash begins with a number made of the length, mixes in eight bytes at a time, and scatters what it has
/// in the end. Every step can be undone.
constexpr std::uint64_t factor = 0xC6A4A7935BD1E995U;
constexpr std::uint64_t firstHash = 0xC70F6907U;

constexpr std::uint64_t InverseFactor() {
    std::uint64_t inverse = 1;
    for (int i = 0; i < 6; ++i)
        inverse *= 2 - factor * inverse;
    return inverse;
}

constexpr std::uint64_t Shift(std::uint64_t number) {
    return number ^ (number >> 47);  // undoes itself
}
constexpr std::uint64_t Scattered(std::uint64_t word) {
    return Shift(word * factor) * factor;
}
constexpr std::uint64_t Gathered(std::uint64_t scattered) {
    return Shift(scattered * InverseFactor()) * InverseFactor();
}
constexpr std::uint64_t Begin(std::size_t length) {
    return firstHash ^ (length * factor);
}
constexpr std::uint64_t MixIn(std::uint64_t hash, std::uint64_t word) {
    return (hash ^ Scattered(word)) * factor;
}

std::uint64_t WordOf(std::string_view text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), sizeof(word));
    return word;
}

constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

bool IsOfNames(std::string_view text) {
    return text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.") ==
           std::string_view::npos;
}

/// Pairs of eight letters and eight characters, behind each of which the hash is the same.
class MeetingPairs {
public:
    explicit MeetingPairs(std::uint64_t hashBefore) : before(hashBefore), after(FindFirst()) {}

    std::uint64_t GetHashAfter() const { return after; }

    /// What brings the hash behind random letters to where it has to be is seldom made of the right characters.
    std::string Find() {
        for (;;) {
            const std::string first = RandomLetters();
            const std::uint64_t word = Gathered(MixIn(before, WordOf(first)) ^ (after * InverseFactor()));
            std::string second(sizeof(word), ' ');
            std::memcpy(second.data(), &word, sizeof(word));
            if (IsOfNames(second)) return first + second;
        }
    }

private:
    std::uint64_t FindFirst() {
        const std::string first = RandomLetters();
        return MixIn(MixIn(before, WordOf(first)), WordOf(RandomLetters()));
    }
    std::string RandomLetters() {
        std::uint64_t number = random();
        std::string text;
        for (int i = 0; i < 8; ++i, number /= letters.size())
            text += letters[number % letters.size()];
        return text;
    }

    std::mt19937_64 random{1};
    std::uint64_t before;
    std::uint64_t after;
};

/// A level's pairs, behind each of which the hash is the same; found by trying out 2^24 words for each.
using WordPairs = std::array<std::array<char32_t, 4>, 11>;
constexpr std::array<WordPairs, 4> pairsOfLevels = {{{{{0x23C60, 0x267DC, 0x23C68, 0x28410},
                                                       {0x20A6F, 0x2B83B, 0xB6EA5, 0x101E3},
                                                       {0x2B58B, 0x23DCA, 0x47DBB, 0x2DEFE},
                                                       {0x27AC3, 0x2329A, 0xEB992, 0x8EDB8},
                                                       {0x22A26, 0x2C5F5, 0x2E44B, 0x10D5CE},
                                                       {0x28E5A, 0x2C116, 0x59FD8, 0xA661B},
                                                       {0x2F313, 0x2B438, 0x6DA83, 0xC321C},
                                                       {0x26489, 0x2E62F, 0xECF52, 0xCC2F9},
                                                       {0x22967, 0x21A67, 0x75EC8, 0x3F912},
                                                       {0x2F114, 0x21665, 0xE283A, 0xBDF57},
                                                       {0x28A1D, 0x248BC, 0x3A70A, 0x9BD17}}},
                                                     {{{0x290F5, 0x24D06, 0x2CF6A, 0x24200},
                                                       {0x29D2B, 0x2D899, 0x606DE, 0x9FAE0},
                                                       {0x2155B, 0x23A07, 0x57D44, 0x1AC86},
                                                       {0x23506, 0x24957, 0x78AC8, 0xAC85F},
                                                       {0x2A6DB, 0x23622, 0x6ACFB, 0x1CD08},
                                                       {0x249C1, 0x2CAD5, 0x25E27, 0x9337F},
                                                       {0x26F59, 0x27DFE, 0xCB1B4, 0x5E8B4},
                                                       {0x2EDCB, 0x27539, 0x2907B, 0x9CA62},
                                                       {0x23F4F, 0x21893, 0x63DD8, 0xBADB5},
                                                       {0x2F0D9, 0x2CB15, 0xA593F, 0xF7BAC},
                                                       {0x2A049, 0x2FE50, 0xB626D, 0x97D88}}},
                                                     {{{0x29C8C, 0x23515, 0x2F3FD, 0x2F8CF},
                                                       {0x247B1, 0x22631, 0xE9092, 0xE798F},
                                                       {0x27BBD, 0x268FE, 0x690DA, 0x16E1E},
                                                       {0x2C29C, 0x2793E, 0x1EA0D, 0x2F461},
                                                       {0x29263, 0x2857B, 0xF6060, 0x6F68A},
                                                       {0x27D48, 0x24B2D, 0x2EC5F, 0x66037},
                                                       {0x24B2D, 0x26DCB, 0xFF503, 0x24910},
                                                       {0x2B3BC, 0x237F2, 0xF5062, 0x15C86},
                                                       {0x29C91, 0x29D57, 0xDA107, 0xE4CF3},
                                                       {0x2CCAC, 0x26346, 0x83507, 0x1ECCE},
                                                       {0x28A5B, 0x2C563, 0x75E7F, 0x10DD65}}},
                                                     {{{0x2132F, 0x25444, 0x23A31, 0x2203C},
                                                       {0x2416A, 0x22C29, 0x1046CB, 0xD0919},
                                                       {0x2BC06, 0x29932, 0x31F60, 0x993AC},
                                                       {0x2157C, 0x20CE8, 0xB4031, 0xA5447},
                                                       {0x29527, 0x26B06, 0xE75CA, 0x358FD},
                                                       {0x220E8, 0x29DC4, 0xC3E75, 0x21CB8},
                                                       {0x23E7A, 0x22B6E, 0x853A8, 0x7C473},
                                                       {0x2D2B9, 0x2C283, 0x6D272, 0xDECA8},
                                                       {0x2DA49, 0x217D0, 0x28ABC, 0x49AE3},
                                                       {0x2F10C, 0x22E78, 0x34610, 0x37452},
                                                       {0x25B88, 0x20E59, 0x77384, 0xCF8AE}}}}};

std::string Utf8Of(char32_t letter) {
    return {static_cast<char>(0xF0 | (letter >> 18)), static_cast<char>(0x80 | ((letter >> 12) & 0x3F)),
            static_cast<char>(0x80 | ((letter >> 6) & 0x3F)), static_cast<char>(0x80 | (letter & 0x3F))};
}

/// How many places a table of the library has while it grows to hold so many keys.
std::vector<std::uint64_t> NumbersOfPlaces(std::size_t count) {
    std::unordered_set<std::size_t> table;
    std::vector<std::uint64_t> places;
    for (std::size_t key = 0; key < count; ++key) {
        table.insert(key);
        if (places.empty() || places.back() != table.bucket_count()) places.push_back(table.bucket_count());
    }
    return places;
}

}  // namespace

std::vector<std::string> CollidingTexts(std::size_t count, const std::string& prefix) {
    constexpr std::size_t lengthOfPairs = 32;
    const std::string padding((8 - prefix.size() % 8) % 8, 'x');
    const std::string lead = prefix + padding;
    std::uint64_t hash = Begin(lead.size() + lengthOfPairs);
    for (std::size_t place = 0; place < lead.size(); place += 8)
        hash = MixIn(hash, WordOf(std::string_view(lead).substr(place)));
    std::array<std::vector<std::string>, 2> levels;
    for (std::vector<std::string>& level : levels) {
        MeetingPairs pairs(hash);
        while (level.size() * level.size() < count)
            level.push_back(pairs.Find());
        hash = pairs.GetHashAfter();
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i)
        texts.push_back(padding + levels[0][i / levels[1].size()] + levels[1][i % levels[1].size()]);
    return texts;
}

std::vector<double> CollidingNumbers(std::size_t count) {
    const std::vector<std::uint64_t> places = NumbersOfPlaces(count);
    // A multiple of all of them falls into the first place of each; there must be many such numbers.
    std::uint64_t step = 1;
    for (auto place = places.rbegin(); place != places.rend() && step < (std::uint64_t{1} << 62) / *place / count;
         ++place)
        step *= *place;
    std::vector<double> numbers;
    for (std::uint64_t hash = step; numbers.size() < count; hash += step) {
        const std::uint64_t word =
            Gathered((Shift(Shift(hash) * InverseFactor()) * InverseFactor()) ^ Begin(sizeof(double)));
        const auto number = std::bit_cast<double>(word);
        if (std::isfinite(number)) numbers.push_back(number);
    }
    return numbers;
}

std::vector<std::string> CollidingWords() {
    std::vector<std::string> words = {""};
    for (const WordPairs& pairs : pairsOfLevels) {
        std::vector<std::string> longer;
        for (const std::string& word : words) {
            for (const auto& pair : pairs) {
                longer.push_back(word);
                for (const char32_t letter : pair)
                    longer.back() += Utf8Of(letter);
            }
        }
        words = std::move(longer);
    }
    return words;
}

}  // namespace nbscore::test
