#include "translator/ModelMaker.h"

#include "framework/document/Refusal.h"
#include "translator/NaiveBayesUnderConstruction.h"
#include "translator/SelfLearningUnderConstruction.h"

namespace nbscore {

namespace {

bool AsksForSelfLearning(Element firstModelElement, bool dictionaryMarksTarget) {
    if (!firstModelElement) return dictionaryMarksTarget;
    return firstModelElement.GetAttribute(Name::algorithmName) == "SelfLearning";
}

}  // namespace

std::unique_ptr<ModelUnderConstruction> MakeModel(Element firstModelElement, bool dictionaryMarksTarget, Element root) {
    if (!firstModelElement && !dictionaryMarksTarget) {
        throw RefusalAt(root, VeskException::UnexpectedElement, "<NaiveBayesModel> is required!");
    }
    if (AsksForSelfLearning(firstModelElement, dictionaryMarksTarget)) {
        return std::make_unique<SelfLearningUnderConstruction>();
    }
    return std::make_unique<NaiveBayesUnderConstruction>();
}

}  // namespace nbscore
