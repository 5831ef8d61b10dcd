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
#include "transform/evaluation/FunctionTreeImp.h"
#include "transform/evaluation/UserFunction.h"

namespace nbscore {

/// One derived field: the variable it declares and how its value is computed.
struct DerivedField {
    /// Borrowed from DerivedFields::variables.
    const ScoreDictVar* variable;
    DeclaredValidity validity;
    FunctionTreeImp function;
    /// Positions of the derived fields that the function reads, each once: first those that it reads in every case.
    std::vector<std::size_t> dependencies;
    /// How many these are. The others stand in arguments that are not always evaluated.
    std::size_t alwaysNeeded = 0;
    /// Positions of the data fields that the function reads, each once.
    std::vector<std::size_t> inputs;
    /// How deep its expression nests, the functions that it calls counted in.
    std::size_t levels = 0;
};

/// One data field that some derived field reads. The variable is a copy of the data dictionary's, so that a
/// document's derived fields need nothing that they do not own.
struct InputField {
    std::string name;
    std::unique_ptr<const ScoreDictVar> variable;
    DeclaredValidity validity;
};

/// Everything that is known about a document's derived fields once it is read; it does not change after that.
struct DerivedFields {
    BaseDictionary variables;
    /// In document order.
    std::vector<DerivedField> fields;
    SeededMap<std::string, std::size_t> positionsByName;
    std::vector<InputField> inputs;
    UserFunctions functions;
    /// How whoever had the document read ends computing them.
    Limits limits;
};

}  // namespace nbscore
