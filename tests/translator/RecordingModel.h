#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/NumberText.h"
#include "translator/ModelUnderConstruction.h"

namespace nbscore::test {

/// A model under construction that writes down what the readers call, in order, and passes nothing of it on: what they
/// do differently for a self-learning model shows without its parts.
class RecordingModel : public ModelUnderConstruction {
public:
    explicit RecordingModel(bool selfLearning = false) : ModelUnderConstruction(selfLearning) {}

    void BeginSubModel(int modelIndex) override { Note("model " + std::to_string(modelIndex)); }
    void SetThreshold(double) override { Note("threshold"); }
    void SetTargetVar(const ScoreDictVar* target) override { Note("target " + target->GetName()); }
    void SetNeedDerivedPredictor(bool need) override { Note(need ? "derived needed" : "derived not needed"); }
    void AddPredictorVar(const std::string& name, const ScoreDictVar* var) override {
        Note("var " + name + " " + var->GetName());
    }
    INBVeskEncoder& AddEncoder(int predictorIndex, std::unique_ptr<INBVeskEncoder> encoder) override {
        Note("encoder " + std::to_string(predictorIndex));
        encoders.push_back(std::move(encoder));
        return *encoders.back();
    }
    void SetPredCounts(int predictorIndex, const NBayesInputBase::Matrix& counts) override {
        Note("counts " + std::to_string(predictorIndex));
        matrices.push_back(counts);
    }
    void SetTargetCounts(const std::vector<double>& counts) override {
        Note("target counts");
        targetCounts = counts;
    }
    void SetModelName(const std::string& name) override { Note("name " + name); }
    void SetAssessmentMean(double value) override { Note("mean " + FormatNumber(value)); }
    void SetAssessmentStdDev(double value) override { Note("deviation " + FormatNumber(value)); }
    void Finish(const std::string& targetName, const std::string* markedTarget) override {
        Note("finish " + targetName + (markedTarget != nullptr ? " marked " + *markedTarget : ""));
    }

    std::vector<std::string> calls;
    std::vector<NBayesInputBase::Matrix> matrices;
    std::vector<std::unique_ptr<INBVeskEncoder>> encoders;
    std::vector<double> targetCounts;

private:
    void Note(const std::string& call) { calls.push_back(call); }
};

}  // namespace nbscore::test
