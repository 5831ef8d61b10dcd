#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "batch/FactorRow.h"
#include "evidence/CaseExplainer.h"
#include "evidence/PairWeights.h"
#include "evidence/ReasonRanking.h"
#include "table/BatchCases.h"
#include "table/CaseCoder.h"
#include "table/ScoreWriter.h"
#include "table/TableOptions.h"

namespace nbscore {

/// The reasons of cases that are scored many at a time, from the factor rows of their values. The weights and distances
/// of a pair of categories, and the texts of weights, are kept from case to case. Used by one thread.
class BatchReasons {
public:
    /// What was found of a case: the categories, and the predictors that are its reasons. It is kept beside the text of
    /// the case's scores, for cases with the same rows.
    struct Found {
        std::uint32_t category = 0;
        std::uint32_t against = 0;
        std::vector<std::uint32_t> predictors;
    };

    /// @param caseExplainer of the model that the cases are scored with.
    BatchReasons(const ReasonOptions& options, const CaseExplainer& caseExplainer, const BatchCases& batchCases,
                 const CaseCoder& coder);

    /// Keeps the derived values of the row that was encoded last.
    /// @param number of the case among those that wait.
    void KeepDerivedValues(const CaseCoder& coder, std::size_t number);

    /// @param rows one for each reader. @param probabilities of the target's categories.
    void Find(std::span<const FactorRow> rows, std::span<const double> probabilities);
    /// Appends what was found last to a text, and takes it off one again.
    void AppendFound(std::string& text) const;
    std::string_view TakeFound(std::string_view text);

    /// What was found last, for writing; valid until the next call.
    /// @param rows of the case, @param cells of its row in the table, @param number as above.
    std::span<const WrittenReason> Write(std::span<const FactorRow> rows, std::span<const std::string_view> cells,
                                         std::size_t number);

private:
    /// A pair of categories.
    struct Pair {
        std::shared_ptr<const PairWeights> weights;
        /// For each predictor the distance where it is left out, and those of its codes.
        std::vector<std::vector<double>> distances;
        /// The texts of weights in the same order; empty where not made yet.
        std::vector<std::vector<std::string>> texts;
    };
    /// Where the value of a predictor stands.
    struct Source {
        std::string field;
        std::optional<std::size_t> column;
        /// Among the derived values that are kept; nothing where the model reads none.
        std::optional<std::size_t> derived;
    };

    Pair& GetPair(std::size_t category, std::size_t against);
    std::string_view GetText(Pair& pair, std::size_t predictor, std::size_t place) const;
    std::string_view ValueOf(const Source& source, std::span<const std::string_view> cells, std::size_t number) const;

    ReasonKind kind;
    CaseExplainer explainer;
    BatchCases batch;
    std::vector<Source> sources;
    std::size_t numDerived = 0;
    std::vector<std::string> derivedValues;
    ReasonRanking ranking;
    std::map<std::pair<std::size_t, std::size_t>, Pair> pairs;
    std::size_t numNumbers = 0;
    Found found;
    std::vector<WrittenReason> written;
};

}  // namespace nbscore
