#include "cli/verbs/RunFindings.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "framework/CountedNoun.h"
#include "output/JsonText.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

/// So many fields are told of one by one.
constexpr std::size_t mostFields = 50;

/// Never a part that rounds to nothing or to all.
std::string NameShare(std::uint64_t part, std::uint64_t whole) {
    const double percent = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    if (percent < 0.1) return "less than 0.1 %";
    if (percent > 99.9 && part < whole) return "more than 99.9 %";
    const double tenths = std::round(percent * 10.0) / 10.0;
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, tenths).ptr;
    return std::string(digits, end) + " %";
}

/// Sentences about one run.
class Findings {
public:
    Findings(const ScoringSummary& runSummary, const std::string& tableName) : summary(runSummary), table(tableName) {}

    std::vector<std::string> Tell() {
        std::size_t numFields = 0;
        for (const FieldCount& field : summary.counts.fields) {
            if (field.unknown.rows > 0 && ++numFields <= mostFields) Tell(field);
        }
        if (numFields > mostFields) {
            sentences.push_back(table + ": so it is with " + CountedNoun(numFields - mostFields, "more field") +
                                " (--summary has them all)");
        }
        TellNothingKnown();
        TellWithoutResult();
        return std::move(sentences);
    }

private:
    std::string At(const RowCount& count) const { return table + ':' + std::to_string(count.firstLine) + ": "; }

    /// `3 of 150 rows (2 %) have`.
    std::string ShareOf(std::uint64_t rows) const {
        return std::to_string(rows) + " of " + CountedNoun(summary.rows, "row") + " (" + NameShare(rows, summary.rows) +
               (rows == 1 ? ") has" : ") have");
    }

    void Tell(const FieldCount& field) {
        sentences.push_back(At(field.unknown) + ShareOf(field.unknown.rows) + " a value of " +
                            QuoteForMessage(field.field) + " that the model does not know, the first " +
                            NameValue(field.unknownValues.GetAll().front()) + HintAtSpelling(field.unknownValues));
    }

    static std::string NameValue(const MetValue& value) {
        switch (value.origin) {
            case MetValue::Replacement:
                return QuoteForMessage(value.text) + ", which the document puts in place of what the table has";
            case MetValue::Source:
                return "computed from " + QuoteForMessage(value.text);
            case MetValue::AsItIs:
                break;
        }
        return QuoteForMessage(value.text);
    }

    static std::string HintAtSpelling(const FirstValues& values) {
        const MetValue* const misspelt = values.FindMisspelt();
        if (misspelt == nullptr) return {};
        std::string hint = "; the model knows " + QuoteForMessage(misspelt->knownSpelling);
        if (misspelt == &values.GetAll().front()) return hint;
        return hint + ", which the " + QuoteForMessage(misspelt->text) + " in line " + std::to_string(misspelt->line) +
               " may mean";
    }

    void TellNothingKnown() {
        const RowCount& count = summary.counts.nothingKnown;
        if (count.rows == 0) return;
        const std::string& hint = summary.counts.delimiterHint;
        sentences.push_back(At(count) + ShareOf(count.rows) +
                            " no value that the model knows, this one the first: what it gets rests on the counts of "
                            "the target alone" +
                            (hint.empty() ? "" : "; the table's columns " + hint));
    }

    void TellWithoutResult() {
        const RowCount& invalid = summary.counts.invalid;
        const RowCount& impossible = summary.counts.nothingPossible;
        RowCount all = invalid;
        all.Add(impossible);
        if (all.rows == 0) return;
        std::string text = At(all) + ShareOf(all.rows) +
                           (summary.counts.havePriors ? " no result but the probabilities that the document's Targets "
                                                        "give such rows, this one the first: "
                                                      : " no result, this one the first: ");
        if (invalid.rows > 0) {
            const FirstValues& values = summary.counts.invalidValues;
            const MetValue& first = values.GetAll().front();
            text += CountedNoun(invalid.rows, "invalid value") + ", the first " +
                    (first.text.empty() ? "a missing one" : NameValue(first)) + " of " + QuoteForMessage(first.field) +
                    HintAtSpelling(values);
        }
        if (invalid.rows > 0 && impossible.rows > 0) text += "; ";
        if (impossible.rows > 0) text += CountedNoun(impossible.rows, "row") + " for which no category is possible";
        sentences.push_back(text);
    }

