#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/BatchScorer.h"
#include "support/documents/ModelDocument.h"

/// @file
/// Cases whose columns hold codes, and room for their answers.

namespace nbscore::bench {

/// Cases drawn uniformly, each value one of its input's categories; always the same ones.
/// @tparam Code of what the columns hold; there may be no more categories than it has numbers.
template <typename Code>
class CodedCases {
public:
    /// @param scorer the columns are for it and for its copies.
    CodedCases(const BatchScorer& scorer, const test::DocumentShape& shape, std::size_t cases) : numCases(cases) {
        std::vector<std::string> texts;
        for (std::size_t category = 0; category < shape.categories; ++category)
            texts.push_back(ValueOf(shape.type, category));
        const std::vector<std::string_view> values(texts.begin(), texts.end());
        std::mt19937_64 random(1);
        for (std::size_t input = 0; input < shape.inputs; ++input) {
            dictionaries.push_back(scorer.MakeDictionary(input, values));
            std::vector<Code>& column = codes.emplace_back(cases);
            for (Code& code : column)
                code = static_cast<Code>(random() % shape.categories);
        }
        for (std::size_t input = 0; input < shape.inputs; ++input)
            columns.push_back(CodeColumn<Code>{codes[input], &dictionaries[input], {}});
    }
    CodedCases(const CodedCases&) = delete;
    CodedCases& operator=(const CodedCases&) = delete;

    std::size_t Count() const { return numCases; }
    const std::vector<Column>& GetColumns() const { return columns; }
    const std::vector<std::vector<Code>>& GetCodes() const { return codes; }

private:
    std::size_t numCases;
    std::vector<InputDictionary> dictionaries;
    std::vector<std::vector<Code>> codes;
    std::vector<Column> columns;
};

/// Room for all answers for this many cases.
struct Answers {
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    std::vector<double> probabilities;

    Answers(std::size_t cases, std::size_t categories)
        : predicted(cases), confidence(cases), probabilities(cases * categories) {}

    AnswerColumns GetColumns() {
        AnswerColumns columns;
        columns.predicted = predicted;
        columns.confidence = confidence;
        columns.probabilities = probabilities;
        return columns;
    }
};

}  // namespace nbscore::bench
