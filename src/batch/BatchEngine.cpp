#include "batch/BatchEngine.h"

#include <cstdint>
#include <stdexcept>
#include <utility>

#include "batch/BestScores.h"
#include "framework/MCMV.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfTables.h"
#include "naivebayes/PredictedCategory.h"

namespace nbscore {

/// A case of an engine. To set a value finds its place for each list of rows that follows from it.
class BatchEngine::Row : public PreparedRow {
public:
    Row(const BatchEngine& scoringEngine, std::shared_ptr<const ColumnScorer> scorer)
        : kept(std::move(scorer)), engine(scoringEngine), numbers(engine.GetNumbersPerCase()) {
        const RowLists& known = *engine.rowLists;
        places.resize(known.CountLists());
        for (std::size_t input = 0; input < engine.inputs.size(); ++input) {
            for (const std::size_t reader : known.GetReadersOf(input)) {
                for (const std::size_t list : known.GetListsOf(reader))
                    lists.push_back({known.Get(list).rows.data(), list});
                readers.push_back({&known.GetReaders()[reader].rows, lists.size()});
            }
            endsOfInputs.push_back(readers.size());
        }
        if (!engine.IsSet()) return;
        positions.reserve(numbers.size());
        ranked.reserve(numbers.size());
    }

    void SetText(std::size_t input, std::string_view text) override {
        Set(input, [text](const ValueRows& rows) { return rows.RowOf(text); });
    }
    void SetNumber(std::size_t input, double number) override {
        Set(input, [number](const ValueRows& rows) { return rows.RowOf(number); });
    }
    void SetMissing(std::size_t input) override {
        Set(input, [](const ValueRows&) { return missingRow; });
    }

    RowAnswer Score() override {
        if (engine.IsSet()) {
            engine.caseFactors->ComputeScores(places, numbers);
            return {-1, MCMV::gMissingValue, numbers};
        }
        engine.caseFactors->ComputePosteriors(places, numbers);
        const std::size_t best = PredictedCategory(numbers, engine.targetCounts);
        return {static_cast<std::int32_t>(best), numbers[best], numbers};
    }

    std::span<const RankedSubModel> ScoreBest(std::size_t count) override {
        if (!engine.IsSet()) RefuseToRank();
        engine.caseFactors->ComputeScores(places, numbers);
        const double* const scores = numbers.data();
        FindBestScores(
            numbers.size(), count, [scores](std::size_t position) { return scores[position]; }, positions);
        ranked.clear();
        for (const std::size_t position : positions)
            ranked.push_back({position, scores[position]});
        return ranked;
    }

private:
    /// A list of rows: for each of its reader's rows the place of a case.
    struct List {
        const FactorRow* placesOfRows;
        std::size_t number;
    };
    /// What looks values up, and the end of its lists.
    struct LookUp {
        const ValueRows* rows;
        std::size_t endOfLists;
    };

    template <typename RowIn>
    void Set(std::size_t input, const RowIn& rowIn) {
        if (input >= endsOfInputs.size()) RefuseInput(input);
        const std::size_t first = input == 0 ? 0 : endsOfInputs[input - 1];
        const List* list = lists.data() + (first == 0 ? 0 : readers[first - 1].endOfLists);
        for (const LookUp* reader = readers.data() + first; reader != readers.data() + endsOfInputs[input]; ++reader) {
            const FactorRow row = rowIn(*reader->rows);
            for (const List* const end = lists.data() + reader->endOfLists; list != end; ++list)
                places[list->number] = list->placesOfRows[row];
        }
    }

