#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/FactorRow.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// The texts of scores that were written already, by the rows that the cases' values stand for: cases repeat, and
/// writing numbers takes longer than anything else. Of bounded size. Used by one thread.
class AnswerMemory {
public:
    struct Answer {
        std::size_t begin = 0;
        std::size_t length = 0;
        bool hasNonFiniteNumber = false;
    };

    /// @param numRows how many rows tell a case.
    explicit AnswerMemory(std::size_t numRows);

    /// Whether it is worth asking: cases with very many values seldom repeat, and of others it is seen.
    bool IsUseful() const { return isUseful; }
    /// Forgets everything when it is full. What was found before is then of no more use.
    void MakeRoom();

    /// What was kept for each of many cases; nothing where nothing was. Looking for many at a time hides how long
    /// memory takes to answer. Answers are valid until the next MakeRoom.
    /// @param rows those of one case behind those of another.
    void Find(std::span<const FactorRow> rows, std::span<std::optional<Answer>> known);
    std::string_view GetText(const Answer& answer) const {
        return std::string_view(texts).substr(answer.begin, answer.length);
    }
    /// Keeps nothing when it is full, or too many others stand where the case belongs.
    void Keep(std::span<const FactorRow> rows, std::string_view text, bool hasNonFiniteNumber);

private:
    static constexpr std::uint32_t noAnswer = 0xFFFFFFFF;

    bool IsFull() const;
    std::size_t PlaceOf(std::span<const FactorRow> rows) const;
    void FetchSlots(std::span<const FactorRow> rows, std::size_t cases);
    void FetchAnswers() const;
    std::optional<std::size_t> SlotOf(std::size_t place, std::span<const FactorRow> rows) const;

    HashSeed seed = HashSeed::OfProcess();
    std::size_t keyLength;
    bool isUseful;
    std::size_t asked = 0;
    std::size_t found = 0;
    /// Of the cases that are looked for: where among the slots the search begins.
    std::vector<std::size_t> places;
    /// Positions in `answers`, found by hash and then one behind the other.
    std::vector<std::uint32_t> slots;
    std::vector<Answer> answers;
    std::vector<FactorRow> keys;
    std::string texts;
};

}  // namespace nbscore
