#pragma once

#include <iosfwd>
#include <string>

#include "framework/Export.h"
#include "framework/ScoreModel.h"
#include "framework/XmlFwd.h"

/// Reads a document into a model.
///
/// Every operation gives a new model that the caller owns, or throws VeskException and gives none. One fault, a
/// second target in a mining schema, is thrown as a pointer to a new VeskException, which the catcher deletes.
/// Narrow strings are in the encoding that the caller names, which is "UTF-8" everywhere in this project.
/// A translator is used by one thread at a time.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreTranslator {
public:
    virtual ~ScoreTranslator();

    /// Reads the document in a file; path in UTF-8.
    virtual ScoreModel* ParseFromTree(const std::string& path, const std::string& encoding) = 0;
    /// Reads the document that a stream holds.
    virtual ScoreModel* ParseFromTree(std::istream& source, const std::string& encoding) = 0;
    /// Reads a parsed document, which stays the caller's and is not changed.
    virtual ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) = 0;
    /// Reads the document that a stream holds; errors call it by the given name.
    virtual ScoreModel* ParseFromTree(std::istream& source, const std::string& encoding,
                                      const std::string& sourceName) = 0;

protected:
    ScoreTranslator() = default;
    ScoreTranslator(const ScoreTranslator&) = delete;
    ScoreTranslator& operator=(const ScoreTranslator&) = delete;
};
