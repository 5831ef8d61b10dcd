#pragma once

#include <memory>
#include <string>

#include "framework/Transcoder.h"
#include "framework/document/DocumentTree.h"
#include "framework/transform/FieldScope.h"
#include "framework/transform/UserFunction.h"

namespace nbscore {

/// The function that a DefineFunction element declares, without its body. Throws VeskException 1 for a function without
/// parameters, 2 for a name that is absent, 12 for two parameters of one name.
std::unique_ptr<UserFunction> ReadFunctionDeclaration(Element element, const Transcoder& transcoder);

/// Its body, once all functions are declared. Throws VeskException 1 for no body or two, and what expressions throw.
std::unique_ptr<const Expression> ReadFunctionBody(Element element, FieldScope& scope);

/// How messages speak of it.
std::string FunctionForMessage(Element element);

}  // namespace nbscore
