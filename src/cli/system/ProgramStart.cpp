#include "cli/system/ProgramStart.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <string_view>
#endif

namespace nbscore {

namespace {

#ifdef _WIN32

std::string AsUtf8(const wchar_t* argument) {
    const std::wstring_view text(argument);
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), size, nullptr, nullptr);
    return utf8;
}

#else

std::string AsUtf8(const char* argument) {
    return argument;
}

#endif

}  // namespace

std::vector<std::string> GetProgramArguments(int count, SystemCharacter** arguments) {
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(AsUtf8(arguments[i]));
    return texts;
}

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
