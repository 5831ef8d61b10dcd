#include "table/BatchReasons.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "evidence/EvidenceTables.h"

namespace nbscore {
namespace {

/// Of all pairs of categories that are kept at a time: ranges, one for each predictor, and distances, one for each of
/// its places. Each thread has its own.
constexpr std::size_t mostRanges = std::size_t{1} << 17;
constexpr std::size_t mostDistances = std::size_t{1} << 20;
constexpr std::size_t mostWeightTexts = std::size_t{1} << 16;

template <typename Item>
void AppendBytes(std::string& text, const Item& item) {
    text.append(reinterpret_cast<const char*>(&item), sizeof item);
}

template <typename Item>
void TakeBytes(std::string_view& text, Item& item) {
    text.copy(reinterpret_cast<char*>(&item), sizeof item, text.size() - sizeof item);
    text.remove_suffix(sizeof item);
}

}  // namespace

BatchReasons::BatchReasons(const ReasonOptions& options, const CaseExplainer& caseExplainer,
                           const BatchCases& batchCases, CaseCoder& coder, const ScoreWriter& scoreWriter)
    : kind(options.kind),
      explainer(caseExplainer),
      batch(batchCases),
      writer(scoreWriter),
      ranking(options.most),
      numCategories(explainer.GetCategories().size()),
      roomForRanges(mostRanges),
      roomForDistances(mostDistances) {
    const std::vector<std::string> fields = batch.GetFieldsOfPredictors();
    for (std::size_t position = 0; position < fields.size(); ++position) {
        const PredictorTables& tables = explainer.GetTables().GetClassifier(0).predictors[position];
        // A predictor that nothing was counted of takes no part.
        if (tables.probabilities == nullptr) continue;
        const auto [reader, ofRows] = batch.GetCodePlaces(position);
        places.push_back({ofRows.data(), reader, numPlaces});
        Predictor& predictor = predictors.emplace_back();
        predictor.position = position;
        predictor.numPlaces = 1 + tables.probabilities->size();
        predictor.column = coder.FindColumn(fields[position]);
        numPlaces += predictor.numPlaces;
        const std::string& name = explainer.GetPredictors(0)[position];
        writer.AppendReasonField(predictor.fieldAsFirst, 0, name);
        writer.AppendReasonField(predictor.fieldAsLater, 1, name);
    }
    coder.KeepDerivedTexts(fields);
    distances.resize(predictors.size());
}

void BatchReasons::Find(std::span<const FactorRow> rows, std::span<const double> probabilities) {
    reasons.clear();
    ofCase.clear();
    const bool isPossible =
        std::ranges::all_of(probabilities, [](double probability) { return std::isfinite(probability); });
    if (!isPossible || probabilities.size() < 2) return;
    const auto [category, against] = explainer.GetTables().ChoosePair(0, probabilities, {});
    Pair& pair = GetPair(category, against);
    FindDistances(pair, rows);
    ranking.Clear();
    for (std::size_t i = 0; i < distances.size(); ++i)
        ranking.Offer(i, distances[i]);
    for (const ReasonRanking::Ranked& ranked : ranking.Get()) {
        const std::size_t place = places[ranked.predictor].Find(rows);
        reasons.push_back({static_cast<std::uint32_t>(ranked.predictor), WriteWeight(ranked.predictor, place, pair)});
    }
}

/// In a loop of its own, so that it need not wait for memory predictor by predictor.
void BatchReasons::FindDistances(const Pair& pair, std::span<const FactorRow> rows) {
    if (pair.distances.empty()) {
        for (std::size_t i = 0; i < places.size(); ++i)
            distances[i] = DistanceAt(i, places[i].Find(rows), pair);
        return;
    }
    const double* const ofPlaces = pair.distances.data();
    double* to = distances.data();
    for (const Places& ofPredictor : places)
        *to++ = ofPlaces[ofPredictor.first + ofPredictor.Find(rows)];
}

void BatchReasons::AppendFound(std::string& text) const {
    for (const Reason& reason : reasons)
        text += reason.weight;
    for (const Reason& reason : reasons) {
        AppendBytes(text, reason.predictor);
        AppendBytes(text, static_cast<std::uint32_t>(reason.weight.size()));
    }
    AppendBytes(text, static_cast<std::uint32_t>(reasons.size()));
}

std::string_view BatchReasons::TakeFound(std::string_view text) {
    std::uint32_t count = 0;
    TakeBytes(text, count);
    reasons.resize(count);
    constexpr std::size_t bytesOfReason = 2 * sizeof(std::uint32_t);
    std::string_view weights = text.substr(0, text.size() - count * bytesOfReason);
    for (auto reason = reasons.rbegin(); reason != reasons.rend(); ++reason) {
        std::uint32_t length = 0;
        TakeBytes(text, length);
        TakeBytes(text, reason->predictor);
        reason->weight = weights.substr(weights.size() - length);
        weights.remove_suffix(length);
    }
    return weights;
}

void BatchReasons::Write(std::string& text, const CaseCoder& coder, const TableCases& cases, std::size_t number) const {
    writer.BeginReasons(text);
    bool isFirst = true;
    for (const Reason& reason : reasons) {
        const Predictor& predictor = predictors[reason.predictor];
        text += isFirst ? predictor.fieldAsFirst : predictor.fieldAsLater;
        writer.AppendReasonValue(text, ValueOf(predictor, coder, cases, number));
        text += reason.weight;
        isFirst = false;
    }
    writer.EndReasons(text, reasons.size());
}

BatchReasons::Pair& BatchReasons::GetPair(std::size_t category, std::size_t against) {
    if (lastPair != nullptr && lastPair->category == category && lastPair->against == against) return *lastPair;
    const std::size_t key = category * numCategories + against;
    const auto known = pairs.find(key);
    if (known != pairs.end()) return *(lastPair = &known->second);
    if (roomForRanges < predictors.size()) {
        lastPair = nullptr;
        pairs.clear();
        weightTexts.clear();
        roomForRanges = mostRanges;
        roomForDistances = mostDistances;
    }
    roomForRanges -= std::min(roomForRanges, predictors.size());
    Pair made{category, against, {}, {}, {}};
    Fill(made);
    return *(lastPair = &pairs.emplace(key, std::move(made)).first->second);
}

void BatchReasons::Fill(Pair& pair) {
    const bool keepsDistances = numPlaces <= roomForDistances;
    if (keepsDistances) {
        roomForDistances -= numPlaces;
        pair.distances.reserve(numPlaces);
        pair.weightTexts.resize(numPlaces);
    }
    std::vector<std::optional<double>> weights;
    for (std::size_t i = 0; i < predictors.size(); ++i) {
        weights.clear();
        for (std::size_t place = 0; place < predictors[i].numPlaces; ++place)
            weights.push_back(WeightAt(i, place, pair));
        WeightRange& range = pair.ranges.emplace_back();
        // To be left out is none of the things that a predictor can say.
        for (std::size_t place = 1; place < weights.size(); ++place)
            range.Widen(weights[place]);
        if (!keepsDistances) continue;
        for (const std::optional<double>& weight : weights)
            pair.distances.push_back(FindDistance(weight, range, kind));
    }
}

std::optional<double> BatchReasons::WeightAt(std::size_t predictor, std::size_t place, const Pair& pair) const {
    if (place == 0) return 0.0;
    const ClassifierTables& classifier = explainer.GetTables().GetClassifier(0);
    return WeightOf(classifier.predictors[predictors[predictor].position], place - 1, pair.category, pair.against);
}

double BatchReasons::DistanceAt(std::size_t predictor, std::size_t place, const Pair& pair) const {
    return FindDistance(WeightAt(predictor, place, pair), pair.ranges[predictor], kind);
}

/// Valid until the next case is asked for.
std::string_view BatchReasons::WriteWeight(std::size_t predictor, std::size_t place, Pair& pair) {
    const std::size_t position = places[predictor].first + place;
    if (!pair.weightTexts.empty() && pair.weightTexts[position] != nullptr) return *pair.weightTexts[position];
    const bool isKept = !pair.weightTexts.empty() && weightTexts.size() < mostWeightTexts;
    std::string& text = isKept ? weightTexts.emplace_back() : ofCase.emplace_back();
    // A reason has a weight.
    writer.AppendReasonWeight(text, *WeightAt(predictor, place, pair));
    if (isKept) pair.weightTexts[position] = &text;
    return text;
}

std::string_view BatchReasons::ValueOf(const Predictor& predictor, const CaseCoder& coder, const TableCases& cases,
                                       std::size_t number) const {
    const std::string_view cell = predictor.column ? cases.rows.GetCell(number, *predictor.column) : std::string_view();
    return cell.empty() ? coder.GetDerivedText(predictor.position, number) : cell;
}

}  // namespace nbscore
