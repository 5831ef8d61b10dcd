#pragma once

#include <streambuf>
#include <string>
#include <vector>

#include "cli/Descriptor.h"

namespace nbscore {

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
