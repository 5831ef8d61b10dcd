#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>

#include "framework/Limits.h"

namespace nbscore {

/// The memory of one document and its parser: all that they have not given back goes with this object. With it go the
/// limits that the document is read under.
///
/// The XML library leaves behind what it was building when memory runs out. Used by one thread at a time.
class XmlMemory : public xercesc::MemoryManager {
public:
    explicit XmlMemory(const Limits& limits);
    ~XmlMemory() override;

    /// Throws xercesc::OutOfMemoryException, which is what the library wants to see, when the system gives no more; and
    /// VeskException 12 where the limits do not.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;
    /// Counts the pieces of memory that are taken from now on and calls `tooMany`, which throws, instead of giving out
    /// more than `most`.
    void LimitPieces(std::uint64_t most, std::function<void()> tooMany);
    /// Begins to count anew.
    void RecountPieces() { pieces = 0; }
    /// Gives out as many as are asked for, as it does at first.
    void LiftLimit() { onTooManyPieces = nullptr; }

    /// How much is given out at present.
    std::uint64_t GetBytes() const { return bytes; }
    /// For all who walk through the document.
    LimitWatch& GetWatch() { return watch; }

    /// The library's own one: exceptions outlive the parser that throws them.
    xercesc::MemoryManager* getExceptionMemoryManager() override;

private:
    /// Stands in front of each piece of memory, in a ring of all of them.
    struct alignas(std::max_align_t) Link {
        Link* before = this;
        Link* behind = this;
        std::size_t bytes = 0;
    };

    LimitWatch watch;
    const std::uint64_t mostBytes;
    std::uint64_t bytes = 0;
    Link ring;
    std::uint64_t pieces = 0;
    std::uint64_t mostPieces = 0;
    std::function<void()> onTooManyPieces;
};

}  // namespace nbscore
