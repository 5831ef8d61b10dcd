#pragma once

#include "cli/Command.h"
#include "cli/ModelArgument.h"
#include "host/ModelVerifier.h"

namespace nbscore {

/// nbscore verify MODEL: scores the test cases that the document itself carries, and compares.
///
/// What differs is written to standard output, cell by cell, with a summary at the end.
class VerifyCommand : public Command {
public:
    explicit VerifyCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    std::string GetDocumentName() const override { return model.GetDocumentName(); }

private:
    enum class Format { Text, Json };

    VerificationSummary Verify(ScoreModel& scorable, const std::vector<VerificationSuite>& suites,
                               Console& console) const;

    ModelArgument model;
    Format format = Format::Text;
};

}  // namespace nbscore