    std::shared_ptr<const ColumnScorer> kept;
    const BatchEngine& engine;
    /// All of one input after those of another, and so are the lists of readers.
    std::vector<LookUp> readers;
    std::vector<List> lists;
    std::vector<std::size_t> endsOfInputs;
    /// For each list of rows where the case stands in it.
    std::vector<FactorRow> places;
    std::vector<double> numbers;
    std::vector<std::size_t> positions;
    std::vector<RankedSubModel> ranked;
};

ModelTables GetScorableTables(const ScoreModel& model) {
    const auto* const open = dynamic_cast<const ModelSelfTables*>(&model);
    if (open == nullptr) throw std::invalid_argument("The model does not lay its tables open.");
    if (const auto* const check = dynamic_cast<const ModelSelfCheck*>(&model)) {
        if (const ScoringObstacle obstacle = check->FindScoringObstacle())
            throw std::invalid_argument(obstacle.message);
    }
    ModelTables tables = open->GetTables();
    for (const ClassifierTables& classifier : tables.classifiers) {
        for (const PredictorTables& predictor : classifier.predictors) {
            if (predictor.kind != PredictorTables::Foreign) continue;
            throw std::invalid_argument("The predictor \"" + predictor.var->GetName() +
                                        "\" has an encoder of an unknown class.");
        }
    }
    return tables;
}

void RequireAnswerSize(const std::string& what, std::size_t size, std::size_t rows, std::size_t columns) {
    if (size == 0) return;
    // The product may be beyond what a size can hold.
    if (columns != 0 && size % columns == 0 && size / columns == rows) return;
    throw std::invalid_argument("There is room for " + std::to_string(size) + " " + what + ", but " +
                                std::to_string(rows) + " times " + std::to_string(columns) + " are to be written.");
}

void RequireRoom(const AnswerColumns& answers, std::size_t cases, std::size_t numbersPerCase, const std::string& what,
                 std::size_t predictors) {
    RequireAnswerSize("predictions", answers.predicted.size(), cases);
    RequireAnswerSize("confidences", answers.confidence.size(), cases);
    RequireAnswerSize(what, answers.probabilities.size(), cases, numbersPerCase);
    RequireAnswerSize("counters of missing values", answers.missing.size(), predictors);
    RequireAnswerSize("counters of unknown values", answers.unknown.size(), predictors);
}

BatchEngine::BatchEngine(const ModelTables& model) : readsDerivedFields(model.readsDerivedFields) {
    if (model.rule == ScoringRule::Standard) throw std::invalid_argument("The model is scored by the standard's rule.");
    for (const ClassifierTables& classifier : model.classifiers)
        AddInputs(classifier);
    rowLists.emplace(model, inputsOfPredictors);
    if (model.isSet) {
        for (const ClassifierTables& subModel : model.classifiers)
            subModels.push_back(subModel.name);
        set.emplace(model, *rowLists);
        caseFactors.emplace(model, model.targetCategories.size(), rowLists->GetListsOfPredictors());
        return;
    }
    const ClassifierTables& classifier = model.classifiers.front();
    targetCounts = classifier.targetCounts;
    caseFactors.emplace(model, classifier.priors.size(), rowLists->GetListsOfPredictors());
    // Of a model that no case says anything to, there may be fewer priors than categories.
    for (std::size_t k = 0; k < classifier.priors.size(); ++k)
        categories.push_back(model.targetCategories[k]->GetString());
    single.emplace(classifier, *rowLists);
}

void BatchEngine::AddInputs(const ClassifierTables& classifier) {
    for (const PredictorTables& predictor : classifier.predictors) {
        const auto [entry, isNew] = positionsOfInputs.try_emplace(predictor.var->GetName(), inputs.size());
        if (isNew) inputs.push_back({entry->first, predictor.kind});
        inputsOfPredictors.push_back(entry->second);
    }
}

template <typename Value>
InputDictionary BatchEngine::LookUp(std::size_t input, std::span<const Value> values, const Validity& validity) const {
    if (input >= inputs.size()) RefuseInput(input);
    InputDictionary::Lookup lookup{identity, input, values.size(), {}};
    for (const std::size_t position : rowLists->GetReadersOf(input)) {
        const Reader& reader = rowLists->GetReaders()[position];
        std::vector<FactorRow>& rows = lookup.rowsOfReaders.emplace_back(1, missingRow);
        for (std::size_t code = 0; code < values.size(); ++code)
            rows.push_back(validity.HasValue(code) ? reader.rows.RowOf(values[code]) : missingRow);
        if (rows.size() <= longestByteList && reader.rows.GetNumRows() <= longestByteList) {
            lookup.bytesOfReaders.resize(lookup.rowsOfReaders.size());
            lookup.bytesOfReaders.back() = ByteList(rows);
        }
    }
    return InputDictionary(std::make_shared<InputDictionary::Lookup>(std::move(lookup)));
}

InputDictionary BatchEngine::MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                            const Validity& validity) const {
    return LookUp(input, values, validity);
}

InputDictionary BatchEngine::MakeDictionary(std::size_t input, std::span<const double> values,
                                            const Validity& validity) const {
    return LookUp(input, values, validity);
}

std::vector<std::string> BatchEngine::GetFieldsOfReaders() const {
    std::vector<std::string> fields;
    for (const Reader& reader : rowLists->GetReaders())
        fields.push_back(inputs[reader.input].name);
    return fields;
}

std::unique_ptr<PreparedRow> BatchEngine::MakeRow(std::shared_ptr<const ColumnScorer> self) const {
    return std::make_unique<Row>(*this, std::move(self));
}

void BatchEngine::Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const {
    RequireReadable(columns, cases, identity, inputs);
    ScoreValues({.readers = rowLists->GetReaders(), .columns = columns, .rows = {}, .cases = cases}, answers);
}

void BatchEngine::ScoreRows(std::span<const std::span<const FactorRow>> rows, std::size_t cases,
                            const AnswerColumns& answers) const {
    const std::size_t numReaders = rowLists->GetReaders().size();
    if (rows.size() != numReaders) {
        throw std::invalid_argument("There are " + std::to_string(rows.size()) + " lists of rows for " +
                                    std::to_string(numReaders) + " readers.");
    }
    for (const std::span<const FactorRow> list : rows) {
        if (list.size() == cases) continue;
        throw std::invalid_argument("A list has " + std::to_string(list.size()) + " rows for " + std::to_string(cases) +
                                    " cases.");
    }
    ScoreValues({.readers = rowLists->GetReaders(), .columns = {}, .rows = rows, .cases = cases}, answers);
}

void BatchEngine::ScoreValues(const CaseValues& values, const AnswerColumns& answers) const {
    if (IsSet() && !(answers.predicted.empty() && answers.confidence.empty())) {
        throw std::invalid_argument("A set of sub-models has no prediction and no confidence.");
    }
    RequireRoom(answers, values.cases, GetNumbersPerCase(), IsSet() ? "scores" : "probabilities",
                inputsOfPredictors.size());
    if (values.cases == 0) return;
    if (single) {
        single->Score(*rowLists, values, answers);
    } else {
        set->Score(*rowLists, values, answers);
    }
}

}  // namespace nbscore
