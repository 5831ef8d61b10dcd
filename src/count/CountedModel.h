#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nbscore {

/// An input's field, and the values that are counted apart.
struct CountedField {
    enum Kind { Texts, WholeNumbers, Bins };

    std::string name;
    Kind kind = Texts;
    /// Of texts and whole numbers, ascending, numbers in their shortest form.
    std::vector<std::string> values{};
    /// What all other texts are counted as; empty where there is no such thing.
    std::string otherValue{};
    /// Of bins, ascending; there is one bin more.
    std::vector<double> cutpoints{};

    /// That of other texts, the last one, included.
    std::size_t CountValues() const {
        return kind == Bins ? cutpoints.size() + 1 : values.size() + (otherValue.empty() ? 0U : 1U);
    }
};

/// The counts of one field.
struct CountedInput {
    /// For each of the field's values one count for each category.
    std::vector<std::vector<double>> counts;
    /// How many rows had no value.
    double missing = 0.0;
};

/// Counts of a classifier: of the only one, or of a sub-model.
struct CountedClassifier {
    std::string name;
    std::vector<double> countsOfCategories;
    /// One for each field.
    std::vector<CountedInput> inputs;

    double CountRows() const;
};

/// What a document holds that was made by counting. Whole counts below 2^53 are exact, and so are their sums.
struct CountedModel {
    std::string target;
    /// Of the target, ascending; two where there are sub-models.
    std::vector<std::string> categories;
    /// The field that names the sub-models; empty for a single classifier.
    std::string subModelField;
    std::vector<CountedField> fields;
    /// Of sub-models, ascending by their names.
    std::vector<CountedClassifier> classifiers;
    /// With nothing, one over the number of a classifier's rows.
    std::optional<double> threshold;

    double GetThreshold(const CountedClassifier& classifier) const {
        return threshold ? *threshold : 1.0 / classifier.CountRows();
    }
    /// Multiplies all counts.
    void Scale(double factor);
    /// Adds the counts of another model of the same fields. What occurs in one of them alone is kept: values,
    /// categories of the target, sub-models.
    ///
    /// Throws std::invalid_argument, which says what is different, for models that cannot be added: of other fields,
    /// kinds of fields, cutpoints or thresholds.
    void Add(const CountedModel& other);
};

}  // namespace nbscore
