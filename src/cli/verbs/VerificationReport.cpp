#include "cli/verbs/VerificationReport.h"

#include "cli/system/TerminalText.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "output/JsonText.h"

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

namespace {

class JsonReport : public VerificationReport {
public:
    JsonReport(std::ostream& destination, const std::string& document) : out(destination) {
        std::string text;
        AppendText(text, "{\"document\": ", document);
        out << text << ", \"differences\": [";
    }

    void AddDifference(const CellDifference& difference) override {
        std::string text = isFirst ? "\n  {" : ",\n  {";
        isFirst = false;
        if (difference.subModel) AppendText(text, "\"model\": ", *difference.subModel, ", ");
        text += "\"row\": " + std::to_string(difference.row) + ", \"line\": " + std::to_string(difference.place.line) +
                ", \"column\": " + std::to_string(difference.place.column);
        AppendText(text, ", \"field\": ", difference.field);
        const bool isNumber = difference.expected.number.has_value();
        AppendCell(text, ", \"expected\": ", difference.expected, isNumber);
        AppendCell(text, ", \"actual\": ", difference.actual, isNumber);
        if (difference.tolerance) {
            AppendNumberAs(text, ", \"precision\": ", difference.tolerance->precision);
            AppendNumberAs(text, ", \"zero_threshold\": ", difference.tolerance->zeroThreshold);
        }
        out << text << '}';
    }

    void Finish(const VerificationSummary& summary) override {
        out << (isFirst ? "" : "\n") << "], \"rows\": " << summary.rows << ", \"cells\": " << summary.cells << "}\n";
    }

private:
    static void AppendText(std::string& text, const char* before, const std::string& content, const char* after = "") {
        text += before;
        AppendJsonText(text, content);
        text += after;
    }

    static void AppendNumberAs(std::string& text, const char* before, double number) {
        text += before;
        AppendJsonNumber(text, number);
    }

    static void AppendCell(std::string& text, const char* before, const VerifiedCell& cell, bool isNumber) {
        if (cell.number) {
            AppendNumberAs(text, before, *cell.number);
        } else if (isNumber) {
            text += std::string(before) + "null";
        } else {
            AppendText(text, before, cell.text);
        }
    }

    std::ostream& out;
    bool isFirst = true;
};

}  // namespace

std::unique_ptr<VerificationReport> MakeJsonReport(std::ostream& out, const std::string& document) {
    return std::make_unique<JsonReport>(out, document);
}

}  // namespace nbscore
