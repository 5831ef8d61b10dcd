#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "verify/VerificationSuite.h"
#include "verify/VerifiedCell.h"

namespace nbscore {

/// A cell of the test cases that differs from what scoring gives.
struct CellDifference {
    /// The label of the sub-model that the test case is for; nothing for a single classifier.
    std::optional<std::string> subModel;
    /// The row's number in its table, from 1, and its place in the document.
    std::uint64_t row = 0;
    DocumentPlace place;
    std::string field;
    VerifiedCell expected;
    VerifiedCell actual;
    /// Nothing for what must be equal.
    std::optional<NumericTolerance> tolerance;
};

struct VerificationSummary {
    std::uint64_t rows = 0;
    /// Expected values that were compared: those of cells that are not blank.
    std::uint64_t cells = 0;
    std::uint64_t differences = 0;
};

/// Scores the test cases in a model's document and compares the results with the expected ones.
///
/// Inputs are read by the rules of tables of cases (CaseBinder): a blank or absent cell is a missing value. Expected
/// predictions must be equal, as numbers where the target has numbers; probabilities must agree within the field's
/// tolerance. A blank or absent expected cell is not compared, and a row that expects nothing is not scored.
///
/// @param model must be scorable (LoadedModel::RequireScorable).
/// @param suites of the model's own document.
/// @param onDifference called for each difference, in order.
/// @param onRow called before each row, and may throw to end the run.
/// Throws VeskException with the place for what VerifiedValueFinder refuses, and code 9 for a cell that must hold a
/// number and does not. The fields of all suites are checked before the first row; a row's cells only with the row.
VerificationSummary VerifyModel(ScoreModel& model, const std::vector<VerificationSuite>& suites,
                                const std::function<void(const CellDifference&)>& onDifference,
                                const std::function<void()>& onRow);

}  // namespace nbscore
