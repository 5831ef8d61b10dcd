// The calls that score one case.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "batch/SourceRow.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "framework/MCMV.h"

static_assert(NBSCORE_MISSING == MCMV::gMissingValue);

struct nbscore_row {
    /// The row borrows from it.
    std::shared_ptr<const nbscore::OpenModel> model;
    std::unique_ptr<nbscore::SourceRow> row;
};

namespace nbscore {
namespace {

const char* NameAt(const std::vector<std::string>& names, std::size_t position) {
    return position < names.size() ? names[position].c_str() : nullptr;
}

/// Within a handler: throws what setting a field threw as an error of its caller. Apart, so that setting needs no room
/// for it.
[[noreturn]] void RethrowOfField(std::size_t field) {
    try {
        throw;
    } catch (const BadArgument&) {
        throw;
    } catch (const std::out_of_range&) {
        throw BadArgument("There is no field " + std::to_string(field) + ".");
    } catch (const std::invalid_argument& misfit) {
        throw BadCases(misfit.what());
    }
}

/// Sets a field of a row.
template <typename Work>
std::int32_t SetField(nbscore_row* row, std::size_t field, nbscore_error** error, const Work& set) {
    return Guarded(error, [&] {
        SourceRow& prepared = *RequireArgument(row, "row").row;
        try {
            set(prepared);
        } catch (...) {
            RethrowOfField(field);
        }
    });
}

}  // namespace
}  // namespace nbscore

int32_t nbscore_row_make(const nbscore_model* model, nbscore_row** row, nbscore_error** error) {
    if (row != nullptr) *row = nullptr;
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(row, "row");
        const auto& open = nbscore::RequireArgument(model, "model").open;
        *row = new nbscore_row{open, open->GetScorer().MakeRow()};
    });
}

void nbscore_row_free(nbscore_row* row) {
    delete row;
}

int32_t nbscore_find_field(const nbscore_model* model, const char* name, size_t* position, nbscore_error** error) {
    if (position != nullptr) *position = SIZE_MAX;
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(position, "position");
        const std::string_view wanted = &nbscore::RequireArgument(name, "name");
        const std::vector<std::string>& fields = nbscore::RequireArgument(model, "model").open->GetScorer().GetFields();
        const auto found = std::ranges::find(fields, wanted);
        if (found == fields.end()) throw nbscore::BadCases("The model reads no field \"" + std::string(wanted) + "\".");
        *position = static_cast<std::size_t>(found - fields.begin());
    });
}

const char* nbscore_field_name(const nbscore_model* model, size_t position) {
    return model == nullptr ? nullptr : nbscore::NameAt(model->open->GetScorer().GetFields(), position);
}

const char* nbscore_answer_name(const nbscore_model* model, size_t position) {
    return model == nullptr ? nullptr : nbscore::NameAt(model->open->GetAnswerNames(), position);
}

int32_t nbscore_row_set_text(nbscore_row* row, size_t field, const char* text, size_t size, nbscore_error** error) {
    return nbscore::SetField(row, field, error, [&](nbscore::SourceRow& prepared) {
        if (size != 0) nbscore::RequireArgument(text, "text");
        prepared.SetText(field, size == 0 ? std::string_view() : std::string_view(text, size));
    });
}

int32_t nbscore_row_set_number(nbscore_row* row, size_t field, double number, nbscore_error** error) {
    return nbscore::SetField(row, field, error, [&](nbscore::SourceRow& prepared) {
        number == NBSCORE_MISSING ? prepared.SetMissing(field) : prepared.SetNumber(field, number);
    });
}

int32_t nbscore_row_set_missing(nbscore_row* row, size_t field, nbscore_error** error) {
    return nbscore::SetField(row, field, error, [&](nbscore::SourceRow& prepared) { prepared.SetMissing(field); });
}

int32_t nbscore_row_score(nbscore_row* row, nbscore_answer* answer, nbscore_error** error) {
    if (answer != nullptr) *answer = {-1, 0, NBSCORE_MISSING, nullptr, 0};
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(answer, "answer");
        const nbscore::RowAnswer given = nbscore::RequireArgument(row, "row").row->Score();
        *answer = {given.predicted, 0, given.confidence, given.probabilities.data(), given.probabilities.size()};
    });
}

int32_t nbscore_row_best(nbscore_row* row, nbscore_ranked* best, size_t count, size_t* given, nbscore_error** error) {
    if (given != nullptr) *given = 0;
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(given, "given");
        if (count != 0) nbscore::RequireArgument(best, "best");
        const nbscore_row& open = nbscore::RequireArgument(row, "row");
        if (!open.model->GetScorer().GetBatchScorer().IsSet())
            throw nbscore::BadArgument("The model is a single classifier, which has no sub-models.");
        const auto ranked = open.row->ScoreBest(count);
        std::ranges::transform(ranked, best, [](const nbscore::RankedSubModel& subModel) {
            return nbscore_ranked{subModel.position, subModel.score};
        });
        *given = ranked.size();
    });
}
