#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "pmml/DocumentMemory.h"

/// @file
/// What using the XML library takes: making it ready, its memory, and its exceptions. Nothing else in src/ may need
/// the library to be loaded.

namespace nbscore {

/// Makes the XML library ready. Any thread may call it, any number of times: the first call does the work, and the
/// library is put away when the process ends (or when this library is unloaded).
void EnsureXmlPlatform();

/// Within a handler: throws the same again, but what is the library's own as VeskException 3 or std::bad_alloc.
[[noreturn]] void RethrowXmlFault();

/// The memory of one parser or DOM: all that they have not given back goes with this object. The XML library leaves
/// behind what it was building when memory runs out. Used by one thread at a time.
class XmlMemory : public xercesc::MemoryManager {
public:
    explicit XmlMemory(std::shared_ptr<DocumentMemory> documentMemory) : document(std::move(documentMemory)) {}
    ~XmlMemory() override;

    /// Throws xercesc::OutOfMemoryException, which is what the library wants to see, when the system gives no more; and
    /// VeskException 12 where the document's limits do not.
    void* allocate(XMLSize_t size) override;
    void deallocate(void* memory) override;
    /// Counts the pieces of memory that are taken from now on and calls `tooMany`, which throws, instead of giving out
    /// more than `most`.
    void LimitPieces(std::uint64_t most, std::function<void()> tooMany);
    /// Starts counting from zero again.
    void RecountPieces() { pieces = 0; }
    /// Gives out as many as are asked for, as it does at first.
    void LiftLimit() { onTooManyPieces = nullptr; }

    /// The library's own one: exceptions outlive the parser that throws them.
    xercesc::MemoryManager* getExceptionMemoryManager() override;

private:
    /// Stands in front of each piece of memory, in a ring of all of them.
    struct alignas(std::max_align_t) Link {
        Link* before = this;
        Link* behind = this;
        std::size_t bytes = 0;
    };

    std::shared_ptr<DocumentMemory> document;
    Link ring;
    std::uint64_t pieces = 0;
    std::uint64_t mostPieces = 0;
    std::function<void()> onTooManyPieces;
};

}  // namespace nbscore
