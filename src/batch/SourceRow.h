#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "batch/BatchScorer.h"
#include "batch/DerivedColumns.h"
#include "batch/PreparedRow.h"
#include "batch/SourceRecord.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// A row whose fields are those of a table. The inputs that are derived from them are computed when the row is scored,
/// unless no field that they read was set since.
class SourceRow : public PreparedRow {
public:
    struct Field {
        std::string name;
        bool takesTexts;
        /// The input that it is.
        std::optional<std::size_t> input;
        /// Where it stands among the sources that derived inputs are computed from.
        std::optional<std::size_t> source;
    };

    /// @param model, derived: borrowed, as long as the row.
    SourceRow(const ScoreModel& model, const BatchScorer& scorer, std::vector<Field> rowFields,
              std::vector<SourceField> sources, const std::vector<DerivedInput>& derived);

    void SetText(std::size_t position, std::string_view text) override;
    void SetNumber(std::size_t position, double number) override;
    void SetMissing(std::size_t position) override;
    RowAnswer Score() override;
    std::span<const RankedSubModel> ScoreBest(std::size_t count) override;

private:
    const Field& Find(std::size_t position) const;
    void ComputeInputs();

    const ScoreModel& scoredModel;
    const std::vector<DerivedInput>& derivedInputs;
    std::unique_ptr<PreparedRow> row;
    std::vector<Field> fields;
    SourceRecord record;
    bool mustCompute;
};

}  // namespace nbscore
