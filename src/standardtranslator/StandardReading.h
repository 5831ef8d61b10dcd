#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "framework/Limits.h"
#include "framework/ScoreDictionary.h"
#include "framework/TransformationDictionary.h"
#include "pmml/FaultList.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Transcoder.h"
#include "reading/CountCells.h"
#include "standard/StandardModel.h"
#include "standardtranslator/DocumentOutline.h"
#include "standardtranslator/WrittenValues.h"
#include "transform/reading/TransformationDictionaryReader.h"

/// @file
/// The readers of a document's parts, and what they share while it is read.

namespace nbscore {

/// Gone when the document has been read.
struct StandardReading {
    const DocumentOutline& outline;
    const Transcoder& transcoder;
    FaultList& faults;
    StandardModel& model;
    /// The data fields, and the derived ones, which are null where there are none. Both are the model's by now.
    const FieldsByWrittenName& dictionary;
    const TransformationDictionary* derivedFields;
    const WrittenNames& namesOfDerivedFields;
    /// Of the data dictionary's fields.
    const FieldFaults& fieldFaults;
    const ScoreDictVar& target;
    WrittenValues targetValues;
    CountCells cells;
    LimitWatch watch;
    /// Names of the fields that inputs read.
    std::set<std::string> dataFieldsRead = {};
    std::set<std::string> derivedFieldsRead = {};
};

/// A BayesInput, before it is known which fields there are.
struct InputParts {
    Element element;
    std::string name;
    /// The field of its own that it reads instead of the one that it names; none where it has none.
    Element derivedField = {};
    /// What other fields cannot know that one by.
    std::string nameOfDerivedField = {};
    /// One of the two is there.
    std::vector<Element> pairCounts = {};
    Element stats = {};
};

/// Whether a figure says that there is none: "NaN", "nan" or, as R has it of what one case alone does not tell, "NA".
bool IsNoFigure(std::string_view text);

/// The name of a field that only fills a place (FindInputParts).
inline constexpr std::string_view placeHolder = "DiscretePlaceHolder";

/// Finds the parts of all inputs. Throws nothing: what an input has wrong is a fault of its own, and the input is left
/// out.
///
/// Left out, too, is an input that only fills a place: one producer writes it where all inputs are continuous, because
/// the standard asked for a categorical one. It counts one value that no case has.
std::vector<InputParts> FindInputParts(const DocumentOutline& outline, const Transcoder& transcoder, FaultList& faults);

/// The fields that inputs have of their own, under names that no field has.
/// @param dataDictionary null where there are no data fields.
std::vector<FieldByItself> NameFieldsOfInputs(std::vector<InputParts>& inputs, const DocumentOutline& outline,
                                              const ScoreDictionary& dataDictionary, const Transcoder& transcoder);

/// What derived fields hold that inputs name, where that is something else than they say: as with an input's own
/// field, bins are numbers only where all that names them does.
std::map<std::string, ScoreDictVar::StorageType> FindStoragesOfBins(const std::vector<InputParts>& inputs,
                                                                    const DocumentOutline& outline,
                                                                    const WrittenNames& namesOfDerivedFields,
                                                                    const Transcoder& transcoder);

/// Gives the model its inputs, with their counts or distributions; notes the fields that they read.
void ReadInputs(const std::vector<InputParts>& inputs, StandardReading& reading);

/// The counts of a PairCounts or BayesOutput element by target category, 0 where one is not counted.
///
/// A count that is no figure is 0: a producer writes it where a category never occurred. Throws VeskException 1 without
/// a TargetValueCounts. Faults of their own are 5 for a count below 0, 7 for a value that the target does not have,
/// unless its count is 0, and 12 for a value that is there twice.
std::vector<double> ReadCounts(Element parent, StandardReading& reading);

/// What the Targets element says of the target's values: gives the model its probabilities of cases without a result.
/// @return the texts shown for the target's values, by category; empty where a value has none.
std::vector<std::string> ReadTargets(StandardReading& reading);

/// Gives the model what the Output elements ask for.
/// @param displayValues by category; empty where the value itself is shown.
void ReadOutputs(std::vector<std::string> displayValues, StandardReading& reading);

}  // namespace nbscore
