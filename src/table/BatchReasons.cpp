#include "table/BatchReasons.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "evidence/EvidenceTables.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

/// Of the pairs of categories that are kept at a time.
constexpr std::size_t mostNumbers = std::size_t{1} << 20;

template <typename Number>
void AppendBytes(std::string& text, const Number* numbers, std::size_t count) {
    text.append(reinterpret_cast<const char*>(numbers), count * sizeof(Number));
}

std::uint32_t TakeLast(std::string_view& text) {
    std::uint32_t number = 0;
    text.copy(reinterpret_cast<char*>(&number), sizeof number, text.size() - sizeof number);
    text.remove_suffix(sizeof number);
    return number;
}

}  // namespace

BatchReasons::BatchReasons(const ReasonOptions& options, const CaseExplainer& caseExplainer,
                           const BatchCases& batchCases, const CaseCoder& coder)
    : kind(options.kind), explainer(caseExplainer), batch(batchCases), ranking(options.most) {
    for (const std::string& field : batch.GetFieldsOfPredictors()) {
        Source& source = sources.emplace_back(Source{field, coder.FindColumn(field), std::nullopt});
        if (batch.ReadsDerivedFields()) source.derived = numDerived++;
    }
}

void BatchReasons::KeepDerivedValues(const CaseCoder& coder, std::size_t number) {
    if (numDerived == 0) return;
    if (derivedValues.size() < (number + 1) * numDerived) derivedValues.resize((number + 1) * numDerived);
    for (const Source& source : sources)
        derivedValues[number * numDerived + *source.derived] = coder.GetDerivedText(source.field);
}

void BatchReasons::Find(std::span<const FactorRow> rows, std::span<const double> probabilities) {
    found.predictors.clear();
    const bool isPossible =
        std::ranges::all_of(probabilities, [](double probability) { return std::isfinite(probability); });
    if (!isPossible || probabilities.size() < 2) return;
    const auto [category, against] = explainer.GetTables().ChoosePair(0, probabilities, {});
    const Pair& pair = GetPair(category, against);
    ranking.Clear();
    for (std::size_t predictor = 0; predictor < sources.size(); ++predictor) {
        const auto place = static_cast<std::size_t>(batch.CodeOf(predictor, rows) + 1);
        ranking.Offer(predictor, pair.distances[predictor][place]);
    }
    found.category = static_cast<std::uint32_t>(category);
    found.against = static_cast<std::uint32_t>(against);
    for (const std::size_t predictor : ranking.GetPredictors())
        found.predictors.push_back(static_cast<std::uint32_t>(predictor));
}

void BatchReasons::AppendFound(std::string& text) const {
    AppendBytes(text, found.predictors.data(), found.predictors.size());
    const std::uint32_t rest[] = {static_cast<std::uint32_t>(found.predictors.size()), found.against, found.category};
    AppendBytes(text, rest, std::size(rest));
}

std::string_view BatchReasons::TakeFound(std::string_view text) {
    found.category = TakeLast(text);
    found.against = TakeLast(text);
    found.predictors.resize(TakeLast(text));
    for (auto predictor = found.predictors.rbegin(); predictor != found.predictors.rend(); ++predictor)
        *predictor = TakeLast(text);
    return text;
}

std::span<const WrittenReason> BatchReasons::Write(std::span<const FactorRow> rows,
                                                   std::span<const std::string_view> cells, std::size_t number) {
    written.clear();
    if (found.predictors.empty()) return written;
    Pair& pair = GetPair(found.category, found.against);
    for (const std::uint32_t predictor : found.predictors) {
        const auto place = static_cast<std::size_t>(batch.CodeOf(predictor, rows) + 1);
        written.push_back({explainer.GetPredictors(0)[predictor], ValueOf(sources[predictor], cells, number),
                           GetText(pair, predictor, place)});
    }
    return written;
}

BatchReasons::Pair& BatchReasons::GetPair(std::size_t category, std::size_t against) {
    const auto known = pairs.find({category, against});
    if (known != pairs.end()) return known->second;
    Pair made{explainer.GetTables().GetWeights(0, category, against), {}, {}};
    for (const PredictorWeights& predictor : made.weights->GetPredictors()) {
        std::vector<double>& distances = made.distances.emplace_back(1, FindDistance(0.0, predictor.range, kind));
        for (const std::optional<double>& weight : predictor.ofCodes)
            distances.push_back(FindDistance(weight, predictor.range, kind));
        made.texts.emplace_back(distances.size());
    }
    if (numNumbers + made.weights->CountNumbers() > mostNumbers) {
        pairs.clear();
        numNumbers = 0;
    }
    numNumbers += made.weights->CountNumbers();
    return pairs.emplace(std::pair(category, against), std::move(made)).first->second;
}

std::string_view BatchReasons::GetText(Pair& pair, std::size_t predictor, std::size_t place) const {
    std::string& text = pair.texts[predictor][place];
    if (text.empty()) {
        AppendNumber(text, place == 0 ? 0.0 : *pair.weights->GetPredictors()[predictor].ofCodes[place - 1]);
    }
    return text;
}

std::string_view BatchReasons::ValueOf(const Source& source, std::span<const std::string_view> cells,
                                       std::size_t number) const {
    if (source.column && !cells[*source.column].empty()) return cells[*source.column];
    if (source.derived) return derivedValues[number * numDerived + *source.derived];
    return {};
}

}  // namespace nbscore
