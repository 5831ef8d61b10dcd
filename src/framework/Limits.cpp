#include "framework/Limits.h"

#include "framework/UsableMemory.h"

namespace nbscore {

CancelledError::CancelledError() : std::runtime_error("cancelled") {}
CancelledError::~CancelledError() = default;
CancelledError::CancelledError(const CancelledError&) = default;
CancelledError& CancelledError::operator=(const CancelledError&) = default;

std::uint64_t Limits::GetMemory() const {
    return maxMemory ? *maxMemory : UsableMemory() / 2;
}

}  // namespace nbscore
