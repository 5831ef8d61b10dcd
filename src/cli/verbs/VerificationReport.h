#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "verify/ModelVerifier.h"

namespace nbscore {

/// Writes what verifying a document finds, as it is found.
class VerificationReport {
public:
    virtual ~VerificationReport() = default;

    virtual void AddDifference(const CellDifference& difference) = 0;
    /// Called once, behind all differences.
    virtual void Finish(const VerificationSummary& summary) = 0;
};

/// For people: a line for each difference, and one that sums up.
std::unique_ptr<VerificationReport> MakeTextReport(std::ostream& out);

/// For programs: one JSON object, `{"document": …, "differences": [{"model": …, "row": …, "line": …, "column": …,
/// "field": …, "expected": …, "actual": …, "precision": …, "zero_threshold": …}, …], "rows": …, "cells": …}`. "model"
/// is there for sub-models only, and the tolerances for numbers that have one. What is no finite number is null.
std::unique_ptr<VerificationReport> MakeJsonReport(std::ostream& out, const std::string& document);

}  // namespace nbscore
