#pragma once

#include <cstddef>

#include "framework/Limits.h"
#include "host/CaseBinder.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

struct TableScorerOptions {
    char delimiter = ',';
    /// A table with a header and no case is an error unless this is set.
    bool allowEmpty = false;
    /// How many threads score; with one, nothing is done beside the calling thread. At least 1.
    std::size_t threads = 1;
    CaseBinderOptions cases;
    /// Of these, only whether the work is cancelled is asked, on each of the threads.
    Limits limits;
    ScoreWriterOptions output;

    /// Whether a row's cells are written as they are read.
    bool CopiesRows() const { return output.format == ScoreFormat::Csv && delimiter == output.delimiter; }
};

}  // namespace nbscore
