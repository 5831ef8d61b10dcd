#include "cli/PrintableText.h"
#include "cli/VerificationReport.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

std::string Quote(const std::string& text) {
    return '"' + MakePrintable(text) + '"';
}

std::string DescribeTolerance(const CellDifference& difference) {
    if (!difference.tolerance) return "exactly";
    if (difference.tolerance->TakesForZero(*difference.expected.number)) {
        return "zero threshold " + FormatNumber(difference.tolerance->zeroThreshold);
    }
    return "precision " + FormatNumber(difference.tolerance->precision);
}

std::string DescribeExpected(const VerifiedCell& expected) {
    return expected.number ? MakePrintable(expected.text) : Quote(expected.text);
}

/// @param expectsNumber tells a number that is missing from a text that is empty.
std::string DescribeActual(const VerifiedCell& actual, bool expectsNumber) {
    if (actual.number) return actual.text;
    return expectsNumber ? "nothing" : Quote(actual.text);
}

class TextReport : public VerificationReport {
public:
    explicit TextReport(std::ostream& destination) : out(destination) {}

    void AddDifference(const CellDifference& difference) override {
        out << MakePrintable(difference.place.source) << ':' << difference.place.line << ':' << difference.place.column
            << ": row " << difference.row;
        if (difference.subModel) out << " of " << MakePrintable(*difference.subModel);
        out << ", " << MakePrintable(difference.field) << ": expected " << DescribeExpected(difference.expected) << " ("
            << DescribeTolerance(difference) << "), actual "
            << DescribeActual(difference.actual, difference.expected.number.has_value()) << '\n';
    }

    void Finish(const VerificationSummary& summary) override {
        out << CountedNoun(summary.rows, "row") << ", " << CountedNoun(summary.cells, "cell") << " checked";
        if (summary.differences > 0) {
            out << ", " << summary.differences << (summary.differences == 1 ? " differs" : " differ");
        } else if (summary.cells > 0) {
            out << ", all agree";
        }
        out << '\n';
    }

private:
    std::ostream& out;
};

}  // namespace

std::unique_ptr<VerificationReport> MakeTextReport(std::ostream& out) {
    return std::make_unique<TextReport>(out);
}

}  // namespace nbscore
