#include "naivebayes/ScoringPlan.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <typeinfo>
#include <utility>

#include "factors/ShortList.h"
#include "framework/SeededHash.h"

namespace nbscore {
namespace {

/// Of what a predictor's field is read as.
std::uint64_t HashOf(const PredictorTables& predictor) {
    const HashSeed& seed = HashSeed::OfProcess();
    std::uint64_t hash = 0;
    const auto add = [&](std::uint64_t next) {
        const std::array<std::uint64_t, 2> both = {hash, next};
        hash = seed.OfBytes(reinterpret_cast<const char*>(both.data()), sizeof(both));
    };
    for (const std::string* text : predictor.texts)
        add(seed.Hash(*text));
    for (const double number : predictor.numbers)
        add(seed.Hash(number));
    return hash;
}

/// Cutpoints that are no numbers equal nothing, themselves neither: then two are one predictor, or they are not alike.
bool ReadAlike(const PredictorTables& first, const PredictorTables& second) {
    const auto equalTexts = [](const std::string* a, const std::string* b) { return *a == *b; };
    return first.var == second.var && first.kind == second.kind && first.numbers == second.numbers &&
           std::ranges::equal(first.texts, second.texts, equalTexts);
}

bool FitsPlan(const ModelTables& tables) {
    return std::ranges::all_of(tables.classifiers, [&](const ClassifierTables& classifier) {
        return classifier.priors.size() == tables.targetCategories.size() &&
               std::ranges::none_of(classifier.predictors, [](const PredictorTables& predictor) {
                   return predictor.kind == PredictorTables::Foreign;
               });
    });
}

}  // namespace

/// The reads of a plan that is being made, by what they read.
class ScoringPlan::ReadsByCategories {
public:
    explicit ReadsByCategories(std::vector<FieldRead>& ofPlan) : reads(ofPlan) {}

    /// The number of the read, which is added where there was none like it.
    std::size_t Find(const PredictorTables& predictor) {
        const std::pair key(predictor.var, HashOf(predictor));
        const auto [begin, end] = known.equal_range(key);
        for (auto entry = begin; entry != end; ++entry) {
            if (ReadAlike(*entry->second.first, predictor)) return entry->second.second;
        }
        const std::size_t number = reads.size();
        reads.emplace_back(predictor);
        known.emplace(key, std::pair(&predictor, number));
        return number;
    }

private:
    std::vector<FieldRead>& reads;
    std::multimap<std::pair<const ScoreDictVar*, std::uint64_t>, std::pair<const PredictorTables*, std::size_t>> known;
};

std::unique_ptr<const ScoringPlan> ScoringPlan::Make(const ModelTables& tables) {
    if (!FitsPlan(tables)) return nullptr;
    return std::unique_ptr<const ScoringPlan>(new ScoringPlan(tables));
}

ScoringPlan::ScoringPlan(const ModelTables& tables)
    : factors(tables, tables.targetCategories.size(), AddReads(tables)) {}

std::vector<std::size_t> ScoringPlan::AddReads(const ModelTables& tables) {
    ReadsByCategories known(reads);
    std::vector<std::size_t> numbers;
    for (const ClassifierTables& classifier : tables.classifiers) {
        const bool isRead = !tables.isSet || !HasZeroPrior(classifier);
        for (const PredictorTables& predictor : classifier.predictors)
            numbers.push_back(isRead ? known.Find(predictor) : 0);
    }
    return numbers;
}

void ScoringPlan::ComputePosteriors(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                                    std::span<double> posteriors) const {
    ShortList<FactorRow> places(reads.size());
    FindPlaces(record, derivedRecord, places.Get());
    factors.ComputePosteriors(places.Get(), posteriors);
}

void ScoringPlan::ComputeScores(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                                std::span<double> scores) const {
    ShortList<FactorRow> places(reads.size());
    FindPlaces(record, derivedRecord, places.Get());
    factors.ComputeScores(places.Get(), scores);
}

void ScoringPlan::FindPlaces(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                             std::span<FactorRow> places) const {
    if (typeid(record) == typeid(BaseCaseRecord)) {
        const auto& ofThisClass = static_cast<const BaseCaseRecord&>(record);
        for (std::size_t i = 0; i < reads.size(); ++i)
            places[i] = reads[i].PlaceIn(ofThisClass, derivedRecord);
        return;
    }
    const bool indexed = record.IsIndexed();
    for (std::size_t i = 0; i < reads.size(); ++i)
        places[i] = reads[i].PlaceIn(record, indexed, derivedRecord);
}

}  // namespace nbscore
