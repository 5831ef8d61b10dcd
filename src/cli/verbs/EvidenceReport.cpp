#include "cli/verbs/EvidenceReport.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "cli/system/TerminalText.h"
#include "framework/NumberText.h"
#include "output/JsonText.h"
#include "table/CsvText.h"

namespace nbscore {
namespace {

const char* NameKind(PredictorReading::Kind kind) {
    switch (kind) {
        case PredictorReading::Known:
            return "known";
        case PredictorReading::Missing:
            return "missing";
        case PredictorReading::Unknown:
            return "unknown";
        case PredictorReading::TextInBins:
            return "text in bins";
        case PredictorReading::OutsideDensities:
            return "outside the densities";
        case PredictorReading::NothingCounted:
            return "nothing counted";
    }
    return "";
}

const char* NameState(Evidence::State state) {
    switch (state) {
        case Evidence::Explained:
            return "explained";
        case Evidence::NothingKnown:
            return "nothing known";
        case Evidence::InvalidValue:
            return "invalid value";
        case Evidence::NothingPossible:
            return "nothing possible";
        case Evidence::VanishedPrior:
            return "vanished prior";
        case Evidence::NoOtherCategory:
            return "no other category";
    }
    return "";
}

bool HasPair(const Evidence& evidence) {
    return evidence.category != evidence.against;
}

/// Numbers in the unit that was asked for.
class Units {
public:
    explicit Units(bool decibans) : inDecibans(decibans) {}

    std::optional<double> operator()(const std::optional<double>& weight) const {
        if (!weight || !inDecibans) return weight;
        return InDecibans(*weight);
    }
    const char* GetName() const { return inDecibans ? "decibans" : "nats"; }

private:
    bool inDecibans;
};

/// Whether a character of UTF-8 begins here.
bool IsFirstByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// How many characters a text takes on a terminal, of texts without wide ones.
std::size_t WidthOf(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, IsFirstByte));
}

/// For people: a block of lines for each case, with the predictors below one another.
class TextEvidence : public EvidenceReport {
public:
    TextEvidence(const EvidenceReportOptions& options, std::string tableName)
        : units(options.inDecibans), hasBars(options.hasBars), table(std::move(tableName)) {}

    void AppendHeader(std::string&) const override {}

    void AppendCase(std::string& text, const ExplainedCase& explained) const override {
        const Evidence& evidence = explained.evidence;
        text += MakePrintable(table) + ':' + std::to_string(explained.line) + ": row " + std::to_string(explained.row);
        if (explained.subModel != nullptr) text += ", " + MakePrintable(*explained.subModel);
        text += '\n';
        AppendOdds(text, explained);
        AppendState(text, evidence);
        if (HasPair(evidence)) AppendTerms(text, explained);
        text += '\n';
    }

private:
    struct Line {
        std::string name;
        std::string value;
        std::optional<double> weight;
        std::string weightText;
        std::string averageText;
        std::string remark;
    };

    static std::string FormatFixed(double number, int digits) {
        std::array<char, 400> room{};
        const auto end =
            std::to_chars(room.data(), room.data() + room.size(), number, std::chars_format::fixed, digits);
        return {room.data(), end.ptr};
    }

    std::string FormatWeight(const std::optional<double>& weight) const {
        const std::optional<double> inUnits = units(weight);
        return inUnits ? FormatFixed(*inUnits, 3) : "none";
    }

    void AppendOdds(std::string& text, const ExplainedCase& explained) const {
        const Evidence& evidence = explained.evidence;
        if (!HasPair(evidence)) return;
        const auto name = [&](std::size_t category) { return MakePrintable(explained.categories[category]); };
        text += "  " + name(evidence.category) + " (probability " +
                FormatFixed(evidence.probabilities[evidence.category], 4) + ") against " + name(evidence.against) +
                " (" + FormatFixed(evidence.probabilities[evidence.against], 4) + "): log-odds " +
                FormatWeight(evidence.logOdds) + ' ' + units.GetName() + '\n';
    }

    static void AppendState(std::string& text, const Evidence& evidence) {
        switch (evidence.state) {
            case Evidence::Explained:
                break;
            case Evidence::NothingKnown:
                text += "  no predictor has a value that it knows: the case has its prior\n";
                break;
            case Evidence::InvalidValue:
                text += "  no result: the value of " + MakePrintable(evidence.invalidField) + " is not valid\n";
                break;
            case Evidence::NothingPossible:
                text += "  no result: by the model's numbers no category is possible\n";
                break;
            case Evidence::VanishedPrior:
                text += "  a prior is 0: the score is the prior, whatever the case holds\n";
                break;
            case Evidence::NoOtherCategory:
                text += "  the target has one category only: there is nothing to weigh\n";
                break;
        }
    }

