#include "TableChoices.h"

#include <algorithm>

#include "cli/verbs/Arguments.h"

namespace nbscore::fuzz {
namespace {

constexpr std::size_t modelOfOffers = 2;
constexpr std::size_t numOffers = 4;

}  // namespace

TableChoices::TableChoices(std::string_view line) {
    // A character behind a d is the delimiter itself.
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == 'd' && at + 1 < line.size()) {
            options.delimiter = options.output.delimiter = ReadDelimiter(line.substr(++at, 1)).value_or(',');
        } else {
            Take(line[at]);
        }
    }
}

void TableChoices::Take(char letter) {
    ScoreWriterOptions& output = options.output;
    switch (letter) {
        case 'i':
            model = 1;
            break;
        case 'o':
            model = modelOfOffers;
            break;
        case 'm':
            options.cases.badValues = BadValues::Missing;
            break;
        case 'a':
            options.cases.allowMissingFields = true;
            break;
        case 'e':
            options.allowEmpty = true;
            break;
        case 'j':
            output.format = ScoreFormat::JsonLines;
            break;
        case 's':
            output.onlyScores = true;
            break;
        case 'p':
            output.predictionOnly = true;
            break;
        case 'x':
            output.prefix = "\"a,b;\n ";
            break;
        case 'l':
            output.subModels.longRows = true;
            break;
        case 'b':
            output.subModels.best = output.subModels.best.value_or(0) + 1;
            break;
        case 'w':
            bytesAtATime *= 7;
            break;
        default:
            break;
    }
}

std::size_t TableChoices::CountRowsPerCase() const {
    const SubModelOptions& subModels = options.output.subModels;
    if (model != modelOfOffers || !subModels.longRows) return 1;
    return std::min(subModels.best.value_or(numOffers), numOffers);
}

}  // namespace nbscore::fuzz
