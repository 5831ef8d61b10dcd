#pragma once

#include <string>
#include <vector>

#include "cases/RandomDocument.h"
#include "framework/ScoreClsResult.h"

/// @file
/// What a random document's scores must be: the brute-force scorer's, to the last bit. Each fails fatally.

namespace nbscore::test {

void ExpectSameBits(const ScoreClsResult& result, const RandomDocument& document, const BruteForceScore& expected);

/// @param table what the command wrote, scores alone.
void ExpectScoreTable(const std::string& table, const RandomDocument& document, const std::vector<RandomCase>& cases);

}  // namespace nbscore::test
