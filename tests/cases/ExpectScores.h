#pragma once

#include <string>
#include <vector>

#include "framework/ScoreClsResult.h"
#include "support/RunCommand.h"
#include "support/TemporaryFolder.h"
#include "support/documents/RandomDocument.h"

/// @file
/// Scoring random documents, and what their scores must be: the brute-force scorer's, to the last bit. Each Expect
/// fails fatally.

namespace nbscore::test {

/// Has the built command score a document's table, scores alone.
CommandResult ScoreThroughCommand(const TemporaryFolder& folder, const std::string& document, const std::string& table,
                                  const std::vector<std::string>& options = {});

void ExpectSameBits(const ScoreClsResult& result, const RandomDocument& document, const BruteForceScore& expected);

/// @param table what the command wrote, scores alone.
void ExpectScoreTable(const std::string& table, const RandomDocument& document, const std::vector<RandomCase>& cases);

}  // namespace nbscore::test
