#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "table/ModelResults.h"

namespace nbscore {

/// What a writer writes of each sub-model's assessment. Most models give the same one for every case, and writing
/// numbers takes long.
class AssessmentTexts {
public:
    /// The text of the sub-model's assessment, valid until the next call.
    /// @param write appends it to a text, from the assessment.
    template <typename Write>
    const std::string& Get(std::size_t subModel, const SubModelAssessment& assessment, const Write& write) {
        if (subModel >= latest.size()) latest.resize(subModel + 1);
        Written& written = latest[subModel];
        if (written.text.empty() || !AreSame(written.assessment, assessment)) {
            written.assessment = assessment;
            written.text.clear();
            write(written.text, assessment);
        }
        return written.text;
    }

private:
    struct Written {
        SubModelAssessment assessment;
        std::string text;
    };

    /// To the bit: zeros of different signs are written differently.
    static bool AreSame(const SubModelAssessment& one, const SubModelAssessment& other) {
        const auto bits = [](double number) { return std::bit_cast<std::uint64_t>(number); };
        return bits(one.mean) == bits(other.mean) && bits(one.stdDev) == bits(other.stdDev);
    }

    std::vector<Written> latest;
};

}  // namespace nbscore
