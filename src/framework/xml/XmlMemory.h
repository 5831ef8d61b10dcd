#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>

namespace nbscore {

/// The memory of one document and its parser: all that they have not given back goes with this object.
///
/// The XML library leaves behind what it was building when memory runs out. Used by one thread at a time.
class XmlMemory : public xercesc::MemoryManager {
public:
    XmlMemory() = default;
    ~XmlMemory() override;

    /// Throws xercesc::OutOfMemoryException, which is what the library wants to see.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;
    /// The library's own one: exceptions outlive the parser that throws them.
    xercesc::MemoryManager* getExceptionMemoryManager() override;

private:
    /// Stands in front of each piece of memory, in a ring of all of them.
    struct alignas(std::max_align_t) Link {
        Link* before = this;
        Link* behind = this;
    };

    Link ring;
};

}  // namespace nbscore
