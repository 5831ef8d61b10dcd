#include "output/JsonWriter.h"

#include "output/JsonText.h"

namespace nbscore {

void JsonWriter::AddName(std::string_view name) {
    BeginItem();
    AppendJsonText(text, name);
    text += ": ";
    isBehindName = true;
}

void JsonWriter::AddText(std::string_view content) {
    BeginValue();
    AppendJsonText(text, content);
}

void JsonWriter::AddNumber(double number) {
    BeginValue();
    AppendJsonNumber(text, number);
}

void JsonWriter::AddCount(std::size_t count) {
    BeginValue();
    text += std::to_string(count);
}

void JsonWriter::AddTruth(bool truth) {
    BeginValue();
    text += truth ? "true" : "false";
}

void JsonWriter::AddNull() {
    BeginValue();
    text += "null";
}

void JsonWriter::Begin(char bracket) {
    BeginValue();
    text += bracket;
    ++depth;
    isEmpty = true;
}

void JsonWriter::End(char bracket) {
    --depth;
    if (!isEmpty) BeginLine();
    text += bracket;
    isEmpty = false;
}

void JsonWriter::BeginValue() {
    if (!isBehindName && depth > 0) BeginItem();
    isBehindName = false;
}

void JsonWriter::BeginItem() {
    if (!isEmpty) text += ',';
    isEmpty = false;
    BeginLine();
}

void JsonWriter::BeginLine() {
    constexpr std::size_t indent = 2;
    text += '\n';
    text.append(indent * depth, ' ');
}

}  // namespace nbscore
