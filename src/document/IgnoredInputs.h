#pragma once

#include "document/IgnoredLog.h"

namespace nbscore {

/// The inputs in a part of a model, at any depth and under whatever prefix; those of models in it are theirs.
std::vector<const xercesc::DOMElement*> FindInputsAnywhere(const xercesc::DOMElement& part);

/// Notes a model's inputs that stand where none is looked for, such as in an Extension. That is how producers write
/// inputs with continuous distributions for readers that know none.
void NoteIgnoredInputs(const xercesc::DOMElement& model, IgnoredLog& log);

/// Notes rows of counts, of inputs that learn their numbers from them, whose value is no number.
/// @param root the document's root element, whose dictionaries declare the fields.
void NoteCountsOfNoNumber(const xercesc::DOMElement& root, const std::vector<xercesc::DOMElement*>& models,
                          IgnoredLog& log);

}  // namespace nbscore
