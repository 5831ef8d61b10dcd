#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/PreparedRow.h"
#include "framework/ScoreModel.h"

namespace nbscore {

class BatchScorer;
class SourceRecord;
struct DerivedInput;
struct SourceField;

/// A row whose fields are those of a table: SourceScorer::MakeRow tells of it. What is called for each field of each
/// case stands here, so that a caller who knows this kind of row pays for one call alone.
class SourceRow final : public PreparedRow {
public:
    struct Field {
        /// Of the field, borrowed.
        const std::string* name;
        bool takesTexts;
        /// The input that it is.
        std::optional<std::size_t> input;
        /// Where it stands among the sources that derived inputs are computed from.
        std::optional<std::size_t> source;
    };

    /// @param model, derived: borrowed, as long as the row, and so are the names of fields.
    SourceRow(const ScoreModel& model, const BatchScorer& scorer, std::vector<Field> rowFields,
              std::vector<SourceField> sources, const std::vector<DerivedInput>& derived);
    ~SourceRow() override;

    /// Throws std::invalid_argument, too, in a field that takes none.
    void SetText(std::size_t position, std::string_view text) override {
        const Field& field = Find(position);
        if (!field.takesTexts) RefuseText(field);
        if (field.input) row->SetText(*field.input, text);
        if (field.source) SetSource(*field.source, text);
    }
    void SetNumber(std::size_t position, double number) override {
        const Field& field = Find(position);
        if (field.input) row->SetNumber(*field.input, number);
        if (field.source) SetSource(*field.source, number);
    }
    void SetMissing(std::size_t position) override {
        const Field& field = Find(position);
        if (field.input) row->SetMissing(*field.input);
        if (field.source) SetSourceMissing(*field.source);
    }
    /// Computes derived inputs first, where a field that they read was set since.
    RowAnswer Score() override {
        if (mustCompute) ComputeInputs();
        return row->Score();
    }
    std::span<const RankedSubModel> ScoreBest(std::size_t count) override {
        if (mustCompute) ComputeInputs();
        return row->ScoreBest(count);
    }

private:
    const Field& Find(std::size_t position) const {
        if (position >= fields.size()) RefuseField(position);
        return fields[position];
    }
    [[noreturn]] static void RefuseField(std::size_t position);
    [[noreturn]] static void RefuseText(const Field& field);
    void SetSource(std::size_t source, std::string_view text);
    void SetSource(std::size_t source, double number);
    void SetSourceMissing(std::size_t source);
    void ComputeInputs();

    const ScoreModel& scoredModel;
    const std::vector<DerivedInput>& derivedInputs;
    std::unique_ptr<PreparedRow> row;
    std::vector<Field> fields;
    std::unique_ptr<SourceRecord> record;
    bool mustCompute;
};

}  // namespace nbscore
