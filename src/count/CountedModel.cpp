#include "count/CountedModel.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <stdexcept>
#include <string_view>

#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

/// Where the items of one list stand in another one that holds them all.
std::vector<std::size_t> PlacesIn(const std::vector<std::string>& all, const std::vector<std::string>& some) {
    SeededMap<std::string_view, std::size_t> placesOfAll;
    for (std::size_t i = 0; i < all.size(); ++i)
        placesOfAll.emplace(all[i], i);
    std::vector<std::size_t> places;
    for (const std::string& item : some)
        places.push_back(placesOfAll.at(item));
    return places;
}

std::vector<std::string> Unite(const std::vector<std::string>& first, const std::vector<std::string>& second) {
    std::set<std::string> all(first.begin(), first.end());
    all.insert(second.begin(), second.end());
    return {all.begin(), all.end()};
}

CountedField Unite(CountedField field, const CountedField& other) {
    field.values = Unite(field.values, other.values);
    if (field.kind != CountedField::WholeNumbers) return field;
    std::ranges::sort(field.values, {}, [](const std::string& value) { return ReadNumber(value).value_or(0.0); });
    return field;
}

const char* NameKind(CountedField::Kind kind) {
    switch (kind) {
        case CountedField::Texts:
            return "as texts";
        case CountedField::WholeNumbers:
            return "as whole numbers";
        case CountedField::Bins:
            return "in bins";
    }
    return "";
}

void RequireAlike(const CountedField& field, const CountedField& other) {
    const std::string name = QuoteForMessage(field.name);
    if (field.name != other.name) {
        throw std::invalid_argument("its inputs are others: it has " + QuoteForMessage(other.name) + " where " + name +
                                    " is expected");
    }
    if (field.kind != other.kind) {
        throw std::invalid_argument(name + " is counted " + NameKind(other.kind) + " in it, and not " +
                                    NameKind(field.kind));
    }
    if (field.cutpoints != other.cutpoints) throw std::invalid_argument(name + " has other cutpoints in it");
    const bool areGroupedAlike =
        field.otherValue == other.otherValue && (field.otherValue.empty() || field.values == other.values);
    if (!areGroupedAlike) throw std::invalid_argument(name + " has other rare values put together in it");
}

void RequireAlike(const CountedModel& model, const CountedModel& other) {
    if (model.target != other.target) {
        throw std::invalid_argument("its target is " + QuoteForMessage(other.target) + ", and not " +
                                    QuoteForMessage(model.target));
    }
    if (model.subModelField != other.subModelField) {
        throw std::invalid_argument(other.subModelField.empty() ? "it is no set of sub-models"
                                                                : "it is a set of sub-models of another field, or "
                                                                  "the only one");
    }
    if (model.fields.size() != other.fields.size()) {
        throw std::invalid_argument("it has another number of inputs: " + std::to_string(other.fields.size()) +
                                    ", and not " + std::to_string(model.fields.size()));
    }
    for (std::size_t i = 0; i < model.fields.size(); ++i)
        RequireAlike(model.fields[i], other.fields[i]);
    if (model.threshold != other.threshold) throw std::invalid_argument("its threshold is another one");
}

std::vector<std::string> NamesOf(const std::vector<CountedClassifier>& classifiers) {
    std::vector<std::string> names;
    for (const CountedClassifier& classifier : classifiers)
        names.push_back(classifier.name);
    return names;
}

/// Adds the counts of classifiers to those of a model that has all their values, categories and sub-models.
class Addition {
public:
    explicit Addition(CountedModel& destination) : sum(destination) {}

    void Add(const CountedModel& addend) {
        const std::vector<std::size_t> categories = PlacesIn(sum.categories, addend.categories);
        std::vector<std::vector<std::size_t>> values;
        for (std::size_t i = 0; i < sum.fields.size(); ++i)
            values.push_back(PlacesOfValues(sum.fields[i], addend.fields[i]));
        const std::vector<std::size_t> places = PlacesIn(NamesOf(sum.classifiers), NamesOf(addend.classifiers));
        for (std::size_t number = 0; number < places.size(); ++number) {
            const CountedClassifier& classifier = addend.classifiers[number];
            CountedClassifier& to = sum.classifiers[places[number]];
            AddTo(to.countsOfCategories, classifier.countsOfCategories, categories);
            for (std::size_t i = 0; i < values.size(); ++i) {
                to.inputs[i].missing += classifier.inputs[i].missing;
                for (std::size_t value = 0; value < values[i].size(); ++value)
                    AddTo(to.inputs[i].counts[values[i][value]], classifier.inputs[i].counts[value], categories);
            }
        }
    }

private:
    static std::vector<std::size_t> PlacesOfValues(const CountedField& field, const CountedField& addend) {
        if (field.kind != CountedField::Bins && field.otherValue.empty()) return PlacesIn(field.values, addend.values);
        std::vector<std::size_t> same(field.CountValues());
        std::iota(same.begin(), same.end(), std::size_t{0});
        return same;
    }
    static void AddTo(std::vector<double>& to, const std::vector<double>& counts,
                      const std::vector<std::size_t>& places) {
        for (std::size_t i = 0; i < places.size(); ++i)
            to[places[i]] += counts[i];
    }

    CountedModel& sum;
};

}  // namespace

double CountedClassifier::CountRows() const {
    return std::accumulate(countsOfCategories.begin(), countsOfCategories.end(), 0.0);
}

void CountedModel::Scale(double factor) {
    for (CountedClassifier& classifier : classifiers) {
        for (double& count : classifier.countsOfCategories)
            count *= factor;
        for (CountedInput& input : classifier.inputs) {
            input.missing *= factor;
            for (std::vector<double>& counts : input.counts) {
                for (double& count : counts)
                    count *= factor;
            }
        }
    }
}

void CountedModel::Add(const CountedModel& other) {
    RequireAlike(*this, other);
    CountedModel sum = *this;
    sum.categories = Unite(categories, other.categories);
    for (std::size_t i = 0; i < fields.size(); ++i)
        sum.fields[i] = Unite(fields[i], other.fields[i]);
    sum.classifiers.clear();
    for (const std::string& name : Unite(NamesOf(classifiers), NamesOf(other.classifiers))) {
        CountedClassifier classifier{name, std::vector<double>(sum.categories.size()), {}};
        for (const CountedField& field : sum.fields) {
            const std::vector<double> none(sum.categories.size());
            classifier.inputs.push_back({std::vector<std::vector<double>>(field.CountValues(), none), 0.0});
        }
        sum.classifiers.push_back(std::move(classifier));
    }
    Addition addition(sum);
    addition.Add(*this);
    addition.Add(other);
    *this = std::move(sum);
}

}  // namespace nbscore
