#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evidence/CaseExplainer.h"
#include "evidence/ReasonRanking.h"
#include "factors/FactorRow.h"
#include "table/BatchCases.h"
#include "table/CaseCoder.h"
#include "table/ScoreWriter.h"
#include "table/TableOptions.h"

namespace nbscore {

/// The reasons of cases that are scored many at a time, from the factor rows of their values. Used by one thread.
class BatchReasons {
public:
    /// @param caseExplainer of the model that the cases are scored with. @param coder encodes its rows; it is told to
    ///     keep derived values.
    BatchReasons(const ReasonOptions& options, const CaseExplainer& caseExplainer, const BatchCases& batchCases,
                 CaseCoder& coder);

    /// Finds the reasons of a case.
    /// @param rows one for each reader. @param probabilities of the target's categories.
    void Find(std::span<const FactorRow> rows, std::span<const double> probabilities);
    /// What was found last, put behind a text, and taken off again: it is the same for all cases with the same rows.
    void AppendFound(std::string& text) const;
    std::string_view TakeFound(std::string_view text);

    /// What was found or taken last, for writing; valid until the next call.
    /// @param coder the one that it was made with. @param cases that the coder encoded last. @param number the case's.
    std::span<const WrittenReason> Write(const CaseCoder& coder, const TableCases& cases, std::size_t number);

private:
    /// What a predictor's category says.
    struct Said {
        double distance = 0.0;
        double weight = 0.0;
        /// The weight's; empty until it is written.
        std::string text = {};
    };
    /// Of a pair of categories, for each predictor.
    struct Pair {
        std::vector<WeightRange> ranges;
        /// What is said where the predictor is left out, and by each of its codes, as far as there is room for that.
        std::vector<std::vector<Said>> ofCodes;
    };
    struct Reason {
        std::uint32_t predictor;
        std::uint32_t length;
    };

    Pair& GetPair(std::size_t category, std::size_t against);
    void FillCodes(Pair& pair, std::size_t category, std::size_t against);
    Said Say(const WeightRange& range, std::size_t predictor, int code, std::size_t category,
             std::size_t against) const;
    std::string_view ValueOf(std::size_t predictor, const CaseCoder& coder, const TableCases& cases,
                             std::size_t number) const;

    ReasonKind kind;
    CaseExplainer explainer;
    BatchCases batch;
    /// Of each predictor, that of the table which holds its values.
    std::vector<std::optional<std::size_t>> columns;
    std::vector<bool> isCounted;
    ReasonRanking ranking;
    /// What each predictor says in the case at hand, and what is not kept of that.
    std::vector<Said*> said;
    std::vector<Said> saidAnew;
    std::map<std::pair<std::size_t, std::size_t>, Pair> pairs;
    /// How many numbers these may still take.
    std::size_t room;
    /// What was found: the reasons, and the texts of their weights in a row.
    std::vector<Reason> reasons;
    std::string weightTexts;
    std::vector<WrittenReason> written;
};

}  // namespace nbscore
