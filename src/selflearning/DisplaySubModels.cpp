// How SelfLearningModel is written as text for people.

#include <cstddef>
#include <ostream>

#include "naivebayes/DumpFlag.h"
#include "naivebayes/DumpList.h"
#include "naivebayes/DumpNumber.h"
#include "naivebayes/Existing.h"
#include "selflearning/SelfLearningModel.h"

// The flag's text stands at the end of the line of names, and its label, in each sub-model's part, is followed by no
// value: deliberate, the dump's form is fixed.
void SelfLearningModel::Display(std::ostream& out) const {
    out << "\nBegin Display of SelfLearningModel." << std::endl;
    out << "Input variable names: ";
    nbscore::DumpList(out, predictorVarNames);
    out << nbscore::DumpFlag(predictionOnly) << "." << std::endl;
    out << "Target variable: ";
    if (targetVar != nullptr) targetVar->Print(out);
    out << "Target categories: ";
    for (const ScoreValue* value : targetCategories)
        out << nbscore::Existing(value).GetString();
    out << "Dict var index set up? " << nbscore::DumpFlag(dictVarIndexSetUp.IsDone()) << std::endl;
    for (int model = 0; model < numOfModels; ++model)
        DisplaySubModel(out, static_cast<std::size_t>(model));
    out << "End of SelfLearningModel display." << std::endl;
}

void SelfLearningModel::DisplaySubModel(std::ostream& out, std::size_t model) const {
    out << std::endl
        << "Threshold value = " << nbscore::DumpNumber(thresholds[model]) << " Only prediction? "
        << "Encoders: " << std::endl;
    for (const auto& encoder : encodersByModel[model])
        nbscore::Existing(encoder.get()).Display(out);
    out << "Target category counts: ";
    nbscore::DumpList(out, targetCountsByModel[model]);
    out << "Predictor variables and their stats:";
    for (std::size_t j = 0; j < predictorVarsByModel[model].size(); ++j) {
        if (predictorVarsByModel[model][j] != nullptr) predictorVarsByModel[model][j]->Print(out);
        predCountsByModel[model][j]->Display(out);
    }
}
