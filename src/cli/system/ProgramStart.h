#pragma once

#include <string>
#include <vector>

namespace nbscore {

#ifdef _WIN32
using SystemCharacter = wchar_t;
#else
using SystemCharacter = char;
#endif

/// The arguments that follow the program's name, in UTF-8. Windows hands them over in UTF-16; what is no text in that
/// becomes U+FFFD.
std::vector<std::string> GetProgramArguments(int count, SystemCharacter** arguments);

/// Lets a console of Windows show the UTF-8 that is written to it while this object lives, and lets the line ends of
/// messages be as they are written. Elsewhere consoles do both by themselves.
class Utf8Console {
public:
    Utf8Console();
    ~Utf8Console();
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    /// What the console took texts for before; 0 when there is no console.
    [[maybe_unused]] unsigned earlierCodePage = 0;
};

}  // namespace nbscore
