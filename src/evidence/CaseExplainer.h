#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "evidence/Evidence.h"
#include "framework/CaseReading.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreModel.h"

namespace nbscore {

class EvidenceTables;

/// Tells why cases are scored as they are: for a single classifier, or for one of a set's sub-models. Nothing in it
/// changes that callers see; any number of threads may ask, each with memory of its own. Copies share what they hold.
class CaseExplainer {
public:
    /// What explaining a case keeps for the next one.
    class Memory {
    public:
        Memory() = default;

    private:
        friend class CaseExplainer;
        CaseReading reading;
        /// The case that was explained last, and whether it carries derived values.
        const ScoreCaseRecord* record = nullptr;
        bool hasDerived = false;
    };

    /// @param model configured; borrowed, and must outlive this. It computes the derived fields of cases.
    /// Throws std::invalid_argument, with a sentence for people, for a model that does not lay its tables open
    /// (ModelSelfTables) or cannot score every case (ModelSelfCheck).
    explicit CaseExplainer(ScoreModel& model);

    /// Whether there are sub-models, each of which is a classifier.
    bool IsSet() const;
    /// One of a single classifier.
    std::size_t GetNumClassifiers() const;
    /// The names of a set's sub-models, in order; they may be empty or equal. None of a single classifier.
    const std::vector<std::string>& GetSubModels() const;
    /// The target's categories as text, in the order of factors and probabilities.
    const std::vector<std::string>& GetCategories() const;
    /// What a classifier's predictors are called, in the order in which their factors are multiplied.
    /// Throws std::out_of_range for a classifier that does not exist.
    const std::vector<std::string>& GetPredictors(std::size_t classifier) const;

    /// @param record what a case holds, as for ScoreModel::GetScore; borrowed for the call.
    /// @param derivedInRecord true when the record already carries the values of the derived fields.
    /// @param evidence out; its memory is used again.
    /// Throws std::out_of_range for a classifier or a category that does not exist, and std::invalid_argument for a
    /// category against itself.
    void Explain(const ScoreCaseRecord& record, std::size_t classifier, const AskedPair& pair, Evidence& evidence,
                 Memory& memory, bool derivedInRecord = false) const;
    /// Explains the case that this memory was used for last, for another classifier: its derived fields are not
    /// computed again. On the same thread, which has scored and explained nothing else since, while the record is
    /// as it was. Throws std::logic_error where no case was explained.
    void ExplainAnother(std::size_t classifier, const AskedPair& pair, Evidence& evidence, Memory& memory) const;

    const EvidenceTables& GetTables() const { return *tables; }

private:
    void ExplainRead(std::size_t classifier, const AskedPair& pair, Evidence& evidence, Memory& memory) const;

    ScoreModel* model;
    std::shared_ptr<const EvidenceTables> tables;
};

}  // namespace nbscore
