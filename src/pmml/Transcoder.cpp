#include "pmml/Transcoder.h"

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <string_view>

#include "pmml/RefusalTable.h"
#include "pmml/Utf8.h"
#include "pmml/XmlServices.h"

namespace {

bool IsUtf8Name(std::string_view encoding) {
    std::string name(encoding);
    for (char& letter : name) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return name.empty() || name == "UTF-8" || name == "UTF8";
}

/// Encoding names are ASCII; anything else is not even asked about, because it would be read in the locale's way.
std::unique_ptr<nbscore::TextEncoder> FindEncoder(const std::string& encoding) {
    const bool nameable = std::all_of(encoding.begin(), encoding.end(), [](char c) { return c > ' ' && c <= '~'; });
    return nameable ? nbscore::GetXmlServices().MakeEncoder(encoding) : nullptr;
}

}  // namespace

/// UTF-8 needs no encoder of the XML library: it is written directly.
class Transcoder::Converter {
public:
    explicit Converter(const std::string& encodingName) : encoding(encodingName) {
        if (IsUtf8Name(encoding)) return;
        encoder = FindEncoder(encoding);
        if (!encoder) throw nbscore::MakeRefusal(nbscore::Refusal::EncodingUnknown, {encoding});
    }

    std::string Convert(const XMLCh* xmlText) const {
        if (!encoder) return ConvertUtf8(nbscore::Utf8Of(xmlText));
        std::string narrow;
        if (encoder->Append(narrow, xmlText, xercesc::XMLString::stringLen(xmlText))) return narrow;
        throw CannotHold(nbscore::Utf8Of(xmlText));
    }

    std::string ConvertUtf8(std::string_view utf8) const {
        if (!encoder) {
            if (nbscore::HasHalfPair(utf8)) throw CannotHold(utf8);
            return std::string(utf8);
        }
        const std::basic_string<XMLCh> xmlText = nbscore::Utf16Of(utf8);
        std::string narrow;
        if (encoder->Append(narrow, xmlText.data(), xmlText.size())) return narrow;
        throw CannotHold(utf8);
    }

private:
    VeskException CannotHold(std::string_view utf8) const {
        const std::string name = encoding.empty() ? "UTF-8" : encoding;
        return nbscore::MakeRefusal(nbscore::Refusal::EncodingLacksText, {name, nbscore::ExcerptOf(utf8)});
    }

    std::string encoding;
    std::unique_ptr<nbscore::TextEncoder> encoder;
};

Transcoder::Transcoder(const std::string& encoding) : converter(std::make_unique<Converter>(encoding)) {}

Transcoder::~Transcoder() = default;

std::string Transcoder::transcodeTo(const XMLCh* xmlText) const {
    return xmlText ? converter->Convert(xmlText) : std::string();
}

std::string Transcoder::FromUtf8(std::string_view utf8) const {
    return converter->ConvertUtf8(utf8);
}
