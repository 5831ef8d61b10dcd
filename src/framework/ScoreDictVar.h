#pragma once

#include <iosfwd>
#include <string>

#include "framework/Export.h"
#include "framework/ScoreValue.h"
#include "framework/ScoreValueLabelSet.h"

/// A variable: its name, its kind and its declared values.
///
/// A variable belongs to its dictionary. It is written to while a document is read, and once more, by SetIndex, when
/// the first case with positions is scored. Models see to it that this happens once, before any GetIndex, but not that
/// it happens alone: other threads may meanwhile call all other operations, Clone among them.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreDictVar {
public:
    enum StorageType { NumericStorage = 0, StringStorage = 1 };
    enum MeasureLevel { Continuous = 0, Ordinal = 1, Categorical = 2 };

    virtual ~ScoreDictVar();

    /// A new variable with the same content, its position included; the caller owns it.
    virtual ScoreDictVar* Clone() const = 0;
    /// True when the value is system-missing or equals one of the variable's declared missing values.
    virtual bool IsMissingValue(const ScoreValue* value) const = 0;
    virtual std::string GetName() const = 0;
    /// A StorageType: 0 for numbers, anything else for text.
    virtual int GetStorageType() const = 0;
    /// A MeasureLevel: 0 for a continuous variable, 1 and 2 for the two categorical levels.
    virtual int GetMeasureLevel() const = 0;
    /// The declared valid values in order, owned by the variable; null when it declares none.
    virtual const ScoreValueLabelSet* GetValueLabelSet() const = 0;
    /// Writes a one-line description that ends with a line end.
    virtual void Print(std::ostream& out) const = 0;
    /// Remembers the variable's position in case records; -1 is "no position", which a new variable has.
    virtual void SetIndex(int position) = 0;
    virtual int GetIndex() const = 0;

protected:
    ScoreDictVar() = default;
    ScoreDictVar(const ScoreDictVar&) = default;
    ScoreDictVar& operator=(const ScoreDictVar&) = default;
};
