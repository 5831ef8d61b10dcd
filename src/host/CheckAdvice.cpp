#include "host/CheckAdvice.h"

#include <array>
#include <string_view>

namespace nbscore {
namespace {

struct Advice {
    int code;
    /// Part of the message that it is for; empty for every message of the code.
    std::string_view message;
    std::string_view text;
};

/// The first that fits counts: particular messages before whole codes.
constexpr std::array advices = {
    Advice{1, "<NaiveBayesModel> is required",
           "Check that the document holds a Naive Bayes model, not one of another kind."},
    Advice{1, "<DataField> is required here",
           "Take everything but DataField out of DataDictionary, or read the document with --adapt."},
    Advice{1, "At least one <BayesInputs>",
           "Give the model a BayesOutput, and BayesInputs with at least one BayesInput."},
    Advice{1, "is redefined!", "List each field once in MiningSchema."},
    Advice{1, "Only PairCounts elements are allowed here",
           "Give the input PairCounts alone: distributions (TargetValueStats) cannot be read; bin the field with "
           "Discretize "
           "and count each bin."},
    Advice{1, "", "Compare the element with the standard's schema and mend what stands there."},
    Advice{2, "",
           "Add the attribute; --adapt fills in fieldName and modelName where the document says them elsewhere."},
    Advice{3, "", "Have the XML checked for being well-formed, and write it without document type and entities."},
    Advice{4, "", "Look whether the file is there and may be read."},
    Advice{5, "Threshold can't be zero",
           "Write a small threshold instead, such as one over the number of training cases."},
    Advice{5, "Only two-category target", "Declare exactly two values for the field that the sub-models predict."},
    Advice{5, "Only one target variable", "Let every sub-model's MiningSchema name the same predicted field."},
    Advice{5, "is not defined!",
           "Declare the field in DataDictionary; a derived field is no MiningField, read the document with --adapt to "
           "have "
           "it listed as an input."},
    Advice{5, "", "Mend the content of the element; docs/documents.md says what it may hold."},
    Advice{6, "", "Put a DerivedField with a Discretize first in the BayesInput of a continuous field."},
    Advice{7, "Input not found in MiningSchema",
           "List the field in MiningSchema as active, before BayesInputs; --adapt "
           "lists derived fields."},
    Advice{7, "", "Declare the value in DataDictionary, or take its PairCounts out."},
    Advice{8, "does not match the target",
           "Let BayesOutput name the field that MiningSchema predicts; usageType \"target\" "
           "is read with --adapt."},
    Advice{8, "", "Correct the name, or declare the field."},
    Advice{9, "", "Write a finite decimal number."},
    Advice{10, "", "Save the document in an encoding that XML tools know, such as UTF-8."},
    Advice{11, "",
           "Compute the field before scoring, and pass it as a column; docs/expressions.md lists what is supported."},
    Advice{12, "Only one target is allowed", "Leave one field predicted."},
    Advice{12, "", "Make the parts of the document agree; docs/documents.md lists the limits."},
};

}  // namespace

std::string AdviceFor(const VeskException& refusal) {
    for (const Advice& advice : advices) {
        const bool fits = advice.code == static_cast<int>(refusal.GetCode()) &&
                          refusal.GetMessage().find(advice.message) != std::string::npos;
        if (fits) return std::string(advice.text);
    }
    return "Mend the document at this place.";
}

std::string AdviceForUnscorable() {
    return "Count every declared value and bin, and declare each value of the target once.";
}

}  // namespace nbscore
