#pragma once

#include <memory>
#include <string>
#include <vector>

#include "batch/SourceScorer.h"
#include "c/nbscore.h"
#include "check/DocumentCheck.h"
#include "framework/Limits.h"
#include "framework/ScoringRule.h"
#include "host/LoadedModel.h"
#include "host/PluginLibrary.h"
#include "host/SourceDocument.h"

namespace nbscore {

/// How a document is read, in the terms of this program.
struct ReadingOptions {
    /// Throws BadArgument for options that there are not.
    explicit ReadingOptions(const nbscore_reading* given);

    ScoringRule rule;
    bool adapts;
    DensityFloor densityFloor;
    Limits limits;
};

/// The plug-in that is linked in.
std::shared_ptr<PluginLibrary> GetLinkedPlugin();

/// A model that can score every case. Does not change; any number of threads may use it.
class OpenModel {
public:
    /// Throws what reading a document throws.
    OpenModel(const DocumentOrigin& origin, const ReadingOptions& options);

    ScoreModel& GetModel() const { return model.Get(); }
    const SourceScorer& GetScorer() const { return scorer; }
    /// The target's categories, or the labels of a set's sub-models.
    const std::vector<std::string>& GetAnswerNames() const { return answerNames; }
    void ThrowIfCancelled() const { limits.ThrowIfCancelled(); }

    /// As a check of its document tells of it (DescribeLoaded), as JSON.
    std::string Describe() const;

private:
    static LoadedModel Read(const DocumentOrigin& origin, const ReadingOptions& options, DocumentCheck& toTell);

    /// What only the document tells.
    DocumentCheck ofDocument;
    Limits limits;
    LoadedModel model;
    SourceScorer scorer;
    std::vector<std::string> answerNames;
};

}  // namespace nbscore

/// What the C interface hands out. What goes on after it is closed shares the model.
struct nbscore_model {
    std::shared_ptr<const nbscore::OpenModel> open;
};
