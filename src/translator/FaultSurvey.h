#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "framework/VeskException.h"
#include "pmml/FaultList.h"
#include "reading/CountCells.h"

namespace nbscore {

/// Looking for all that is wrong with a document that was refused: each part that stands by itself is read, and what
/// needs a part that is at fault is left out, because it would only be refused for the same reason again. Nothing is
/// built.
struct FaultSurvey {
    explicit FaultSurvey(const CountCells& documentCells) : cells(documentCells) {}

    /// Reads a part, and keeps its fault, also one that is thrown as a pointer.
    template <typename Work>
    bool Try(const Work& work) {
        return faults.Try([&work] {
            try {
                work();
            } catch (const VeskException* thrown) {
                const std::unique_ptr<const VeskException> owned(thrown);
                throw VeskException(*owned);
            }
        });
    }

    FaultList faults;
    /// What each input alone may take, because nothing of another one is kept.
    CountCells cells;
    /// The fields that cannot be used: inputs of them are left out.
    std::set<std::string, std::less<>> brokenFields;
    /// Whether one of them is the target: what is said of the target is left out.
    bool isTargetBroken = false;
};

}  // namespace nbscore
