#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ignored/IgnoredConstructs.h"
#include "pmml/DocumentParts.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// A kind of construct that scoring ignores, in the words of remarks. Identified by its address.
struct IgnoredKind {
    /// Follows the construct's name, with a full stop: `is not used: a missing value stays missing.`
    const char* effect;
    const char* advice;
    enum Weight {
        /// Answers stay as they are, or the document contradicts itself and one of its readings is taken.
        Remark,
        /// See IgnoredConstruct::isWarning.
        Warning,
        /// The same, and the standard's rule heeds it.
        HeededByStandard
    };
    Weight weight = Remark;
};

/// Collects what is ignored: the first of each kind, and how many there are, so that the report stays short however
/// long the document is.
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

/// Elements and attributes that are not known where they stand: in the dictionaries and in the models that are read.
void NoteUnknownContent(Element root, const ModelsRead& models, IgnoredLog& log);
/// Ignored rules for the values of fields: in the data dictionary (declared validity, second declarations, a wrong
/// number of fields) and in the mining schemas (missing and invalid values, outliers, optype). Rules for fields that
/// neither an input nor a derived field uses change nothing and are not reported.
void NoteIgnoredFieldRules(Element root, const ModelsRead& models, IgnoredLog& log);
/// The models of a document that are not read, and a set of models around the only one that is.
void NoteIgnoredModels(Element root, const ModelsRead& models, IgnoredLog& log);
/// Ignored children of a model other than its inputs and schema: priors of targets, outputs that are not computed,
/// local fields, all outputs but the last; and the marks that the model is not meant to be scored,
/// or is no classification.
void NoteIgnoredModelParts(Element model, IgnoredLog& log);
/// Ignored parts of the Discretize inside a model's inputs: an input uses only the margins between bins, puts a value
/// on a margin into the bin below it, and numbers bins in document order.
void NoteIgnoredBinning(Element model, IgnoredLog& log);
/// A model's inputs in places where none is looked for, such as an Extension. Producers write inputs with continuous
/// distributions there, for readers that do not support them. So are the counts of an input in an Extension.
void NoteIgnoredInputs(Element model, IgnoredLog& log);
/// Counts of inputs and outputs that are dropped, or stand for others: of values that are no number, of target values
/// that the target does not declare, and all but the last of one value.
void NoteIgnoredCounts(Element root, const ModelsRead& models, IgnoredLog& log);

}  // namespace nbscore
