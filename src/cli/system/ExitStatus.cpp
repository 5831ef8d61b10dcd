#include "cli/system/ExitStatus.h"

#include <CLI/CLI.hpp>
#include <new>

#include "cli/system/TerminalText.h"
#include "framework/VeskException.h"
#include "output/HostError.h"
#include "pmml/RefusalTable.h"

namespace nbscore {

const std::vector<ExitStatusMeaning>& GetExitStatusMeanings() {
    static const std::vector<ExitStatusMeaning> meanings = {
        {"0", "All went well."},
        {"1",
         "The table of cases was refused: a row or a column is not as it must be, or, with --strict, a row has a value "
         "that the model does not know, no known value or no result. Or a document's own test cases differ from what "
         "its model gives."},
        {"2", "The command was called in a way that it does not understand."},
        {"3", "The model's document was refused, or the model in it cannot score."},
        {"4", "Input or output failed: a file that is not there, a full disk, a closed pipe."},
        {"5", "The run took more time than it was allowed."},
        {"128+N", "Signal N ended the run, such as 130 for an interrupt from the keyboard."},
    };
    return meanings;
}

int GetExitStatusOfSignal(int signal) {
    return 128 + signal;
}

namespace {

void ReportRefusal(std::ostream& messages, const VeskException& refusal, const std::string& document) {
    const DocumentPlace& place = refusal.GetPlace();
    messages << MakePrintable(place.source.empty() ? document : place.source) << ':';
    if (place.line != 0) messages << place.line << ':' << place.column << ':';
    messages << " error " << static_cast<int>(refusal.GetCode()) << ": " << MakePrintable(refusal.GetMessage()) << '\n';
    if (!place.elementPath.empty()) messages << "  at " << MakePrintable(place.elementPath) << '\n';
    if (!place.startTag.empty()) messages << "  it reads " << MakePrintable(place.startTag) << '\n';
    messages << "  do: " << MakePrintable(refusal.GetAdvice()) << '\n';
}

int Report(std::ostream& messages, std::string_view problem, ExitStatus status) {
    messages << "error: " << MakePrintable(problem) << '\n';
    return static_cast<int>(status);
}

int ReportUnguarded(std::ostream& messages, const ErrorContext& context) {
    try {
        throw;
    } catch (const CLI::ParseError& error) {
        Report(messages, error.what(), ExitStatus::Usage);
        messages << "Try '" << context.helpCall << "'.\n";
        return static_cast<int>(ExitStatus::Usage);
    } catch (const VeskException& refusal) {
        ReportRefusal(messages, refusal, context.document);
        return static_cast<int>(ExitStatus::DocumentRefused);
    } catch (const UnscorableModelError& error) {
        messages << MakePrintable(context.document) << ": error "
                 << static_cast<int>(VeskException::InconsistentDocument) << ": " << MakePrintable(error.what())
                 << "\n  do: " << MakePrintable(AdviceAgainst(error.GetKind())) << '\n';
        return static_cast<int>(ExitStatus::DocumentRefused);
    } catch (const CaseDataError& error) {
        return Report(messages, error.what(), ExitStatus::CaseDataRefused);
    } catch (const InterruptedError& interrupt) {
        messages << "interrupted\n";
        return GetExitStatusOfSignal(interrupt.GetSignal());
    } catch (const TimeLimitError& error) {
        return Report(messages, error.what(), ExitStatus::TimeIsOver);
    } catch (const std::bad_alloc&) {
        return Report(messages, "out of memory", ExitStatus::InputOutputFailed);
    } catch (const std::exception& error) {
        return Report(messages, error.what(), ExitStatus::InputOutputFailed);
    } catch (...) {
        return Report(messages, "something unknown went wrong", ExitStatus::InputOutputFailed);
    }
}

}  // namespace

int ReportError(std::ostream& messages, const ErrorContext& context) noexcept {
    try {
        return ReportUnguarded(messages, context);
    } catch (...) {
        // No memory even for the message.
        return static_cast<int>(ExitStatus::InputOutputFailed);
    }
}

}  // namespace nbscore
