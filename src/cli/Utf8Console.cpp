#include "cli/Utf8Console.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#endif

namespace nbscore {

#ifdef _WIN32

Utf8Console::Utf8Console() : earlierCodePage(GetConsoleOutputCP()) {
    if (earlierCodePage != 0) SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stderr), _O_BINARY);
}

Utf8Console::~Utf8Console() {
    if (earlierCodePage != 0) SetConsoleOutputCP(earlierCodePage);
}

#else

Utf8Console::Utf8Console() = default;
Utf8Console::~Utf8Console() = default;

#endif

}  // namespace nbscore
