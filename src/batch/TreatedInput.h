#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "batch/CaseValues.h"
#include "factors/FactorRow.h"
#include "factors/ValueRows.h"
#include "framework/ModelTables.h"
#include "framework/ScoreDictVar.h"
#include "naivebayes/Density.h"
#include "transform/evaluation/FieldTreatment.h"

namespace nbscore {

/// One predictor by the standard's rule: of counted values, or of densities.
class StandardPredictor {
public:
    explicit StandardPredictor(const PredictorTables& predictor);

    bool HasDensities() const { return !rows.has_value(); }
    /// One for each target category.
    const std::vector<double>& GetFactors(FactorRow row) const { return factors[row - firstKnownRow]; }
    const std::vector<Density>& GetDensities() const { return densities; }

    /// The row of a value that is not missing. Where there are densities, any row from firstKnownRow on says that there
    /// is a number.
    /// @param value a double or a std::string_view.
    /// @param number out; set where there are densities and a number.
    template <typename Value>
    FactorRow RowOf(Value value, double& number) const;

private:
    std::optional<ValueRows> rows;
    /// Of the rows from firstKnownRow on.
    std::vector<std::vector<double>> factors;
    std::vector<Density> densities;
};

/// One input by the standard's rule, with the predictors that read it: treats values and tells what they say. Does not
/// change once it is made; any number of threads may encode.
class TreatedInput {
public:
    /// @param treatment null for a derived field, whose values are not treated.
    TreatedInput(const ScoreDictVar& var, const FieldTreatment* treatmentOfField);

    /// @return the predictor's place among those of this input.
    std::size_t AddPredictor(const PredictorTables& predictor);
    const StandardPredictor& GetPredictor(std::size_t place) const { return predictors[place]; }

    /// Gives the values room for so many entries.
    void MakeRoom(TreatedValues& values, std::size_t entries) const;
    /// Sets an entry to what a value says: none, a number, a text, or what an entry of other values says.
    void EncodeMissing(TreatedValues& values, std::size_t entry) const;
    void Encode(TreatedValues& values, std::size_t entry, double number) const;
    void Encode(TreatedValues& values, std::size_t entry, std::string_view text) const;
    void Copy(TreatedValues& values, std::size_t entry, const TreatedValues& others, std::size_t from) const;

private:
    void Put(TreatedValues& values, std::size_t entry, const FieldTreatment::Treated& treated) const;

    /// Of a data field.
    std::optional<FieldTreatment> treatment;
    /// Of a derived field: its variable, to be asked which values are missing.
    std::shared_ptr<const ScoreDictVar> derived;
    std::vector<StandardPredictor> predictors;
};

}  // namespace nbscore
