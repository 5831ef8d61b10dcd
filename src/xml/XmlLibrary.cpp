#include "xml/XmlLibrary.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <limits>
#include <new>

#include "pmml/RefusalTable.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

class XmlPlatform {
public:
    XmlPlatform() {
        try {
            xercesc::XMLPlatformUtils::Initialize();
        } catch (const xercesc::XMLException& fault) {
            throw MakeRefusal(Refusal::XmlLibraryCannotStart, {Utf8Of(fault.getMessage())});
        }
    }
    ~XmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
    XmlPlatform(const XmlPlatform&) = delete;
    XmlPlatform& operator=(const XmlPlatform&) = delete;
};

}  // namespace

void EnsureXmlPlatform() {
    static const XmlPlatform platform;
}

void RethrowXmlFault() {
    const auto refusal = [](const XMLCh* text) {
        return MakeRefusal(Refusal::XmlLibraryFailed, {WithoutHalfPairs(Utf8Of(text))});
    };
    try {
        throw;
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const xercesc::XMLException& fault) {
        throw refusal(fault.getMessage());
    } catch (const xercesc::DOMException& fault) {
        throw refusal(fault.getMessage());
    } catch (const xercesc::SAXException& fault) {
        throw refusal(fault.getMessage());
    }
}

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
    const std::size_t wanted = sizeof(Link) + size;
    document->RequireRoom(wanted);
    void* memory = nullptr;
    try {
        memory = ::operator new(wanted);
    } catch (const std::bad_alloc&) {
        throw xercesc::OutOfMemoryException();
    }
    Link* const link = ::new (memory) Link;
    link->bytes = wanted;
    document->Take(wanted);
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
    document->GiveBack(link->bytes);
    ::operator delete(link);
}

xercesc::MemoryManager* XmlMemory::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

}  // namespace nbscore
