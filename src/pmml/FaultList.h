#pragma once

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>
#include <vector>

#include "framework/VeskException.h"

namespace nbscore {

/// What is wrong with a document, when more is wanted than its first fault. Parts that need nothing of one another are
/// each read by Try.
class FaultList {
public:
    /// Behind so many, nothing more is read: to tell where a fault stands takes a walk over the document.
    static constexpr std::size_t most = 100;

    /// Reads a part, and keeps the fault that it throws.
    /// @return whether the part was read, and without a fault.
    template <typename Work>
    bool Try(const Work& work) {
        if (faults.size() >= most) return false;
        try {
            work();
            return true;
        } catch (const VeskException& fault) {
            faults.push_back(fault);
            return false;
        }
    }

    bool IsEmpty() const { return faults.empty(); }

    /// In the order of the document; each once, though it may have been met twice.
    std::vector<VeskException> Take() {
        const auto place = [](const VeskException& fault) {
            return std::make_pair(fault.GetPlace().line, fault.GetPlace().column);
        };
        std::ranges::stable_sort(faults, {}, place);
        const auto isSame = [](const VeskException& a, const VeskException& b) {
            return a.GetMessage() == b.GetMessage() && a.GetPlace().elementPath == b.GetPlace().elementPath;
        };
        faults.erase(std::unique(faults.begin(), faults.end(), isSame), faults.end());
        return std::move(faults);
    }

private:
    std::vector<VeskException> faults;
};

}  // namespace nbscore
