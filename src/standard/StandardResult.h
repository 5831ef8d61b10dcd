#pragma once

#include <vector>

#include "framework/CaseFacts.h"
#include "framework/ScoreModel.h"
#include "naivebayes/Classifier.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "naivebayes/StandardProduct.h"
#include "standard/TreatedRecord.h"

/// The result of a classification by the standard's rule. It knows what scoring the case found out, and keeps the
/// memory that scoring a case takes, for the next one.
class StandardResult : public NaiveBayesClsResult, public ResultFacts {
public:
    /// @param scoringModel the only one that fills the result; it must outlive it.
    StandardResult(const ScoreModel& scoringModel, const ScoreDictVar* targetVariable);
    ~StandardResult() override;

    const nbscore::CaseFacts& GetFacts() const override;
    bool IsOf(const ScoreModel& scoringModel) const { return model == &scoringModel; }

private:
    friend class StandardModel;

    /// Takes away the prediction, the probabilities and the confidence.
    void Empty();

    const ScoreModel* model;
    nbscore::CaseFacts facts;
    nbscore::TreatedRecord treated;
    nbscore::EncodedCase encoded;
    nbscore::StandardProduct product;
    std::vector<double> probabilities;
};
