#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/ScoreClsResult.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// The probabilities of a classification, in the order in which the target declares its categories.
///
/// A result keeps its entries in an order of its own; which entry is whose is found out once and then only checked,
/// so that a case costs no search.
class CategoryProbabilities {
public:
    /// @param target borrowed. A category that it declares twice counts once.
    explicit CategoryProbabilities(const ScoreDictVar& target);

    /// The categories as text, in order.
    const std::vector<std::string>& GetNames() const { return names; }
    /// The result's probabilities in the same order, valid until the next call; system-missing for a category that
    /// the result does not have.
    const std::vector<double>& Arrange(const ScoreClsResult& result);

private:
    struct Entry {
        const ScoreValue* value;
        std::size_t category;
    };

    bool HasKnownEntries(const std::vector<ScoreClsResult::ValuePercent>& percents) const;
    void LearnEntries(const std::vector<ScoreClsResult::ValuePercent>& percents);

    static constexpr std::size_t noCategory = static_cast<std::size_t>(-1);

    std::vector<std::string> names;
    SeededMap<std::string, std::size_t> positions;
    std::vector<Entry> entries;
    std::vector<double> probabilities;
};

}  // namespace nbscore
