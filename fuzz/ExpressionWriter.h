#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "transform/functions/BuiltInFunctions.h"

namespace nbscore::fuzz {

/// Writes PMML expressions as bytes decide: every sequence of bytes gives an expression, the same one each time, and
/// every kind of expression and every built-in function can occur. Most can be read; some are refused.
class ExpressionWriter {
public:
    /// @param fields the names that expressions read; at least one.
    /// @param functions functions of the document itself, all of two parameters; may be none.
    ExpressionWriter(FuzzedDataProvider& decisions, std::vector<std::string> fields,
                     std::vector<std::string> functions);

    /// The next expression. Each has a size of its own to spend, so that texts stay short.
    std::string Write();

private:
    using Kind = std::string (ExpressionWriter::*)();

    std::string WriteNested();
    std::string WriteLeaf();
    std::string WriteConstant();
    std::string WriteFieldRef();
    std::string WriteNormContinuous();
    std::string WriteNormDiscrete();
    std::string WriteDiscretize();
    std::string WriteMapValues();
    std::string WriteTextIndex();
    std::string WriteNormalization();
    std::string WriteApply();
    std::string WriteCall();
    /// @param parameter what the function's table calls the argument; "format" for a pattern to format by.
    std::string WriteArgument(std::string_view parameter);

    std::string Field();
    std::string AttributeMaybe(std::string_view name, const std::string& value);
    std::string AttributeMaybe(std::string_view name, std::initializer_list<std::string_view> words);
    /// A text of any characters that XML can hold, or a typical one.
    std::string AnyText();
    std::string AnyNumber();
    std::string AnyPattern();
    std::string AnyFormat();
    bool Maybe() { return source.ConsumeIntegral<unsigned char>() % 4 == 3; }
    std::size_t Below(std::size_t bound) { return source.ConsumeIntegralInRange<std::size_t>(0, bound - 1); }
    template <typename List>
    std::string OneOf(const List& list) {
        return std::string(std::data(list)[Below(std::size(list))]);
    }

    FuzzedDataProvider& source;
    std::vector<std::string> fieldNames;
    std::vector<std::string> functionNames;
    std::size_t elementsLeft = 0;
    std::size_t depth = 0;
};

}  // namespace nbscore::fuzz
