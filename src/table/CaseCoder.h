#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/FactorRow.h"
#include "framework/DerivedFieldSources.h"
#include "framework/ScoreModel.h"
#include "table/BatchCases.h"
#include "table/CaseBinder.h"
#include "table/CaseCounts.h"

namespace nbscore {

/// The factor rows of the latest short texts of a column: most columns hold few different ones. Used by one thread.
class CellMemory {
public:
    CellMemory() : entries(std::make_unique<std::array<Entry, numEntries>>()) {}

    /// Longer texts are not remembered.
    static constexpr std::size_t longestText = 8;

    /// The factor row that was kept for the text; nothing when it is not among the latest.
    /// @param text not empty, at most longestText long, and followed by enough bytes to read that many (TableBlock).
    std::optional<FactorRow> Find(std::string_view text) const {
        const std::uint64_t packed = Pack(text);
        const Entry& entry = (*entries)[PlaceOf(packed)];
        if (entry.text != packed || entry.length != text.size()) return std::nullopt;
        return entry.row;
    }
    void Keep(std::string_view text, FactorRow row) {
        const std::uint64_t packed = Pack(text);
        (*entries)[PlaceOf(packed)] = {packed, static_cast<std::uint32_t>(text.size()), row};
    }

private:
    static constexpr std::size_t numEntries = 2048;

    /// A new entry matches no text, because texts are not empty.
    struct Entry {
        std::uint64_t text = 0;
        std::uint32_t length = 0;
        FactorRow row = missingRow;
    };

    /// Loaded whole and cut to the text, which is several times faster than to load the text alone.
    static std::uint64_t Pack(std::string_view text) {
        std::uint64_t packed = 0;
        std::memcpy(&packed, text.data(), longestText);
        const std::size_t unwantedBits = 8 * (longestText - text.size());
        if constexpr (std::endian::native == std::endian::little) return packed << unwantedBits;
        return packed >> unwantedBits;
    }
    static std::size_t PlaceOf(std::uint64_t packed) {
        return static_cast<std::size_t>((packed * 0x9E3779B97F4A7C15U) >> 53);
    }

    std::unique_ptr<std::array<Entry, numEntries>> entries;
};

/// Finds the factor rows of a table's row for each reader of a batch scorer, and counts what is unknown.
class CaseCoder {
public:
    /// @param model borrowed: derived fields are computed by it. @param scorer borrowed. The rest as for CaseBinder.
    CaseCoder(const ScoreModel& readModel, const BatchCases& batchScorer, const std::vector<std::string>& header,
              const std::string& sourceName, const CaseBinderOptions& options);

    /// @param rows room for one factor row for each reader. Throws CaseDataError as CaseBinder::Bind does.
    void Encode(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<FactorRow> rows);

    /// The number of the column that holds a field; nothing where the table has none.
    std::optional<std::size_t> FindColumn(const std::string& field) const;
    /// The value of a derived field in the row that was encoded last, as text; empty where it has none.
    std::string GetDerivedText(const std::string& field) const;

    /// Of the rows that were encoded.
    const CaseCounts& GetCounts() const { return counts; }

private:
    /// A column of the table and the readers that read it.
    struct CodedColumn {
        CaseBinder::BoundColumn bound;
        std::vector<std::size_t> readers;
        /// Only where there are few columns: each takes some memory.
        std::optional<CellMemory> memory;
    };
    /// Where the values of one of the counted fields come from, in the order of the counts.
    struct CountedField {
        std::vector<std::size_t> readers;
        /// Nothing where the table has no column for it.
        std::optional<std::size_t> column = {};
        /// Of a derived field.
        std::optional<SourceFields> sources = {};
        /// Whether, of the row that was encoded last, only the sources have values.
        bool onlySourcesHaveValues = false;
    };

    void PrepareCounts();
    void EncodeColumns(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<FactorRow> rows);
    void EncodeCell(const CodedColumn& column, std::string_view cell, std::uint64_t line,
                    std::span<FactorRow> rows) const;
    void EncodeWithDerivedFields(const ScoreCaseRecord& record, std::span<FactorRow> rows);
    const ScoreCaseRecord* ComputeDerivedFields(const ScoreCaseRecord& record) const;
    FactorRow RowOf(std::size_t reader, const ScoreValue& value) const;
    void Count(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<const FactorRow> rows);
    void CountUnknown(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<const FactorRow> rows);
    void NoteSourcesAlone(const ScoreCaseRecord& record, std::span<FactorRow> rows);
    MetValue ValueOf(const CountedField& field, const std::string& name,
                     const std::vector<std::string_view>& cells) const;

    const ScoreModel& model;
    const BatchCases& scorer;
    CaseBinder binder;
    bool readsDerivedFields;
    std::vector<CodedColumn> columns;
    /// Of the row that was encoded last, where derived fields are read: the row, and its derived fields if there are
    /// any.
    const ScoreCaseRecord* encodedCase = nullptr;
    const ScoreCaseRecord* derivedFields = nullptr;
    std::vector<CountedField> countedFields;
    CaseCounts counts;
};

}  // namespace nbscore
