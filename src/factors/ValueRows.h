#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "factors/FactorRow.h"
#include "factors/KnownRows.h"
#include "framework/Export.h"
#include "framework/MCMV.h"
#include "framework/ModelTables.h"
#include "framework/ScoreDictVar.h"

namespace nbscore {

/// Which values of a variable stand for none. Only a continuous variable has such values: a categorical one has its
/// missing values looked up like any other.
class SCOREFRAMEWORK_API DeclaredMissing {
public:
    /// None.
    DeclaredMissing() = default;
    /// @param var copied.
    explicit DeclaredMissing(const ScoreDictVar& var);

    bool Contains(double number) const {
        if (declaring != nullptr) return IsDeclared(number);
        return continuous && MCMV::IsMissing(number);
    }
    bool Contains(std::string_view text) const { return declaring != nullptr && IsDeclared(text); }

private:
    bool IsDeclared(double number) const;
    bool IsDeclared(std::string_view text) const;

    bool continuous = false;
    /// To be asked about each value, the system-missing number too. Null when the variable is not continuous, or is
    /// known to declare none.
    std::shared_ptr<const ScoreDictVar> declaring;
};

/// Which row each value of one variable stands for, to one predictor or to several that share their rows because they
/// read the same variable. Immutable; any number of threads may ask.
class SCOREFRAMEWORK_API ValueRows {
public:
    /// @param predictors of the same variable and the same kind, which is Texts, Numbers or Bins; at
    /// least one.
    explicit ValueRows(std::span<const PredictorTables* const> predictors)
        : ValueRows(predictors, DeclaredMissing(*predictors.front()->var)) {}
    /// @param missingValues those that stand for none, whatever the variable says.
    ValueRows(std::span<const PredictorTables* const> predictors, DeclaredMissing missingValues)
        : missing(std::move(missingValues)), known(MakeKnown(predictors, codesOfPredictors)) {}

    /// A Value is a double or a std::string_view: what a case record would hold as a number or as a text.
    template <typename Value>
    FactorRow RowOf(Value value) const {
        return std::visit([&](const auto& rows) { return RowIn(rows, value); }, known);
    }
    /// Calls `work` with a function from values to rows that a loop over many values pays once for.
    template <typename Work>
    void Visit(const Work& work) const {
        std::visit([&](const auto& rows) { work([this, &rows](auto value) { return this->RowIn(rows, value); }); },
                   known);
    }

    std::size_t GetNumRows() const;
    /// What the encoder of a predictor gives for the values of a row from firstKnownRow on; -1 for nothing.
    int GetCode(std::size_t predictor, FactorRow row) const;

private:
    using Known = std::variant<TextRows, NumberRows, BinRows>;

    static Known MakeTexts(std::span<const PredictorTables* const> predictors, std::vector<std::vector<int>>& codes);
    static Known MakeNumbers(std::span<const PredictorTables* const> predictors, std::vector<std::vector<int>>& codes);
    static Known MakeKnown(std::span<const PredictorTables* const> predictors, std::vector<std::vector<int>>& codes);

    template <typename Rows, typename Value>
    FactorRow RowIn(const Rows& rows, Value value) const {
        return missing.Contains(value) ? missingRow : rows.RowOf(value);
    }

    DeclaredMissing missing;
    /// Of texts and numbers, indexed [predictor][row - firstKnownRow].
    std::vector<std::vector<int>> codesOfPredictors;
    Known known;
};

}  // namespace nbscore
