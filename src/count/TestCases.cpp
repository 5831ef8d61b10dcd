#include "count/TestCases.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

#include "framework/Blanks.h"
#include "framework/NumberText.h"
#include "output/OutputSink.h"
#include "table/CsvReader.h"
#include "table/CsvText.h"
#include "table/TableScorer.h"

namespace nbscore {
namespace {

constexpr std::size_t mostTypicalCases = 6;
constexpr std::size_t mostFieldsVaried = 5;
/// Of sub-models, of which there may be many.
constexpr std::size_t mostCasesOfSubModel = 3;

using Values = std::vector<std::optional<std::string>>;

class TextKeeper : public OutputSink {
public:
    void Write(std::string_view bytes) override { text += bytes; }
    void Commit() override {}

    std::string text;
};

/// A number of a bin, on its edge where it has one.
std::string FindNumberOf(const std::vector<double>& cutpoints, std::size_t bin) {
    if (bin < cutpoints.size()) return FormatNumber(cutpoints[bin]);
    const double last = cutpoints.back();
    const double behind = last + std::max(1.0, std::abs(last));
    return FormatNumber(std::isfinite(behind) ? behind : std::nextafter(last, std::numeric_limits<double>::max()));
}

/// The field's value that is the most frequent one with a category; nothing where there is none that a cell of a
/// document can hold.
std::optional<std::string> FindTypicalValue(const CountedField& field, const CountedInput& input,
                                            std::size_t category) {
    std::optional<std::size_t> best;
    const std::size_t count = field.kind == CountedField::Bins ? field.CountValues() : field.values.size();
    for (std::size_t value = 0; value < count; ++value) {
        const bool canBeCell =
            field.kind == CountedField::Bins || WithoutBlanks(field.values[value]) == field.values[value];
        const double rows = input.counts[value][category];
        if (canBeCell && rows > (best ? input.counts[*best][category] : 0.0)) best = value;
    }
    if (!best) return std::nullopt;
    return field.kind == CountedField::Bins ? FindNumberOf(field.cutpoints, *best) : field.values[*best];
}

bool HasValue(const Values& values) {
    return std::ranges::any_of(values, [](const auto& value) { return value.has_value(); });
}

/// Each case once, in the order in which they are thought of.
std::vector<Values> ChooseCases(const CountedModel& model, const CountedClassifier& classifier) {
    std::vector<Values> cases;
    std::set<Values> known;
    const auto add = [&](const Values& values) {
        if (HasValue(values) && known.insert(values).second) cases.push_back(values);
    };
    for (std::size_t category = 0; category < std::min(model.categories.size(), mostTypicalCases); ++category) {
        Values values;
        for (std::size_t i = 0; i < model.fields.size(); ++i)
            values.push_back(FindTypicalValue(model.fields[i], classifier.inputs[i], category));
        add(values);
    }
    if (cases.empty()) return cases;
    const Values first = cases.front();
    for (std::size_t i = 0; i < std::min(first.size(), mostFieldsVaried); ++i) {
        Values without = first;
        without[i].reset();
        add(without);
        Values alone(first.size());
        alone[i] = first[i];
        add(alone);
    }
    if (!model.subModelField.empty() && cases.size() > mostCasesOfSubModel) cases.resize(mostCasesOfSubModel);
    return cases;
}

void AppendRow(std::string& table, const Values& values) {
    CsvRow row(table, ',');
    for (const std::optional<std::string>& value : values)
        row.Add(value.value_or(""));
    row.End();
}

std::string WriteTable(const CountedModel& model, const std::vector<std::vector<Values>>& cases) {
    Values names;
    for (const CountedField& field : model.fields)
        names.emplace_back(field.name);
    std::string table;
    AppendRow(table, names);
    for (const std::vector<Values>& ofClassifier : cases) {
        for (const Values& values : ofClassifier)
            AppendRow(table, values);
    }
    return table;
}

/// What the model answers, cell by cell, without the names of the columns.
std::vector<std::vector<std::string>> Score(ScoreModel& scorable, const std::string& table) {
    TableScorerOptions options;
    options.output.onlyScores = true;
    options.output.columns = ResultColumns::Usual;
    options.allowEmpty = true;
    std::istringstream input(table);
    TextKeeper scores;
    ScoreTable(scorable, input, "test cases", scores, options, {});
    std::istringstream answers(scores.text);
    CsvReader reader(answers, "answers", ',');
    std::vector<std::string_view> cells;
    std::vector<std::vector<std::string>> rows;
    reader.ReadRow(cells);
    while (reader.ReadRow(cells))
        rows.emplace_back(cells.begin(), cells.end());
    return rows;
}

bool IsFinite(const std::string& number) {
    return ReadNumber(number).has_value();  // which "nan" and "inf" are not, nor an empty cell
}

}  // namespace

std::vector<std::vector<TestCase>> MakeTestCases(const CountedModel& model, ScoreModel& scorable) {
    std::vector<std::vector<Values>> chosen;
    for (const CountedClassifier& classifier : model.classifiers)
        chosen.push_back(ChooseCases(model, classifier));
    const std::vector<std::vector<std::string>> answers = Score(scorable, WriteTable(model, chosen));

    const bool isSet = !model.subModelField.empty();
    std::vector<std::vector<TestCase>> cases(chosen.size());
    std::size_t row = 0;
    for (std::size_t classifier = 0; classifier < chosen.size(); ++classifier) {
        for (const Values& values : chosen[classifier]) {
            const std::vector<std::string>& answer = answers[row++];
            TestCase made{values, {}, {}};
            if (isSet) {
                made.probabilities = {answer[classifier]};
            } else {
                // Behind the prediction and its confidence.
                made.prediction = answer[0];
                const std::size_t count = std::min(model.categories.size(), mostExpectedProbabilities);
                for (std::size_t i = 0; i < count; ++i)
                    made.probabilities.push_back(answer[2 + i]);
            }
            if (std::ranges::all_of(made.probabilities, IsFinite)) cases[classifier].push_back(std::move(made));
        }
    }
    return cases;
}

}  // namespace nbscore
