#include "host/AnswerMemory.h"

#include <algorithm>

namespace nbscore {
namespace {

constexpr std::size_t longestKey = 64;
constexpr std::size_t numSlots = std::size_t{1} << 17;
constexpr std::size_t mostAnswers = numSlots / 4;
constexpr std::size_t mostTextBytes = std::size_t{8} << 20;
/// One case in so many has to be met again for the memory to be worth its upkeep.
constexpr std::size_t leastShare = 8;

std::uint64_t HashRows(std::span<const RowNumber> rows) {
    std::uint64_t hash = 0;
    for (const RowNumber row : rows) {
        hash = (hash ^ row) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32;
    }
    return hash;
}

}  // namespace

AnswerMemory::AnswerMemory(std::size_t numRows)
    : keyLength(numRows), isUseful(numRows <= longestKey), slots(isUseful ? numSlots : 0, noAnswer) {}

bool AnswerMemory::IsFull() const {
    return answers.size() >= mostAnswers || texts.size() >= mostTextBytes;
}

void AnswerMemory::MakeRoom() {
    if (!IsFull()) return;
    isUseful = found >= asked / leastShare;
    asked = found = 0;
    std::ranges::fill(slots, noAnswer);
    answers.clear();
    keys.clear();
    texts.clear();
}

/// The slot of a case, or the free one where it belongs.
std::size_t AnswerMemory::SlotOf(std::span<const RowNumber> rows) const {
    std::size_t slot = HashRows(rows) & (numSlots - 1);
    for (; slots[slot] != noAnswer; slot = (slot + 1) & (numSlots - 1)) {
        const std::span<const RowNumber> key(keys.data() + slots[slot] * keyLength, keyLength);
        if (std::ranges::equal(key, rows)) break;
    }
    return slot;
}

const AnswerMemory::Answer* AnswerMemory::Find(std::span<const RowNumber> rows) {
    ++asked;
    const std::uint32_t position = slots[SlotOf(rows)];
    if (position == noAnswer) return nullptr;
    ++found;
    return &answers[position];
}

void AnswerMemory::Keep(std::span<const RowNumber> rows, std::string_view text, bool hasNonFiniteNumber) {
    if (IsFull()) return;
    std::uint32_t& position = slots[SlotOf(rows)];
    if (position != noAnswer) return;
    position = static_cast<std::uint32_t>(answers.size());
    answers.push_back({texts.size(), text.size(), hasNonFiniteNumber});
    keys.insert(keys.end(), rows.begin(), rows.end());
    texts += text;
}

}  // namespace nbscore
