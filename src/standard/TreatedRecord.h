#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/NumericValue.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/SeededHash.h"
#include "framework/StringValue.h"
#include "transform/evaluation/FieldTreatment.h"

namespace nbscore {

/// The data fields whose values are treated before a model uses them, each once.
class TreatedFields {
public:
    struct Field {
        /// Borrowed.
        const ScoreDictVar* var;
        std::string name;
        FieldTreatment treatment;
        /// In records that have positions.
        int position = -1;
    };

    /// Appends the field, or gives the one of this name another treatment.
    /// @return its position here.
    std::size_t Set(const ScoreDictVar& var, FieldTreatment treatment);
    /// Appends the field, unless it is here, with a treatment that only ends cases with invalid values.
    std::size_t Require(const ScoreDictVar& var);
    /// Remembers where records like this one hold the fields.
    void NotePositions(const ScoreCaseRecord& record);

    const std::vector<Field>& GetAll() const { return fields; }
    /// -1 for a name that no field has.
    int Find(const std::string& name) const;

private:
    std::vector<Field> fields;
    SeededMap<std::string, std::size_t> slotsByName;
};

/// A record that stands in front of a case's own and has the treated values of treated fields; of other names it gives
/// what the case's own record gives. Made once and filled again for every case. The position of a treated field is that
/// among the treated fields; no other has one.
class TreatedRecord : public ScoreCaseRecord {
public:
    TreatedRecord() = default;

    /// Treats the values of a case. The fields and the case's record are borrowed until the next call.
    /// @param usesPositions whether the record's positions are those that the fields have noted.
    /// @return the first field with an invalid value, which the record has no value for; null when there is none.
    const TreatedFields::Field* Fill(const TreatedFields& treatedFields, const ScoreCaseRecord& caseRecord,
                                     bool usesPositions);

    const ScoreValue* GetValueByIndex(int index) const override;
    const ScoreValue* GetValueByName(const std::string& name) const override;
    bool IsIndexed() const override;
    int GetVarIndex(const std::string& name) const override;

private:
    struct Cell {
        FieldTreatment::Kind kind = FieldTreatment::Kind::Missing;
        bool isNumber = false;
        NumericValue number{0.0};
        StringValue text{std::string()};

        void Hold(const FieldTreatment::Treated& treated);
    };

    static void Treat(const FieldTreatment& treatment, const ScoreValue* value, Cell& cell);

    const TreatedFields* fields = nullptr;
    const ScoreCaseRecord* record = nullptr;
    std::vector<Cell> cells;
};

}  // namespace nbscore
