#pragma once

#include <ostream>
#include <string>

#include "framework/BaseDictVar.h"

namespace nbscore::test {

/// A variable that prints a mark, so that these texts do not depend on how variables describe themselves.
class MarkedVariable : public BaseDictVar {
public:
    explicit MarkedVariable(const std::string& mark) : BaseDictVar(mark, NumericStorage, Categorical) {}
    void Print(std::ostream& out) const override { out << "<" << GetName() << ">\n"; }
};

}  // namespace nbscore::test
