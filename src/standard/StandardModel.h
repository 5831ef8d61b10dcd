#pragma once

#include <atomic>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "framework/BaseModel.h"
#include "framework/DerivedFieldSources.h"
#include "framework/ModelOutputs.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "framework/ScoringRule.h"
#include "naivebayes/Classifier.h"
#include "naivebayes/Density.h"
#include "naivebayes/DoneOnce.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"
#include "naivebayes/Target.h"
#include "standard/OutputFields.h"
#include "standard/StandardResult.h"
#include "standard/TreatedRecord.h"
#include "transform/evaluation/FieldTreatment.h"

/// One Naive Bayes classifier that is scored by the standard's rule, with all that surrounds it there: treatments of
/// missing, invalid and outlying values, and the columns that a document's Output asks for.
///
/// Configured by calls in this order, on one thread: the dictionaries, SetThreshold, SetTargetVar, SetTargetCounts;
/// then the inputs, in the order in which their factors are multiplied, and the treatments. Nothing checks that the
/// parts fit together; FindScoringObstacle tells. What does not stops the process at the first index that is out of
/// range.
///
/// Classifier tells how a case is scored. Before that, the value of each active field is treated, once; derived fields
/// are computed from treated values, but for those that a record brings along. A value that is invalid ends the case
/// without a result, even where no input reads it; so does a case that no category is possible for (ResultFacts).
///
/// Threads: from the first case on, any number of scoring calls at once. The first one whose record has positions notes
/// them, once, and others with such records wait for it.
class StandardModel : public BaseModel,
                      public ModelSelfCheck,
                      public ModelSelfDescription,
                      public ModelSelfTables,
                      public ModelOutputs,
                      public ModelDensities {
public:
    StandardModel();
    ~StandardModel() override;

    void SetPredictionOnly(bool only) override;
    ScoreDictionary* GetVarsOfRole(VarRole role) const override;
    /// @param result is filled again where it is one of this model's, and otherwise deleted and replaced.
    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) override;
    ModelType GetModelType() override;
    bool GetPredictionOnly() const override;
    void Display(std::ostream& out) const override;

    nbscore::ScoringObstacle FindScoringObstacle() const override;
    nbscore::ModelDescription Describe() const override;
    nbscore::ModelTables GetTables() const override;
    void ReadCase(const ScoreCaseRecord* record, std::size_t classifier, bool derivedInRecord,
                  nbscore::CaseReading& reading) override;

    std::vector<nbscore::OutputColumn> GetOutputColumns() const override;
    void ComputeOutputs(const ScoreCaseRecord& record, const ScoreResult& result,
                        std::vector<nbscore::OutputValue>& values) const override;
    std::vector<std::string> GetOptionalFields() const override;

    void SetDensityFloor(nbscore::DensityFloor floor) override;

    void SetThreshold(double threshold);
    /// Borrowed. Its declared values are the target categories.
    void SetTargetVar(const ScoreDictVar* targetVar);
    /// One count for each category.
    void SetTargetCounts(const std::vector<double>& counts);
    /// Appends an input whose values are counted.
    /// @param name what descriptions call it.
    /// @param var the field that it reads, one of the dictionary's or a derived one; borrowed.
    /// @param counts indexed [code][target category].
    void AddTable(const std::string& name, const ScoreDictVar* var, std::unique_ptr<INBVeskEncoder> encoder,
                  const NBayesInputBase::Matrix& counts);
    /// Appends an input whose values are distributed in a known way, one distribution for each target category.
    void AddDensities(const std::string& name, const ScoreDictVar* var, std::vector<nbscore::Density> byTargetCategory);
    /// Says how an active field's values are treated. Where a field that an input reads has no treatment, only values
    /// that its declaration does not allow end the case.
    void AddTreatment(const ScoreDictVar* field, nbscore::FieldTreatment treatment);
    /// The probabilities of a case without a result, one for each category; empty where it has none.
    void SetTargetPriors(std::vector<double> priors);
    /// May be null: the document asks for no columns.
    void SetOutputs(std::unique_ptr<const nbscore::OutputFields> newOutputs);

private:
    void NoteReading(const ScoreDictVar* var);
    void NoteSlot(const std::string& field, std::size_t slot);
    /// Once, where records have positions.
    void NotePositions(const ScoreCaseRecord& record);
    const ScoreCaseRecord* ComputeDerived(const ScoreCaseRecord& treated, bool derivedInRecord) const;
    void ScoreInto(StandardResult& result, const ScoreCaseRecord& record, bool derivedInRecord) const;
    /// False where no category is possible.
    bool ComputeProbabilities(StandardResult& result, bool derivedInRecord) const;
    void Fill(StandardResult& result, std::span<const double> probabilities) const;
    void FillWithoutResult(StandardResult& result) const;
    void NoteSourcesAlone(StandardResult& result, const ScoreCaseRecord& derived) const;
    void DisplaySurroundings(std::ostream& out) const;

    /// An input that reads a derived field.
    struct DerivedInput {
        std::size_t position;
        std::string field;
        nbscore::SourceFields sources;
    };

    nbscore::Target target;
    nbscore::Classifier classifier{nbscore::ScoringRule::Standard};
    nbscore::TreatedFields fields;
    /// Names of the fields that inputs read.
    std::set<std::string> dataFieldsRead;
    std::set<std::string> derivedFieldsRead;
    std::vector<DerivedInput> derivedInputs;
    std::vector<double> targetPriors;
    std::unique_ptr<const nbscore::OutputFields> outputs;
    std::atomic<bool> predictionOnly = false;
    /// Whether positions in records are noted.
    nbscore::DoneOnce positionsReady;
};