    void AppendTerms(std::string& text, const ExplainedCase& explained) const {
        const Evidence& evidence = explained.evidence;
        std::vector<Line> lines = {
            {"predictor", "value", {}, "weight", "against average", ""},
            {"(prior)", "", evidence.base, FormatWeight(evidence.base), FormatWeight(evidence.averageBase), ""}};
        for (std::size_t j = 0; j < evidence.predictors.size(); ++j) {
            const PredictorEvidence& predictor = evidence.predictors[j];
            const bool isKnown = predictor.kind == PredictorReading::Known;
            lines.push_back({MakePrintable(explained.predictors[j]), Shorten(MakePrintable(predictor.value)),
                             predictor.weight, FormatWeight(predictor.weight), FormatWeight(predictor.againstAverage),
                             isKnown ? "" : std::string("left out: ") + NameKind(predictor.kind)});
        }
        lines.push_back({"(log-odds)", "", {}, FormatWeight(evidence.logOdds), "", ""});
        AppendLines(text, lines);
    }

    void AppendLines(std::string& text, const std::vector<Line>& lines) const {
        const auto widest = [&](auto member) {
            std::size_t width = 0;
            for (const Line& line : lines)
                width = std::max(width, WidthOf(line.*member));
            return width;
        };
        const std::size_t names = widest(&Line::name);
        const std::size_t values = widest(&Line::value);
        const std::size_t weights = widest(&Line::weightText);
        const std::size_t averages = widest(&Line::averageText);
        double longest = 0.0;
        for (const Line& line : lines)
            longest = std::max(longest, std::abs(line.weight.value_or(0.0)));
        for (const Line& line : lines) {
            const auto blanks = [](std::size_t width, const std::string& cell) {
                return std::string(width - WidthOf(cell), ' ');
            };
            std::string row = "  " + line.name + blanks(names, line.name) + "  " + line.value +
                              blanks(values, line.value) + "  " + blanks(weights, line.weightText) + line.weightText +
                              "  " + blanks(averages, line.averageText) + line.averageText;
            if (!line.remark.empty()) row += "  " + line.remark;
            if (hasBars && longest > 0.0 && line.remark.empty()) row += "  " + Bar(line.weight.value_or(0.0) / longest);
            row.erase(row.find_last_not_of(' ') + 1);
            text += row + '\n';
        }
    }

    /// @param share from -1 to 1.
    static std::string Bar(double share) {
        constexpr double longestBar = 24.0;
        const auto length = static_cast<std::size_t>(std::lround(std::abs(share) * longestBar));
        return std::string(length, share > 0.0 ? '+' : '-');
    }

    /// A long value is cut, between two characters.
    static std::string Shorten(const std::string& value) {
        constexpr std::size_t longestValue = 40;
        if (WidthOf(value) <= longestValue) return value;
        const std::string dots = "...";
        std::size_t end = 0;
        for (std::size_t width = 0; end < value.size(); ++end) {
            if (IsFirstByte(value[end]) && width++ == longestValue - dots.size()) break;
        }
        return value.substr(0, end) + dots;
    }

    Units units;
    bool hasBars;
    std::string table;
};

/// For programs: a row for the prior, for each predictor, and for the sum. The cells of a column of numbers that there
/// is none of are empty.
class CsvEvidence : public EvidenceReport {
public:
    CsvEvidence(const EvidenceReportOptions& options, bool ofSet)
        : units(options.inDecibans), delimiter(options.delimiter), isSet(ofSet) {}

    void AppendHeader(std::string& text) const override {
        CsvRow row(text, delimiter);
        row.Add("row");
        row.Add("line");
        if (isSet) row.Add("model");
        for (const char* name : {"state", "category", "against", "term", "predictor", "value", "use", "weight",
                                 "against_average", "average", "lowest", "highest"})
            row.Add(name);
        row.End();
    }

    void AppendCase(std::string& text, const ExplainedCase& explained) const override {
        const Evidence& evidence = explained.evidence;
        AppendTerm(text, explained, "prior", nullptr, {}, {evidence.base, evidence.averageBase, {}, {}, {}});
        for (std::size_t j = 0; j < evidence.predictors.size(); ++j) {
            const PredictorEvidence& predictor = evidence.predictors[j];
            AppendTerm(text, explained, "predictor", &predictor, explained.predictors[j],
                       {predictor.weight, predictor.againstAverage, predictor.average, predictor.range.lowest,
                        predictor.range.highest});
        }
        AppendTerm(text, explained, "sum", nullptr, {}, {evidence.logOdds, evidence.logOdds, {}, {}, {}});
    }

private:
    void AppendTerm(std::string& text, const ExplainedCase& explained, const char* term,
                    const PredictorEvidence* predictor, std::string_view name,
                    const std::array<std::optional<double>, 5>& numbers) const {
        const Evidence& evidence = explained.evidence;
        CsvRow row(text, delimiter);
        row.Add(std::to_string(explained.row));
        row.Add(std::to_string(explained.line));
        if (isSet) row.Add(*explained.subModel);
        row.Add(NameState(evidence.state));
        row.Add(HasPair(evidence) ? explained.categories[evidence.category] : std::string());
        row.Add(HasPair(evidence) ? explained.categories[evidence.against] : std::string());
        row.Add(term);
        row.Add(name);
        row.Add(predictor == nullptr ? std::string() : predictor->value);
        row.Add(predictor == nullptr ? "" : NameKind(predictor->kind));
        for (const std::optional<double>& number : numbers) {
            const std::optional<double> inUnits = units(number);
            row.Add(inUnits ? FormatNumber(*inUnits) : std::string());
        }
        row.End();
    }