    const ScoringSummary& summary;
    const std::string& table;
    std::vector<std::string> sentences;
};

/// The counts, written from beginning to end.
class JsonSummary {
public:
    explicit JsonSummary(std::string& text) : json(text) {}

    void Write(const ScoringSummary& summary, const std::string& document, const std::string& table) {
        const CaseCounts& counts = summary.counts;
        json.BeginObject();
        AddText("document", document);
        AddText("table", table);
        AddCount("rows", summary.rows);
        json.AddName("rows_without_result");
        if (counts.areTold) {
            json.BeginObject();
            AddCount("invalid_value", counts.invalid.rows);
            AddCount("nothing_possible", counts.nothingPossible.rows);
            json.EndObject();
        } else {
            json.AddNull();
        }
        json.AddName("first_invalid_value");
        counts.invalid.rows > 0 ? AddInvalid(counts) : json.AddNull();
        AddCountIf(counts.areTold, "rows_without_known_value", counts.nothingKnown.rows);
        json.AddName("fields");
        counts.areTold ? AddFields(counts.fields) : json.AddNull();
        json.EndObject();
    }

private:
    void AddInvalid(const CaseCounts& counts) {
        const MetValue& first = counts.invalidValues.GetAll().front();
        json.BeginObject();
        AddText("field", first.field);
        AddTextIf(!first.text.empty(), "value", first.text);
        AddCount("line", counts.invalid.firstLine);
        AddTextIf(!first.knownSpelling.empty(), "known_spelling", first.knownSpelling);
        json.EndObject();
    }

    void AddFields(const std::vector<FieldCount>& fields) {
        json.BeginList();
        for (const FieldCount& field : fields) {
            const bool hasUnknown = field.unknown.rows > 0;
            const MetValue first = hasUnknown ? field.unknownValues.GetAll().front() : MetValue();
            const MetValue* const misspelt = field.unknownValues.FindMisspelt();
            const MetValue hint = misspelt == nullptr ? MetValue() : *misspelt;
            json.BeginObject();
            AddText("name", field.field);
            AddCount("unknown", field.unknown.rows);
            AddTextIf(hasUnknown, "first_value", first.text);
            AddCountIf(hasUnknown, "first_line", first.line);
            AddTextIf(misspelt != nullptr, "misspelt_value", hint.text);
            AddTextIf(misspelt != nullptr, "known_spelling", hint.knownSpelling);
            json.EndObject();
        }
        json.EndList();
    }

    void AddText(const char* name, const std::string& text) { AddTextIf(true, name, text); }
    void AddTextIf(bool isThere, const char* name, const std::string& text) {
        json.AddName(name);
        isThere ? json.AddText(text) : json.AddNull();
    }
    void AddCount(const char* name, std::uint64_t count) { AddCountIf(true, name, count); }
    void AddCountIf(bool isThere, const char* name, std::uint64_t count) {
        json.AddName(name);
        isThere ? json.AddCount(count) : json.AddNull();
    }

    JsonWriter json;
};

}  // namespace

std::vector<std::string> TellFindings(const ScoringSummary& summary, const std::string& table) {
    return Findings(summary, table).Tell();
}

std::string WriteSummaryAsJson(const ScoringSummary& summary, const std::string& document, const std::string& table) {
    std::string text;
    JsonSummary(text).Write(summary, document, table);
    return text + '\n';
}

}  // namespace nbscore
