#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

#include "cli/system/TerminalText.h"
#include "cli/verbs/EvidenceReport.h"
#include "evidence/EvidenceTerms.h"

namespace nbscore {
namespace {

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

    void AppendCase(std::string& text, const ExplainedCase& explained) override {
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

}  // namespace

std::unique_ptr<EvidenceReport> MakeEvidenceText(const EvidenceReportOptions& options, const std::string& table) {
    return std::make_unique<TextEvidence>(options, table);
}

}  // namespace nbscore
