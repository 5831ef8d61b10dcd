#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "framework/ScoreDictionary.h"
#include "framework/Transcoder.h"
#include "framework/XmlFwd.h"
#include "framework/transform/DerivedFields.h"
#include "framework/transform/FieldReference.h"

namespace nbscore {

/// What an expression can see while it is read: the derived fields, all of them declared by then, and the data
/// fields. It notes which fields are really used.
class FieldScope {
public:
    /// @param dataDictionary may be null: there are no data fields then.
    FieldScope(DerivedFields& derivedFields, const ScoreDictionary* dataDictionary, const Transcoder& textTranscoder);

    /// The derived field whose expression is read from now on: what it reads becomes its dependencies.
    void Enter(std::size_t derivedField) { current = derivedField; }

    /// The field of this name. Throws VeskException 8, with the place of the element, when nobody knows it.
    FieldReference Resolve(const xercesc::DOMElement* element, const XMLCh* name);

    const Transcoder& GetTranscoder() const { return transcoder; }

private:
    FieldReference ResolveInput(const std::string& name, const ScoreDictVar& variable);

    DerivedFields& derived;
    const ScoreDictionary* dictionary;
    const Transcoder& transcoder;
    std::unordered_map<std::string, std::size_t> inputPositions;
    std::size_t current = 0;
};

}  // namespace nbscore
