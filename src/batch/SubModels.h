#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/AnswerColumns.h"
#include "batch/CaseValues.h"
#include "batch/ClassifierFactors.h"
#include "batch/Loops.h"
#include "batch/RowLists.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// The sub-models of a set. A few are scored one after the other, each with cases side by side; many that read the same
/// lists of rows side by side themselves. Immutable.
class SubModels {
public:
    /// @param rowLists of the model.
    SubModels(const ModelTables& set, const RowLists& rowLists);

    /// @param rowLists the same.
    void Score(const RowLists& rowLists, const CaseValues& values, const AnswerColumns& answers) const;

private:
    class Call;

    /// A sub-model by itself.
    struct Alone {
        std::size_t position;
        /// The score of a case that says nothing to it; of every case, where there are no factors.
        double prior;
        std::vector<std::size_t> lists;
        std::unique_ptr<const ClassifierFactors> factors;
    };
    /// Sub-models side by side.
    struct Group {
        std::vector<std::size_t> positions;
        std::vector<double> priors;
        std::vector<std::size_t> lists;
        std::size_t lanes;
        AlignedNumbers tables;
        std::vector<FactorStep> steps;
    };

    void AddAlone(const ModelTables& set, std::size_t position, const RowLists& rowLists,
                  std::vector<std::size_t> lists);
    void AddGroup(const ModelTables& set, std::vector<std::size_t> positions, const RowLists& rowLists,
                  std::vector<std::size_t> lists);
    void LayOut(const ModelTables& set, const RowLists& rowLists, Group& group) const;

    std::size_t numSubModels;
    std::size_t categories;
    /// In the order of their positions.
    std::vector<Alone> alone;
    std::vector<Group> groups;
};

}  // namespace nbscore
