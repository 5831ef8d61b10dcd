#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/BaseDictVar.h"
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
    std::unique_ptr<BaseDictVar> variable;
    DeclaredValidity validity;
    FunctionTreeImp function;
    /// Whether its truth values are stored in one spelling, however the expression spells them (AsTruthText).
    bool hasTruthTexts = false;
    /// How deep its expression nests, including the functions that it calls.
    std::uint32_t levels = 0;
    /// Where in DerivedFields::readings its own begin: first its dependencies, then its inputs.
    std::uint32_t firstReading = 0;
    std::uint32_t dependencyCount = 0;
    /// How many of its dependencies are read in every case. The others stand in arguments that are not always
    /// evaluated.
    std::uint32_t alwaysNeeded = 0;
    std::uint32_t inputCount = 0;
};

/// One data field that some derived field reads. The variable is a copy of the data dictionary's, so that a
/// document's derived fields own all that they need.
struct InputField {
    std::string name;
    std::unique_ptr<const ScoreDictVar> variable;
    DeclaredValidity validity;
};

/// Finds derived fields by their names. A document may have very many: so this keeps eight bytes of a field, its
/// position and a part of its name's hash, in a table of about twice the room.
class DerivedFieldPositions {
public:
    DerivedFieldPositions() = default;
    /// @param fieldCount how many may be added.
    explicit DerivedFieldPositions(std::size_t fieldCount);

    /// The position of the field of this name.
    std::optional<std::uint32_t> Find(std::string_view name, const std::vector<DerivedField>& fields) const;
    /// @param position of the field that this is the name of; no other field has it.
    void Add(std::string_view name, std::uint32_t position);

private:
    struct Slot {
        static constexpr std::uint32_t noPosition = 0xFFFFFFFF;

        std::uint32_t hash = 0;
        std::uint32_t position = noPosition;

        bool IsFree() const { return position == noPosition; }
    };

    static std::uint32_t HashOf(std::string_view name);
    std::size_t PlaceOf(std::uint32_t hash) const { return hash & (slots.size() - 1); }
    std::size_t PlaceBehind(std::size_t place) const { return (place + 1) & (slots.size() - 1); }

    /// A power of two, at least half of which is free. What does not fit where its hash says stands behind.
    std::vector<Slot> slots;
};

/// Everything that is known about a document's derived fields once it is read. It does not change after that.
struct DerivedFields {
    /// In document order.
    std::vector<DerivedField> fields;
    DerivedFieldPositions positions;
    /// What the fields read, field by field: positions of derived fields, of which those that are read in every case
    /// come first, and of inputs; each once.
    std::vector<std::uint32_t> readings;
    std::vector<InputField> inputs;
    UserFunctions functions;
    /// The expressions of the fields for people; empty where none were wanted.
    std::vector<std::string> texts;
    /// The functions for people; empty where none were wanted.
    std::vector<std::string> textsOfFunctions;
    /// Those of the document's reader. Computing the fields asks them whether to stop.
    Limits limits;

    std::optional<std::uint32_t> PositionOf(std::string_view name) const { return positions.Find(name, fields); }
    /// The field of this name, null where there is none.
    const DerivedField* Find(std::string_view name) const {
        const auto position = PositionOf(name);
        return position ? &fields[*position] : nullptr;
    }
    std::span<const std::uint32_t> DependenciesOf(const DerivedField& field) const {
        return {readings.data() + field.firstReading, field.dependencyCount};
    }
    std::span<const std::uint32_t> InputsOf(const DerivedField& field) const {
        return {readings.data() + field.firstReading + field.dependencyCount, field.inputCount};
    }
};

}  // namespace nbscore
