#include "cli/ProgramArguments.h"

#ifdef _WIN32
#include <windows.h>

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

}  // namespace nbscore
