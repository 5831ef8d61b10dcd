#pragma once

#include <set>
#include <string>

#include "framework/BaseTranslator.h"
#include "framework/Limits.h"
#include "framework/ScoreDictionary.h"
#include "framework/Transcoder.h"
#include "framework/TransformationDictionary.h"
#include "framework/dictionary/FieldFaults.h"
#include "translator/ActiveFields.h"
#include "translator/CountLimits.h"
#include "translator/ModelUnderConstruction.h"
#include "translator/TargetCategories.h"

namespace nbscore {

/// What the readers of a document's parts share while it is read. It is gone when the document has been read.
struct DocumentReading {
    /// For what is to be said beside reading or refusing the document.
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
};

}  // namespace nbscore
