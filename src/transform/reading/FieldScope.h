#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "framework/ScoreDictionary.h"
#include "framework/SeededHash.h"
#include "pmml/DocumentTree.h"
#include "pmml/RefusalTable.h"
#include "pmml/Transcoder.h"
#include "transform/evaluation/DerivedFields.h"
#include "transform/functions/RegularExpression.h"
#include "transform/reading/EvaluationPlan.h"

namespace nbscore {

/// The names that an expression can use while it is read. In a derived field: the derived fields, which are all
/// declared by then, and the data fields. In a function: only its parameters. It notes what is used, and how much work
/// that is.
class FieldScope {
public:
    /// @param dataDictionary null when there are no data fields.
    /// @param refusalOfUnknownField what a reference to no field is refused with.
    FieldScope(DerivedFields& derivedFields, const ScoreDictionary* dataDictionary, const Transcoder& textTranscoder,
               Refusal refusalOfUnknownField = Refusal::FieldUnknown);

    /// The derived field whose expression is read from now on.
    void EnterField(std::uint32_t derivedField);
    /// To be called when its expression is read: stores what it reads as its dependencies.
    void FinishField();
    /// The function whose body is read from now on.
    void EnterFunction(const UserFunction& function);

    /// The field of this name. Throws VeskException 8, with the place of the element, when there is none.
    FieldReference Resolve(Element element, std::string_view name);

    /// Finds the document's own function of this name, null when there is none, and notes a call of it.
    const UserFunction* FindFunctionToCall(const std::string& name);

    /// What was read since the scope was entered.
    WrittenCost& GetCost() { return cost; }

    const Transcoder& GetTranscoder() const { return transcoder; }
    PatternStore& GetPatterns() { return patterns; }

    /// As long as one exists, what is read is not evaluated in every case.
    class Branch {
    public:
        explicit Branch(FieldScope& enteredScope) : scope(enteredScope) { ++scope.branches; }
        ~Branch() { --scope.branches; }
        Branch(const Branch&) = delete;
        Branch& operator=(const Branch&) = delete;

    private:
        FieldScope& scope;
    };

private:
    /// What the current derived field reads.
    class Readings {
    public:
        void Begin(std::uint32_t derivedField);
        void Note(std::uint32_t position);
        bool Has(std::uint32_t position) const;
        /// Each once, in the order in which they were first noted.
        const std::vector<std::uint32_t>& GetPositions() const { return positions; }

    private:
        std::vector<std::uint32_t> positions;
        /// By position: the last derived field that was found to read it, counted from 1.
        std::vector<std::uint32_t> lastReaders;
        std::uint32_t reader = 0;
    };

    FieldReference ResolveParameter(Element element, std::string_view quotedName, const std::string& name);
    FieldReference ResolveDerived(std::uint32_t position);
    FieldReference ResolveInput(const std::string& name, const ScoreDictVar& variable);

    DerivedFields& derived;
    const ScoreDictionary* dictionary;
    const Transcoder& transcoder;
    Refusal unknownField;
    SeededMap<std::string, std::uint32_t> inputPositions;
    std::uint32_t field = 0;
    Readings inputs;
    Readings fieldsAlways;
    Readings fieldsInBranches;
    /// How many Branches exist.
    int branches = 0;
    /// Null while a derived field's expression is read.
    const UserFunction* function = nullptr;
    SeededMap<std::string, std::uint32_t> parameterPositions;
    WrittenCost cost;
    PatternStore patterns;
};

}  // namespace nbscore
