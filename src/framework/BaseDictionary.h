#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreDictionary.h"
#include "framework/SeededHash.h"

/// The framework's own dictionary. Looking a name up takes the same time however many variables there are.
class SCOREFRAMEWORK_API BaseDictionary : public ScoreDictionary {
public:
    BaseDictionary();
    ~BaseDictionary() override;

    /// Adding null, or the very variable that already stands under the name, changes nothing and answers
    /// false.
    bool AddVar(const std::string& name, ScoreDictVar* var) override;
    ScoreDictVar* GetVar(const std::string& name) const override;
    void GetAllVars(std::vector<ScoreDictVar*>& vars) const override;

private:
    std::vector<std::unique_ptr<ScoreDictVar>> variables;
    nbscore::SeededMap<std::string, ScoreDictVar*> variablesByName;
};
