#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "framework/NumericValue.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/StringValue.h"
#include "transform/evaluation/DerivedFields.h"
#include "transform/evaluation/Expression.h"

namespace nbscore {

/// The derived values of one case after another. Each is computed when it is first asked for, and at most once for a
/// case; an unused field costs nothing. Used by one thread at a time.
class DerivedCaseRecord : public ScoreCaseRecord, private FieldValues {
public:
    /// The derived fields must outlive the record.
    explicit DerivedCaseRecord(const DerivedFields& derivedFields);

    /// Goes on to the next case; null is a case without any values. Values returned for the case before become invalid.
    void Begin(const ScoreCaseRecord* caseRecord);

    /// Always null: derived values have names, but no positions.
    const ScoreValue* GetValueByIndex(int index) const override;
    const ScoreValue* GetValueByName(const std::string& name) const override;
    bool IsIndexed() const override;
    int GetVarIndex(const std::string& name) const override;

private:
    struct Cell {
        std::uint64_t computedForCase = 0;
        /// Where its value stands among the numbers, or among the texts, as is the field's kind.
        std::uint32_t place;
        bool isPresent = false;
    };
    struct Step {
        std::size_t field;
        std::size_t nextDependency;
    };

    ExpressionValue ValueOf(const FieldReference& field) const override;
    bool IsValid(const FieldReference& field) const override;
    WorkBudget& Budget() const override { return budget; }

    ExpressionValue GetInput(std::size_t position) const;
    ExpressionValue GetDerived(std::size_t position) const;
    bool IsComputed(std::size_t field) const { return cells[field].computedForCase == caseNumber; }
    void ComputeWithDependencies(std::size_t wanted) const;
    std::size_t CountComputedAhead(const DerivedField& field) const;
    void Compute(std::size_t position) const;
    void Store(ExpressionValue result, std::size_t position) const;
    NumericValue& NumberOf(std::size_t field) const { return numbers[cells[field].place]; }
    StringValue& TextOf(std::size_t field) const { return texts[cells[field].place]; }
    bool HoldsNumber(std::size_t field) const { return derived.fields[field].function.GivesNumbers(); }
    const ScoreValue& ValueIn(std::size_t field) const;

    const DerivedFields& derived;
    mutable LimitWatch watch;
    const ScoreCaseRecord* record = nullptr;
    /// Counts cases: so a new case invalidates the values of the last one without touching them.
    std::uint64_t caseNumber = 1;
    /// That of the field that is being computed.
    mutable WorkBudget budget{0};
    mutable std::vector<Cell> cells;
    /// The values of all cells, overwritten for every case.
    mutable std::vector<NumericValue> numbers;
    mutable std::vector<StringValue> texts;
    mutable std::vector<Step> path;
    /// How deep the expressions nest that are now being evaluated.
    mutable std::size_t levelsInUse = 0;
    /// Positions of the fields whose text in this case is so long that its memory is freed with the case.
    mutable std::vector<std::size_t> longTexts;
};

}  // namespace nbscore
