#include "output/JsonText.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

bool StandsAsItIs(char character) {
    return character >= 0x20 && character < 0x7F && character != '"' && character != '\\';
}

}  // namespace

void AppendJsonText(std::string& text, std::string_view content) {
    if (std::all_of(content.begin(), content.end(), StandsAsItIs)) {
        text += '"';
        text += content;
        text += '"';
        return;
    }
    text += nlohmann::json(content).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void AppendJsonNumber(std::string& text, double number) {
    if (std::isfinite(number) && !MCMV::IsMissing(number)) {
        AppendNumber(text, number);
    } else {
        text += "null";
    }
}

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
