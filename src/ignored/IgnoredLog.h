#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ignored/IgnoredConstructs.h"
#include "pmml/DocumentParts.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// A kind of construct that scoring does not heed, in the words of remarks. Told apart by its address.
struct IgnoredKind {
    /// Follows the construct's name, with a full stop: `is not used: a missing value stays missing.`
    const char* effect;
    const char* advice;
    /// See IgnoredConstruct.
    bool isWarning = false;
};

/// Collects what is ignored: of each kind the first one, and how many there are, so that what is told stays short
/// however long the document is.
class IgnoredLog {
public:
    /// @param kind must outlive the log.
    /// @param subject the construct's name, as the beginning of a sentence.
    void Note(const IgnoredKind& kind, Element element, const std::string& subject);

    /// In document order.
    std::vector<IgnoredConstruct> Finish() const;

private:
    struct Entry {
        const IgnoredKind* kind;
        Element first;
        std::string subject;
        std::size_t count;
    };
    std::vector<Entry> entries;
};

/// An attribute in quotes, shortened and without control characters, to name a construct by.
std::string QuotedAttribute(Element element, Name name);

/// What is said in vain about the values of fields: in the data dictionary (declared validity, second declarations, a
/// wrong number of fields) and in the mining schemas (missing and invalid values, outliers, optype). Rules for fields
/// that no input and no derived field uses change nothing and are passed over.
void NoteIgnoredFieldRules(Element root, const ModelsRead& models, IgnoredLog& log);
/// The models of a document that are not read, and a set of models around one that is read alone.
void NoteIgnoredModels(Element root, const ModelsRead& models, IgnoredLog& log);
/// What a model's children say in vain beside its inputs and schema: targets' priors, outputs that are not computed,
/// local fields, an output in front of another; and that the model is not meant to be scored.
void NoteIgnoredModelParts(Element model, IgnoredLog& log);
/// What the Discretize inside a model's inputs says in vain: inputs take only the margins between bins, put values on a
/// margin into the bin below it and number bins as they stand.
void NoteIgnoredBinning(Element model, IgnoredLog& log);
/// A model's inputs that stand where none is looked for, such as in an Extension. That is how producers write inputs
/// with continuous distributions for readers that know none.
void NoteIgnoredInputs(Element model, IgnoredLog& log);
/// Rows of counts, of inputs that learn their numbers from them, whose value is no number.
void NoteCountsOfNoNumber(Element root, const ModelsRead& models, IgnoredLog& log);

}  // namespace nbscore
