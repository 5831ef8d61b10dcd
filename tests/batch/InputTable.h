#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "framework/BaseCaseRecord.h"

/// @file
/// Cases as tests make them up, free of any shape that a scorer reads.

namespace nbscore::test {

/// What a case holds for an input: nothing, a number or a text.
using CaseValue = std::variant<std::monostate, double, std::string>;

/// The values of each input, one for each case. Those of one input are all numbers or all texts, but where there is
/// none.
struct InputTable {
    std::size_t cases = 0;
    std::vector<std::string> names;
    std::vector<std::vector<CaseValue>> columns;
};

/// A case of a table, found by name.
class RecordOfTable : public BaseCaseRecord {
public:
    explicit RecordOfTable(const InputTable& inputTable) : BaseCaseRecord(inputTable.names), table(inputTable) {}

    bool IsIndexed() const override { return false; }

    void GoTo(std::size_t entry) {
        for (std::size_t input = 0; input < table.columns.size(); ++input) {
            const CaseValue& value = table.columns[input][entry];
            const int position = static_cast<int>(input);
            SetAbsent(position);
            if (const auto* number = std::get_if<double>(&value)) SetNumber(position, *number);
            if (const auto* text = std::get_if<std::string>(&value)) SetText(position, *text);
        }
    }

private:
    const InputTable& table;
};

}  // namespace nbscore::test
