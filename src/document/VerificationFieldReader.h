#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "document/VerificationSuite.h"
#include "framework/SeededHash.h"
#include "framework/XmlFwd.h"
#include "framework/xml/PlacesInOrder.h"

namespace nbscore {

/// The VerificationFields of test cases, one after the other, and the columns that they have in the rows.
class VerificationFieldReader {
public:
    /// Reads a VerificationFields element. Throws VeskException 1 when there is no field in it, 2 for one without
    /// `field`, 5 for a negative precision or zero threshold, 9 for one that is no number, 12 for a field or column
    /// that is there twice.
    void Read(const xercesc::DOMElement& fieldsElement, PlacesInOrder& places);

    const std::vector<VerificationField>& GetFields() const { return fields; }
    /// The field whose column this is, by its number; the column's name without a prefix.
    const SeededMap<std::string, std::size_t>& GetColumns() const { return columns; }

private:
    void ReadField(const xercesc::DOMElement& element, PlacesInOrder& places);

    std::vector<VerificationField> fields;
    SeededMap<std::string, std::size_t> columns;
    SeededMap<std::string, std::size_t> names;
};

}  // namespace nbscore
