#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "factors/FactorRow.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// The texts of scores that were written already, by the factor rows of the case's values: cases repeat, and writing
/// numbers takes longer than anything else. Of bounded size. Used by one thread.
class AnswerMemory {
public:
    /// In place of where an answer's text begins: only the case was noted.
    static constexpr std::size_t noText = ~std::size_t{0};
    struct Answer {
        std::size_t begin = noText;
        std::size_t length = 0;
        bool hasNonFiniteNumber = false;
    };

    /// @param numRows how many factor rows a case has.
    explicit AnswerMemory(std::size_t numRows);

    /// Whether to ask it: cases with very many values seldom repeat, and for others the hits are counted.
    bool IsUseful() const { return isUseful; }
    /// Forgets everything when it is full, and gives up where hardly any case repeats. Answers found before are then no
    /// longer valid.
    void MakeRoom();

    /// What was kept for each of many cases, if anything. Looking for many at a time hides the latency of memory.
    /// Answers are valid until the next MakeRoom.
    /// @param rows the factor rows, case by case.
    void Find(std::span<const FactorRow> rows, std::span<std::optional<Answer>> known);
    std::string_view GetText(const Answer& answer) const {
        return std::string_view(texts).substr(answer.begin, answer.length);
    }
    /// Keeps nothing when it is full, or when the slots for the case are taken.
    void Keep(std::span<const FactorRow> rows, std::string_view text, bool hasNonFiniteNumber);

private:
    static constexpr std::uint32_t noAnswer = 0xFFFFFFFF;

    bool IsFull() const;
    bool IsWithoutPromise() const;
    std::size_t PlaceOf(std::span<const FactorRow> rows) const;
    void FetchSlots(std::span<const FactorRow> rows, std::size_t cases);
    void FetchAnswers() const;
    std::optional<std::size_t> SlotOf(std::size_t place, std::span<const FactorRow> rows) const;

    HashSeed seed = HashSeed::OfProcess();
    std::size_t keyLength;
    bool isUseful;
    /// Whether it was full before.
    bool wasFull = false;
    std::size_t asked = 0;
    std::size_t found = 0;
    /// Where among the slots the search for each case begins.
    std::vector<std::size_t> places;
    /// Positions in `answers`: a hash table with linear probing.
    std::vector<std::uint32_t> slots;
    std::vector<Answer> answers;
    std::vector<FactorRow> keys;
    std::string texts;
};

}  // namespace nbscore
