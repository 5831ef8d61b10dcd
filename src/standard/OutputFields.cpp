#include "standard/OutputFields.h"

namespace nbscore {

std::vector<OutputColumn> OutputFields::GetColumns() const {
    return {};
}

std::vector<std::string> OutputFields::GetFieldsRead() const {
    return {};
}

void OutputFields::Compute(const ScoreModel&, const ScoreCaseRecord&, const ScoreResult&,
                           std::vector<OutputValue>& values) const {
    values.clear();
}

}  // namespace nbscore
