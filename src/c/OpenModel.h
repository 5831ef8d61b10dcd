#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "batch/SourceScorer.h"
#include "c/ArrowCases.h"
#include "c/Failure.h"
#include "c/nbscore.h"
#include "check/DocumentCheck.h"
#include "evidence/CaseExplainer.h"
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
    /// Made when it is first asked for.
    const CaseExplainer& GetExplainer() const;
    /// The target's categories, or the labels of a set's sub-models.
    const std::vector<std::string>& GetAnswerNames() const { return answerNames; }
    /// The same with the target's categories that no case says anything of: what the columns of a table are of.
    std::vector<std::string> NameColumns() const;
    void ThrowIfCancelled() const { limits.ThrowIfCancelled(); }

    /// Has work done with an array's cases, as ArrowCases. Throws BadCases for those that do not fit, and
    /// CancelledError.
    template <typename Work>
    void ReadCases(const ArrowSchema& schema, const ArrowArray& cases, const Work& work) const {
        ThrowIfCancelled();
        const ArrowCases table(schema, cases, [this](std::string_view name) { return scorer.Reads(name); });
        try {
            work(table);
        } catch (const std::invalid_argument& misfit) {
            throw BadCases(misfit.what());
        }
    }
    /// The model of a parsed document, as these options want it scored.
    static LoadedModel ReadScorable(const SourceDocument& source, const ReadingOptions& options);

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
    mutable std::mutex mutex;
    mutable std::optional<CaseExplainer> explainer;
};

}  // namespace nbscore

/// What the C interface hands out. What goes on after it is closed shares the model.
struct nbscore_model {
    std::shared_ptr<const nbscore::OpenModel> open;
};
