#pragma once

#include <memory>

#include "transform/evaluation/DerivedCaseRecord.h"
#include "transform/evaluation/DerivedFields.h"

namespace nbscore {

/// One record of derived values for each thread that asks for one.
///
/// The pool owns the records: they go when it goes, whatever threads still live. A thread that ends gives its record
/// back for the next thread, so that threads that come and go do not add up either.
class DerivedRecordPool {
public:
    /// The derived fields must outlive the pool.
    explicit DerivedRecordPool(const DerivedFields& derivedFields);

    /// The calling thread's record: the same one at every call. Any thread may call it.
    DerivedCaseRecord& RecordOfThisThread();

private:
    struct Shelf;
    class Loan;

    const DerivedFields& derived;
    std::shared_ptr<Shelf> shelf;
};

}  // namespace nbscore
