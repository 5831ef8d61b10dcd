#pragma once

#include <string>

namespace nbscore::bench {

/// What a program could do that was written for one kind of drawn tables (DrawnTable): it finds cells with vectors,
/// turns each into a code by one look-up of its own, scores codes by plain loops for the shape (ShapeLoops.h), and
/// writes rows behind what it read. It knows no quotes, no faults, and no numbers but short whole ones. One thread.
void ScoreFileTightly(const std::string& model, const std::string& table, const std::string& output);

}  // namespace nbscore::bench
