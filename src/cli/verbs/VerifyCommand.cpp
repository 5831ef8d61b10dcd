#include <algorithm>
#include <memory>

#include "cli/system/InterruptibleOutput.h"
#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/ModelArgument.h"
#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "verify/ModelVerifier.h"
#include "verify/VerificationJson.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Score the test cases that a document carries.

A PMML document can hold test cases of its own, in the element ModelVerification of its model: rows of inputs with the prediction or the probabilities that they must give. Each row is scored and each of its expected values compared. Predictions must be equal. A probability must lie between expected * (1 - precision) and expected * (1 + precision), or, where it is expected to be 0 (to within the zero threshold), within the zero threshold; the document says both for each field, else they are 1e-06 and 1e-16. Blank and absent cells are missing inputs, or are not compared.

A field with an expected value is the target, an OutputField of the model (predictedValue, probability; by the standard's rule any), or one of the columns that the score command adds. The sub-models of a self-learning document have test cases each on its own; what they can expect is the score.

Each difference is a line with the place in the document, the row, the field, and both values. The exit status is 1 if there is any. A document without test cases passes, and a note says so.)";

constexpr const char* footer = R"(Examples:

  Does the model give here what it gave where it was made?
    nbscore verify model.pmml

  The same for a program to read:
    nbscore verify model.pmml --format json)";

constexpr std::size_t maxToldColumns = 10;

std::ostream& Note(Console& console, const std::string& document) {
    return console.messages << "note: " << MakePrintable(document);
}

/// Otherwise a cell with a misspelled name would silently go unchecked.
void TellUnusedColumns(Console& console, const VerificationSuite& suite) {
    const std::size_t told = std::min(suite.unusedColumns.size(), maxToldColumns);
    for (std::size_t i = 0; i < told; ++i) {
        const UnusedColumn& unused = suite.unusedColumns[i];
        Note(console, suite.source) << ':' << unused.line << ':' << unused.column << ": the cells \""
                                    << MakePrintable(unused.name)
                                    << "\" belong to no verification field and are passed over\n";
    }
    if (suite.unusedColumns.size() == told) return;
    Note(console, suite.source) << ": so are the cells of "
                                << CountedNoun(suite.unusedColumns.size() - told, "other name") << '\n';
}

/// Writes what verifying a document finds, as it is found.
class VerificationReport {
public:
    virtual ~VerificationReport() = default;

    virtual void AddDifference(const CellDifference& difference) = 0;
    /// Called once, after all differences.
    virtual void Finish(const VerificationSummary& summary) = 0;
};

std::string Quote(const std::string& text) {
    return '"' + MakePrintable(text) + '"';
}

std::string DescribeTolerance(const CellDifference& difference) {
    if (!difference.tolerance) return "exactly";
    if (difference.tolerance->TakesForZero(*difference.expected.number)) {
        return "zero threshold " + FormatNumber(difference.tolerance->zeroThreshold);
    }
    return "precision " + FormatNumber(difference.tolerance->precision);
}

std::string DescribeExpected(const VerifiedCell& expected) {
    return expected.number ? MakePrintable(expected.text) : Quote(expected.text);
}

std::string DescribeActual(const VerifiedCell& actual) {
    if (actual.isNothing) return "nothing";
    return actual.number ? actual.text : Quote(actual.text);
}

/// For people: a line for each difference, and a summary.
class TextReport : public VerificationReport {
public:
    explicit TextReport(std::ostream& destination) : out(destination) {}

    void AddDifference(const CellDifference& difference) override {
        out << MakePrintable(difference.place.source) << ':' << difference.place.line << ':' << difference.place.column
            << ": row " << difference.row;
        if (difference.subModel) out << " of " << MakePrintable(*difference.subModel);
        out << ", " << MakePrintable(difference.field) << ": expected " << DescribeExpected(difference.expected) << " ("
            << DescribeTolerance(difference) << "), actual " << DescribeActual(difference.actual) << '\n';
    }

    void Finish(const VerificationSummary& summary) override {
        out << CountedNoun(summary.rows, "row") << ", " << CountedNoun(summary.cells, "cell") << " checked";
        if (summary.differences > 0) {
            out << ", " << summary.differences << (summary.differences == 1 ? " differs" : " differ");
        } else if (summary.cells > 0) {
            out << ", all agree";
        }
        out << '\n';
    }

private:
    std::ostream& out;
};

/// For programs.
class JsonReport : public VerificationReport {
public:
    JsonReport(std::ostream& destination, const std::string& document) : json(destination, document) {}

    void AddDifference(const CellDifference& difference) override { json.AddDifference(difference); }
    void Finish(const VerificationSummary& summary) override { json.Finish(summary); }

private:
    VerificationJson json;
};

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

VerifyCommand::VerifyCommand(CLI::App& parent) : Command(parent, "verify", description) {
    app.footer(footer);
    model.DeclareDocument(app);
    AddChoice(app, "--format", format, {{"text", Format::Text}, {"json", Format::Json}},
              "Write lines for people (text, the default) or one JSON object (json).");
    model.DeclareReading(app);
    model.DeclareDensities(app);
}

ExitStatus VerifyCommand::Run(Console& console) {
    const TimeLimit timeLimit(model.GetReading().GetMaxTime());
    if (format == Format::Json) model.HushPlugin();
    const SourceDocument source = model.Parse(console);
    const LoadedModel loaded = model.ReadScorable(source, console);
    const std::vector<VerificationSuite> suites = source.ReadVerification(model.GetReading().GetRule());
    for (const VerificationSuite& suite : suites)
        TellUnusedColumns(console, suite);

    const VerificationSummary summary = Verify(loaded.Get(), suites, console);
    if (summary.cells == 0) {
        Note(console, model.GetDocumentName())
            << (suites.empty() ? ": the document carries no test cases: nothing was checked\n"
                               : ": no test case expects anything: nothing was checked\n");
    }
    return summary.differences > 0 ? ExitStatus::CaseDataRefused : ExitStatus::Fine;
}

VerificationSummary VerifyCommand::Verify(ScoreModel& scorable, const std::vector<VerificationSuite>& suites,
                                          Console& console) const {
    SinkStream stream(console.results);
    std::unique_ptr<VerificationReport> report;
    if (format == Format::Json) {
        report = std::make_unique<JsonReport>(stream, model.GetDocumentName());
    } else {
        report = std::make_unique<TextReport>(stream);
    }
    const VerificationSummary summary = VerifyModel(
        scorable, suites, [&report](const CellDifference& difference) { report->AddDifference(difference); },
        Interrupts::ThrowIfRequested);
    report->Finish(summary);
    stream.flush();
    console.results.Commit();
    return summary;
}

}  // namespace

std::unique_ptr<Command> MakeVerifyCommand(CLI::App& parent) {
    return std::make_unique<VerifyCommand>(parent);
}

}  // namespace nbscore
