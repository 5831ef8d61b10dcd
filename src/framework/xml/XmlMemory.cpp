#include "framework/xml/XmlMemory.h"

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <limits>
#include <new>
#include <utility>

namespace nbscore {

XmlMemory::~XmlMemory() {
    while (ring.behind != &ring)
        deallocate(ring.behind + 1);
}

void XmlMemory::LimitPieces(std::uint64_t most, std::function<void()> tooMany) {
    pieces = 0;
    mostPieces = most;
    onTooManyPieces = std::move(tooMany);
}

void* XmlMemory::allocate(XMLSize_t size) {
    if (++pieces > mostPieces && onTooManyPieces) onTooManyPieces();
    if (size > std::numeric_limits<XMLSize_t>::max() - sizeof(Link)) throw xercesc::OutOfMemoryException();
    void* memory = nullptr;
    try {
        memory = ::operator new(sizeof(Link) + size);
    } catch (const std::bad_alloc&) {
        throw xercesc::OutOfMemoryException();
    }
    Link* const link = ::new (memory) Link;
    link->before = &ring;
    link->behind = ring.behind;
    ring.behind->before = link;
    ring.behind = link;
    return link + 1;
}

void XmlMemory::deallocate(void* memory) {
    if (memory == nullptr) return;
    Link* const link = static_cast<Link*>(memory) - 1;
    link->before->behind = link->behind;
    link->behind->before = link->before;
    ::operator delete(link);
}

xercesc::MemoryManager* XmlMemory::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

}  // namespace nbscore
