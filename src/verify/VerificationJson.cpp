#include "verify/VerificationJson.h"

#include "output/JsonText.h"

namespace nbscore {
namespace {

void AppendText(std::string& text, const char* before, const std::string& content, const char* after = "") {
    text += before;
    AppendJsonText(text, content);
    text += after;
}

void AppendNumberAs(std::string& text, const char* before, double number) {
    text += before;
    AppendJsonNumber(text, number);
}

void AppendCell(std::string& text, const char* before, const VerifiedCell& cell) {
    if (cell.number) {
        AppendNumberAs(text, before, *cell.number);
    } else if (cell.isNothing) {
        text += std::string(before) + "null";
    } else {
        AppendText(text, before, cell.text);
    }
}

}  // namespace

VerificationJson::VerificationJson(std::ostream& destination, const std::string& document) : out(destination) {
    std::string text;
    AppendText(text, "{\"document\": ", document);
    out << text << ", \"differences\": [";
}

void VerificationJson::AddDifference(const CellDifference& difference) {
    std::string text = isFirst ? "\n  {" : ",\n  {";
    isFirst = false;
    if (difference.subModel) AppendText(text, "\"model\": ", *difference.subModel, ", ");
    text += "\"row\": " + std::to_string(difference.row) + ", \"line\": " + std::to_string(difference.place.line) +
            ", \"column\": " + std::to_string(difference.place.column);
    AppendText(text, ", \"field\": ", difference.field);
    AppendCell(text, ", \"expected\": ", difference.expected);
    AppendCell(text, ", \"actual\": ", difference.actual);
    if (difference.tolerance) {
        AppendNumberAs(text, ", \"precision\": ", difference.tolerance->precision);
        AppendNumberAs(text, ", \"zero_threshold\": ", difference.tolerance->zeroThreshold);
    }
    out << text << '}';
}

void VerificationJson::Finish(const VerificationSummary& summary) {
    out << (isFirst ? "" : "\n") << "], \"rows\": " << summary.rows << ", \"cells\": " << summary.cells << "}\n";
}

}  // namespace nbscore
