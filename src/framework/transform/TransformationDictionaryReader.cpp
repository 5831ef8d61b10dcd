#include "framework/transform/TransformationDictionaryReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <string>
#include <utility>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/transform/CycleSearch.h"
#include "framework/transform/DerivedFieldDictionary.h"
#include "framework/transform/DerivedFields.h"
#include "framework/transform/ExpressionReader.h"
#include "framework/transform/FieldScope.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;

constexpr XmlName nameName = "name";

bool IsNamed(const DOMElement* element, const std::string& name) {
    return BaseTranslator::IsEqual(element->getNodeName(), name);
}

std::string FieldForMessage(const DOMElement* field) {
    return "The derived field \"" + ExcerptOf(BaseTranslator::GetAttributeForced(field, nameName)) + "\"";
}

VeskException UnexpectedChild(const DOMElement* child, const std::string& parent) {
    return RefusalAt(child, VeskException::UnexpectedElement,
                     "<" + ExcerptOf(child->getNodeName()) + "> is not expected in " + parent + ".");
}

/// The one child that is neither an Extension nor part of the field's declaration.
const DOMElement* ExpressionOf(const DOMElement* field) {
    const DOMElement* expression = nullptr;
    const DOMElement* child = BaseTranslator::GetFirstChildElt(field);
    for (; child; child = BaseTranslator::GetNextSiblingElt(child)) {
        if (IsNamed(child, "Extension") || IsNamed(child, "Value") || IsNamed(child, "Interval")) continue;
        if (expression) throw UnexpectedChild(child, "<DerivedField> behind its expression");
        expression = child;
    }
    if (expression) return expression;
    throw RefusalAt(field, VeskException::UnexpectedElement, FieldForMessage(field) + " has no expression.");
}

/// First every field is declared, then every expression is read: so fields may refer to one another in any order.
class Reader {
public:
    Reader(const ScoreDictionary* dataDictionary, const Transcoder& textTranscoder)
        : dictionary(dataDictionary), transcoder(textTranscoder) {}

    std::unique_ptr<const DerivedFields> Read(const DOMElement* transformations) {
        const DOMElement* child = BaseTranslator::GetFirstChildElt(transformations);
        for (; child; child = BaseTranslator::GetNextSiblingElt(child))
            ReadChild(child);
        ReadExpressions();
        RefuseCycles();
        return std::move(derived);
    }

private:
    void ReadChild(const DOMElement* child) {
        if (IsNamed(child, "Extension")) return;
        if (IsNamed(child, "DerivedField")) return Declare(child);
        if (!IsNamed(child, "DefineFunction")) throw UnexpectedChild(child, "<TransformationDictionary>");
        throw RefusalAt(child, VeskException::UnsupportedExpression, "<DefineFunction> is not supported.");
    }

    void Declare(const DOMElement* field) {
        const std::string name = TextAt(field, BaseTranslator::GetAttributeForced(field, nameName), transcoder);
        if (dictionary && dictionary->GetVar(name)) {
            throw RefusalAt(field, VeskException::InconsistentDocument,
                            FieldForMessage(field) + " has the name of a data field.");
        }
        if (!derived->positionsByName.try_emplace(name, elements.size()).second) {
            throw RefusalAt(field, VeskException::InconsistentDocument, FieldForMessage(field) + " is declared twice.");
        }
        auto variable = ReadFieldDeclaration(field, name, transcoder);
        FunctionTreeImp function(variable->GetStorageType() == ScoreDictVar::NumericStorage);
        derived->fields.push_back({variable.get(), std::move(function), {}});
        derived->variables.AddVar(name, variable.release());
        elements.push_back(field);
    }

    void ReadExpressions() {
        FieldScope scope(*derived, dictionary, transcoder);
        for (std::size_t position = 0; position < elements.size(); ++position) {
            scope.Enter(position);
            derived->fields[position].function.SetExpression(ReadExpression(ExpressionOf(elements[position]), scope));
        }
    }

    void RefuseCycles() const {
        const auto found = FindFieldThatNeedsItself(*derived);
        if (!found) return;
        throw RefusalAt(elements[*found], VeskException::InconsistentDocument,
                        FieldForMessage(elements[*found]) + " depends on itself.");
    }

    const ScoreDictionary* dictionary;
    const Transcoder& transcoder;
    std::unique_ptr<DerivedFields> derived = std::make_unique<DerivedFields>();
    /// The element of each derived field, by position.
    std::vector<const DOMElement*> elements;
};

}  // namespace

std::unique_ptr<TransformationDictionary> ReadTransformationDictionary(const DOMElement* element,
                                                                       const ScoreDictionary* dictionary,
                                                                       const Transcoder& transcoder) {
    return std::make_unique<DerivedFieldDictionary>(Reader(dictionary, transcoder).Read(element));
}

}  // namespace nbscore
