#pragma once

#include "host/ScoreWriter.h"

namespace nbscore {

/// A writer of a format that has the scores behind the input's cells. The text of the scores depends on them alone, so
/// that whoever meets the same scores again may keep it.
class PartedScoreWriter : public ScoreWriter {
public:
    void AppendCase(std::string& text, const InputRow& input, const ScoredCase& scored) final {
        AppendInput(text, input);
        AppendScores(text, scored);
    }

    virtual void AppendInput(std::string& text, const InputRow& input) = 0;
    virtual void AppendScores(std::string& text, const ScoredCase& scored) = 0;
};

}  // namespace nbscore
