// Scores three columns of people at once: predict titanic.pmml
#include <nbscore/batch/BatchScorer.h>
#include <nbscore/host/LoadedModel.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace {

/// The scorer needs neither the model nor the plug-in any more.
nbscore::BatchScorer ReadScorer(const char* document) {
    auto plugin = nbscore::PluginLibrary::Load(nbscore::PluginLibrary::FindBundled());
    auto model = nbscore::LoadedModel::Read(plugin, document);
    model.RequireScorable();
    return nbscore::BatchScorer(model.Get());
}

void Predict(const nbscore::BatchScorer& scorer) {
    // Codes and their texts; -1 is an absent value.
    const std::vector<std::string_view> classes = {"first", "second", "third", "crew"};
    const nbscore::InputDictionary classOf = scorer.MakeDictionary(0, classes);
    const std::vector<std::int8_t> codes = {0, 1, 2, 3, -1};
    // Texts one after the other.
    const char* sexes = "femalemalefemalemalefemale";
    const std::vector<std::int32_t> offsets = {0, 6, 10, 16, 20, 26};
    // Texts anywhere in memory; the bits mark the last one as absent.
    const std::vector<std::string_view> ages = {"adult", "adult", "child", "adult", ""};
    const std::uint8_t valid = 0b01111;

    // One column for each of scorer.GetInputs().
    const std::vector<nbscore::Column> columns = {nbscore::CodeColumn<std::int8_t>{codes, &classOf, {}},
                                                  nbscore::TextColumn<std::int32_t>{sexes, offsets, {}},
                                                  nbscore::TextViewColumn{ages, {&valid, 0}}};
    std::vector<std::int32_t> predicted(codes.size());
    std::vector<double> confidence(codes.size());
    nbscore::AnswerColumns answers;  // columns left empty are not written
    answers.predicted = predicted;
    answers.confidence = confidence;
    scorer.Score(columns, codes.size(), answers);

    for (std::size_t i = 0; i < codes.size(); ++i)
        std::cout << scorer.GetCategories()[static_cast<std::size_t>(predicted[i])] << ' ' << confidence[i] << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 2) throw std::invalid_argument("usage: predict titanic.pmml");
        Predict(ReadScorer(argv[1]));
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
