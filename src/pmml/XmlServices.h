#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <exception>
#include <memory>
#include <string>

#include "framework/Export.h"
#include "framework/Limits.h"
#include "framework/VeskException.h"
#include "framework/XmlFwd.h"
#include "pmml/DocumentBytes.h"
#include "pmml/DomDocument.h"

/// @file
/// What only the XML library can do. Most documents need none of it, and loading that library, with the thirty that it
/// needs, takes longer than scoring a small table: so it stands behind this door, in a library of its own (src/xml)
/// that is loaded at the first need.

namespace nbscore {

/// Writes texts in an encoding that is not UTF-8.
class SCOREFRAMEWORK_API TextEncoder {
public:
    virtual ~TextEncoder();
    /// False when the encoding lacks one of the text's characters.
    virtual bool Append(std::string& narrow, const XMLCh* text, std::size_t size) const = 0;
};

class SCOREFRAMEWORK_API XmlServices {
public:
    virtual ~XmlServices();

    /// The document, whatever it is, as the library's parser reads it, from its first byte. Throws what ParseDocument
    /// does, but for a stream that fails.
    virtual ParsedDocument Parse(DocumentBytes& bytes, const Limits& limits) const = 0;
    /// As nbscore::WriteDom.
    virtual DomDocument WriteDom(const DocumentTree& tree) const = 0;
    /// The tree that a DOM was written from; null where it was not.
    virtual const DocumentTree* FindTree(const xercesc::DOMDocument* document) const = 0;
    /// Null for an encoding that the library does not know.
    virtual std::unique_ptr<TextEncoder> MakeEncoder(const std::string& encoding) const = 0;
    /// As RethrowWithoutXmlFaults.
    virtual void Rethrow() const = 0;
};

/// Loads the library, and makes it ready, when it is first called. Any thread may call it, any number of times. Throws
/// VeskException 3 where that fails.
SCOREFRAMEWORK_API const XmlServices& GetXmlServices();

/// Makes the XML library ready where the program has loaded it: who has a translator may use the library.
void PrepareLoadedXmlLibrary();

/// Within a handler: throws the same again, but what is the library's own as VeskException 3 or std::bad_alloc.
[[noreturn]] SCOREFRAMEWORK_API void RethrowWithoutXmlFaults();

/// Runs a step in which others may use the XML library; what the library throws leaves as VeskException 3 or
/// std::bad_alloc, so that no caller has to know the library.
template <typename Step>
auto WithoutXmlFaults(const Step& step) {
    try {
        return step();
    } catch (const std::exception&) {
        throw;
    } catch (VeskException*) {
        throw;
    } catch (...) {
        RethrowWithoutXmlFaults();
    }
}

}  // namespace nbscore
