#pragma once

#include "naivebayes/NaiveBayesModel.h"
#include "translator/ModelUnderConstruction.h"

namespace nbscore {

/// A single classifier while a document is read into it: made of the document's first model element alone.
class NaiveBayesUnderConstruction : public ModelUnderConstruction {
public:
    NaiveBayesUnderConstruction();
    ~NaiveBayesUnderConstruction() override;

    ScoreModel& GetModel() override;
    std::unique_ptr<ScoreModel> Release() override;
    bool IsSelfLearning() const override;
    int TakeModelElements(int inDocument) override;
    void BeginSubModel(int modelIndex) override;
    void SetThreshold(double threshold) override;
    void SetTargetVar(const ScoreDictVar* target) override;
    void SetNeedDerivedPredictor(bool need) override;
    void AddPredictorVar(const std::string& name, const ScoreDictVar* var) override;
    INBVeskEncoder& AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder) override;
    void SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) override;
    void SetTargetCounts(const std::vector<double>& counts) override;

private:
    std::unique_ptr<NaiveBayesModel> model;
};

}  // namespace nbscore
