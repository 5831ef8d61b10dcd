#include "host/VerificationInputs.h"

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
    cells.resize(header.size());
}

void VerificationInputs::SetCell(std::size_t column, std::string_view text) {
    cells[column] = text;
    filled.push_back(column);
}

const ScoreCaseRecord& VerificationInputs::TakeRecord() {
    const ScoreCaseRecord& record = binder->Bind(cells, 0);
    for (const std::size_t column : filled) {
        cells[column] = {};
    }
    filled.clear();
    return record;
}

}  // namespace nbscore
