#pragma once

#include <string>

#include "cli/CaseInput.h"
#include "cli/Command.h"
#include "cli/ModelArgument.h"
#include "cli/OutputArgument.h"
#include "table/TableScorer.h"

namespace nbscore {

/// nbscore score MODEL [CASES]: scores every row of a table with a model.
///
/// The rows come as a stream from a file or from standard input, and go in the same order to standard output
/// or to a file that appears when it is whole. The document is read and found fit to score before the first
/// row is.
class ScoreCommand : public Command {
public:
    explicit ScoreCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    std::string GetDocumentName() const override { return model.GetDocumentName(); }

private:
    void DeclareTableOptions();
    void DeclareResultOptions();
    void DeclareSubModelOptions();
    void RequireSensibleOptions() const;
    void RequireOptionsOfASingleClassifier() const;
    void CheckAgainstModel(ScoreModel& scorable, Console& console) const;
    ScoringSummary Score(LoadedModel& loaded, CaseInput& input, const OpenedOutput& opened, Console& console) const;

    ModelArgument model;
    std::string cases = "-";
    OutputArgument output;
    TableScorerOptions options;
    bool quiet = false;
};

}  // namespace nbscore
