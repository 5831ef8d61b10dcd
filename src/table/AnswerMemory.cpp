#include "table/AnswerMemory.h"

#include <hwy/cache_control.h>

#include <algorithm>

namespace nbscore {
namespace {

constexpr std::size_t longestKey = 64;
constexpr std::size_t numSlots = std::size_t{1} << 17;
constexpr std::size_t mostProbes = 64;
constexpr std::size_t mostAnswers = numSlots / 4;
constexpr std::size_t mostTextBytes = std::size_t{8} << 20;
/// The memory is worth its cost when at least one in so many cases repeats.
constexpr std::size_t leastShare = 8;
/// While it fills, fewer are found; where of so many cases less than this share repeats, more will hardly do later.
constexpr std::size_t casesOfTrial = 2048;
constexpr std::size_t leastShareInTrial = 64;
/// Until it is known whether cases repeat, long texts are not worth their memory: of the other cases it is only noted
/// that they were there.
constexpr std::size_t mostTextBytesInTrial = std::size_t{256} << 10;

}  // namespace

AnswerMemory::AnswerMemory(std::size_t numRows)
    : keyLength(numRows), isUseful(numRows <= longestKey), slots(isUseful ? numSlots : 0, noAnswer) {}

bool AnswerMemory::IsFull() const {
    return answers.size() >= mostAnswers || texts.size() >= mostTextBytes;
}

/// The slot where the search for a case begins.
std::size_t AnswerMemory::PlaceOf(std::span<const FactorRow> rows) const {
    const auto* const bytes = reinterpret_cast<const char*>(rows.data());
    return seed.OfBytes(bytes, rows.size_bytes()) & (numSlots - 1);
}

bool AnswerMemory::IsWithoutPromise() const {
    return !wasFull && asked >= casesOfTrial && found < asked / leastShareInTrial;
}

void AnswerMemory::MakeRoom() {
    if (IsWithoutPromise()) isUseful = false;
    if (!IsFull()) return;
    isUseful = isUseful && found >= asked / leastShare;
    wasFull = true;
    asked = found = 0;
    std::ranges::fill(slots, noAnswer);
    answers.clear();
    keys.clear();
    texts.clear();
}

/// The slot of a case, or the free one where it belongs; nothing where neither is near.
std::optional<std::size_t> AnswerMemory::SlotOf(std::size_t place, std::span<const FactorRow> rows) const {
    std::size_t slot = place;
    for (std::size_t probe = 0; probe < mostProbes; ++probe, slot = (slot + 1) & (numSlots - 1)) {
        if (slots[slot] == noAnswer) return slot;
        const std::span<const FactorRow> key(keys.data() + slots[slot] * keyLength, keyLength);
        if (std::ranges::equal(key, rows)) return slot;
    }
    return std::nullopt;
}

void AnswerMemory::FetchSlots(std::span<const FactorRow> rows, std::size_t cases) {
    places.resize(cases);
    for (std::size_t i = 0; i < cases; ++i) {
        places[i] = PlaceOf(rows.subspan(i * keyLength, keyLength));
        hwy::Prefetch(&slots[places[i]]);
    }
}

void AnswerMemory::FetchAnswers() const {
    for (const std::size_t place : places) {
        if (slots[place] == noAnswer) continue;
        hwy::Prefetch(keys.data() + slots[place] * keyLength);
        hwy::Prefetch(&answers[slots[place]]);
    }
}

void AnswerMemory::Find(std::span<const FactorRow> rows, std::span<std::optional<Answer>> known) {
    FetchSlots(rows, known.size());
    FetchAnswers();
    for (std::size_t i = 0; i < known.size(); ++i) {
        known[i].reset();
        const std::optional<std::size_t> slot = SlotOf(places[i], rows.subspan(i * keyLength, keyLength));
        if (!slot || slots[*slot] == noAnswer) continue;
        ++found;
        const Answer& answer = answers[slots[*slot]];
        if (answer.begin == noText) continue;
        known[i] = answer;
        hwy::Prefetch(texts.data() + answer.begin);
    }
    asked += known.size();
}

void AnswerMemory::Keep(std::span<const FactorRow> rows, std::string_view text, bool hasNonFiniteNumber) {
    if (IsFull()) return;
    const std::optional<std::size_t> slot = SlotOf(PlaceOf(rows), rows);
    if (!slot) return;
    if (slots[*slot] == noAnswer) {
        slots[*slot] = static_cast<std::uint32_t>(answers.size());
        answers.push_back({});
        keys.insert(keys.end(), rows.begin(), rows.end());
    }
    Answer& answer = answers[slots[*slot]];
    const bool isOnTrial = !wasFull && asked < casesOfTrial;
    if (answer.begin != noText || (isOnTrial && texts.size() + text.size() > mostTextBytesInTrial)) return;
    answer = {texts.size(), text.size(), hasNonFiniteNumber};
    texts += text;
}

}  // namespace nbscore
