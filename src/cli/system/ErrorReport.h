#pragma once

#include <ostream>
#include <string>

namespace nbscore {

/// What a run was about when it failed.
struct ErrorContext {
    /// The document, for errors that do not name it themselves.
    std::string document;
    /// The call that shows help, such as "nbscore score --help".
    std::string helpCall;
};

/// Says what the exception being handled means, in one line or a few, and gives the exit status for it. To be called in
/// a catch block; never throws. What comes from outside is made printable.
int ReportError(std::ostream& messages, const ErrorContext& context) noexcept;

}  // namespace nbscore
