#include "c/ScorePlan.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

#include "c/Failure.h"
#include "framework/Limits.h"
#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "table/ModelResults.h"

namespace nbscore {
namespace {

/// Of which only each case's best are kept.
constexpr std::size_t scoresAtOnce = std::size_t{1} << 18;

/// The predictor, its value, its weight (AddedColumn).
constexpr std::size_t partsOfReason = 3;
constexpr std::size_t weightOfReason = 2;

/// As many as the command gives.
constexpr std::int32_t mostReasons = 1000;

/// A text among numbers, or the other way round, is what a cell of a table would hold.
void AddOutput(ArrowColumn& column, ColumnKind kind, const OutputValue& value) {
    const bool isText = kind == ColumnKind::Texts;
    const auto* const number = std::get_if<double>(&value);
    const auto* const text = std::get_if<std::string>(&value);
    if (number != nullptr && !isText) return column.Add(*number);
    if (number != nullptr && !MCMV::IsMissing(*number)) return column.Add(std::string_view(FormatNumber(*number)));
    if (text != nullptr && isText) return column.Add(std::string_view(*text));
    const std::optional<double> read = text == nullptr ? std::nullopt : ReadNumber(*text);
    read ? column.Add(*read) : column.AddAbsent();
}

}  // namespace

ScorePlan::ScorePlan(std::shared_ptr<const OpenModel> scoredModel, const nbscore_scoring* given)
    : model(std::move(scoredModel)) {
    const nbscore_scoring taken = TakeOptions(given, NBSCORE_SCORING_INIT);
    RequireChoice(taken.usual_columns, 1, "usual_columns");
    RequireChoice(taken.prediction_only, 1, "prediction_only");
    RequireChoice(taken.lacking_as_absent, 1, "lacking_as_absent");
    RequireChoice(taken.reserved, 0, "reserved");
    RequireChoice(taken.reasons, mostReasons, "reasons");
    RequireChoice(taken.reasons_that_lift, 1, "reasons_that_lift");
    options.columns = taken.usual_columns != 0 ? ResultColumns::Usual : ResultColumns::Output;
    options.predictionOnly = taken.prediction_only != 0;
    lacking = taken.lacking_as_absent != 0 ? LackingFields::Absent : LackingFields::Refused;
    if (taken.best != 0) options.subModels.best = static_cast<std::size_t>(taken.best);

    options.reasons.most = static_cast<std::size_t>(taken.reasons);
    options.reasons.kind = taken.reasons_that_lift != 0 ? ReasonKind::Lifted : ReasonKind::HeldDown;

    if (model->GetScorer().GetBatchScorer().IsSet()) {
        if (taken.reasons != 0) {
            throw BadArgument(
                "reasons are for single classifiers, and the model is a set of sub-models, which nbscore_explain tells "
                "of.");
        }
        columns = ListAddedColumns(model->GetAnswerNames(), options);
        return;
    }
    if (taken.best != 0) throw BadArgument("best is for sets of sub-models, and the model is a single classifier.");
    outputs = FindOutputColumns(model->GetModel(), options);
    const ScoreDictVar& target = *model->GetModel().GetTargetVar();
    hasNumericTarget = target.GetStorageType() == ScoreDictVar::NumericStorage;
    columns = outputs.empty() ? ListAddedColumns(target, options) : ListAddedColumns(outputs, options);
    const auto firstReason = std::ranges::find(columns, AddedColumn::Reason, &AddedColumn::content);
    reasonColumns.assign(firstReason, columns.end());
    columns.erase(firstReason, columns.end());
}

ColumnKind ScorePlan::KindOf(const AddedColumn& column) const {
    const auto isText = [&] {
        switch (column.content) {
            case AddedColumn::Prediction:
                return !hasNumericTarget;
            case AddedColumn::Output:
                return !outputs[column.number].isNumber;
            case AddedColumn::Label:
                return true;
            case AddedColumn::Reason:
                return column.number % partsOfReason != weightOfReason;
            case AddedColumn::Posterior:
            case AddedColumn::Score:
            case AddedColumn::Assessment:
                break;
        }
        return false;
    };
    return isText() ? ColumnKind::Texts : ColumnKind::Numbers;
}

std::vector<ColumnType> ScorePlan::GetColumns() const {
    std::vector<ColumnType> types;
    for (const std::vector<AddedColumn>& some : {columns, reasonColumns}) {
        for (const AddedColumn& column : some)
            types.push_back({column.name, KindOf(column)});
    }
    return types;
}

void ScorePlan::Score(const ArrowSchema& schema, const ArrowArray& cases, ArrowArray& scores) const {
    model->ReadCases(schema, cases, [&](const ArrowCases& table) {
        std::vector<ArrowColumn> scored = ScoreTable(table.GetColumns(), table.GetSize());
        if (!reasonColumns.empty()) FindReasons(table.GetColumns(), table.GetSize(), scored);
        GiveArray(std::move(scored), table.GetSize(), scores);
    });
}

std::vector<ArrowColumn> ScorePlan::ScoreTable(std::span<const SourceColumn> table, std::size_t cases) const {
    if (!outputs.empty()) return ScoreOneByOne(table, cases);
    if (!model->GetScorer().GetBatchScorer().IsSet()) return ScoreClassifier(table, cases);
    return options.subModels.best ? ScoreBest(table, cases) : ScoreSet(table, cases);
}

void ScorePlan::FindReasons(std::span<const SourceColumn> table, std::size_t cases,
                            std::vector<ArrowColumn>& scores) const {
    const std::size_t first = scores.size();
    for (const AddedColumn& column : reasonColumns)
        scores.emplace_back(KindOf(column));
    const CaseExplainer& explainer = model->GetExplainer();
    SourceScorer::Cases records(model->GetScorer(), table, cases, lacking);
    CaseExplainer::Memory memory;
    Evidence evidence;
    for (std::size_t entry = 0; entry < cases; ++entry) {
        if (entry % LimitWatch::stepsPerQuestion == 0) model->ThrowIfCancelled();
        explainer.Explain(records.Read(entry), 0, {}, evidence, memory);
        std::size_t next = first;
        for (const std::size_t position : nbscore::FindReasons(evidence, options.reasons.kind, options.reasons.most)) {
            const PredictorEvidence& predictor = evidence.predictors[position];
            scores[next++].Add(std::string_view(explainer.GetPredictors(0)[position]));
            ArrowColumn& values = scores[next++];
            predictor.kind == PredictorReading::Missing ? values.AddAbsent()
                                                        : values.Add(std::string_view(predictor.value));
            scores[next++].Add(*predictor.weight);
        }
        while (next < scores.size())
            scores[next++].AddAbsent();
    }
}

std::vector<ArrowColumn> ScorePlan::ScoreOneByOne(std::span<const SourceColumn> table, std::size_t cases) const {
    SourceScorer::Cases records(model->GetScorer(), table, cases, lacking);
    ScoredCaseReader results(model->GetModel(), options);
    ReusedResult result;
    std::vector<ArrowColumn> scores;
    for (const AddedColumn& column : columns)
        scores.emplace_back(KindOf(column));
    for (std::size_t entry = 0; entry < cases; ++entry) {
        if (entry % LimitWatch::stepsPerQuestion == 0) model->ThrowIfCancelled();
        const ScoreCaseRecord& record = records.Read(entry);
        const ScoredCase scored = results.Read(record, result.Score(model->GetModel(), record));
        for (std::size_t i = 0; i < columns.size(); ++i)
            AddOutput(scores[i], KindOf(columns[i]), scored.outputs[i]);
    }
    return scores;
}

std::vector<ArrowColumn> ScorePlan::ScoreClassifier(std::span<const SourceColumn> table, std::size_t cases) const {
    const SourceScorer& scorer = model->GetScorer();
    const std::vector<std::string>& categories = model->GetAnswerNames();
    std::vector<std::int32_t> predicted(cases);
    const auto confidence = std::make_shared<std::vector<double>>(options.predictionOnly ? 0 : cases);
    const auto probabilities =
        std::make_shared<std::vector<double>>(options.predictionOnly ? 0 : CountNumbers(cases, categories.size()));
    AnswerColumns answers;
    answers.predicted = predicted;
    answers.confidence = *confidence;
    answers.probabilities = *probabilities;
    answers.probabilityOrder = MatrixOrder::ColumnByColumn;
    scorer.Score(table, cases, answers, lacking);

    std::vector<ArrowColumn> scores;
    for (const AddedColumn& column : columns) {
        if (column.content == AddedColumn::Prediction) {
            ArrowColumn& predictions = scores.emplace_back(KindOf(column));
            for (const std::int32_t category : predicted) {
                if (category < 0) {
                    predictions.AddAbsent();
                } else if (hasNumericTarget) {
                    predictions.Add(
                        ReadNumber(categories[static_cast<std::size_t>(category)]).value_or(MCMV::gMissingValue));
                } else {
                    predictions.Add(std::string_view(categories[static_cast<std::size_t>(category)]));
                }
            }
        } else if (column.number == 0) {
            scores.emplace_back(confidence, 0, cases);
        } else if (column.number <= categories.size()) {
            scores.emplace_back(probabilities, (column.number - 1) * cases, cases);
        } else {
            // A category that was never counted, of a model that no case says anything to.
            ArrowColumn& none = scores.emplace_back(ColumnKind::Numbers);
            for (std::size_t entry = 0; entry < cases; ++entry)
                none.AddAbsent();
        }
    }
    return scores;
}

std::vector<ArrowColumn> ScorePlan::ScoreSet(std::span<const SourceColumn> table, std::size_t cases) const {
    const auto all = std::make_shared<std::vector<double>>(CountNumbers(cases, model->GetAnswerNames().size()));
    AnswerColumns answers;
    answers.probabilities = *all;
    answers.probabilityOrder = MatrixOrder::ColumnByColumn;
    model->GetScorer().Score(table, cases, answers, lacking);
    std::vector<ArrowColumn> scores;
    for (const AddedColumn& column : columns)
        scores.emplace_back(all, column.number * cases, cases);
    return scores;
}

std::vector<ArrowColumn> ScorePlan::ScoreBest(std::span<const SourceColumn> table, std::size_t cases) const {
    const std::vector<std::string>& labels = model->GetAnswerNames();
    std::vector<ArrowColumn> scores;
    for (const AddedColumn& column : columns)
        scores.emplace_back(KindOf(column));
    std::vector<double> ofBlock;
    SubModelRanking ranking(options.subModels.best);
    const auto makeRoom = [&](std::size_t count) {
        model->ThrowIfCancelled();
        ofBlock.resize(count * labels.size());
        AnswerColumns answers;
        answers.probabilities = ofBlock;
        return answers;
    };
    const auto take = [&](std::size_t count) {
        for (std::size_t entry = 0; entry < count; ++entry) {
            const auto ofCase = std::span<const double>(ofBlock).subspan(entry * labels.size(), labels.size());
            const std::vector<std::size_t>& shown = ranking.Rank(ofCase);
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const std::size_t position = shown[columns[i].number];
                if (columns[i].content == AddedColumn::Label) {
                    scores[i].Add(std::string_view(labels[position]));
                } else {
                    scores[i].Add(ofCase[position]);
                }
            }
        }
    };
    const std::size_t fitting = scoresAtOnce / std::max<std::size_t>(labels.size(), 1);
    model->GetScorer().ScoreInBlocks(table, cases, {std::max<std::size_t>(fitting, 1), makeRoom, take}, lacking);
    return scores;
}

}  // namespace nbscore
