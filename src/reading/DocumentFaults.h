#pragma once

#include <vector>

#include "framework/Export.h"
#include "framework/VeskException.h"

/// A face that a translator may have beside ScoreTranslator: it reads on behind a fault, as far as that makes sense, and
/// tells all that it found. To be asked for by `dynamic_cast<const DocumentFaults*>(translator)`.
class SCOREFRAMEWORK_API DocumentFaults {
public:
    virtual ~DocumentFaults();

    /// What the last ParseFromTree found wrong with a document, in the order of the document: the first is what it threw.
    /// None where it read the document, or could not parse it. A hundred at most.
    virtual const std::vector<VeskException>& GetFaults() const = 0;

protected:
    DocumentFaults() = default;
    DocumentFaults(const DocumentFaults&) = default;
    DocumentFaults& operator=(const DocumentFaults&) = default;
};
