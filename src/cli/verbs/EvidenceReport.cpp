#include "cli/verbs/EvidenceReport.h"

#include <algorithm>
#include <string_view>

#include "evidence/EvidenceTerms.h"
#include "framework/NumberText.h"
#include "output/JsonText.h"
#include "table/CsvText.h"

namespace nbscore {
namespace {

/// For programs: a row for each term.
class CsvEvidence : public EvidenceReport {
public:
    CsvEvidence(const EvidenceReportOptions& options, bool ofSet)
        : units(options.inDecibans), delimiter(options.delimiter), isSet(ofSet) {}

    void AppendHeader(std::string& text) const override {
        CsvRow row(text, delimiter);
        row.Add("row");
        row.Add("line");
        if (isSet) row.Add("model");
        for (const char* const name : textsOfTerm)
            row.Add(name);
        for (const char* const name : numbersOfTerm)
            row.Add(name);
        row.End();
    }

    void AppendCase(std::string& text, const ExplainedCase& explained) override {
        ListTerms(explained.evidence, explained.categories, explained.predictors, terms);
        for (const EvidenceTerm& term : terms) {
            CsvRow row(text, delimiter);
            row.Add(std::to_string(explained.row));
            row.Add(std::to_string(explained.line));
            if (isSet) row.Add(*explained.subModel);
            for (const std::optional<std::string_view>& cell : term.texts)
                row.Add(cell.value_or(std::string_view()));
            for (const std::optional<double>& number : term.numbers) {
                const std::optional<double> inUnits = units(number);
                row.Add(inUnits ? FormatNumber(*inUnits) : std::string());
            }
            row.End();
        }
    }

private:
    Units units;
    char delimiter;
    bool isSet;
    std::vector<EvidenceTerm> terms;
};

/// For programs: one JSON object a line, with everything that replaying a case takes.
class JsonLinesEvidence : public EvidenceReport {
public:
    explicit JsonLinesEvidence(const EvidenceReportOptions& options) : units(options.inDecibans) {}

    void AppendHeader(std::string&) const override {}

    void AppendCase(std::string& text, const ExplainedCase& explained) override {
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
    return MakeEvidenceText(options, table);
}

}  // namespace nbscore
