#pragma once

#include "adapt/DocumentEdits.h"
#include "pmml/DocumentTree.h"

/// @file
/// The rules by which documents are adapted. Each notes its changes to a document that those before it have changed.
/// They throw VeskException 12, with the place, where a change would change what the document means.

namespace nbscore {

/// Takes Extension and Taxonomy out of the data dictionary: the standard allows them, the plug-in refuses them, and
/// scoring has no use for them. Models in what goes are gone too.
void CleanDictionary(Element root, DocumentEdits& edits);
/// The same of Extension in a BayesInput or BayesOutput and all that is in them, and, in a self-learning document, of a
/// model's Extension that is none of its assessment figures and whose value is no number. Those that hold inputs stay.
void CleanModels(Element root, DocumentEdits& edits);

/// Moves the derived fields in the LocalTransformations of the models read, as far as their inputs need them, to the
/// TransformationDictionary, which is made behind the DataDictionary where there is none. What no input needs stays and
/// is ignored.
///
/// A field that several sub-models declare alike is moved once. Refused where a field would mean something else there:
/// it has the name of a data field, of a derived field of the whole document, or of another one of a model; or what
/// does not see it would come to read it. Names are compared without the blanks around them.
void MoveLocalFields(Element root, DocumentEdits& edits);

/// Takes blanks (space, tab, line ends) off both ends of field names and category values: of data fields, derived
/// fields and what their expressions read, mining fields, inputs, outputs, counts and, names
/// alone, test cases. A text of nothing but blanks stays.
///
/// Where derived fields could tell the difference the blanks stay, and the notes say why: around the values of a text
/// field that an expression reads or gives, and around names that tell a derived field from another field. Expressions
/// see no names, and numbers are the same with blanks and without.
///
/// Refused where two names or values that differ would become one.
void TakeBlanksOff(Element root, DocumentEdits& edits);

/// Says in the plug-in's words what a model says of its fields: `usageType="target"` becomes `predicted`, a BayesOutput
/// without `fieldName` gets the schema's target, and a BayesInput over a derived field that the schema does not list
/// gets listed. A model of a self-learning document without `modelName` gets an empty one. Refused where an output's
/// target is not clear.
void AdaptModels(Element root, DocumentEdits& edits);

}  // namespace nbscore