    Units units;
    char delimiter;
    bool isSet;
};

/// For programs: one JSON object a line, with everything that replaying a case takes.
class JsonLinesEvidence : public EvidenceReport {
public:
    explicit JsonLinesEvidence(const EvidenceReportOptions& options) : units(options.inDecibans) {}

    void AppendHeader(std::string&) const override {}

    void AppendCase(std::string& text, const ExplainedCase& explained) const override {
        const Evidence& evidence = explained.evidence;
        text += "{\"row\": " + std::to_string(explained.row) + ", \"line\": " + std::to_string(explained.line);
        if (explained.subModel != nullptr) AppendText(text, "model", *explained.subModel);
        AppendText(text, "state", NameState(evidence.state));
        if (evidence.state == Evidence::InvalidValue) AppendText(text, "field", evidence.invalidField);
        AppendCategory(text, "category", explained, evidence.category);
        AppendCategory(text, "against", explained, evidence.against);
        AppendText(text, "unit", units.GetName());
        AppendWeight(text, "base", evidence.base);
        AppendWeight(text, "log_odds", evidence.logOdds);
        AppendWeight(text, "average_base", evidence.averageBase);
        AppendByCategory(text, "priors", explained, evidence.priors);
        AppendByCategory(text, "probabilities", explained, evidence.probabilities);
        text += ", \"predictors\": [";
        for (std::size_t j = 0; j < evidence.predictors.size(); ++j) {
            if (j > 0) text += ", ";
            AppendPredictor(text, explained, explained.predictors[j], evidence.predictors[j]);
        }
        text += "]}\n";
    }

private:
    static void AppendName(std::string& text, std::string_view name) {
        text += ", ";
        AppendJsonText(text, name);
        text += ": ";
    }

    static void AppendText(std::string& text, std::string_view name, std::string_view content) {
        AppendName(text, name);
        AppendJsonText(text, content);
    }

    void AppendWeight(std::string& text, std::string_view name, const std::optional<double>& weight) const {
        AppendName(text, name);
        const std::optional<double> inUnits = units(weight);
        if (inUnits) {
            AppendJsonNumber(text, *inUnits);
        } else {
            text += "null";
        }
    }

    static void AppendCategory(std::string& text, std::string_view name, const ExplainedCase& explained,
                               std::size_t category) {
        AppendName(text, name);
        if (HasPair(explained.evidence)) {
            AppendJsonText(text, explained.categories[category]);
        } else {
            text += "null";
        }
    }

    /// An object with a number for each category; null where there are none.
    static void AppendByCategory(std::string& text, std::string_view name, const ExplainedCase& explained,
                                 const std::vector<double>& numbers) {
        AppendName(text, name);
        if (numbers.empty()) {
            text += "null";
            return;
        }
        text += '{';
        for (std::size_t k = 0; k < numbers.size(); ++k) {
            if (k > 0) text += ", ";
            AppendJsonText(text, explained.categories[k]);
            text += ": ";
            AppendJsonNumber(text, numbers[k]);
        }
        text += '}';
    }

    void AppendPredictor(std::string& text, const ExplainedCase& explained, std::string_view name,
                         const PredictorEvidence& predictor) const {
        text += "{\"name\": ";
        AppendJsonText(text, name);
        AppendName(text, "value");
        if (predictor.kind == PredictorReading::Missing) {
            text += "null";
        } else {
            AppendJsonText(text, predictor.value);
        }
        AppendText(text, "use", NameKind(predictor.kind));
        AppendWeight(text, "weight", predictor.weight);
        AppendWeight(text, "against_average", predictor.againstAverage);
        AppendWeight(text, "average", predictor.average);
        AppendWeight(text, "lowest", predictor.range.lowest);
        AppendWeight(text, "highest", predictor.range.highest);
        std::vector<double> mantissas;
        std::vector<double> exponents;
        for (const ScaledNumber& factor : predictor.factors) {
            mantissas.push_back(factor.mantissa);
            exponents.push_back(factor.exponent);
        }
        AppendByCategory(text, "factors", explained, mantissas);
        const bool isScaled = std::ranges::any_of(exponents, [](double exponent) { return exponent != 0.0; });
        if (isScaled) AppendByCategory(text, "factor_exponents", explained, exponents);
        text += '}';
    }

    Units units;
};

}  // namespace

std::unique_ptr<EvidenceReport> MakeEvidenceReport(const EvidenceReportOptions& options, const std::string& table,
                                                   bool isSet) {
    switch (options.format) {
        case EvidenceFormat::Csv:
            return std::make_unique<CsvEvidence>(options, isSet);
        case EvidenceFormat::JsonLines:
            return std::make_unique<JsonLinesEvidence>(options);
        case EvidenceFormat::Text:
            break;
    }
    return std::make_unique<TextEvidence>(options, table);
}

}  // namespace nbscore
