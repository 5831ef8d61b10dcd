#pragma once

#include <cstddef>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/CaseValues.h"
#include "batch/ClassifierFactors.h"
#include "batch/RowLists.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// A classifier by itself. Immutable.
class SingleClassifier {
public:
    /// @param rowLists of the model.
    SingleClassifier(const ClassifierTables& tables, const RowLists& rowLists);
    SingleClassifier(const SingleClassifier&) = delete;
    SingleClassifier& operator=(const SingleClassifier&) = delete;

    /// @param rowLists the same.
    void Score(const RowLists& rowLists, const CaseValues& values, const AnswerColumns& answers) const;

private:
    class Call;

    std::size_t categories;
    std::vector<double> targetCounts;
    ClassifierFactors factors;
};

}  // namespace nbscore
