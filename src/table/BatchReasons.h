#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
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
    ///     keep derived values. @param scoreWriter borrowed, as long as this.
    BatchReasons(const ReasonOptions& options, const CaseExplainer& caseExplainer, const BatchCases& batchCases,
                 CaseCoder& coder, const ScoreWriter& scoreWriter);

    /// Finds the reasons of a case.
    /// @param rows one for each reader. @param probabilities of the target's categories.
    void Find(std::span<const FactorRow> rows, std::span<const double> probabilities);
    /// What was found last, put behind a text, and taken off again: it is the same for all cases with the same rows.
    void AppendFound(std::string& text) const;
    /// @param text must stay as it is until the next call.
    std::string_view TakeFound(std::string_view text);

    /// Writes what was found or taken last.
    /// @param coder the one that it was made with. @param cases that the coder encoded last. @param number the case's.
    void Write(std::string& text, const CaseCoder& coder, const TableCases& cases, std::size_t number) const;

private:
    /// Where the value of a predictor stands among its places: 0 where it is left out, else a category's code and one.
    struct Places {
        /// For each row of the reader.
        const FactorRow* ofRows;
        std::size_t reader;
        /// How many places lie in front of its own.
        std::size_t first;

        std::size_t Find(std::span<const FactorRow> rows) const { return ofRows[rows[reader]]; }
    };
    /// What else is known of a predictor that may be a reason.
    struct Predictor {
        std::size_t position;
        std::size_t numPlaces;
        /// The column of the table that holds its values.
        std::optional<std::size_t> column;
        /// What the writer writes in front of its value, as the first reason and as a later one.
        std::string fieldAsFirst;
        std::string fieldAsLater;
    };
    /// Of a category and one that it is weighed against.
    struct Pair {
        std::size_t category;
        std::size_t against;
        /// For each predictor.
        std::vector<WeightRange> ranges;
        /// How far each place is from the end of the range; empty where there is no room for that.
        std::vector<double> distances;
        /// With it, what is written for each place's weight; null until it was written once.
        std::vector<const std::string*> weightTexts;
    };
    /// A reason, and what is written for its weight.
    struct Reason {
        std::uint32_t predictor;
        std::string_view weight;
    };

    Pair& GetPair(std::size_t category, std::size_t against);
    void Fill(Pair& pair);
    void FindDistances(const Pair& pair, std::span<const FactorRow> rows);
    std::optional<double> WeightAt(std::size_t predictor, std::size_t place, const Pair& pair) const;
    double DistanceAt(std::size_t predictor, std::size_t place, const Pair& pair) const;
    std::string_view WriteWeight(std::size_t predictor, std::size_t place, Pair& pair);
    std::string_view ValueOf(const Predictor& predictor, const CaseCoder& coder, const TableCases& cases,
                             std::size_t number) const;

    ReasonKind kind;
    CaseExplainer explainer;
    BatchCases batch;
    const ScoreWriter& writer;
    std::vector<Predictor> predictors;
    std::vector<Places> places;
    std::size_t numPlaces = 0;
    ReasonRanking ranking;
    std::size_t numCategories;
    std::map<std::size_t, Pair> pairs;
    /// The one that was asked for last.
    Pair* lastPair = nullptr;
    /// What pairs may still hold.
    std::size_t roomForRanges;
    std::size_t roomForDistances;
    /// What was written for weights, and what is kept for the case at hand alone.
    std::deque<std::string> weightTexts;
    std::deque<std::string> ofCase;
    /// Of the case at hand, for each predictor.
    std::vector<double> distances;
    /// What was found.
    std::vector<Reason> reasons;
};

}  // namespace nbscore
