#pragma once

#include "adapt/DocumentEdits.h"
#include "pmml/DocumentTree.h"

/// @file
/// The two long rules by which documents are adapted; DocumentAdapter.cpp has the short ones, and their order. Each
/// notes its changes to a document that the rules before it have changed. They throw VeskException 12, with the place,
/// where a change would change what the document means.

namespace nbscore {

/// Moves the derived fields that inputs need from the LocalTransformations of the models read to the
/// TransformationDictionary, which is added after the DataDictionary where there is none. A field that no input needs
/// stays and is ignored.
///
/// A field that several sub-models declare alike is moved once. Refused where a field would mean something else there:
/// where it has the name of a data field, of a derived field of the whole document, or of another field of a model, or
/// where something that could not see it before would read it. Names are compared without the blanks around them.
void MoveLocalFields(Element root, DocumentEdits& edits);

/// Removes blanks (space, tab, line ends) from both ends of field names and category values: of data fields, derived
/// fields and what their expressions read, mining fields, inputs, outputs, counts and (names only) test cases. A text
/// of nothing but blanks stays.
///
/// Where derived fields could tell the difference the blanks stay, and the notes say why: around the values of a text
/// field that an expression reads or gives, and around names that distinguish a derived field from another field.
/// Expressions see no names, and numbers are the same with blanks and without.
///
/// Refused where two different names or values would become equal.
void TakeBlanksOff(Element root, DocumentEdits& edits);

}  // namespace nbscore
