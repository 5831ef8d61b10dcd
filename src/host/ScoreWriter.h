#pragma once

#include <string>

#include "host/InputRow.h"
#include "host/ScoredCase.h"

namespace nbscore {

/// Writes scored cases in one output format, as text that the caller passes on.
class ScoreWriter {
public:
    virtual ~ScoreWriter() = default;

    /// Appends what stands before the first case (a header line, or nothing).
    virtual void AppendHeader(std::string& text) = 0;
    /// Appends one case: its input cells and what scoring gave.
    virtual void AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) = 0;
};

}  // namespace nbscore
