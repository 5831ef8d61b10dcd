#pragma once

#include <ostream>
#include <string>

#include "verify/ModelVerifier.h"

namespace nbscore {

/// Writes what verifying a document finds for programs, as it is found: one JSON object, `{"document": …,
/// "differences": [{"model": …, "row": …, "line": …, "column": …, "field": …, "expected": …, "actual": …,
/// "precision": …, "zero_threshold": …}, …], "rows": …, "cells": …}`. "model" is there for sub-models only, and the
/// tolerances for numbers that have one. Numbers that are not finite are null.
class VerificationJson {
public:
    /// @param destination borrowed.
    VerificationJson(std::ostream& destination, const std::string& document);

    void AddDifference(const CellDifference& difference);
    /// Called once, after all differences.
    void Finish(const VerificationSummary& summary);

private:
    std::ostream& out;
    bool isFirst = true;
};

}  // namespace nbscore
