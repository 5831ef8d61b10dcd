#include "pmml/Transcoder.h"

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "pmml/RefusalTable.h"
#include "pmml/Utf8.h"
#include "pmml/XmlLibrary.h"

namespace {

constexpr XMLSize_t transcoderBlockSize = XMLSize_t{16} * 1024;

bool IsUtf8Name(std::string_view encoding) {
    std::string name(encoding);
    for (char& letter : name) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return name.empty() || name == "UTF-8" || name == "UTF8";
}

/// Encoding names are ASCII; anything else is not even asked about, because it would be read in the locale's way.
std::unique_ptr<xercesc::XMLTranscoder> FindTranscoder(const std::string& encoding) {
    const bool nameable = std::all_of(encoding.begin(), encoding.end(), [](char c) { return c > ' ' && c <= '~'; });
    if (!nameable) return nullptr;
    nbscore::EnsureXmlPlatform();
    xercesc::XMLTransService::Codes outcome = xercesc::XMLTransService::Ok;
    return std::unique_ptr<xercesc::XMLTranscoder>(xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
        encoding.c_str(), outcome, transcoderBlockSize));
}

}  // namespace

/// UTF-8 needs no transcoder of the XML library: it is written directly.
class Transcoder::Converter {
public:
    explicit Converter(const std::string& encodingName) : encoding(encodingName) {
        if (IsUtf8Name(encoding)) return;
        transcoder = FindTranscoder(encoding);
        if (!transcoder) throw nbscore::MakeRefusal(nbscore::Refusal::EncodingUnknown, {encoding});
    }

    std::string Convert(const XMLCh* xmlText) const {
        if (!transcoder) return ConvertUtf8(nbscore::Utf8Of(xmlText));
        std::string narrow;
        if (AppendTranscoded(narrow, xmlText, xercesc::XMLString::stringLen(xmlText))) return narrow;
        throw CannotHold(nbscore::Utf8Of(xmlText));
    }

    std::string ConvertUtf8(std::string_view utf8) const {
        if (!transcoder) {
            if (nbscore::HasHalfPair(utf8)) throw CannotHold(utf8);
            return std::string(utf8);
        }
        const std::basic_string<XMLCh> xmlText = nbscore::Utf16Of(utf8);
        std::string narrow;
        if (AppendTranscoded(narrow, xmlText.data(), xmlText.size())) return narrow;
        throw CannotHold(utf8);
    }

private:
    VeskException CannotHold(std::string_view utf8) const {
        const std::string name = encoding.empty() ? "UTF-8" : encoding;
        return nbscore::MakeRefusal(nbscore::Refusal::EncodingLacksText, {name, nbscore::ExcerptOf(utf8)});
    }

    /// False when the encoding lacks one of the text's characters.
    bool AppendTranscoded(std::string& narrow, const XMLCh* xmlText, XMLSize_t left) const {
        // Not initialized: only what was written is read.
        std::array<XMLByte, transcoderBlockSize> block;
        try {
            while (left > 0) {
                XMLSize_t unitsRead = 0;
                // No more than a quarter of the block at once: no encoding needs more than four bytes a unit.
                const XMLSize_t bytes =
                    transcoder->transcodeTo(xmlText, std::min(left, block.size() / 4), block.data(), block.size(),
                                            unitsRead, xercesc::XMLTranscoder::UnRep_Throw);
                if (unitsRead == 0) return false;
                narrow.append(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(bytes));
                xmlText += unitsRead;
                left -= unitsRead;
            }
            return true;
        } catch (const xercesc::OutOfMemoryException&) {
            throw std::bad_alloc();
        } catch (const xercesc::XMLException&) {
            return false;
        }
    }

    std::string encoding;
    std::unique_ptr<xercesc::XMLTranscoder> transcoder;
};

Transcoder::Transcoder(const std::string& encoding) : converter(std::make_unique<Converter>(encoding)) {}

Transcoder::~Transcoder() = default;

std::string Transcoder::transcodeTo(const XMLCh* xmlText) const {
    return xmlText ? converter->Convert(xmlText) : std::string();
}

std::string Transcoder::FromUtf8(std::string_view utf8) const {
    return converter->ConvertUtf8(utf8);
}
