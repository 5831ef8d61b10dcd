// What XmlServices promises, by the XML library.

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "pmml/XmlServices.h"
#include "xml/DomWriter.h"
#include "xml/XmlLibrary.h"
#include "xml/XmlParser.h"

namespace nbscore {
namespace {

constexpr XMLSize_t encoderBlockSize = XMLSize_t{16} * 1024;

class LibraryEncoder : public TextEncoder {
public:
    explicit LibraryEncoder(std::unique_ptr<xercesc::XMLTranscoder> libraryTranscoder)
        : transcoder(std::move(libraryTranscoder)) {}

    bool Append(std::string& narrow, const XMLCh* text, std::size_t size) const override {
        // Not initialized: only what was written is read.
        std::array<XMLByte, encoderBlockSize> block;
        try {
            while (size > 0) {
                XMLSize_t unitsRead = 0;
                // No more than a quarter of the block at once: no encoding needs more than four bytes a unit.
                const XMLSize_t bytes =
                    transcoder->transcodeTo(text, std::min(size, block.size() / 4), block.data(), block.size(),
                                            unitsRead, xercesc::XMLTranscoder::UnRep_Throw);
                if (unitsRead == 0) return false;
                narrow.append(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(bytes));
                text += unitsRead;
                size -= unitsRead;
            }
            return true;
        } catch (const xercesc::OutOfMemoryException&) {
            throw std::bad_alloc();
        } catch (const xercesc::XMLException&) {
            return false;
        }
    }

private:
    std::unique_ptr<xercesc::XMLTranscoder> transcoder;
};

template <typename Step>
auto WithoutFaults(const Step& step) {
    try {
        return step();
    } catch (...) {
        RethrowXmlFault();
    }
}

class LibraryServices : public XmlServices {
public:
    LibraryServices() { EnsureXmlPlatform(); }

    ParsedDocument Parse(DocumentBytes& bytes, const Limits& limits) const override {
        return WithoutFaults([&] { return ParseByLibrary(bytes, limits); });
    }
    DomDocument WriteDom(const DocumentTree& tree) const override {
        return WithoutFaults([&] { return WriteDomOf(tree); });
    }
    const DocumentTree* FindTree(const xercesc::DOMDocument* document) const override { return FindTreeOf(document); }
    std::unique_ptr<TextEncoder> MakeEncoder(const std::string& encoding) const override {
        xercesc::XMLTransService::Codes outcome = xercesc::XMLTransService::Ok;
        std::unique_ptr<xercesc::XMLTranscoder> transcoder(
            xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(encoding.c_str(), outcome,
                                                                            encoderBlockSize));
        if (!transcoder) return nullptr;
        return std::make_unique<LibraryEncoder>(std::move(transcoder));
    }
    void Rethrow() const override { RethrowXmlFault(); }
};

}  // namespace
}  // namespace nbscore

#ifdef _WIN32
extern "C" const nbscore::XmlServices* GiveXmlServices();  // a part of the framework there
#else
extern "C" __attribute__((visibility("default"))) const nbscore::XmlServices* GiveXmlServices();
#endif

const nbscore::XmlServices* GiveXmlServices() {
    static const nbscore::LibraryServices services;
    return &services;
}
