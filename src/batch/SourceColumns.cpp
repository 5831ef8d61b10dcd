#include "batch/SourceColumns.h"

#include <cstdint>
#include <stdexcept>
#include <type_traits>
#include <variant>

#include "batch/CaseValues.h"

namespace nbscore {
namespace {

template <typename>
constexpr bool isCodes = false;
template <typename Code>
constexpr bool isCodes<CodeColumn<Code>> = true;

bool HoldsCodes(const Column& column) {
    return std::visit([](const auto& held) { return isCodes<std::decay_t<decltype(held)>>; }, column);
}

bool HoldsTruths(const Column& column) {
    return std::holds_alternative<TruthColumn>(column);
}

bool HoldsTexts(const Column& column) {
    return std::holds_alternative<TextColumn<std::int32_t>>(column) ||
           std::holds_alternative<TextColumn<std::int64_t>>(column) || std::holds_alternative<TextViewColumn>(column);
}

std::string FindProblemOfValues(const SourceColumn& source) {
    if (source.values == nullptr) return "has codes and nothing that they stand for";
    const Column& values = *source.values;
    if (HoldsCodes(values) || HoldsTruths(values) || std::holds_alternative<AbsentColumn>(values))
        return "has codes that stand for neither numbers nor texts";
    return FindProblem(values, CountEntries(values));
}

/// What the codes of an input's column stand for.
class DictionaryMaker {
public:
    const BatchScorer& scorer;
    std::size_t input;

    InputDictionary operator()(const auto&) const { throw std::invalid_argument("Codes stand for no values."); }
    template <typename Number>
    InputDictionary operator()(const NumbersOf<Number>& column) const {
        return Make<double>(column, column.values.size());
    }
    template <typename Offset>
    InputDictionary operator()(const TextColumn<Offset>& column) const {
        return Make<std::string_view>(column, column.offsets.size() - 1);
    }
    InputDictionary operator()(const TextViewColumn& column) const {
        return scorer.MakeDictionary(input, column.values, column.validity);
    }
    InputDictionary OfTruths() const {
        constexpr std::string_view texts[] = {"false", "true"};
        constexpr double numbers[] = {0.0, 1.0};
        const bool areTexts = scorer.GetInputs()[input].kind == PredictorTables::Texts;
        return areTexts ? scorer.MakeDictionary(input, texts) : scorer.MakeDictionary(input, numbers);
    }

private:
    template <typename Value, typename ValueColumn>
    InputDictionary Make(const ValueColumn& column, std::size_t size) const {
        std::vector<Value> values(size);
        for (std::size_t code = 0; code < size; ++code) {
            if (column.validity.HasValue(code)) values[code] = column.At(code);
        }
        return scorer.MakeDictionary(input, std::span<const Value>(values), column.validity);
    }
};

/// Some entries of a column that has entries.
class Slicer {
public:
    std::size_t first;
    std::size_t count;

    Column operator()(const AbsentColumn& column) const { return column; }
    template <typename Number>
    Column operator()(const NumbersOf<Number>& column) const {
        return NumbersOf<Number>{column.values.subspan(first, count), Slice(column.validity)};
    }
    template <typename Offset>
    Column operator()(const TextColumn<Offset>& column) const {
        return TextColumn<Offset>{column.bytes, column.offsets.subspan(first, count + 1), Slice(column.validity)};
    }
    Column operator()(const TextViewColumn& column) const {
        return TextViewColumn{column.values.subspan(first, count), Slice(column.validity)};
    }
    Column operator()(const TruthColumn& column) const {
        return TruthColumn{column.bits, column.offset + first, count, column.dictionary, Slice(column.validity)};
    }
    template <typename Code>
    Column operator()(const CodeColumn<Code>& column) const {
        return CodeColumn<Code>{column.codes.subspan(first, count), column.dictionary, Slice(column.validity)};
    }

private:
    Validity Slice(const Validity& validity) const { return {validity.bits, validity.offset + first}; }
};

}  // namespace

std::string FindProblemOfField(const SourceColumn& source, bool mayHoldTexts, std::size_t cases) {
    std::string problem = FindProblem(source.column, cases);
    const bool hasCodes = HoldsCodes(source.column);
    if (problem.empty() && hasCodes) problem = FindProblemOfValues(source);
    if (!problem.empty()) return problem;
    const bool hasTexts = HoldsTexts(hasCodes ? *source.values : source.column);
    return hasTexts && !mayHoldTexts ? "holds texts, and its field holds numbers" : std::string();
}

std::string FindWrongCode(const SourceColumn& source, std::size_t cases) {
    const auto find = [&](const auto& column) -> std::string {
        if constexpr (isCodes<std::decay_t<decltype(column)>>) {
            try {
                for (std::size_t entry = 0; entry < cases; ++entry)
                    FindPlace(column, entry, CountEntries(*source.values) + 1);
            } catch (const std::out_of_range& wrong) {
                return wrong.what();
            }
        }
        return {};
    };
    return std::visit(find, source.column);
}

Column AsInput(const SourceColumn& source, const BatchScorer& scorer, std::size_t input,
               std::vector<InputDictionary>& dictionaries) {
    Column column = source.column;
    const DictionaryMaker maker{scorer, input};
    const auto give = [&](auto& held) {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (isCodes<Held>) {
            held.dictionary = &dictionaries.emplace_back(std::visit(maker, *source.values));
        } else if constexpr (std::is_same_v<Held, TruthColumn>) {
            held.dictionary = &dictionaries.emplace_back(maker.OfTruths());
        }
    };
    std::visit(give, column);
    return column;
}

Column SliceOf(const Column& column, std::size_t first, std::size_t count) {
    return std::visit(Slicer{first, count}, column);
}

}  // namespace nbscore
