#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "transform/evaluation/FieldTreatment.h"

namespace nbscore {

/// A field of a case as it comes from outside.
struct SourceField {
    std::string name;
    /// Whether the field holds numbers; else texts.
    bool isNumeric = false;
    /// Of a field whose values are to be treated.
    std::optional<FieldTreatment> treatment;
};

/// The values of a case, each after its treatment where there is one, as a record that is filled again for every case.
/// It is read by name: a model keeps the positions that its first record tells, and callers' fields differ. Used by one
/// thread.
class SourceRecord {
public:
    /// All fields are absent, and treated so.
    explicit SourceRecord(std::vector<SourceField> caseFields);

    void SetAbsent(std::size_t field);
    /// In a field of texts as a cell of a table would hold it.
    void SetValue(std::size_t field, double number);
    void SetValue(std::size_t field, std::string_view text);
    void SetValue(std::size_t field, bool truth);

    const ScoreCaseRecord& Get() const { return record; }
    std::size_t CountFields() const { return fields.size(); }

private:
    class NamedRecord : public BaseCaseRecord {
    public:
        using BaseCaseRecord::BaseCaseRecord;
        bool IsIndexed() const override { return false; }
    };

    void SetTreated(std::size_t field, const FieldTreatment::Treated& treated);

    std::vector<SourceField> fields;
    NamedRecord record;
};

}  // namespace nbscore
