#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "pmml/DocumentTree.h"

/// @file
/// Which parts of a document the plug-in reads, and which fields they mention.

namespace nbscore {

/// The model elements of a document that the plug-in reads: of a self-learning document all, else the first.
struct ModelsRead {
    std::vector<Element> elements;
    bool selfLearning = false;
};
ModelsRead FindModelsRead(Element root);

/// The only child element of this name, or none; throws VeskException 12 when there are two.
Element OnlyChild(Element parent, Name name);

/// The BayesInput elements of a model that are read.
std::vector<Element> FindInputs(Element model);
/// The inputs in a part of a model, at any depth and under whatever prefix; those of models in it are theirs.
std::vector<Element> FindInputsAnywhere(Element part);

/// The derived fields of the document's TransformationDictionary; of several all, though one alone is read.
std::vector<Element> FindDerivedFields(Element root);

/// The MiningField elements of a schema that are read: its own, then those of the extension that lists derived inputs.
/// What other extensions hold lists nothing.
std::vector<Element> FindSchemaFields(Element schema);

/// An attribute in which the expression of a derived field names a field that it reads.
struct FieldMention {
    Element element;
    Name attribute;
};
/// All of a derived field, in document order. What stands in Extension elements and inline tables is none.
std::vector<FieldMention> FindFieldMentions(Element derivedField);

using FieldNames = std::set<std::string, std::less<>>;

/// The fields that the inputs of a model name.
FieldNames FindInputFields(Element model);
/// The fields that derived fields of the document are computed from, in one step or several.
/// @param wanted the names that count; those of fields that are not derived add nothing.
FieldNames FindFieldsOfExpressions(Element root, const FieldNames& wanted);

/// A text without the blanks (space, tab, line ends) at both ends. One of nothing but blanks stays as it is.
std::string_view WithoutOuterBlanks(std::string_view text);

}  // namespace nbscore
