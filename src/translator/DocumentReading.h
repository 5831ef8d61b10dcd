#pragma once

#include <memory>
#include <set>
#include <string>

#include "framework/Limits.h"
#include "framework/ScoreDictionary.h"
#include "framework/SeededHash.h"
#include "framework/TransformationDictionary.h"
#include "naivebayes/INBVeskEncoder.h"
#include "pmml/DocumentTree.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Transcoder.h"
#include "reading/BaseTranslator.h"
#include "reading/CountCells.h"
#include "translator/FaultSurvey.h"
#include "translator/ModelUnderConstruction.h"

/// @file
/// What the readers of a document's parts share while it is read.

namespace nbscore {

/// The highest bin number and target index that are taken.
inline constexpr int highestCountIndex = 1'000'000;

/// The active fields of the model element being read. The position of a name is the predictor index of the
/// inputs that use it; of equal names the first one counts.
class ActiveFields {
public:
    static constexpr int notFound = -1;

    void Append(const std::string& name) { firstPositions.emplace(name, numFields++); }
    /// The first position of the name, found without a search through all of them; or notFound.
    int IndexOf(const std::string& name) const {
        const auto position = firstPositions.find(name);
        return position == firstPositions.end() ? notFound : position->second;
    }

private:
    int numFields = 0;
    SeededMap<std::string, int> firstPositions;
};

/// What the first model element's mining schema says of the target.
struct TargetCategories {
    /// Empty when no field is predicted.
    std::string name;
    /// Numbers the target's categories; null when no field is predicted, and then every target value is
    /// unknown.
    std::unique_ptr<INBVeskEncoder> encoder;
    /// True once the dictionary was seen to declare the target's values. When false, the counts of the inputs
    /// teach the encoder its categories.
    bool known = false;
};

/// What the readers of a document's parts share while it is read. It is gone when the document has been read.
struct DocumentReading {
    /// For notices about the document.
    const BaseTranslator& translator;
    const Transcoder& transcoder;
    /// Both dictionaries are the model's by now; the second is null when the document has no derived fields.
    const ScoreDictionary& dictionary;
    const TransformationDictionary* derivedFields;
    ModelUnderConstruction& model;
    /// Of the data dictionary's fields.
    const FieldFaults& faults;

    TargetCategories target;
    /// Of the model element being read.
    ActiveFields activeFields;
    CountCells cells;
    /// The derived fields that inputs name, where a data field has a fault: they must not be computed from it.
    std::set<std::string> derivedInputs;
    LimitWatch watch;
    /// Null where the first fault ends the reading.
    FaultSurvey* survey = nullptr;

    /// Reads a part that stands by itself. Its fault leaves this, except in a survey.
    /// @return whether the part was read, and without a fault.
    template <typename Work>
    bool ReadPart(const Work& work) {
        if (survey != nullptr) return survey->Try(work);
        work();
        return true;
    }
    bool IsBroken(const std::string& field) const { return survey != nullptr && survey->brokenFields.contains(field); }
    bool IsTargetBroken() const { return survey != nullptr && survey->isTargetBroken; }
};

}  // namespace nbscore
