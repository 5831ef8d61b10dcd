// How NaiveBayesModel is written as text for people.

#include <cstddef>
#include <ostream>

#include "naivebayes/DumpFlag.h"
#include "naivebayes/DumpList.h"
#include "naivebayes/DumpNumber.h"
#include "naivebayes/Existing.h"
#include "naivebayes/NaiveBayesModel.h"

void NaiveBayesModel::Display(std::ostream& out) const {
    out << "\nBegin Display of NaiveBayesModel." << std::endl;
    out << "Input variable names: ";
    nbscore::DumpList(out, predictorVarNames);
    out << std::endl;
    out << "Threshold value = " << nbscore::DumpNumber(threshold) << " Only prediction? "
        << nbscore::DumpFlag(predictionOnly) << "." << std::endl;

    out << "Encoders: " << std::endl;
    for (const auto& encoder : encoders)
        nbscore::Existing(encoder.get()).Display(out);

    out << "Target variable: ";
    if (targetVar != nullptr) targetVar->Print(out);
    out << "Target categories: ";
    // Back to back, with no line end behind the last one: deliberate, the dump's form is fixed.
    for (const ScoreValue* value : targetValues)
        out << nbscore::Existing(value).GetString();
    out << "Target category counts: ";
    nbscore::DumpList(out, targetCounts);
    out << std::endl;
    out << "Target probabilities: ";
    nbscore::DumpList(out, targetProbabilities);
    out << std::endl;

    out << "Dict var index set up? " << nbscore::DumpFlag(dictVarIndexReady.IsDone()) << std::endl;
    out << "Predictor variables and their stats:";
    for (std::size_t j = 0; j < predictorVars.size(); ++j) {
        if (predictorVars[j] != nullptr) predictorVars[j]->Print(out);
        predCounts[j]->Display(out);
    }
    out << "End of NaiveBayesModel display." << std::endl;
}
