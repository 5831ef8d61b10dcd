#pragma once

#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreDictVar.h"

/// A set of variables, each under its name. The dictionary owns its variables.
class SCOREFRAMEWORK_API ScoreDictionary {
public:
    virtual ~ScoreDictionary();

    /// Adds a variable and takes ownership of it. A name that is taken keeps the variable it has: the new one is
    /// deleted and the answer is false. Where adding fails with an exception, the new one is deleted too.
    virtual bool AddVar(const std::string& name, ScoreDictVar* var) = 0;
    /// The named variable, or null. It stays the dictionary's own.
    virtual ScoreDictVar* GetVar(const std::string& name) const = 0;
    /// Replaces the vector's content by every variable, in the order in which they were added.
    virtual void GetAllVars(std::vector<ScoreDictVar*>& vars) const = 0;

protected:
    ScoreDictionary() = default;
    ScoreDictionary(const ScoreDictionary&) = delete;
    ScoreDictionary& operator=(const ScoreDictionary&) = delete;
};
