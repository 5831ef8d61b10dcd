#pragma once

#include <cstddef>

#include "framework/CaseReading.h"
#include "framework/Export.h"
#include "framework/ModelTables.h"
#include "framework/ScoreCaseRecord.h"

/// A face that a model may have beside ScoreModel: it lays open the tables that it scores with. To be asked for by
/// `dynamic_cast<const ModelSelfTables*>(model)`.
class SCOREFRAMEWORK_API ModelSelfTables {
public:
    virtual ~ModelSelfTables();

    /// To be asked of a configured model that has no scoring obstacle (ModelSelfCheck); of any other it may stop the
    /// process. What the tables point to is valid until the model changes or goes. Takes time proportional to the
    /// number of categories. May be called from any thread once the model is configured.
    virtual nbscore::ModelTables GetTables() const = 0;

    /// Finds the rows of the tables that a case reads, as scoring does. A scoring call like any other: from the first
    /// case on any number of threads may call it, each with a reading of its own.
    /// @param record borrowed for the call, and as long as the reading's values are looked at.
    /// @param classifier a position in the tables; where there is none of this number, the process stops.
    /// @param derivedInRecord true when the record already carries the values of the derived fields.
    virtual void ReadCase(const ScoreCaseRecord* record, std::size_t classifier, bool derivedInRecord,
                          nbscore::CaseReading& reading) = 0;

protected:
    ModelSelfTables() = default;
    ModelSelfTables(const ModelSelfTables&) = default;
    ModelSelfTables& operator=(const ModelSelfTables&) = default;
};
