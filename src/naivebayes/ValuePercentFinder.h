#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/ScoreClsResult.h"
#include "framework/SeededHash.h"

/// Finds the entry of a list of (category, probability) pairs whose value equals a given one, without
/// searching through all of them for each.
///
/// A model fills a result in the same order for every case, so the entry behind the one found last is tried
/// first: that alone makes filling a result again cost constant time per category. Other questions are
/// answered by search while the list is short, and by hashing once it is long. The answer is always that of a
/// search from the front.
///
/// The list grows at its end only, by what was asked for with FindNext and not found. Its values must not
/// change, nor be removed except together with a Reset. Hashing takes values of the numeric and text types
/// for what they say they are: equal when their numbers or texts are. Values of any other type are searched
/// for one by one.
class NAIVEBAYES_API ValuePercentFinder {
public:
    using Entries = std::vector<ScoreClsResult::ValuePercent>;
    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);
    /// Lists up to this length are searched, which is as fast as hashing and needs no memory.
    static constexpr std::size_t longestSearchedList = 32;

    /// The position of the first entry whose value equals this one; notFound when there is none. A null value
    /// equals nothing. Moves the expectation of what is asked next.
    std::size_t FindNext(const Entries& entries, const ScoreValue* value);
    /// The same, changing nothing: any number of threads may ask at once.
    std::size_t Find(const Entries& entries, const ScoreValue* value) const;
    /// Forgets everything; for a list that was emptied or replaced.
    void Reset();

private:
    bool IsExpected(const Entries& entries, const ScoreValue* value) const;
    void ExtendIndex(const Entries& entries);
    void IndexEntry(std::size_t position, const ScoreValue* value);
    bool IsAnsweredByIndex(const ScoreValue& value) const;
    std::size_t FindInIndex(const ScoreValue& value) const;

    std::size_t expected = 0;
    /// So many entries from the front are in the index.
    std::size_t indexed = 0;
    /// An entry in the index may equal values of a type other than its own; the index cannot tell.
    bool hasOtherTypes = false;
    nbscore::SeededMap<double, std::size_t> positionsByNumber;
    nbscore::SeededMap<std::string, std::size_t> positionsByText;
};
