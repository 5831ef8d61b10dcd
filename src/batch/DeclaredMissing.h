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
        if (!continuous) return false;
        return MCMV::IsMissing(number) || (declaring != nullptr && IsDeclared(number));
    }
    bool Contains(std::string_view text) const { return declaring != nullptr && IsDeclared(text); }

private:
    bool IsDeclared(double number) const;
    bool IsDeclared(std::string_view text) const;

    bool continuous;
    /// Null when the variable is known to declare none.
    std::shared_ptr<const ScoreDictVar> declaring;
};

}  // namespace nbscore
