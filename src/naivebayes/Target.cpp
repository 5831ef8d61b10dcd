#include "naivebayes/Target.h"

#include <ostream>

#include "naivebayes/Existing.h"

namespace nbscore {

void Target::Set(const ScoreDictVar* variable) {
    var = variable;
    if (var == nullptr) {
        categories.clear();
        return;
    }
    const ScoreValueLabelSet* declared = var->GetValueLabelSet();
    if (declared == nullptr) return;
    categories.clear();
    for (const ScoreValueLabel& label : declared->GetValueLabels())
        categories.push_back(label.GetValue());
}

std::string Target::DescribeName() const {
    return var == nullptr ? std::string() : var->GetName();
}

std::vector<std::string> Target::DescribeCategories() const {
    std::vector<std::string> texts;
    texts.reserve(categories.size());
    for (const ScoreValue* category : categories)
        texts.push_back(Existing(category).GetString());
    return texts;
}

// The categories back to back, with no line end behind the last one: deliberate, the dump's form is fixed.
void Target::Display(std::ostream& out) const {
    out << "Target variable: ";
    if (var != nullptr) var->Print(out);
    out << "Target categories: ";
    for (const ScoreValue* category : categories)
        out << Existing(category).GetString();
}

}  // namespace nbscore
