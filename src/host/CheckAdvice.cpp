#include "host/CheckAdvice.h"

#include "framework/VeskException.h"
#include "host/AdviceTable.h"
#include "host/FunctionSuggestion.h"

namespace nbscore {

std::string AdviceFor(int code, std::string_view message, const DocumentPlace& place) {
    if (code == VeskException::UnsupportedExpression && message.starts_with("The function ")) {
        std::string suggestion = SuggestFunction(message);
        if (!suggestion.empty()) return suggestion;
    }
    const Advice* const advice = FindAdvice(code, message, place);
    if (advice != nullptr) return std::string(advice->text);
    return "Mend the document at this place; docs/documents.md says what it may hold.";
}

}  // namespace nbscore
