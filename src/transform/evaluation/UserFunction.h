#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "framework/SeededHash.h"
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/ValueKind.h"

namespace nbscore {

/// A function that the document defines (`DefineFunction`): an expression over its own parameters and nothing else.
struct UserFunction {
    struct Parameter {
        std::string name;
        /// What arguments are converted to.
        ValueKind kind = ValueKind::Any;
    };

    std::string name;
    std::vector<Parameter> parameters;
    /// What the result is converted to.
    ValueKind kind = ValueKind::Any;
    std::unique_ptr<const Expression> body;
};

/// All functions that a document defines. Calls refer to them by address, some before their bodies are read.
struct UserFunctions {
    /// In document order.
    std::vector<std::unique_ptr<UserFunction>> functions;
    SeededMap<std::string, std::size_t> positionsByName;
};

}  // namespace nbscore
