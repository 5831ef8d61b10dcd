#include "factors/ValueRows.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "framework/BaseDictVar.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

constexpr int noCode = -1;

/// All that any of the lists holds, each once, in the order of the first list that holds it; and, for each list, the
/// position in it of each of these.
template <typename Key, typename Item>
std::vector<Item> Unite(const std::vector<const std::vector<Item>*>& lists,
                        const std::function<Key(const Item&)>& keyOf, std::vector<std::vector<int>>& positions) {
    std::map<Key, std::size_t> places;
    std::vector<Item> all;
    for (const std::vector<Item>* list : lists) {
        for (const Item& item : *list) {
            if (places.try_emplace(keyOf(item), all.size()).second) all.push_back(item);
        }
    }
    for (const std::vector<Item>* list : lists) {
        std::vector<int>& ofList = positions.emplace_back(all.size(), noCode);
        for (std::size_t position = 0; position < list->size(); ++position)
            ofList[places.at(keyOf((*list)[position]))] = static_cast<int>(position);
    }
    return all;
}

}  // namespace

DeclaredMissing::DeclaredMissing(const ScoreDictVar& var)
    : continuous(var.GetMeasureLevel() == ScoreDictVar::Continuous) {
    if (continuous && MayDeclareMissing(var)) declaring.reset(var.Clone());
}

bool DeclaredMissing::IsDeclared(double number) const {
    const NumericValue value(number);
    return declaring->IsMissingValue(&value);
}

bool DeclaredMissing::IsDeclared(std::string_view text) const {
    const StringValue value{std::string(text)};
    return declaring->IsMissingValue(&value);
}

ValueRows::Known ValueRows::MakeTexts(std::span<const PredictorTables* const> predictors,
                                      std::vector<std::vector<int>>& codes) {
    std::vector<const std::vector<const std::string*>*> lists;
    for (const PredictorTables* predictor : predictors)
        lists.push_back(&predictor->texts);
    return TextRows(Unite<std::string_view, const std::string*>(
        lists, [](const std::string* const& text) -> std::string_view { return *text; }, codes));
}

ValueRows::Known ValueRows::MakeNumbers(std::span<const PredictorTables* const> predictors,
                                        std::vector<std::vector<int>>& codes) {
    std::vector<const std::vector<double>*> lists;
    for (const PredictorTables* predictor : predictors)
        lists.push_back(&predictor->numbers);
    return NumberRows(Unite<double, double>(
        lists, [](const double& number) { return number; }, codes));
}

ValueRows::Known ValueRows::MakeKnown(std::span<const PredictorTables* const> predictors,
                                      std::vector<std::vector<int>>& codes) {
    if (predictors.front()->kind == PredictorTables::Texts) return MakeTexts(predictors, codes);
    if (predictors.front()->kind == PredictorTables::Numbers) return MakeNumbers(predictors, codes);
    std::vector<const std::vector<double>*> cutpoints;
    for (const PredictorTables* predictor : predictors)
        cutpoints.push_back(&predictor->numbers);
    return BinRows(cutpoints);
}

std::size_t ValueRows::GetNumRows() const {
    return std::visit([](const auto& rows) { return rows.GetNumRows(); }, known);
}

int ValueRows::GetCode(std::size_t predictor, FactorRow row) const {
    if (const auto* bins = std::get_if<BinRows>(&known)) return bins->GetBin(predictor, row);
    return codesOfPredictors[predictor][row - firstKnownRow];
}

}  // namespace nbscore
