#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/Export.h"

namespace nbscore {

/// Whether a case could be scored.
enum class CaseOutcome {
    Scored,
    /// A field has a value that ends the case.
    InvalidValue,
    /// By the counts, no category is possible.
    NothingPossible
};

/// What scoring a case found out beside its result.
struct CaseFacts {
    /// An input that has a value which the model does not know, or has none though all fields that it is computed from
    /// have values.
    struct Unknown {
        /// The input's name, as the model's description has it; the model's own.
        const std::string* field = nullptr;
        /// The value's text.
        std::string text;
        /// Whether the text is that of the fields that the input is computed from.
        bool isOfSources = false;
    };

    CaseOutcome outcome = CaseOutcome::Scored;
    /// Where a value is invalid: the name of the first field that has one. Otherwise empty.
    std::string field;
    /// How many inputs had a value that the model knows.
    std::size_t usable = 0;
    /// In the order of the inputs.
    std::vector<Unknown> unknown;
};

}  // namespace nbscore

/// A face that a result may have beside ScoreResult: it tells what scoring the case found out. To be asked for by
/// `dynamic_cast<const ResultFacts*>(result)`.
///
/// A case without a result has no prediction (null), no probabilities, and the confidence -1, unless the document says
/// which probabilities such a case has: then these are its probabilities, and the facts tell.
class SCOREFRAMEWORK_API ResultFacts {
public:
    virtual ~ResultFacts();

    /// Of the case that the result was filled for last; valid until it is filled again.
    virtual const nbscore::CaseFacts& GetFacts() const = 0;

protected:
    ResultFacts() = default;
    ResultFacts(const ResultFacts&) = default;
    ResultFacts& operator=(const ResultFacts&) = default;
};
