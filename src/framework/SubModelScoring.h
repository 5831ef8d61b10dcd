#pragma once

#include "framework/Export.h"
#include "framework/ScoreCaseRecord.h"

/// A face that a set of sub-models may have beside ScoreModel: it scores one of them without the others. To be asked
/// for by `dynamic_cast<SubModelScoring*>(model)`.
class SCOREFRAMEWORK_API SubModelScoring {
public:
    virtual ~SubModelScoring();

    /// The score that ScoreModel::GetScore gives this sub-model for this case, to the last bit. A scoring call like any
    /// other: from the first case on any number of threads may call it.
    /// @param record borrowed for the call.
    /// @param subModel counted from 0; where there is none of this number, the process stops.
    /// @param derivedInRecord true when the record already carries the values of the derived fields.
    virtual double ScoreSubModel(const ScoreCaseRecord* record, int subModel, bool derivedInRecord) = 0;

protected:
    SubModelScoring() = default;
    SubModelScoring(const SubModelScoring&) = default;
    SubModelScoring& operator=(const SubModelScoring&) = default;
};
