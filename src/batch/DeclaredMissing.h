#pragma once

#include <memory>
#include <string_view>

#include "framework/MCMV.h"
#include "framework/ScoreDictVar.h"

namespace nbscore {

/// Which values of a variable stand for none. Only a continuous variable has such values: a categorical one has its
/// missing values looked up like any other.
class DeclaredMissing {
public:
    /// @param var copied.
    explicit DeclaredMissing(const ScoreDictVar& var);

    bool Contains(double number) const {
        if (declaring != nullptr) return IsDeclared(number);
        return continuous && MCMV::IsMissing(number);
    }
    bool Contains(std::string_view text) const { return declaring != nullptr && IsDeclared(text); }

private:
    bool IsDeclared(double number) const;
    bool IsDeclared(std::string_view text) const;

    bool continuous;
    /// To be asked about each value, the system-missing number too. Null when the variable is not continuous, or is
    /// known to declare none.
    std::shared_ptr<const ScoreDictVar> declaring;
};

}  // namespace nbscore
