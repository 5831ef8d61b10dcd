#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "framework/NumericValue.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/StringValue.h"
#include "transform/evaluation/DerivedFields.h"
#include "transform/evaluation/FieldValues.h"

namespace nbscore {

/// The derived values of one case after another. Each is computed when it is first asked for, and at most once per
/// case; a field that nobody asks for costs nothing. Used by one thread at a time.
class DerivedCaseRecord : public ScoreCaseRecord, private FieldValues {
public:
    /// The derived fields must outlive the record.
    explicit DerivedCaseRecord(const DerivedFields& derivedFields);

    /// Turns to the next case; null is a case without any value. Answers to earlier questions end here.
    void Begin(const ScoreCaseRecord* caseRecord);

    /// Derived values are asked for by name only: they have no positions.
    const ScoreValue* GetValueByIndex(int index) const override;
    const ScoreValue* GetValueByName(const std::string& name) const override;
    bool IsIndexed() const override;
    int GetVarIndex(const std::string& name) const override;

private:
    struct Cell {
        /// The value has the field's kind from the beginning and is filled again for every case.
        std::variant<NumericValue, StringValue> value;
        std::uint64_t computedForCase = 0;
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

    const DerivedFields& derived;
    mutable LimitWatch watch;
    const ScoreCaseRecord* record = nullptr;
    /// Counts cases, so that a new case forgets the values of the last one without touching them.
    std::uint64_t caseNumber = 1;
    /// Of the field that is being computed.
    mutable WorkBudget budget{0};
    mutable std::vector<Cell> cells;
    mutable std::vector<Step> way;
    /// How deep the expressions nest that are being evaluated.
    mutable std::size_t levelsInUse = 0;
    /// Positions of fields that hold so long a text for this case that it is not kept for the next.
    mutable std::vector<std::size_t> longTexts;
};

}  // namespace nbscore
