// The call that scores columns of cases into memory of the caller's.

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "c/ArrowAnswers.h"
#include "c/ArrowCases.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "framework/MCMV.h"

namespace nbscore {
namespace {

/// One call. The memory of its answers is the caller's.
class ScoreInto {
public:
    ScoreInto(const OpenModel& openModel, const nbscore_room& given, std::size_t numCases)
        : model(openModel), wanted(given), cases(numCases), columns(openModel.NameColumns().size()) {
        RequireChoice(wanted.by_columns, 1, "by_columns");
        RequireChoice(wanted.reserved, 0, "reserved");
        if (wanted.probabilities != nullptr && wanted.columns != columns)
            throw BadArgument("columns is " + std::to_string(wanted.columns) + " instead of " +
                              std::to_string(columns) + ".");
        isSet = model.GetScorer().GetBatchScorer().IsSet();
        if (isSet && (wanted.predicted != nullptr || wanted.confidence != nullptr))
            throw BadArgument("A set of sub-models predicts nothing.");
        // Of a target whose categories were never counted, no case says anything: the answers are fewer.
        answered = isSet ? columns : model.GetScorer().GetBatchScorer().GetCategories().size();
    }

    void Score(const ArrowCases& table, LackingFields lacking) {
        AnswerColumns answers;
        answers.probabilityOrder = wanted.by_columns != 0 ? MatrixOrder::ColumnByColumn : MatrixOrder::CaseByCase;
        std::vector<std::int32_t> ownPredicted;
        std::vector<double> fewer;
        if (!isSet) {
            if (wanted.predicted == nullptr) ownPredicted.resize(cases);
            answers.predicted = {wanted.predicted == nullptr ? ownPredicted.data() : wanted.predicted, cases};
        }
        if (wanted.confidence != nullptr) answers.confidence = {wanted.confidence, cases};
        if (wanted.probabilities != nullptr) {
            if (answered != columns) fewer.resize(CountNumbers(cases, answered));
            answers.probabilities = {answered == columns ? wanted.probabilities : fewer.data(),
                                     CountNumbers(cases, answered)};
        }
        model.GetScorer().Score(table.GetColumns(), cases, answers, lacking);
        if (wanted.probabilities != nullptr && answered != columns) Spread(fewer);
        for (std::size_t entry = 0; entry < answers.predicted.size(); ++entry) {
            if (answers.predicted[entry] < 0) MarkAbsent(entry);
        }
    }

private:
    double& At(std::size_t entry, std::size_t column) const {
        return wanted.probabilities[wanted.by_columns != 0 ? column * cases + entry : entry * columns + column];
    }

    void Spread(const std::vector<double>& fewer) const {
        for (std::size_t entry = 0; entry < cases; ++entry) {
            for (std::size_t column = 0; column < columns; ++column) {
                const std::size_t place = wanted.by_columns != 0 ? column * cases + entry : entry * answered + column;
                At(entry, column) = column < answered ? fewer[place] : std::numeric_limits<double>::quiet_NaN();
            }
        }
    }

    void MarkAbsent(std::size_t entry) const {
        if (wanted.confidence != nullptr) Mark(wanted.confidence[entry]);
        if (wanted.probabilities == nullptr) return;
        for (std::size_t column = 0; column < columns; ++column)
            Mark(At(entry, column));
    }

    static void Mark(double& number) {
        if (MCMV::IsMissing(number)) number = std::numeric_limits<double>::quiet_NaN();
    }

    const OpenModel& model;
    const nbscore_room& wanted;
    std::size_t cases;
    std::size_t columns;
    bool isSet = false;
    std::size_t answered = 0;
};

}  // namespace
}  // namespace nbscore

int32_t nbscore_score_into(const nbscore_model* model, const nbscore_scoring* scoring, const struct ArrowSchema* schema,
                           const struct ArrowArray* cases, const nbscore_room* room, nbscore_error** error) {
    using namespace nbscore;
    return Guarded(error, [&] {
        const OpenModel& open = *RequireArgument(model, "model").open;
        RequireArgument(room, "room");
        const nbscore_room wanted = TakeOptions(room, NBSCORE_ROOM_INIT);
        const nbscore_scoring taken = TakeOptions(scoring, NBSCORE_SCORING_INIT);
        RequireChoice(taken.lacking_as_absent, 1, "lacking_as_absent");
        open.ThrowIfCancelled();
        const ArrowCases table(RequireArgument(schema, "schema"), RequireArgument(cases, "cases"),
                               [&](std::string_view name) { return open.GetScorer().Reads(name); });
        ScoreInto call(open, wanted, table.GetSize());
        try {
            call.Score(table, taken.lacking_as_absent != 0 ? LackingFields::Absent : LackingFields::Refused);
        } catch (const std::invalid_argument& misfit) {
            throw BadCases(misfit.what());
        }
    });
}
