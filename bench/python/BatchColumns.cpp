// How long the batch engine takes for the columns of a frame, to hold the Python package to: MODEL FOLDER ROUNDS.
// FOLDER holds what bench/python/frames.py wrote. Writes one line for each round: the nanoseconds of processor time
// that it took. The answers' memory is asked for in each round, as it is for a frame.

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "batch/BatchScorer.h"
#include "host/LoadedModel.h"

namespace nbscore::bench {
namespace {

template <typename Value>
std::vector<Value> ReadAll(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    std::vector<Value> values(bytes.size() / sizeof(Value));
    std::copy_n(bytes.data(), values.size() * sizeof(Value), reinterpret_cast<char*>(values.data()));
    return values;
}

/// The columns, and what they refer to.
struct Frame {
    Frame(const BatchScorer& scorer, const std::string& folder) : columns(scorer.GetInputs().size()) {
        for (std::size_t input = 0; input < columns.size(); ++input) {
            const std::string file = folder + "/" + scorer.GetInputs()[input].name;
            if (std::ifstream names(file + ".categories"); names) {
                std::vector<std::string>& texts = categories.emplace_back();
                for (std::string line; std::getline(names, line);)
                    texts.push_back(line);
                const std::vector<std::string_view> views(texts.begin(), texts.end());
                const std::vector<std::int8_t>& read = codes.emplace_back(ReadAll<std::int8_t>(file + ".codes"));
                cases = read.size();
                columns[input] =
                    CodeColumn<std::int8_t>{read, &dictionaries.emplace_back(scorer.MakeDictionary(input, views)), {}};
            } else {
                const std::vector<double>& read = numbers.emplace_back(ReadAll<double>(file + ".numbers"));
                cases = read.size();
                columns[input] = NumberColumn{read, {}};
            }
        }
    }

    std::vector<Column> columns;
    std::size_t cases = 0;
    std::list<std::vector<std::string>> categories;
    std::list<std::vector<std::int8_t>> codes;
    std::list<std::vector<double>> numbers;
    std::list<InputDictionary> dictionaries;
};

void Measure(const BatchScorer& scorer, const Frame& frame) {
    const std::clock_t begin = std::clock();
    const std::size_t classes = scorer.GetCategories().size();
    const auto predicted = std::make_unique_for_overwrite<std::int32_t[]>(frame.cases);
    const auto numbers = std::make_unique_for_overwrite<double[]>(frame.cases * (1 + classes));
    AnswerColumns answers;
    answers.predicted = {predicted.get(), frame.cases};
    answers.confidence = {numbers.get(), frame.cases};
    answers.probabilities = {numbers.get() + frame.cases, frame.cases * classes};
    answers.probabilityOrder = MatrixOrder::ColumnByColumn;
    scorer.Score(frame.columns, frame.cases, answers);
    std::cout << 1e9 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC << '\n';
}

}  // namespace
}  // namespace nbscore::bench

int main(int argc, char** argv) {
    using namespace nbscore;
    if (argc != 4) return 2;
    const LoadedModel model = LoadedModel::Read(PluginLibrary::Load(PluginLibrary::FindBundled()), argv[1]);
    const BatchScorer scorer(model.Get());
    const bench::Frame frame(scorer, argv[2]);
    for (int round = std::atoi(argv[3]); round > 0; --round)
        bench::Measure(scorer, frame);
    return 0;
}
