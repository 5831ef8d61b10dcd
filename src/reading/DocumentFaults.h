#pragma once

#include <vector>

#include "framework/Export.h"
#include "framework/VeskException.h"

/// A face that a translator may have beside ScoreTranslator: it knows all that is wrong with a document, and not only
/// what it refuses the document for. To be asked for by `dynamic_cast<DocumentFaults*>(translator)`.
class SCOREFRAMEWORK_API DocumentFaults {
public:
    virtual ~DocumentFaults();

    /// From now on looks for further faults behind the first one, in what can be read without what is at fault. A
    /// translator that always does so need not do anything here.
    virtual void GoOnBehindFaults() {}
    /// What the last ParseFromTree of a tree found wrong: the first is what it threw, the others follow in document
    /// order. Empty when it found nothing, or failed for a reason that is no fault of the document's.
    virtual const std::vector<VeskException>& GetFaults() const = 0;

protected:
    DocumentFaults() = default;
    DocumentFaults(const DocumentFaults&) = default;
    DocumentFaults& operator=(const DocumentFaults&) = default;
};
