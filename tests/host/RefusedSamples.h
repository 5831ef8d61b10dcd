#pragma once

#include <string>
#include <vector>

#include "framework/Limits.h"
#include "framework/ScoringRule.h"

/// @file
/// A document for every refusal of the table that a document can meet.

namespace nbscore::test {

struct RefusedSample {
    std::string document;
    /// The path of the element at fault; LINE:COLUMN where no element is; empty where the document is at fault as a
    /// whole.
    std::string place;
    /// How what to do about it begins; empty where another document has the message's advice.
    std::string advice;
    bool adapt = false;
    /// What the document is read under.
    Limits limits = {};
    ScoringRule rule = ScoringRule::Smoothed;
};

/// Documents that cannot be read or, as they are read, not be scored.
const std::vector<RefusedSample>& RefusedSamples();
/// Those among them that only the standard's rule meets.
std::vector<RefusedSample> MakeStandardSamples();

struct RefusedTestCases {
    std::string document;
    /// The path of the element at fault.
    std::string place;
};

/// Documents whose test cases cannot be read, or not be compared with scores.
const std::vector<RefusedTestCases>& RefusedTestCaseSamples();

}  // namespace nbscore::test
