#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "c/nbscore.h"

/// @file
/// What stands between the calls of the C interface and exceptions.

namespace nbscore {

/// An argument that a call cannot take. The message says which.
class BadArgument : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

/// Cases that do not fit the model. The message says which column.
class BadCases : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void RefuseNull(const char* name);

/// Throws BadArgument for a null pointer.
template <typename Object>
Object& RequireArgument(Object* argument, const char* name) {
    if (argument == nullptr) RefuseNull(name);
    return *argument;
}

/// Throws BadArgument for a choice that there is not.
void RequireChoice(std::int32_t choice, std::int32_t last, const char* name);

/// Throws BadArgument for options whose size is none that a version of the struct has, and where the caller uses what
/// only a newer library knows.
/// @param givenSize as the options themselves have it. @param knownSize of the struct here.
void RequireKnownOptions(const void* options, std::size_t givenSize, std::size_t knownSize);

/// The options that a caller gave, or the usual ones for a null pointer.
template <typename Options>
Options TakeOptions(const Options* given, const Options& usual) {
    if (given == nullptr) return usual;
    RequireKnownOptions(given, given->size, sizeof(Options));
    Options taken = usual;
    std::memcpy(&taken, given, std::min(given->size, sizeof(Options)));
    return taken;
}

/// Makes an error of the exception that is being handled, and answers its kind. It needs no memory where there is none.
/// @param error may be null; out.
std::int32_t GiveErrorOfException(nbscore_error** error) noexcept;

/// Does the work of a call, and answers what the call returns.
/// @param error may be null; out.
template <typename Work>
std::int32_t Guarded(nbscore_error** error, const Work& work) noexcept {
    if (error != nullptr) *error = nullptr;
    try {
        work();
        return NBSCORE_OK;
    } catch (...) {
        return GiveErrorOfException(error);
    }
}

}  // namespace nbscore
