#include "batch/StandardAnswers.h"

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "batch/OwnedColumn.h"
#include "framework/CaseFacts.h"
#include "framework/MCMV.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ScoreClsResult.h"

namespace nbscore::test {
namespace {

void ReadCase(const ScoreResult& result, std::size_t categories, Answers& answers) {
    const auto& percents = dynamic_cast<const ScoreClsResult&>(result).GetAllValuePercent();
    if (percents.empty()) {
        answers.predicted.push_back(-1);
        answers.confidence.push_back(MCMV::gMissingValue);
        answers.matrix.insert(answers.matrix.end(), categories, MCMV::gMissingValue);
    } else {
        ReadAnswer(result, answers);
    }
}

const std::vector<CaseValue>& ColumnOf(const InputTable& table, const std::string& name) {
    return table.columns.at(static_cast<std::size_t>(std::ranges::find(table.names, name) - table.names.begin()));
}

}  // namespace

OneByOne ScoreOneByOne(ScoreModel& model, const InputTable& table) {
    OneByOne scored;
    const ModelDescription description = dynamic_cast<const ModelSelfDescription&>(model).Describe();
    std::map<std::string, std::size_t> positions;
    for (const InputDescription& input : description.classifiers.front().inputs)
        positions.emplace(input.name, positions.size());
    scored.answers.unknown.resize(positions.size());
    RecordOfTable record(table);
    ScoreResult* result = nullptr;
    for (std::size_t entry = 0; entry < table.cases; ++entry) {
        record.GoTo(entry);
        model.GetScore(&record, result, true);
        ReadCase(*result, description.targetCategories.size(), scored.answers);
        const CaseFacts& facts = dynamic_cast<const ResultFacts&>(*result).GetFacts();
        if (facts.outcome != CaseOutcome::Scored) ++scored.withoutResult;
        if (facts.outcome == CaseOutcome::InvalidValue) continue;
        for (const CaseFacts::Unknown& unknown : facts.unknown)
            ++scored.answers.unknown[positions.at(*unknown.field)];
        scored.missing += positions.size() - facts.usable - facts.unknown.size();
    }
    delete result;
    return scored;
}

Answers ScoreColumns(const BatchScorer& scorer, const InputTable& table, Randomness& random) {
    std::vector<std::unique_ptr<OwnedColumn>> columns;
    std::vector<Column> borrowed;
    for (std::size_t input = 0; input < scorer.GetInputs().size(); ++input) {
        const DictionaryMaker dictionaries{
            [&, input](std::span<const std::string_view> values) { return scorer.MakeDictionary(input, values); },
            [&, input](std::span<const double> values) { return scorer.MakeDictionary(input, values); }};
        columns.push_back(
            std::make_unique<OwnedColumn>(ColumnOf(table, scorer.GetInputs()[input].name), dictionaries, random));
        borrowed.push_back(columns.back()->Get());
    }
    const std::size_t categories = scorer.GetCategories().size();
    Answers answers;
    answers.predicted.resize(table.cases);
    answers.confidence.resize(table.cases);
    answers.matrix.resize(table.cases * categories);
    answers.missing.resize(scorer.GetInputsOfPredictors().size());
    answers.unknown.resize(scorer.GetInputsOfPredictors().size());
    AnswerColumns room;
    room.predicted = answers.predicted;
    room.confidence = answers.confidence;
    room.probabilities = answers.matrix;
    room.missing = answers.missing;
    room.unknown = answers.unknown;
    if (OneIn(2, random)) room.probabilityOrder = MatrixOrder::ColumnByColumn;
    scorer.Score(borrowed, table.cases, room);
    if (room.probabilityOrder == MatrixOrder::ColumnByColumn) {
        std::vector<double> byCase;
        for (std::size_t entry = 0; entry < table.cases; ++entry) {
            for (std::size_t k = 0; k < categories; ++k)
                byCase.push_back(answers.matrix[k * table.cases + entry]);
        }
        answers.matrix = std::move(byCase);
    }
    return answers;
}

}  // namespace nbscore::test
