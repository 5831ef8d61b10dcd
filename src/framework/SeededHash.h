#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <variant>

#include "framework/Export.h"

/// @file
/// Hashing of what comes from outside: texts and numbers of documents and tables. Their authors must not be able
/// to choose ones that fall together, because finding one among a hundred thousand that do takes as many comparisons.
/// So every hash is made under numbers that each process draws anew. What is found never depends on them, and nothing
/// may: the order in which a container of these is walked through is another in every run.

namespace nbscore {

/// The whole product of two numbers.
struct WholeProduct {
    std::uint64_t low;
    std::uint64_t high;

    /// By four products of 32 bits, for compilers that know no longer numbers.
    static constexpr WholeProduct ByHalves(std::uint64_t a, std::uint64_t b) {
        const std::uint64_t lowLow = (a & 0xFFFFFFFFU) * (b & 0xFFFFFFFFU);
        const std::uint64_t highLow = (a >> 32) * (b & 0xFFFFFFFFU);
        const std::uint64_t lowHigh = (a & 0xFFFFFFFFU) * (b >> 32);
        const std::uint64_t middle = (lowLow >> 32) + (highLow & 0xFFFFFFFFU) + lowHigh;
        return {(middle << 32) | (lowLow & 0xFFFFFFFFU), (a >> 32) * (b >> 32) + (highLow >> 32) + (middle >> 32)};
    }

    static constexpr WholeProduct Of(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
        __extension__ typedef unsigned __int128 Wide;
        const Wide product = static_cast<Wide>(a) * b;
        return {static_cast<std::uint64_t>(product), static_cast<std::uint64_t>(product >> 64)};
#else
        return ByHalves(a, b);
#endif
    }
};

/// Secret numbers, and the hashes that are made under them.
///
/// Two words at a time, each with a secret added, are multiplied, and both halves of the product go into the words
/// behind them. Of two different pairs of words, hardly one choice in 2^64 of the secrets gives the same product, nor
/// products that differ by an amount that somebody foresaw: no difference in one place can be made up for in the next.
/// Keep that in mind before you simplify it. With a multiplier that everybody knows, or with the halves laid upon each
/// other between the words, there are differences that vanish under every seed, or under many.
class HashSeed {
public:
    /// The one that the process has drawn.
    SCOREFRAMEWORK_API static const HashSeed& OfProcess();
    /// For tests: secrets that are none.
    explicit constexpr HashSeed(const std::array<std::uint64_t, 4>& numbers) : secrets(numbers) {}

    bool operator==(const HashSeed&) const = default;

    /// One of many that follow from this one, and as secret: for trying again where texts happen to fall together.
    HashSeed Derive(std::uint64_t number) const {
        HashSeed derived(secrets);
        for (std::uint64_t i = 0; i < secrets.size(); ++i)
            derived.secrets[i] = OfWords(number, i, 0);
        return derived;
    }

    std::uint64_t Hash(std::string_view text) const { return OfBytes(text.data(), text.size()); }
    std::uint64_t Hash(std::u32string_view text) const {
        return OfBytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char32_t));
    }
    /// 0 and -0 are one number.
    std::uint64_t Hash(double number) const {
        return OfWords(std::bit_cast<std::uint64_t>(number + 0.0), 0, sizeof(number));
    }

    /// Texts of up to so many bytes are told apart by one word and their size.
    static constexpr std::size_t shortSize = sizeof(std::uint64_t);
    /// All of a short text, some bytes of it twice.
    static std::uint64_t WordOfShort(std::string_view text) { return LoadShort(text.data(), text.size()); }
    /// The hash of a short text, by its word.
    std::uint64_t HashOfShort(std::uint64_t word, std::size_t size) const { return OfWords(word, 0, size); }

    std::uint64_t OfBytes(const char* bytes, std::size_t size) const {
        if (size <= shortSize) return OfWords(LoadShort(bytes, size), 0, size);
        const char* const end = bytes + size;
        WholeProduct state{0, 0};
        for (const char* block = bytes; end - block > 16; block += 16)
            state = Mix(state, Load<std::uint64_t>(block), Load<std::uint64_t>(block + 8));
        // The last words hold some bytes once more: the size tells what they are.
        const char* const last = size > 16 ? end - 16 : bytes;
        return Finish(Mix(state, Load<std::uint64_t>(last), Load<std::uint64_t>(end - 8)), size);
    }

private:
    template <typename Word>
    static std::uint64_t Load(const char* bytes) {
        Word word;
        std::memcpy(&word, bytes, sizeof(word));
        return word;
    }
    /// All of up to eight bytes.
    static std::uint64_t LoadShort(const char* bytes, std::size_t size) {
        if (size >= 4) return Load<std::uint32_t>(bytes) | (Load<std::uint32_t>(bytes + size - 4) << 32);
        if (size == 0) return 0;
        const auto byteAt = [bytes](std::size_t position) { return static_cast<unsigned char>(bytes[position]); };
        return byteAt(0) | (std::uint64_t{byteAt(size / 2)} << 8) | (std::uint64_t{byteAt(size - 1)} << 16);
    }

    WholeProduct Mix(const WholeProduct& state, std::uint64_t first, std::uint64_t second) const {
        return WholeProduct::Of(first + state.low + secrets[0], second + state.high + secrets[1]);
    }
    std::uint64_t Finish(const WholeProduct& state, std::size_t size) const {
        const WholeProduct last = WholeProduct::Of(state.low + secrets[2], state.high + size + secrets[3]);
        return last.low ^ last.high;
    }
    std::uint64_t OfWords(std::uint64_t first, std::uint64_t second, std::size_t size) const {
        return Finish(Mix({0, 0}, first, second), size);
    }

    std::array<std::uint64_t, 4> secrets;
};

/// The hash for the standard containers, of what is a text, a number, or one of several such things; containers of
/// texts find by views of them.
class SeededHash {
public:
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const { return static_cast<std::size_t>(seed->Hash(text)); }
    std::size_t operator()(std::u32string_view text) const { return static_cast<std::size_t>(seed->Hash(text)); }
    std::size_t operator()(double number) const { return static_cast<std::size_t>(seed->Hash(number)); }
    std::size_t operator()(std::monostate /*nothing*/) const { return 0; }
    template <typename... Kinds>
    std::size_t operator()(const std::variant<Kinds...>& value) const {
        return value.index() + std::visit(*this, value);
    }

private:
    const HashSeed* seed = &HashSeed::OfProcess();
};

/// To be used wherever a document or a table chooses the keys.
template <typename Key, typename Value>
using SeededMap = std::unordered_map<Key, Value, SeededHash, std::equal_to<>>;
template <typename Key>
using SeededSet = std::unordered_set<Key, SeededHash, std::equal_to<>>;

}  // namespace nbscore
