#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/AnswerColumns.h"
#include "batch/CaseValues.h"
#include "batch/FactorTable.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// A classifier by itself: the factors of its predictors, laid out for the loops that have cases or target categories
/// side by side. Immutable.
class SingleClassifier {
public:
    /// @param readers one for each predictor.
    SingleClassifier(const ClassifierTables& tables, std::span<const Reader> readers);
    SingleClassifier(const SingleClassifier&) = delete;
    SingleClassifier& operator=(const SingleClassifier&) = delete;

    void Score(const CaseValues& values, const AnswerColumns& answers) const;

private:
    template <typename Row>
    class Call;

    std::size_t categories;
    AlignedNumbers priors;
    std::vector<double> targetCounts;
    /// Of each predictor; and what the loops see of it.
    std::vector<FactorTable> factors;
    std::vector<const double*> tablesByRow;
    std::vector<const double*> tablesByCategory;
    /// Whether the number of every row fits into a byte.
    bool hasByteRows = true;
};

}  // namespace nbscore
