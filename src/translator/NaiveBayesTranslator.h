#pragma once

#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/VeskException.h"
#include "naivebayes/NBinningEncoder.h"
#include "reading/DocumentFaults.h"
#include "reading/PMMLTranslator.h"

/// Reads a PMML document with NaiveBayesModel elements into a model.
///
/// Further to what ScoreTranslator says of every translator: when reading fails half-way, the model that was
/// being built is handed to TakeUnfinishedModel, and is freed with the translator or when it reads again. A
/// translator may read any number of documents, one after another; every model it gave belongs to the caller.
class NAIVEBAYES_API NaiveBayesTranslator : public PMMLTranslator, public DocumentFaults {
public:
    /// @param nameOfDocument what errors call a document that has no file name of its own; may be empty.
    explicit NaiveBayesTranslator(const std::string& nameOfDocument);
    /// Leaves the models that were read alone.
    ~NaiveBayesTranslator() override;

    using PMMLTranslator::ParseFromTree;
    /// Never null. Throws VeskException; see ScoreTranslator for the one that is thrown as a pointer.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;
    /// The same of a document that was read into a tree.
    ScoreModel* ParseFromTree(const nbscore::DocumentTree& document, const std::string& encoding) override;

    /// From then on a document that is refused is read a second time, to find out what else is wrong with it.
    void GoOnBehindFaults() override;
    const std::vector<VeskException>& GetFaults() const override;

    /// A new encoder of the bins that the DerivedField of a continuous input lists; the caller owns it.
    /// Throws VeskException 6 for any other element and for none.
    /// @param translator texts are converted by its transcoder; they are UTF-8 when it has none yet.
    static NBinningEncoder* ParseDiscretize(const NaiveBayesTranslator& translator,
                                            const xercesc::DOMElement* derivedField);

private:
    ScoreModel* Read(const nbscore::DocumentTree& document, const std::string& encoding);
    void NoteFaults(const nbscore::DocumentTree& document, const std::string& encoding, const VeskException& first);
    std::vector<VeskException> Survey(const nbscore::DocumentTree& document);

    bool goesOnBehindFaults = false;
    std::vector<VeskException> faults;
    /// Which model the last document was read into, and nothing more: it is never looked into nor deleted through
    /// this pointer, because it belongs to the caller and may be gone already.
    ScoreModel* model = nullptr;
};
