#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/Limits.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "pmml/DocumentTree.h"
#include "pmml/Transcoder.h"
#include "reading/BaseTranslator.h"
#include "translator/DocumentReading.h"

namespace nbscore {

/// Reads one NaiveBayesModel element: the threshold, of a self-learning document also the sub-model's name, which is
/// required and may be empty, then the children in document order. Unknown children are ignored. The mining schema must
/// stand before the inputs and the output, which rely on what it yields.
///
/// Throws VeskException 5 for a threshold of 0 (negative and tiny ones are taken as they stand) and for other than two
/// categories or another target where sub-models share one, 1 when the inputs or the output are missing, 2 for what an
/// element must say and does not, 8 for the output of another field than the target, 12 for counts that would take too
/// much memory, and what the readers of the children throw.
void ReadModelElement(Element modelElement, int modelIndex, DocumentReading& reading);

/// Reads a MiningSchema: gives every mining field of the first model element its role, notes the active
/// fields in order, and makes the target's encoder.
///
/// The schemas of later model elements share the first one's roles and target: they note their active fields, make
/// predictors of those that have no role yet, and name their target.
///
/// Throws VeskException 5 for a field that its dictionary does not know, 1 for one that is listed twice. A
/// second predicted field is thrown as a *pointer* to a new VeskException 12, unlike everything else. This is
/// deliberate and part of the interface; the catcher deletes it.
/// @return the predicted field's name, empty when there is none.
std::string ReadMiningSchema(Element schema, int modelIndex, DocumentReading& reading);

/// Reads the inputs inside a BayesInputs, in order: gives the model each one's variable, encoder and counts.
///
/// Throws VeskException 12 for an element that is no BayesInput, 7 and 8 for an input that the mining schema
/// or the dictionaries do not know, 1 for an element that is no PairCounts, 7 for a value that the variable
/// does not declare, and what ReadDiscretization and ReadTargetValueCounts throw. A document whose counts
/// and categories would take too much memory is refused with 12.
/// @return how many inputs there were.
int ReadBayesInputs(Element inputs, DocumentReading& reading);

/// Reads the DerivedField of a continuous input, whose Discretize lists the bins, into an encoder.
///
/// The cutpoints are the left margins of all bins but the first, in document order; each must equal the right
/// margin of the bin before. Their order is not looked at, nor on which side an Interval is closed: the
/// encoder has a rule of its own for a value that equals a cutpoint.
///
/// Throws VeskException 6 for another element, after a notice of two lines (BaseTranslator::GiveNotice); 1 for another
/// element inside it; 12 for margins that do not meet; 5 for fewer than two bins.
/// @param derivedField may be none.
/// @param parent where the fault stands then; may be none.
std::unique_ptr<NBinningEncoder> ReadDiscretization(const BaseTranslator& translator, const Transcoder& transcoder,
                                                    Element derivedField, Element parent);

/// How to read counts per target category.
struct TargetValueCountsOptions {
    bool selfLearning = false;
    /// What to do with a value that the target does not declare: make it a category, or pass it over.
    bool addUnknownValues = false;
    /// True for the counts of a BayesOutput, false for those of a PairCounts.
    bool outputMode = false;
};

/// Reads the first child of a PairCounts or BayesOutput, which must be a TargetValueCounts, into a vector of
/// counts by target category. Categories without a count get 0; the vector is at least as long as the encoder
/// has categories when it has more than one.
///
/// Counts are taken as they stand, negative and fractional ones too; of a repeated value the last counts. A
/// value that is no category is ignored, whatever its count. Throws VeskException 1 for other
/// elements, 2 for an entry without a value or count, 9 for a count that is no number, 10 for a value that the encoding
/// cannot hold, 12 for a target index that is too high, and 5 where a self-learning output has not one or two entries;
/// and CancelledError.
/// @param targetEncoder null when no field is predicted: then no value is a category.
std::vector<double> ReadTargetValueCounts(const Transcoder& transcoder, Element parent, INBVeskEncoder* targetEncoder,
                                          const TargetValueCountsOptions& options, LimitWatch& watch);

/// Looks in the data dictionary for a field that is marked as the target of a self-learning model: one with
/// an Extension, at any depth, of the name "isSelfLearningTarget" and the value "true". The building of the
/// dictionary itself is the framework's.
///
/// Ends at the first such field: what is wrong behind it is not seen. Throws VeskException 1 for a child that
/// is no DataField and for a field without a name.
/// @param dataDictionary none is refused, too.
/// @param targetName filled with the field's name.
/// @return true when there is such a field.
bool ReadDictionaryExtension(const Transcoder& transcoder, Element dataDictionary, std::string& targetName);

}  // namespace nbscore
