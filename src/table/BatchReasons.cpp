#include "table/BatchReasons.h"

#include <algorithm>
#include <cmath>

#include "evidence/EvidenceTables.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

/// Of all pairs of categories that are kept at a time. Each thread has its own.
constexpr std::size_t mostNumbers = std::size_t{1} << 17;

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
                           const BatchCases& batchCases, CaseCoder& coder)
    : kind(options.kind), explainer(caseExplainer), batch(batchCases), ranking(options.most), room(mostNumbers) {
    const std::vector<std::string> fields = batch.GetFieldsOfPredictors();
    for (const std::string& field : fields)
        columns.push_back(coder.FindColumn(field));
    coder.KeepDerivedTexts(fields);
    for (const PredictorTables& predictor : explainer.GetTables().GetClassifier(0).predictors)
        isCounted.push_back(predictor.probabilities != nullptr);
    said.resize(columns.size());
    saidAnew.resize(columns.size());
}

void BatchReasons::Find(std::span<const FactorRow> rows, std::span<const double> probabilities) {
    reasons.clear();
    weightTexts.clear();
    const bool isPossible =
        std::ranges::all_of(probabilities, [](double probability) { return std::isfinite(probability); });
    if (!isPossible || probabilities.size() < 2) return;
    const auto [category, against] = explainer.GetTables().ChoosePair(0, probabilities, {});
    Pair& pair = GetPair(category, against);
    ranking.Clear();
    for (std::size_t predictor = 0; predictor < columns.size(); ++predictor) {
        // A predictor that nothing was counted of takes no part.
        const int code = isCounted[predictor] ? batch.CodeOf(predictor, rows) : -1;
        if (pair.ofCodes.empty()) {
            saidAnew[predictor] = Say(pair.ranges[predictor], predictor, code, category, against);
            said[predictor] = &saidAnew[predictor];
        } else {
            said[predictor] = &pair.ofCodes[predictor][static_cast<std::size_t>(code + 1)];
        }
        ranking.Offer(predictor, said[predictor]->distance);
    }
    for (const std::size_t predictor : ranking.GetPredictors()) {
        std::string& text = said[predictor]->text;
        if (text.empty()) AppendNumber(text, said[predictor]->weight);
        weightTexts += text;
        reasons.push_back({static_cast<std::uint32_t>(predictor), static_cast<std::uint32_t>(text.size())});
    }
}

void BatchReasons::AppendFound(std::string& text) const {
    text += weightTexts;
    for (const Reason& reason : reasons)
        AppendBytes(text, reason);
    AppendBytes(text, static_cast<std::uint32_t>(reasons.size()));
}

std::string_view BatchReasons::TakeFound(std::string_view text) {
    std::uint32_t count = 0;
    TakeBytes(text, count);
    reasons.resize(count);
    std::size_t length = 0;
    for (auto reason = reasons.rbegin(); reason != reasons.rend(); ++reason) {
        TakeBytes(text, *reason);
        length += reason->length;
    }
    weightTexts = text.substr(text.size() - length);
    text.remove_suffix(length);
    return text;
}

std::span<const WrittenReason> BatchReasons::Write(const CaseCoder& coder, const TableCases& cases,
                                                   std::size_t number) {
    written.clear();
    std::size_t begin = 0;
    for (const auto [predictor, length] : reasons) {
        written.push_back({explainer.GetPredictors(0)[predictor], ValueOf(predictor, coder, cases, number),
                           std::string_view(weightTexts).substr(begin, length)});
        begin += length;
    }
    return written;
}

BatchReasons::Pair& BatchReasons::GetPair(std::size_t category, std::size_t against) {
    const auto known = pairs.find({category, against});
    if (known != pairs.end()) return known->second;
    const EvidenceTables& tables = explainer.GetTables();
    const ClassifierTables& classifier = tables.GetClassifier(0);
    Pair made;
    for (const PredictorTables& predictor : classifier.predictors)
        made.ranges.push_back(FindRange(predictor, classifier.threshold, tables.GetDensityFloor(), category, against));
    if (room < made.ranges.size()) {
        pairs.clear();
        room = mostNumbers;
    }
    room -= std::min(room, made.ranges.size());
    FillCodes(made, category, against);
    return pairs.emplace(std::pair(category, against), std::move(made)).first->second;
}

/// Where there is no room for all codes, what they say is found for each case anew.
void BatchReasons::FillCodes(Pair& pair, std::size_t category, std::size_t against) {
    const std::vector<PredictorTables>& predictors = explainer.GetTables().GetClassifier(0).predictors;
    const auto countCodes = [](const PredictorTables& predictor) {
        return 1 + (predictor.probabilities == nullptr ? 0 : predictor.probabilities->size());
    };
    std::size_t numbers = 0;
    for (const PredictorTables& predictor : predictors)
        numbers += countCodes(predictor);
    if (numbers > room) return;
    room -= numbers;
    for (std::size_t j = 0; j < predictors.size(); ++j) {
        std::vector<Said>& ofPredictor = pair.ofCodes.emplace_back();
        for (std::size_t place = 0; place < countCodes(predictors[j]); ++place)
            ofPredictor.push_back(Say(pair.ranges[j], j, static_cast<int>(place) - 1, category, against));
    }
}

/// @param code negative where the predictor is left out.
BatchReasons::Said BatchReasons::Say(const WeightRange& range, std::size_t predictor, int code, std::size_t category,
                                     std::size_t against) const {
    const PredictorTables& tables = explainer.GetTables().GetClassifier(0).predictors[predictor];
    const std::optional<double> weight =
        code < 0 ? 0.0 : WeightOf(tables, static_cast<std::size_t>(code), category, against);
    return {FindDistance(weight, range, kind), weight.value_or(0.0)};
}

std::string_view BatchReasons::ValueOf(std::size_t predictor, const CaseCoder& coder, const TableCases& cases,
                                       std::size_t number) const {
    const std::optional<std::size_t>& column = columns[predictor];
    const std::string_view cell = column ? cases.rows.GetCell(number, *column) : std::string_view();
    return cell.empty() ? coder.GetDerivedText(predictor, number) : cell;
}

}  // namespace nbscore
