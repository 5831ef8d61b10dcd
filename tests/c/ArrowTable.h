#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "nbscore.h"

/// @file
/// Columns of the Arrow C data interface as a program might make them, and scores as it reads them.

namespace nbscore::test {

/// A struct array and the memory behind it. What it lends is borrowed from it; releasing only counts.
class ArrowTable {
public:
    explicit ArrowTable(std::int64_t numCases) : cases(numCases) {}
    ArrowTable(const ArrowTable&) = delete;
    ArrowTable& operator=(const ArrowTable&) = delete;

    /// Adds a column of this format: the bits that mark absent values, then what the format has. Each buffer is the
    /// bytes of a vector; an empty one stays null.
    template <typename... Values>
    void Add(const std::string& name, const std::string& format, const std::vector<Values>&... buffers) {
        Part& part = AddPart(name, format);
        (AddBuffer(part, buffers), ...);
        part.array.null_count = part.buffers.empty() || part.buffers.front() == nullptr ? 0 : -1;
    }
    /// Texts with offsets of Offset; nothing is an absent one.
    template <typename Offset>
    void AddTexts(const std::string& name, const std::vector<std::optional<std::string>>& texts) {
        Part& part = AddPart(name, sizeof(Offset) == 4 ? "u" : "U");
        AddTextBuffers<Offset>(part, texts);
    }
    /// Codes of a dictionary of texts. -1 is an absent value, marked by a bit.
    template <typename Code>
    void AddCodes(const std::string& name, const std::string& format, const std::vector<int>& codes,
                  const std::vector<std::optional<std::string>>& texts) {
        Part& part = AddPart(name, format);
        std::vector<Code> held;
        std::vector<std::uint8_t> bits((codes.size() + 7) / 8, 0);
        for (std::size_t i = 0; i < codes.size(); ++i) {
            held.push_back(static_cast<Code>(codes[i]));
            if (codes[i] >= 0) bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | (1U << (i % 8)));
        }
        AddBuffer(part, bits);
        AddBuffer(part, held);
        part.array.null_count = -1;
        Part& dictionary = spare.emplace_back();
        Fill(dictionary, "", "u");
        AddTextBuffers<std::int32_t>(dictionary, texts);
        Finish(dictionary, static_cast<std::int64_t>(texts.size()));
        part.schema.dictionary = &dictionary.schema;
        part.array.dictionary = &dictionary.array;
    }

    const ArrowSchema& GetSchema() {
        FinishAll();
        return whole.schema;
    }
    const ArrowArray& GetArray() {
        FinishAll();
        return whole.array;
    }
    /// What the column was made of, to be changed.
    ArrowArray& GetColumn(std::size_t column) {
        FinishAll();
        return parts[column].array;
    }
    ArrowSchema& GetColumnSchema(std::size_t column) {
        FinishAll();
        return parts[column].schema;
    }

private:
    struct Part {
        std::string name;
        std::string format;
        std::deque<std::vector<std::uint64_t>> memory;
        std::vector<const void*> buffers;
        ArrowSchema schema = {};
        ArrowArray array = {};
    };

    static void Fill(Part& part, const std::string& name, const std::string& format);
    Part& AddPart(const std::string& name, const std::string& format);
    template <typename Value>
    static void AddBuffer(Part& part, const std::vector<Value>& values) {
        if (values.empty()) return part.buffers.push_back(nullptr);
        // In words, so that it is aligned for any type.
        const std::size_t size = values.size() * sizeof(Value);
        std::vector<std::uint64_t>& words = part.memory.emplace_back(size / 8 + 1);
        const auto* const bytes = reinterpret_cast<const char*>(values.data());
        std::copy(bytes, bytes + size, reinterpret_cast<char*>(words.data()));
        part.buffers.push_back(words.data());
    }
    template <typename Offset>
    static void AddTextBuffers(Part& part, const std::vector<std::optional<std::string>>& texts) {
        std::vector<std::uint8_t> bits((texts.size() + 7) / 8, 0);
        std::vector<Offset> offsets = {0};
        std::vector<char> bytes;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (texts[i]) {
                bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | (1U << (i % 8)));
                bytes.insert(bytes.end(), texts[i]->begin(), texts[i]->end());
            }
            offsets.push_back(static_cast<Offset>(bytes.size()));
        }
        AddBuffer(part, bits);
        AddBuffer(part, offsets);
        AddBuffer(part, bytes);
        part.array.null_count = -1;
    }
    static void Finish(Part& part, std::int64_t length);
    void FinishAll();

    std::int64_t cases;
    std::deque<Part> parts;
    std::deque<Part> spare;
    std::vector<ArrowSchema*> schemas;
    std::vector<ArrowArray*> arrays;
    Part whole;
};

/// Scores as a program reads them, and released with this.
class ArrowScores {
public:
    ArrowScores() = default;
    ArrowScores(const ArrowScores&) = delete;
    ArrowScores& operator=(const ArrowScores&) = delete;
    ~ArrowScores() {
        if (schema.release != nullptr) schema.release(&schema);
        if (array.release != nullptr) array.release(&array);
    }

    std::vector<std::string> GetNames() const;
    /// The cells of a case as a table would have them: numbers by their digits, absent ones empty.
    std::vector<std::string> GetRow(std::int64_t entry) const;

    ArrowSchema schema = {};
    ArrowArray array = {};
};

}  // namespace nbscore::test
