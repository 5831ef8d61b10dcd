#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "framework/BaseDictionary.h"
#include "framework/Limits.h"
#include "framework/ScoreDictVar.h"
#include "framework/SeededHash.h"
#include "transform/evaluation/DeclaredValidity.h"
#include "transform/evaluation/Expression.h"

namespace nbscore {

/// A function that the document defines (`DefineFunction`): an expression that reads its own parameters only.
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

/// One derived field: the variable it declares and how its value is computed.
struct DerivedField {
    /// Borrowed from DerivedFields::variables.
    const ScoreDictVar* variable;
    DeclaredValidity validity;
    FunctionTreeImp function;
    /// Positions of the derived fields that the function reads, each once; those that it reads in every case come
    /// first.
    std::vector<std::size_t> dependencies;
    /// How many of them are read in every case. The others stand in arguments that are not always evaluated.
    std::size_t alwaysNeeded = 0;
    /// Positions of the data fields that the function reads, each once.
    std::vector<std::size_t> inputs;
    /// How deep its expression nests, including the functions that it calls.
    std::size_t levels = 0;
    /// Whether its truth values are stored in one spelling, however the expression spells them (AsTruthText).
    bool hasTruthTexts = false;
    /// Its expression for people; empty where none was wanted.
    std::string text = {};
};

/// One data field that some derived field reads. The variable is a copy of the data dictionary's, so that a
/// document's derived fields own all that they need.
struct InputField {
    std::string name;
    std::unique_ptr<const ScoreDictVar> variable;
    DeclaredValidity validity;
};

/// Everything that is known about a document's derived fields once it is read. It does not change after that.
struct DerivedFields {
    BaseDictionary variables;
    /// In document order.
    std::vector<DerivedField> fields;
    SeededMap<std::string, std::size_t> positionsByName;
    std::vector<InputField> inputs;
    UserFunctions functions;
    /// The functions for people; empty where none were wanted.
    std::vector<std::string> textsOfFunctions;
    /// Those of the document's reader. Computing the fields asks them whether to stop.
    Limits limits;
};

}  // namespace nbscore
