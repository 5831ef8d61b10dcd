#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "batch/RowNumber.h"

namespace nbscore {

/// Tells a scorer from all others, also from those that are made after it is gone: while anybody keeps a copy, no other
/// scorer gets the same.
class ScorerIdentity {
public:
    ScorerIdentity() : token(std::make_shared<const char>()) {}

    bool operator==(const ScorerIdentity&) const = default;

private:
    std::shared_ptr<const char> token;
};

/// The values that the codes of a column stand for, looked up once for all cases. Made by a scorer for one of its
/// inputs, and of use to that scorer and its copies only. Immutable; any number of threads may use it.
class InputDictionary {
public:
    /// How many codes there are, from 0.
    std::size_t GetSize() const { return size; }

    /// @param rowLists for each reader of the input the row of each code, that of -1 in front.
    InputDictionary(ScorerIdentity scorerIdentity, std::size_t inputPosition, std::size_t numCodes,
                    std::vector<std::vector<RowNumber>> rowLists)
        : scorer(std::move(scorerIdentity)), input(inputPosition), size(numCodes), rowsOfReaders(std::move(rowLists)) {}

    bool IsFor(const ScorerIdentity& scorerIdentity, std::size_t inputPosition) const {
        return scorer == scorerIdentity && input == inputPosition;
    }
    const std::vector<RowNumber>& GetRows(std::size_t reader) const { return rowsOfReaders[reader]; }

private:
    ScorerIdentity scorer;
    std::size_t input;
    std::size_t size;
    std::vector<std::vector<RowNumber>> rowsOfReaders;
};

}  // namespace nbscore
