#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "batch/Column.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreModel.h"
#include "framework/TransformationDictionary.h"

namespace nbscore {

/// An input of a scorer that is a derived field.
struct DerivedInput {
    std::string name;
    /// Its position among the scorer's inputs.
    std::size_t input;
    bool isNumeric;
};

/// Computes the values of derived inputs from a case's own. A value that the case itself has goes before a computed
/// one.
/// @param take gets the position of each input and its value, null where there is none.
template <typename Take>
void ComputeDerived(const ScoreModel& model, const std::vector<DerivedInput>& inputs, const ScoreCaseRecord& record,
                    const Take& take) {
    const ScoreCaseRecord* const derived =
        model.GetTransformationDictionary()->GetValuesForDeriedVars(&record, model.GetDictionary());
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const ScoreValue* value = record.GetValueByName(inputs[i].name);
        if (value == nullptr && derived != nullptr) value = derived->GetValueByName(inputs[i].name);
        take(i, value);
    }
}

/// The values of derived inputs, computed for one case after another and held as columns. Used by one thread.
class DerivedColumns {
public:
    /// @param model computes them. Both are borrowed.
    DerivedColumns(const ScoreModel& model, const std::vector<DerivedInput>& inputs);

    /// Computes the values of the next case from its own.
    void Add(const ScoreCaseRecord& record);
    /// The column of an input, valid until the next case is added.
    Column Get(std::size_t position) const;

private:
    struct Values {
        std::vector<double> numbers;
        std::string bytes;
        std::vector<std::int64_t> offsets = {0};
        std::vector<std::uint8_t> bits;

        void Add(const ScoreValue* value, bool isNumeric, std::size_t entry);
    };

    const ScoreModel& scoredModel;
    const std::vector<DerivedInput>& derivedInputs;
    std::vector<Values> columns;
    std::size_t numCases = 0;
};

}  // namespace nbscore
