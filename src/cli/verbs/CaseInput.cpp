#include "cli/verbs/CaseInput.h"

#include "cli/verbs/Options.h"

namespace nbscore {

namespace {

constexpr const char* standardInput = "-";

std::string NameSource(const std::string& argument) {
    return argument == standardInput ? "standard input" : argument;
}

Descriptor OpenSource(const std::string& argument) {
    if (argument == standardInput) return Descriptor::StandardInput();
    return Descriptor::Open(PathFromArgument(argument), argument);
}

}  // namespace

CaseInput::CaseInput(const std::string& argument)
    : CaseInput(OpenSource(argument), NameSource(argument), argument == standardInput && IsTerminal(0)) {}

CaseInput::CaseInput(Descriptor descriptor, std::string sourceName, bool typedIn)
    : name(std::move(sourceName)),
      typed(typedIn),
      size(descriptor.GetRemainingSize()),
      buffer(std::move(descriptor), name),
      stream(&buffer) {
    stream.exceptions(std::ios::badbit);
}

}  // namespace nbscore
