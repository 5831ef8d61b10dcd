#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "framework/Export.h"
#include "framework/NumericValue.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/SeededHash.h"
#include "framework/StringValue.h"

/// A case record over a fixed list of variables, made once and filled again for every case.
///
/// Filling it allocates nothing beyond what a longer text than any before needs.
class SCOREFRAMEWORK_API BaseCaseRecord : public ScoreCaseRecord {
public:
    /// What a position can hold.
    enum Content { Absent, Number, Text };

    /// A record of these variables, in this order, all absent. Of equal names the first one is found by name.
    explicit BaseCaseRecord(const std::vector<std::string>& names);
    ~BaseCaseRecord() override;

    const ScoreValue* GetValueByIndex(int index) const override;
    const ScoreValue* GetValueByName(const std::string& name) const override;
    bool IsIndexed() const override;
    int GetVarIndex(const std::string& name) const override;

    /// Set the value at a position; a position outside the record stops the process.
    void SetNumber(int index, double number);
    void SetText(int index, std::string_view text);
    void SetAbsent(int index);
    void SetAllAbsent();

    /// Absent for a position outside the record (-1 among them).
    Content GetContent(int index) const {
        // A negative index becomes one far beyond the record.
        const auto position = static_cast<std::size_t>(index);
        return position < cells.size() ? cells[position].content : Absent;
    }
    /// Of a position that holds one: the number or the text as it is, without the detour by way of a value.
    double GetNumber(int index) const { return cells[static_cast<std::size_t>(index)].number.GetNumber(); }
    const std::string& GetText(int index) const { return cells[static_cast<std::size_t>(index)].text.GetText(); }

private:
    struct Cell {
        Content content = Absent;
        NumericValue number{0.0};
        StringValue text{std::string()};
    };

    std::vector<Cell> cells;
    nbscore::SeededMap<std::string, int> positions;
};
