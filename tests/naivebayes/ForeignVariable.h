#pragma once

#include <ostream>
#include <string>
#include <utility>

#include "framework/ScoreDictVar.h"

namespace nbscore::test {

/// A categorical variable of texts, of a class that is none of the framework's: it does nothing for threads.
class ForeignVariable : public ScoreDictVar {
public:
    explicit ForeignVariable(std::string variableName) : name(std::move(variableName)) {}

    ScoreDictVar* Clone() const override { return new ForeignVariable(*this); }
    bool IsMissingValue(const ScoreValue*) const override { return false; }
    std::string GetName() const override { return name; }
    int GetStorageType() const override { return StringStorage; }
    int GetMeasureLevel() const override { return Categorical; }
    const ScoreValueLabelSet* GetValueLabelSet() const override { return nullptr; }
    void Print(std::ostream& out) const override { out << name << '\n'; }
    void SetIndex(int position) override { index = position; }
    int GetIndex() const override { return index; }

private:
    std::string name;
    int index = -1;
};

}  // namespace nbscore::test
