#include "count/ModelBuilder.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <set>
#include <string_view>
#include <utility>

#include "count/Binning.h"
#include "framework/NumberText.h"
#include "output/HostError.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

/// Whole numbers of more different values are cut into bins.
constexpr std::size_t mostWholeNumbers = 20;
/// Of fewer rows it cannot be told that their values are identifiers.
constexpr std::uint64_t fewestRowsOfIdentifiers = 20;
/// So large a share of different values makes a column one of identifiers.
constexpr double shareOfIdentifiers = 0.9;
constexpr const char* otherTexts = "(other)";

using Counts = std::vector<std::uint64_t>;

std::uint64_t SumOf(const Counts& counts) {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

void AddTo(Counts& sums, const Counts& counts) {
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] += counts[i];
}

/// A field, and its counts for each category that rows are counted under.
struct FieldCounts {
    CountedField field;
    std::vector<Counts> counts;
    Counts missing;
};

/// "12 of 150 rows (8 %)".
std::string TellShare(std::uint64_t rows, std::uint64_t all) {
    const double percent = 100.0 * static_cast<double>(rows) / static_cast<double>(all);
    return std::to_string(rows) + " of " + std::to_string(all) + " rows (" +
           FormatNumber(std::round(percent * 10.0) / 10.0) + " %)";
}

/// Chooses a table's inputs.
class FieldChoice {
public:
    FieldChoice(const TableTotals& tableTotals, const CountOptions& countOptions, const std::string& sourceName,
                std::uint64_t fewestOfText)
        : totals(tableTotals), options(countOptions), source(sourceName), minCount(fewestOfText) {
        std::map<std::string_view, std::size_t> places;
        for (const CountedCategory& category : totals.categories)
            places.emplace(category.category, 0);
        for (auto& [category, place] : places)
            place = numTargetCategories++;
        for (const CountedCategory& category : totals.categories)
            placesOfCategories.push_back(places[category.category]);
    }

    std::vector<FieldCounts> Choose() {
        std::vector<FieldCounts> chosen;
        for (const ColumnTotals& column : totals.columns) {
            std::optional<FieldCounts> field = Choose(column);
            if (field) chosen.push_back(std::move(*field));
        }
        if (chosen.empty())
            throw CaseDataError(source, 0, "the table has no column that could be an input" + LastNote());
        return chosen;
    }
    std::vector<std::string> TakeNotes() { return std::move(notes); }

private:
    std::string LastNote() const { return notes.empty() ? "" : "; " + notes.back(); }

    std::optional<FieldCounts> Choose(const ColumnTotals& column) {
        const std::uint64_t missing = SumOf(column.missing);
        const std::uint64_t rows =
            std::accumulate(totals.countsOfCategories.begin(), totals.countsOfCategories.end(), std::uint64_t{0}) -
            missing;
        if (rows == 0) return LeaveOut(column, "no row has a value of it");
        if (column.kind == ColumnTotals::TooMany) return LeaveOut(column, TellTooMany(column), true);
        if (IsIdentifier(column, rows)) {
            return LeaveOut(column, "nearly all of its values are different, as those of an identifier are");
        }
        FieldCounts field{{column.name}, {}, column.missing};
        switch (column.kind) {
            case ColumnTotals::Texts:
                FillTexts(field, column);
                break;
            case ColumnTotals::Numbers:
                if (!FillNumbers(field, column)) {
                    return LeaveOut(column, "there is no cut between its numbers that tells anything");
                }
                break;
            default:
                field.field.kind = CountedField::Bins;
                field.field.cutpoints = column.cutpoints;
                field.counts = column.counts;
        }
        if (missing > 0) {
            notes.push_back(TellShare(missing, missing + rows) + " have no value of " + QuoteForMessage(column.name));
        }
        return field;
    }

    std::optional<FieldCounts> LeaveOut(const ColumnTotals& column, const std::string& why, bool evenIfWanted = false) {
        if (options.inputs && evenIfWanted) {
            throw CaseDataError(source, column.firstText.line, "column " + QuoteForMessage(column.name) + ": " + why);
        }
        notes.push_back("left out: " + QuoteForMessage(column.name) + ": " + why);
        return std::nullopt;
    }

    std::string TellTooMany(const ColumnTotals& column) const {
        std::string told = "it has more different values than are kept";
        if (column.firstText.line != 0) {
            told += ", and " + QuoteForMessage(column.firstText.text) + " in line " +
                    std::to_string(column.firstText.line) + " is no number";
        }
        return told;
    }

    bool IsIdentifier(const ColumnTotals& column, std::uint64_t rows) const {
        if (options.inputs || rows < fewestRowsOfIdentifiers || IsKnown(column.name)) return false;
        const bool canBe =
            column.kind == ColumnTotals::Texts || (column.kind == ColumnTotals::Numbers && column.areAllWhole);
        return canBe && column.distinct > shareOfIdentifiers * static_cast<double>(rows);
    }
    bool IsKnown(const std::string& name) const {
        return std::ranges::find(options.known, name, &ColumnPlan::name) != options.known.end();
    }

