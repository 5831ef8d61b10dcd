#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "count/TableCounter.h"
#include "framework/SeededHash.h"
#include "table/CellMemory.h"

namespace nbscore {

/// Numbers the categories that rows are counted under, as they come: each thread in its own order.
class CategoryCoder {
public:
    /// More categories than that would make a table of counts that nobody can use.
    static constexpr std::size_t mostCategories = 10'000;

    /// @param subModel empty without sub-models. Neither text is empty otherwise.
    std::uint32_t FindOrAdd(std::string_view subModel, std::string_view category) {
        return FindOrAddPair(subModels.FindOrAdd(subModel), categories.FindOrAdd(category), subModel, category);
    }
    /// The same, faster, of cells of a table, behind which there are bytes to read (CellMemory).
    std::uint32_t FindOrAddCells(std::string_view subModel, std::string_view category) {
        return FindOrAddPair(subModels.FindOrAddCell(subModel), categories.FindOrAddCell(category), subModel, category);
    }

    /// By number.
    const std::vector<CountedCategory>& GetNames() const { return names; }
    std::size_t Count() const { return names.size(); }

private:
    std::uint32_t FindOrAddPair(std::uint32_t subModelCode, std::uint32_t categoryCode, std::string_view subModel,
                                std::string_view category) {
        if (subModelCode >= codes.size()) codes.resize(subModelCode + 1);
        std::vector<std::uint32_t>& ofSubModel = codes[subModelCode];
        if (categoryCode >= ofSubModel.size()) ofSubModel.resize(categoryCode + 1, noCategory);
        if (ofSubModel[categoryCode] == noCategory) {
            ofSubModel[categoryCode] = static_cast<std::uint32_t>(names.size());
            names.push_back({std::string(subModel), std::string(category)});
        }
        return ofSubModel[categoryCode];
    }

    /// The numbers of texts, the latest ones at hand.
    class TextCodes {
    public:
        std::uint32_t FindOrAdd(std::string_view text) {
            if (text.empty()) return 0;
            if (const auto known = codes.find(text); known != codes.end()) return known->second;
            return codes.emplace(text, static_cast<std::uint32_t>(codes.size()) + 1).first->second;
        }
        std::uint32_t FindOrAddCell(std::string_view text) {
            if (text.empty()) return 0;
            if (const FactorRow known = memory.Find(text); known != notKept) return known;
            const std::uint32_t code = FindOrAdd(text);
            memory.Keep(text, code);
            return code;
        }

    private:
        CellMemory memory;
        SeededMap<std::string, std::uint32_t> codes;
    };

    TextCodes subModels;
    TextCodes categories;
    /// By the numbers of sub-model and category.
    std::vector<std::vector<std::uint32_t>> codes;
    std::vector<CountedCategory> names;
};

}  // namespace nbscore
