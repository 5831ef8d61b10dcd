#pragma once

#include <vector>

#include "framework/VeskException.h"
#include "reading/DocumentFaults.h"
#include "reading/PMMLTranslator.h"

namespace nbscore {

/// Reads a PMML document with a Naive Bayes model into a model that is scored by the standard's rule.
///
/// A translator may read any number of documents, one after another; every model it gave belongs to the caller.
class StandardTranslator : public PMMLTranslator, public DocumentFaults {
public:
    StandardTranslator() : PMMLTranslator(std::string()) {}

    using PMMLTranslator::ParseFromTree;
    /// Never null. Throws VeskException, always by value: its number, text and advice are one of Refusal's.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;
    ScoreModel* ParseFromTree(const DocumentTree& document, const std::string& encoding) override;

    const std::vector<VeskException>& GetFaults() const override { return found; }

private:
    class Reader;

    std::vector<VeskException> found;
};

}  // namespace nbscore
