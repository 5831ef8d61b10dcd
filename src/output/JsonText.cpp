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

}  // namespace nbscore
