// Writes the text dumps of random documents and their scores of random cases, numbers as their bits: two builds must
// write the same. Arguments: the plug-in, and the file to write.

#include <cmath>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "cases/CaseTable.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "host/PluginLibrary.h"
#include "selflearning/SelfLearningResult.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"

namespace nbscore::test {
namespace {

constexpr int documentsOfAKind = 1000;
constexpr int casesPerDocument = 12;

void WriteScores(std::ostream& out, const ScoreResult& result) {
    if (const auto* single = dynamic_cast<const ScoreClsResult*>(&result)) {
        out << single->GetPrediction()->GetString() << ' ' << BitsOf(single->GetConfidence());
        for (const auto& [value, probability] : single->GetAllValuePercent())
            out << ' ' << BitsOf(probability);
    } else {
        using Scores = VectorValue<SelfLearningResult::ModelDescriptor>;
        for (const auto& descriptor : dynamic_cast<const Scores&>(*result.GetPrediction()).GetVectorValue())
            out << BitsOf(descriptor.score) << ' ';
    }
    out << '\n';
}

/// @param drawCells returns the cells of a new case.
void WriteAnswers(std::ostream& out, const PluginLibrary& plugin, const std::string& text,
                  const std::vector<RandomInput>& columns, const std::function<std::vector<std::string>()>& drawCells) {
    std::istringstream source(text);
    const std::unique_ptr<ScoreModel> model(plugin.MakeTranslator()->ParseFromTree(source, "UTF-8"));
    model->Display(out);
    BaseCaseRecord record(NamesOf(columns));
    ScoreResult* scored = nullptr;
    for (int i = 0; i < casesPerDocument; ++i) {
        FillRecord(record, columns, drawCells());
        model->GetScore(&record, scored, false);
        WriteScores(out, *scored);
    }
    delete scored;
}

void WriteAll(std::ostream& out, const PluginLibrary& plugin) {
    Randomness random(20240402);
    for (int number = 0; number < documentsOfAKind; ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        WriteAnswers(out, plugin, document.text, document.inputs,
                     [&] { return MakeRandomCase(document, random).cells; });
        const RandomDerivedDocument derived = MakeRandomDerivedDocument(random);
        WriteAnswers(out, plugin, derived.document.text, derived.columns,
                     [&] { return MakeRandomDerivedCase(derived, random).cells; });
        const RandomSet set = MakeRandomSet(random);
        WriteAnswers(out, plugin, set.text, set.columns, [&] { return MakeRandomSetCase(set, random).cells; });
    }
}

}  // namespace
}  // namespace nbscore::test

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::ofstream out(argv[2], std::ios::binary);
    nbscore::test::WriteAll(out, *nbscore::PluginLibrary::Load(argv[1]));
    return out.flush() ? 0 : 1;
}
