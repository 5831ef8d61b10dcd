#include "cli/DescriptorBuffer.h"

namespace nbscore {

DescriptorBuffer::int_type DescriptorBuffer::underflow() {
    const std::size_t count = descriptor.Read(bytes.data(), bytes.size(), name);
    setg(bytes.data(), bytes.data(), bytes.data() + count);
    return count == 0 ? traits_type::eof() : traits_type::to_int_type(bytes.front());
}

}  // namespace nbscore
