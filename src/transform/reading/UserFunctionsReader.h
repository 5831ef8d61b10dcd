#pragma once

#include <vector>

#include "pmml/DocumentTree.h"
#include "transform/evaluation/UserFunction.h"
#include "transform/reading/EvaluationCost.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {

/// Reads the DefineFunction elements of a document. First all are declared, then their bodies are read: so they may
/// call one another in any order, but never in a circle.
class UserFunctionsReader {
public:
    UserFunctionsReader(UserFunctions& functionsToFill, const Transcoder& textTranscoder);

    /// Throws VeskException 12 for a name that a built-in function or an earlier one has, and what
    /// ReadFunctionDeclaration throws.
    void Declare(Element element);

    /// What a call of each takes, by position. Throws VeskException 12 for a function that calls itself, directly or
    /// through others, and what ReadFunctionBody throws.
    std::vector<EvaluationCost> ReadBodies(FieldScope& scope);

private:
    UserFunctions& functions;
    const Transcoder& transcoder;
    /// By position.
    std::vector<Element> elements;
};

}  // namespace nbscore
