#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/Export.h"
#include "framework/XmlFwd.h"

/// Turns a document's texts into narrow strings of one encoding. Used by one thread at a time.
class SCOREFRAMEWORK_API Transcoder {
public:
    /// Throws VeskException 10 for an unknown encoding. An empty name means UTF-8.
    explicit Transcoder(const std::string& encoding);
    ~Transcoder();
    Transcoder(const Transcoder&) = delete;
    Transcoder& operator=(const Transcoder&) = delete;

    /// The text in this encoding; of null, an empty text. Throws VeskException 10 when the encoding lacks one of
    /// its characters. (The lower-case first letter is the interface's own.)
    std::string transcodeTo(const XMLCh* xmlText) const;
    /// The same of a text in UTF-8.
    std::string FromUtf8(std::string_view utf8) const;

private:
    class Converter;
    std::unique_ptr<Converter> converter;
};
