#pragma once

#include <string>
#include <vector>

#include "factors/FactorRow.h"
#include "factors/ValueRows.h"
#include "framework/BaseCaseRecord.h"
#include "framework/BaseDictVar.h"
#include "framework/ModelTables.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"

namespace nbscore {

/// How a predictor's value is fetched from a case and looked up, by the smoothed rule: as Classifier::Encode does it,
/// with what can be known beforehand found out once. The categories are copied; the variable is borrowed, and asked for
/// its position anew for each case.
class FieldRead {
public:
    /// @param predictor of texts, numbers or bins.
    explicit FieldRead(const PredictorTables& predictor);

    /// The category's code and one, or 0 for a value that is absent, missing or no category.
    /// @param indexed whether the record is.
    /// @param derivedRecord may be null.
    FactorRow PlaceIn(const ScoreCaseRecord& record, bool indexed, const ScoreCaseRecord* derivedRecord) const;
    /// The same of a record of this very class.
    FactorRow PlaceIn(const BaseCaseRecord& record, const ScoreCaseRecord* derivedRecord) const;

private:
    /// What tells that a value is missing.
    enum class Missing {
        /// Nothing: the variable is categorical, and its missing values are coded like any other.
        Never,
        /// It is the system-missing number.
        AsNumber,
        /// The variable says so.
        AsDeclared
    };

    FactorRow PlaceOf(const ScoreValue& value) const;
    FactorRow PlaceOfForeign(const ScoreValue& value) const;
    FactorRow PlaceOf(double number) const;
    FactorRow PlaceOf(const std::string& text) const { return placesOfRows[rows.RowOf(std::string_view(text))]; }
    FactorRow PlaceInDerived(const ScoreCaseRecord* derivedRecord) const;

    const ScoreDictVar* var;
    /// The same, where it is of exactly this class.
    const BaseDictVar* baseVar;
    std::string name;
    Missing missing;
    PredictorTables::Kind kind;
    ValueRows rows;
    std::vector<FactorRow> placesOfRows;
};

}  // namespace nbscore
