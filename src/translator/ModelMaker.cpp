#include "translator/ModelMaker.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"
#include "translator/NaiveBayesUnderConstruction.h"
#include "translator/SelfLearningUnderConstruction.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

constexpr XmlName selfLearningAlgorithm{"SelfLearning"};

bool AsksForSelfLearning(const DOMElement* firstModelElement, bool dictionaryMarksTarget) {
    if (firstModelElement == nullptr) return dictionaryMarksTarget;
    return SameText(BaseTranslator::GetAttribute(firstModelElement, attribute::algorithmName), selfLearningAlgorithm);
}

}  // namespace

std::unique_ptr<ModelUnderConstruction> MakeModel(const DOMElement* firstModelElement, bool dictionaryMarksTarget,
                                                  const DOMElement& root) {
    if (firstModelElement == nullptr && !dictionaryMarksTarget) {
        throw RefusalAt(&root, VeskException::UnexpectedElement, "<NaiveBayesModel> is required!");
    }
    if (AsksForSelfLearning(firstModelElement, dictionaryMarksTarget)) {
        return std::make_unique<SelfLearningUnderConstruction>();
    }
    return std::make_unique<NaiveBayesUnderConstruction>();
}

}  // namespace nbscore
