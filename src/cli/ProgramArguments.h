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

}  // namespace nbscore
