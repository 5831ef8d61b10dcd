#include "cli/VerificationReport.h"
#include "table/JsonText.h"

namespace nbscore {
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
