#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"

namespace nbscore {

/// What a model predicts: a variable, whose declared values are the target categories. All borrowed.
class Target {
public:
    /// Takes the variable and, where it declares values, these as the categories, in order. A target that declares none
    /// leaves the categories as they were, deliberate; with null there is no target and no category.
    void Set(const ScoreDictVar* variable);

    /// Null when there is none.
    const ScoreDictVar* GetVar() const { return var; }
    const std::vector<ScoreValue*>& GetCategories() const { return categories; }

    /// Empty when there is none.
    std::string DescribeName() const;
    std::vector<std::string> DescribeCategories() const;
    void Display(std::ostream& out) const;

private:
    const ScoreDictVar* var = nullptr;
    std::vector<ScoreValue*> categories;
};

}  // namespace nbscore
