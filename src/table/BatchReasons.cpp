#include "table/BatchReasons.h"

#include <algorithm>
#include <cmath>

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
      roomForDistances(mostDistances),
      weightTexts(1) {
    const std::vector<std::string> fields = batch.GetFieldsOfPredictors();
    for (std::size_t position = 0; position < fields.size(); ++position) {
        const PredictorTables& tables = explainer.GetTables().GetClassifier(0).predictors[position];
        // A predictor that nothing was counted of takes no part.
        if (tables.probabilities == nullptr) continue;
        const auto [reader, places] = batch.GetCodePlaces(position);
        Predictor& predictor = predictors.emplace_back();
        predictor.position = position;
        predictor.reader = reader;
        predictor.places = places.data();
        predictor.first = numPlaces;
        predictor.numPlaces = 1 + tables.probabilities->size();
        predictor.column = coder.FindColumn(fields[position]);
        numPlaces += predictor.numPlaces;
        const std::string& name = explainer.GetPredictors(0)[position];
        writer.AppendReasonField(predictor.fieldAsFirst, 0, name);
        writer.AppendReasonField(predictor.fieldAsLater, 1, name);
    }
    coder.KeepDerivedTexts(fields);
}

void BatchReasons::Find(std::span<const FactorRow> rows, std::span<const double> probabilities) {
    reasons.clear();
    texts.clear();
    writer.BeginReasons(texts);
    std::size_t begin = 0;
    const bool isPossible =
        std::ranges::all_of(probabilities, [](double probability) { return std::isfinite(probability); });
    if (isPossible && probabilities.size() > 1) {
        const auto [category, against] = explainer.GetTables().ChoosePair(0, probabilities, {});
        Pair& pair = GetPair(category, against);
        ranking.Clear();
        for (std::size_t i = 0; i < predictors.size(); ++i) {
            const Predictor& predictor = predictors[i];
            const std::size_t place = predictor.places[rows[predictor.reader]];
            ranking.Offer(i, pair.distances.empty() ? DistanceAt(i, place, pair, category, against)
                                                    : pair.distances[predictor.first + place]);
        }
        for (const ReasonRanking::Ranked& ranked : ranking.Get()) {
            const Predictor& predictor = predictors[ranked.predictor];
            texts += reasons.empty() ? predictor.fieldAsFirst : predictor.fieldAsLater;
            reasons.push_back(
                {static_cast<std::uint32_t>(ranked.predictor), static_cast<std::uint32_t>(texts.size() - begin)});
            begin = texts.size();
            AppendWeight(ranked.predictor, predictor.places[rows[predictor.reader]], pair, category, against);
        }
    }
    writer.EndReasons(texts, reasons.size());
}

void BatchReasons::AppendFound(std::string& text) const {
    text += texts;
    for (const Reason& reason : reasons)
        AppendBytes(text, reason);
    AppendBytes(text, static_cast<std::uint32_t>(texts.size()));
    AppendBytes(text, static_cast<std::uint32_t>(reasons.size()));
}

std::string_view BatchReasons::TakeFound(std::string_view text) {
    std::uint32_t count = 0;
    std::uint32_t length = 0;
    TakeBytes(text, count);
    TakeBytes(text, length);
    reasons.resize(count);
    for (auto reason = reasons.rbegin(); reason != reasons.rend(); ++reason)
        TakeBytes(text, *reason);
    texts = text.substr(text.size() - length);
    text.remove_suffix(length);
    return text;
}

void BatchReasons::Write(std::string& text, const CaseCoder& coder, const TableCases& cases, std::size_t number) const {
    std::size_t begin = 0;
    for (const auto [predictor, length] : reasons) {
        text.append(texts, begin, length);
        writer.AppendReasonValue(text, ValueOf(predictors[predictor], coder, cases, number));
        begin += length;
    }
    text.append(texts, begin);
}

BatchReasons::Pair& BatchReasons::GetPair(std::size_t category, std::size_t against) {
    const std::size_t key = category * numCategories + against;
    const auto known = pairs.find(key);
    if (known != pairs.end()) return known->second;
    if (roomForRanges < predictors.size()) {
        pairs.clear();
        weightTexts.resize(1);
        roomForRanges = mostRanges;
        roomForDistances = mostDistances;
    }
    roomForRanges -= std::min(roomForRanges, predictors.size());
    const EvidenceTables& tables = explainer.GetTables();
    const ClassifierTables& classifier = tables.GetClassifier(0);
    Pair& made = pairs[key];
    for (const Predictor& predictor : predictors)
        made.ranges.push_back(FindRange(classifier.predictors[predictor.position], classifier.threshold,
                                        tables.GetDensityFloor(), category, against));
    FillDistances(made, category, against);
    return made;
}

/// Where there is no room for them, they are found for each case anew.
void BatchReasons::FillDistances(Pair& pair, std::size_t category, std::size_t against) {
    if (numPlaces > roomForDistances) return;
    roomForDistances -= numPlaces;
    pair.distances.reserve(numPlaces);
    for (std::size_t i = 0; i < predictors.size(); ++i) {
        for (std::size_t place = 0; place < predictors[i].numPlaces; ++place)
            pair.distances.push_back(DistanceAt(i, place, pair, category, against));
    }
    pair.weightTexts.resize(numPlaces);
}

std::optional<double> BatchReasons::WeightAt(const Predictor& predictor, std::size_t place, std::size_t category,
                                             std::size_t against) const {
    if (place == 0) return 0.0;
    return WeightOf(explainer.GetTables().GetClassifier(0).predictors[predictor.position], place - 1, category,
                    against);
}

double BatchReasons::DistanceAt(std::size_t predictor, std::size_t place, const Pair& pair, std::size_t category,
                                std::size_t against) const {
    return FindDistance(WeightAt(predictors[predictor], place, category, against), pair.ranges[predictor], kind);
}

void BatchReasons::AppendWeight(std::size_t predictor, std::size_t place, Pair& pair, std::size_t category,
                                std::size_t against) {
    const auto append = [&](std::string& text) {
        // A reason has a weight.
        writer.AppendReasonWeight(text, *WeightAt(predictors[predictor], place, category, against));
    };
    if (pair.weightTexts.empty()) return append(texts);
    std::uint32_t& position = pair.weightTexts[predictors[predictor].first + place];
    if (position == 0) {
        if (weightTexts.size() == mostWeightTexts) return append(texts);
        append(weightTexts.emplace_back());
        position = static_cast<std::uint32_t>(weightTexts.size() - 1);
    }
    texts += weightTexts[position];
}

std::string_view BatchReasons::ValueOf(const Predictor& predictor, const CaseCoder& coder, const TableCases& cases,
                                       std::size_t number) const {
    const std::string_view cell = predictor.column ? cases.rows.GetCell(number, *predictor.column) : std::string_view();
    return cell.empty() ? coder.GetDerivedText(predictor.position, number) : cell;
}

}  // namespace nbscore
