#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "framework/Export.h"
#include "pmml/DocumentTree.h"

/// @file
/// Which parts of a document the plug-in reads, and which fields they mention: for those who read the document as for
/// those who change it or report what it holds.

/// The names of the extensions that carry a sub-model's assessment figures.
namespace nbscore::assessment {

inline constexpr std::string_view meanPerformance = "meanPerformance";
inline constexpr std::string_view stdDevPerformance = "stdDevPerformance";
inline constexpr std::string_view trainingSampleSize = "trainingSampleSize";

}  // namespace nbscore::assessment

/// The one extension of a mining schema, which lists derived fields as inputs: who declares it, and its name.
namespace nbscore::vendor_extension {

inline constexpr std::string_view extender = "scoring.nbscore";
inline constexpr std::string_view derivedFields = "DerivedFields";

}  // namespace nbscore::vendor_extension

namespace nbscore {

/// The model elements of a document that the plug-in reads, in document order: of a self-learning document all, else
/// the first. Its first model element says which it is.
struct ModelsRead {
    std::vector<Element> elements;
    bool selfLearning = false;
};
SCOREFRAMEWORK_API ModelsRead FindModelsRead(Element root);

/// Whether an element is a model of some kind, by its name.
SCOREFRAMEWORK_API bool IsModel(Element element);
/// `a TreeModel`, `an AssociationModel`: what a model is, for messages.
SCOREFRAMEWORK_API std::string NameKindOf(Element model);

/// Whether a DataField has an Extension, at any depth, that marks it as the target of a self-learning model.
SCOREFRAMEWORK_API bool IsMarkedAsSelfLearningTarget(Element dataField);

/// The first Application element, or none.
SCOREFRAMEWORK_API Element FindApplication(Element root);

/// The only child element of this name, or none; throws VeskException 12 when there are two.
SCOREFRAMEWORK_API Element OnlyChild(Element parent, Name name);

/// The BayesInput elements of a model that are read.
SCOREFRAMEWORK_API std::vector<Element> FindInputs(Element model);
/// The inputs in a part of a model, at any depth and under whatever prefix; those of models in it are theirs.
SCOREFRAMEWORK_API std::vector<Element> FindInputsAnywhere(Element part);

/// The derived fields of the document's TransformationDictionary; of several all, though one alone is read.
SCOREFRAMEWORK_API std::vector<Element> FindDerivedFields(Element root);

/// Whether an extension of a schema lists derived fields as inputs.
SCOREFRAMEWORK_API bool ListsDerivedFields(Element extension);
/// The MiningField elements of a schema that are read: its own, then those of the extension that lists derived inputs.
/// What other extensions hold lists nothing.
SCOREFRAMEWORK_API std::vector<Element> FindSchemaFields(Element schema);

/// An attribute in which the expression of a derived field names a field that it reads.
struct FieldMention {
    Element element;
    Name attribute;
};
/// All of a derived field, in document order. What stands in Extension elements and inline tables is none.
SCOREFRAMEWORK_API std::vector<FieldMention> FindFieldMentions(Element derivedField);

using FieldNames = std::set<std::string, std::less<>>;

/// The fields that the inputs of a model name.
SCOREFRAMEWORK_API FieldNames FindInputFields(Element model);
/// The fields that derived fields of the document are computed from, in one step or several.
/// @param wanted the names that count; those of fields that are not derived add nothing.
SCOREFRAMEWORK_API FieldNames FindFieldsOfExpressions(Element root, const FieldNames& wanted);

}  // namespace nbscore
