#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoringRule.h"
#include "framework/SeededHash.h"
#include "framework/ValueInterval.h"

/// The framework's own variable: what one field of a data dictionary declares.
class SCOREFRAMEWORK_API BaseDictVar : public ScoreDictVar {
public:
    BaseDictVar(std::string variableName, StorageType storage, MeasureLevel level);
    BaseDictVar(const BaseDictVar& other);
    BaseDictVar& operator=(const BaseDictVar&) = delete;
    ~BaseDictVar() override;

    ScoreDictVar* Clone() const override;
    bool IsMissingValue(const ScoreValue* value) const override;
    std::string GetName() const override;
    int GetStorageType() const override;
    int GetMeasureLevel() const override;
    const ScoreValueLabelSet* GetValueLabelSet() const override;
    void Print(std::ostream& out) const override;
    void SetIndex(int position) override;
    int GetIndex() const override;
    /// As GetIndex, for who knows the class.
    int GetPosition() const { return index.load(std::memory_order_relaxed); }
    /// As GetName, without a copy, for who knows the class.
    const std::string& GetNameText() const { return name; }

    /// The name shown to people; empty when the document gives none.
    const std::string& GetDisplayName() const { return GetDetails().displayName; }
    void SetDisplayName(std::string shownName);

    /// Declares a valid value, behind those declared before.
    void AddValidValue(std::unique_ptr<ScoreValue> value, std::string displayValue);
    /// Declares a value that stands for "missing"; never null, like the valid ones.
    void AddMissingValue(std::unique_ptr<ScoreValue> value);
    bool HasMissingValues() const { return details && !details->missing.empty(); }

    /// Declares a value that is none of the valid ones. It plays no part in scoring: only the functions that ask for
    /// validity look at it.
    void AddInvalidValue(std::unique_ptr<ScoreValue> value);
    const std::vector<std::unique_ptr<ScoreValue>>& GetInvalidValues() const { return GetDetails().invalid; }

    /// Whether the texts of the variable stand for truth values; false for a new one. The storage type stays what it
    /// is.
    bool HoldsTruthValues() const { return holdsTruthValues; }
    void SetHoldsTruthValues(bool holds) { holdsTruthValues = holds; }

    /// By which rule it is told what the declaration allows; the smoothed one for a new variable.
    nbscore::ScoringRule GetRule() const { return rule; }
    void SetRule(nbscore::ScoringRule ruleOfDocument) { rule = ruleOfDocument; }

    void AddInterval(const ValueInterval& interval) { ChangeDetails().intervals.push_back(interval); }
    const std::vector<ValueInterval>& GetIntervals() const { return GetDetails().intervals; }

private:
    /// What most of a document's many variables, its derived fields, do not declare: so they take no memory for it.
    struct Details {
        Details() = default;
        Details(const Details& other);
        Details& operator=(const Details&) = delete;

        std::string displayName;
        std::unique_ptr<ScoreValueLabelSet> valid;
        std::vector<std::unique_ptr<ScoreValue>> missing;
        /// The same once more, for looking up: every value of every case is looked for among them.
        nbscore::SeededSet<double> missingNumbers;
        nbscore::SeededSet<std::string> missingTexts;
        std::vector<std::unique_ptr<ScoreValue>> invalid;
        std::vector<ValueInterval> intervals;
    };

    const Details& GetDetails() const;
    Details& ChangeDetails();

    std::string name;
    StorageType storageType;
    MeasureLevel measureLevel;
    /// Null where nothing of it is declared.
    std::unique_ptr<Details> details;
    bool holdsTruthValues = false;
    nbscore::ScoringRule rule = nbscore::ScoringRule::Smoothed;
    /// Written by the first scoring call with a record that has positions, while other threads may copy the variable.
    std::atomic<int> index = -1;
};

namespace nbscore {

/// Whether the variable may declare missing values. One of another class than the framework's own, even one derived
/// from it, may have a rule of its own and has to be asked about each value.
inline bool MayDeclareMissing(const ScoreDictVar& var) {
    return typeid(var) != typeid(BaseDictVar) || static_cast<const BaseDictVar&>(var).HasMissingValues();
}

}  // namespace nbscore
