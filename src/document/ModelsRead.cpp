#include "document/ModelsRead.h"

#include <xercesc/dom/DOMDocument.hpp>

#include "document/ElementSteps.h"
#include "translator/ElementNames.h"

namespace nbscore {

ModelsRead FindModelsRead(xercesc::DOMDocument& document) {
    constexpr XmlName selfLearning{"SelfLearning"};
    ModelsRead models;
    models.elements = DescendantsNamed(document, element::naiveBayesModel);
    if (models.elements.empty()) return models;
    models.selfLearning =
        HoldsText(BaseTranslator::GetAttribute(models.elements.front(), attribute::algorithmName), selfLearning);
    if (!models.selfLearning) models.elements.resize(1);
    return models;
}

}  // namespace nbscore
