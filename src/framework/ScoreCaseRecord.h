#pragma once

#include <string>

#include "framework/Export.h"
#include "framework/ScoreValue.h"

/// One case: the values of its variables, by position, by name, or both.
///
/// Values belong to the record and are valid until it changes. A record is read by one scoring call at a time.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreCaseRecord {
public:
    virtual ~ScoreCaseRecord();

    /// The value at a position; null when it is absent or the position (-1 among them) is outside the record.
    virtual const ScoreValue* GetValueByIndex(int index) const = 0;
    /// The value of the named variable; null when it is absent or the record does not know the name.
    virtual const ScoreValue* GetValueByName(const std::string& name) const = 0;
    /// True when values can be fetched by position. All records of one scoring run must then agree on positions.
    virtual bool IsIndexed() const = 0;
    /// The position of the named variable; -1 when the record does not know the name.
    virtual int GetVarIndex(const std::string& name) const = 0;

protected:
    ScoreCaseRecord() = default;
    ScoreCaseRecord(const ScoreCaseRecord&) = default;
    ScoreCaseRecord& operator=(const ScoreCaseRecord&) = default;
};
