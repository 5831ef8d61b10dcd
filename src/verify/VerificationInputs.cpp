#include "verify/VerificationInputs.h"

namespace nbscore {

std::size_t VerificationInputs::AddColumn(const std::string& name) {
    const auto [column, isNew] = columns.emplace(name, header.size());
    if (isNew) header.push_back(name);
    return column->second;
}

void VerificationInputs::Bind(const ScoreModel& model) {
    // Fields that the test cases leave out are missing in all of them. Errors are reported by row, not by source.
    const CaseBinderOptions options{.badValues = BadValues::Stop, .allowMissingFields = true};
    binder.emplace(model, header, "", options);
}

void VerificationInputs::SetCell(std::size_t column, std::string_view text) {
    cells.push_back({column, text});
}

const ScoreCaseRecord& VerificationInputs::TakeRecord() {
    const ScoreCaseRecord& record = binder->BindSparse(cells, 0);
    cells.clear();
    return record;
}

}  // namespace nbscore
