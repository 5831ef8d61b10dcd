#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>

#include "cli/system/Descriptor.h"

namespace nbscore {

/// The table of cases that a CASES argument names: a file, or standard input for "-".
class CaseInput {
public:
    /// Throws InputOutputError when the file cannot be opened.
    explicit CaseInput(const std::string& argument);
    CaseInput(const CaseInput&) = delete;
    CaseInput& operator=(const CaseInput&) = delete;

    /// Throws InputOutputError and InterruptedError out of its reading operations.
    std::istream& GetStream() { return stream; }
    /// What errors call the table.
    const std::string& GetName() const { return name; }
    /// Its size in bytes, where it is known before reading.
    std::optional<std::uint64_t> GetSize() const { return size; }
    /// Whether somebody has to type it.
    bool IsTyped() const { return typed; }

private:
    CaseInput(Descriptor descriptor, std::string sourceName, bool typedIn);

    std::string name;
    bool typed;
    std::optional<std::uint64_t> size;
    DescriptorBuffer buffer;
    std::istream stream;
};

}  // namespace nbscore
