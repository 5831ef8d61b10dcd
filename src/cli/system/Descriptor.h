#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <streambuf>
#include <string>
#include <vector>

namespace nbscore {

/// A file descriptor of the operating system to read from, opened here or lent.
///
/// Files are read this way, and not through std::ifstream, because a stream hides why reading failed and
/// cannot be woken up while it waits for a pipe.
class Descriptor {
public:
    /// Opens a file. Throws InputOutputError with the system's reason.
    static Descriptor Open(const std::filesystem::path& path, const std::string& name);
    /// Standard input, which stays open.
    static Descriptor StandardInput();

    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&&) = delete;

    /// Reads at most size bytes, waiting for the first; 0 at the end. Throws InputOutputError with the
    /// system's reason, and InterruptedError as soon as a stop is requested.
    std::size_t Read(char* bytes, std::size_t size, const std::string& name) const;
    /// How many bytes are left to read, where the system knows: in a regular file.
    std::optional<std::uint64_t> GetRemainingSize() const;

private:
    Descriptor(int descriptorNumber, bool closeAtEnd) : number(descriptorNumber), owned(closeAtEnd) {}

    int number;
    bool owned;
};

/// Whether a standard stream of the process (0 input, 1 output, 2 error) is a terminal.
bool IsTerminal(int descriptor);

/// Whether standard input is read from the file of this path.
bool IsStandardInput(const std::filesystem::path& path);

/// Makes sure that the standard streams are open, for a process that was started with some of them closed. A
/// file opened later would otherwise take the place of one, and errors would be written into it.
void OpenMissingStandardStreams();

/// Lets a stream read from a descriptor. What goes wrong leaves the reading operation as the exception that
/// it is, when the stream's exceptions() hold badbit.
class DescriptorBuffer : public std::streambuf {
public:
    /// @param sourceName what errors call the input.
    DescriptorBuffer(Descriptor inputDescriptor, std::string sourceName)
        : descriptor(std::move(inputDescriptor)), name(std::move(sourceName)), bytes(std::size_t{1} << 18) {}

protected:
    int_type underflow() override;

private:
    Descriptor descriptor;
    std::string name;
    std::vector<char> bytes;
};

}  // namespace nbscore
