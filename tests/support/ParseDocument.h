#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "framework/ScoreModel.h"
#include "framework/ScoreTranslator.h"
#include "framework/VeskException.h"
#include "pmml/DomDocument.h"
#include "reading/PMMLTranslator.h"

/// @file
/// Reading documents in tests: the outcome, and whether a refusal is the expected one at the expected place.

namespace nbscore::test {

/// The outcome of reading a document: a model, or why it was refused.
struct ParseOutcome {
    std::unique_ptr<ScoreModel> model;
    std::optional<VeskException> refusal;
    bool thrownAsPointer = false;
};

/// Runs a step that returns a new model or throws a VeskException, by value or as a pointer.
inline ParseOutcome OutcomeOf(const std::function<ScoreModel*()>& step) {
    ParseOutcome outcome;
    try {
        outcome.model.reset(step());
    } catch (const VeskException& refusal) {
        outcome.refusal = refusal;
    } catch (VeskException* thrown) {
        const std::unique_ptr<VeskException> owner(thrown);
        outcome.refusal = *thrown;
        outcome.thrownAsPointer = true;
    }
    return outcome;
}

/// Reads a document's text through the translator's stream overload.
inline ParseOutcome ParseWith(ScoreTranslator& translator, const std::string& text,
                              const std::string& encoding = "UTF-8") {
    return OutcomeOf([&] {
        std::istringstream stream(text);
        return translator.ParseFromTree(stream, encoding);
    });
}

/// The line, from 1, at which a piece of the document begins; 0 when the document does not contain it.
inline std::uint64_t LineOf(const std::string& text, const std::string& piece) {
    const std::size_t at = text.find(piece);
    if (at == std::string::npos) return 0;
    return 1 +
           static_cast<std::uint64_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

/// What a refusal must say, and where.
struct ExpectedRefusal {
    int code = 0;
    std::string message;
    /// Begins the element at fault; it must be in the document.
    std::string at;
    std::string path;
};

inline ::testing::AssertionResult IsRefusedAs(const ParseOutcome& outcome, const std::string& text,
                                              const ExpectedRefusal& expected) {
    if (!outcome.refusal) return ::testing::AssertionFailure() << "the document was not refused";
    const VeskException& refusal = *outcome.refusal;
    const DocumentPlace& place = refusal.GetPlace();
    const std::uint64_t line = LineOf(text, expected.at);
    if (line == 0) return ::testing::AssertionFailure() << "the document does not hold " << expected.at;
    if (refusal.GetCode() == expected.code && refusal.GetMessage() == expected.message && place.line == line &&
        place.elementPath == expected.path) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "refused with " << refusal.GetCode() << " \"" << refusal.GetMessage()
                                         << "\" at line " << place.line << " " << place.elementPath << "\nexpected     "
                                         << expected.code << " \"" << expected.message << "\" at line " << line << " "
                                         << expected.path;
}

/// Reads a document as a translator does and passes it to a step: for tests of single readers.
class DocumentVisitor : public PMMLTranslator {
public:
    using Step = std::function<void(const DocumentTree&, const Transcoder&)>;

    explicit DocumentVisitor(Step visit) : PMMLTranslator("test document"), step(std::move(visit)) {}

    using PMMLTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(const DocumentTree& document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        step(document, *GetTranscoder());
        return nullptr;
    }

private:
    Step step;
};

/// The outcome has no model, only what the step threw.
inline ParseOutcome VisitDocument(const std::string& text, DocumentVisitor::Step step) {
    DocumentVisitor visitor(std::move(step));
    return ParseWith(visitor, text);
}

/// The same with a DOM of the document.
inline ParseOutcome VisitDom(const std::string& text, const std::function<void(xercesc::DOMDocument&)>& step) {
    return VisitDocument(text, [&step](const DocumentTree& document, const Transcoder&) {
        const DomDocument dom = WriteDom(document);
        step(*dom);
    });
}

}  // namespace nbscore::test