    void FillTexts(FieldCounts& field, const ColumnTotals& column) {
        if (column.unwritable.line != 0) {
            throw CaseDataError(source, column.unwritable.line,
                                "column " + QuoteForMessage(column.name) + ": " +
                                    QuoteForMessage(column.unwritable.text) +
                                    " holds a character that no document can hold");
        }
        Counts others(totals.categories.size());
        std::size_t numOthers = 0;
        for (std::size_t i = 0; i < column.texts.size(); ++i) {
            if (SumOf(column.counts[i]) < minCount) {
                AddTo(others, column.counts[i]);
                ++numOthers;
            } else {
                field.field.values.push_back(column.texts[i]);
                field.counts.push_back(column.counts[i]);
            }
        }
        if (numOthers == 0) return;
        field.field.otherValue = otherTexts;
        while (std::ranges::binary_search(column.texts, field.field.otherValue))
            field.field.otherValue = "(" + field.field.otherValue + ")";
        field.counts.push_back(others);
        notes.push_back(std::to_string(numOthers) + " of " + std::to_string(column.texts.size()) + " values of " +
                        QuoteForMessage(column.name) + " are rare and counted as one, " +
                        QuoteForMessage(field.field.otherValue) + ": " +
                        TellShare(SumOf(others), SumOf(others) + CountRows(field)));
    }

    static std::uint64_t CountRows(const FieldCounts& field) {
        std::uint64_t rows = 0;
        for (std::size_t i = 0; i < field.field.values.size(); ++i)
            rows += SumOf(field.counts[i]);
        return rows;
    }

    /// False where there is nothing to tell apart.
    bool FillNumbers(FieldCounts& field, const ColumnTotals& column) {
        if (column.areAllWhole && column.numbers.size() <= mostWholeNumbers && column.droppedBits == 0) {
            field.field.kind = CountedField::WholeNumbers;
            for (const double number : column.numbers)
                field.field.values.push_back(FormatNumber(number));
            field.counts = column.counts;
            return true;
        }
        field.field.kind = CountedField::Bins;
        CountedNumbers counted{column.numbers, {}, column.droppedBits == 0};
        for (const Counts& counts : column.counts)
            counted.counts.push_back(ByTarget(counts));
        field.field.cutpoints =
            options.binning == Binning::Entropy ? CutByEntropy(counted) : CutIntoEqualCounts(counted, options.bins);
        if (field.field.cutpoints.empty()) return false;
        field.counts.assign(field.field.CountValues(), Counts(totals.categories.size()));
        for (std::size_t i = 0; i < column.numbers.size(); ++i) {
            const auto bin = std::ranges::lower_bound(field.field.cutpoints, column.numbers[i]);
            AddTo(field.counts[static_cast<std::size_t>(bin - field.field.cutpoints.begin())], column.counts[i]);
        }
        if (column.droppedBits > 0) {
            constexpr unsigned bitsOfNumber = 52;
            notes.push_back(QuoteForMessage(column.name) +
                            " has more different numbers than are kept: its cutpoints are exact to one part in " +
                            std::to_string(std::uint64_t{1} << (bitsOfNumber - column.droppedBits)) +
                            ", the counts between them are exact");
        }
        return true;
    }

    /// Bins are the same for all sub-models.
    Counts ByTarget(const Counts& counts) const {
        Counts ofTarget(numTargetCategories);
        for (std::size_t i = 0; i < counts.size(); ++i)
            ofTarget[placesOfCategories[i]] += counts[i];
        return ofTarget;
    }

    const TableTotals& totals;
    const CountOptions& options;
    const std::string& source;
    std::uint64_t minCount;
    std::size_t numTargetCategories = 0;
    /// For each category that rows are counted under, that of the target.
    std::vector<std::size_t> placesOfCategories;
    std::vector<std::string> notes;
};

/// Shares counts out to classifiers and their categories.
void FillClassifiers(CountedModel& model, const TableTotals& totals, const std::vector<FieldCounts>& fields) {
    for (std::size_t i = 0; i < totals.categories.size(); ++i) {
        const CountedCategory& counted = totals.categories[i];
        if (model.classifiers.empty() || model.classifiers.back().name != counted.subModel) {
            CountedClassifier classifier{counted.subModel, std::vector<double>(model.categories.size()), {}};
            for (const FieldCounts& field : fields) {
                const std::vector<double> none(model.categories.size());
                classifier.inputs.push_back({std::vector<std::vector<double>>(field.counts.size(), none), 0.0});
            }
            model.classifiers.push_back(std::move(classifier));
        }
        CountedClassifier& classifier = model.classifiers.back();
        const auto category = static_cast<std::size_t>(std::ranges::lower_bound(model.categories, counted.category) -
                                                       model.categories.begin());
        classifier.countsOfCategories[category] = static_cast<double>(totals.countsOfCategories[i]);
        for (std::size_t field = 0; field < fields.size(); ++field) {
            CountedInput& input = classifier.inputs[field];
            input.missing += static_cast<double>(fields[field].missing[i]);
            for (std::size_t value = 0; value < input.counts.size(); ++value)
                input.counts[value][category] = static_cast<double>(fields[field].counts[value][i]);
        }
    }
}

