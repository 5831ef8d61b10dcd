#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreResult.h"

namespace nbscore {

/// Writes scored cases in one output format, as text that the caller passes on.
class ScoreWriter {
public:
    virtual ~ScoreWriter() = default;

    /// Appends what stands before the first case (a header line, or nothing).
    virtual void AppendHeader(std::string& text) = 0;
    /// Appends one case: its input cells and what scoring gave.
    virtual void AppendCase(std::string& text, const std::vector<std::string_view>& cells,
                            const ScoreResult& result) = 0;
};

}  // namespace nbscore
