#pragma once

#include <string>
#include <system_error>

namespace nbscore {

/// What the operating system says about an error number (errno).
inline std::string GetSystemReason(int errorNumber) {
    return std::error_code(errorNumber, std::generic_category()).message();
}

}  // namespace nbscore