CountedModel MakeModel(const TableTotals& totals, const std::string& target, const std::string& subModelField,
                       const std::vector<FieldCounts>& fields) {
    CountedModel model;
    model.target = target;
    model.subModelField = subModelField;
    std::set<std::string> categories;
    for (const CountedCategory& category : totals.categories)
        categories.insert(category.category);
    model.categories.assign(categories.begin(), categories.end());
    for (const FieldCounts& field : fields)
        model.fields.push_back(field.field);
    FillClassifiers(model, totals, fields);
    return model;
}

void RequireCategories(const CountedModel& model, const std::string& sourceName) {
    const std::size_t count = model.categories.size();
    if (model.subModelField.empty() ? count >= 2 : count == 2) return;
    std::string told = "the target " + QuoteForMessage(model.target) + " has ";
    if (count == 0) {
        told += "no value in any row";
    } else if (count == 1) {
        told += "only one value, " + QuoteForMessage(model.categories.front());
    } else {
        told += "the values " + ListForMessage(model.categories);
    }
    throw CaseDataError(sourceName, 0,
                        told + (model.subModelField.empty() ? ": there is nothing to tell apart"
                                                            : ": that of sub-models must have two"));
}

}  // namespace

BuiltModel BuildModel(const TableTotals& totals, const CountOptions& options, const std::string& sourceName,
                      std::uint64_t minCount) {
    RequireCategories(MakeModel(totals, options.target, options.subModelsBy, {}), sourceName);
    FieldChoice choice(totals, options, sourceName, minCount);
    const std::vector<FieldCounts> fields = choice.Choose();
    BuiltModel built{MakeModel(totals, options.target, options.subModelsBy, fields), choice.TakeNotes()};
    const auto tellLeftOut = [&](const RowCount& rows, const std::string& column) {
        if (rows.rows == 0) return;
        built.notes.push_back(TellShare(rows.rows, totals.rows) + " have no value of " + QuoteForMessage(column) +
                              " and are not counted, the first in line " + std::to_string(rows.firstLine));
    };
    tellLeftOut(totals.withoutTarget, options.target);
    tellLeftOut(totals.withoutSubModel, options.subModelsBy);
    return built;
}

ColumnPlan GetPlanOf(const CountedField& field) {
    switch (field.kind) {
        case CountedField::WholeNumbers:
            return {field.name, ColumnKind::Numbers};
        case CountedField::Bins:
            return {field.name, ColumnKind::Bins, field.cutpoints};
        case CountedField::Texts:
            break;
    }
    return {field.name, ColumnKind::Texts};
}

CountedModel BuildModelLike(const CountedModel& model, const TableTotals& totals, const std::string& sourceName) {
    std::vector<FieldCounts> fields;
    for (const CountedField& field : model.fields) {
        const ColumnTotals& column = *std::ranges::find(totals.columns, field.name, &ColumnTotals::name);
        const std::string place = "column " + QuoteForMessage(field.name) + ": ";
        if (column.kind == ColumnTotals::TooMany || column.droppedBits > 0) {
            throw CaseDataError(sourceName, 0, place + "it has more different values than are kept");
        }
        if (column.unwritable.line != 0) {
            throw CaseDataError(
                sourceName, column.unwritable.line,
                place + QuoteForMessage(column.unwritable.text) + " holds a character that no document can hold");
        }
        FieldCounts counts{field, {}, column.missing};
        if (field.kind == CountedField::Bins) {
            counts.counts = column.counts;
        } else if (!field.otherValue.empty()) {
            counts.counts.assign(field.CountValues(), Counts(totals.categories.size()));
            for (std::size_t i = 0; i < column.texts.size(); ++i) {
                const auto kept = std::ranges::lower_bound(field.values, column.texts[i]);
                const bool isKept = kept != field.values.end() && *kept == column.texts[i];
                AddTo(isKept ? counts.counts[static_cast<std::size_t>(kept - field.values.begin())]
                             : counts.counts.back(),
                      column.counts[i]);
            }
        } else {
            counts.field.values = column.texts;
            for (const double number : column.numbers)
                counts.field.values.push_back(FormatNumber(number));
            counts.counts = column.counts;
        }
        fields.push_back(std::move(counts));
    }
    CountedModel more = MakeModel(totals, model.target, model.subModelField, fields);
    more.threshold = model.threshold;
    return more;
}

}  // namespace nbscore
