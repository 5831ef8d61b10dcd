#pragma once

#include "adapt/DocumentEdits.h"
#include "pmml/DocumentTree.h"

/// @file
/// The longer ones of the rules by which documents are adapted (DocumentAdapter.cpp has the others, and their order).
/// Each notes its changes to a document that those before it have changed. They throw VeskException 12, with the place,
/// where a change would change what the document means.

namespace nbscore {

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

}  // namespace nbscore
