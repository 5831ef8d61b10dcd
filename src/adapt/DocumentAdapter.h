#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/DocumentPlace.h"

namespace nbscore {

class DocumentTree;

/// A change that was made to a document before it was read, or one that was left out although others like it were made.
struct Adaptation {
    DocumentPlace place;
    /// What was done, or what stays and why, as a sentence for people.
    std::string change;
    bool isMade = true;
};

/// Rewrites what newer producers write, and the plug-in does not read, into an equivalent that it reads:
///
/// - `usageType="target"` becomes `predicted`;
/// - a BayesOutput without `fieldName` gets the one target of its model's schema;
/// - derived fields in a model's LocalTransformations that its inputs need move to the TransformationDictionary;
/// - a BayesInput over a derived field that the schema does not list gets listed, as the plug-in wants it;
/// - blanks around names and category values go, where no derived field can tell the difference;
/// - elements that the standard allows and that mean nothing for scoring go: Extension and Taxonomy in DataDictionary,
///   Extension in a BayesInput or BayesOutput and in all that is in them, and, in a self-learning document, a model's
///   Extension whose value is no number;
/// - a model of a self-learning document without `modelName` gets an empty one.
///
/// Returns every change, in document order, and the blanks that stay because derived fields could tell the difference.
/// Nothing is guessed: where a change would change what the document means, VeskException 12 says why, with the place,
/// and the changes of the rules before that one have been made. Places of later refusals stay those of the original.
/// Adapting a document again changes nothing.
/// @param document replaced by another tree where something changes.
std::vector<Adaptation> AdaptDocument(std::unique_ptr<const DocumentTree>& document);

}  // namespace nbscore
