#include "batch/TextRows.h"

#include <vector>

#include "framework/NumericValue.h"

namespace nbscore {
namespace {

std::shared_ptr<const std::string> Join(std::span<const std::string* const> texts) {
    auto bytes = std::make_shared<std::string>();
    for (const std::string* text : texts)
        *bytes += *text;
    return bytes;
}

}  // namespace

TextRows::TextRows(std::span<const std::string* const> texts)
    : bytes(Join(texts)), numTexts(texts.size()), table(MakeTable(texts)) {}

ProbedTable<TextRows::Entry> TextRows::MakeTable(std::span<const std::string* const> texts) {
    std::vector<Entry> entries;
    entries.reserve(texts.size());
    std::string_view rest = *bytes;
    for (const std::string* text : texts) {
        entries.push_back({rest.substr(0, text->size()), 0, static_cast<RowNumber>(firstKnownRow + entries.size())});
        rest.remove_prefix(text->size());
    }
    return ProbedTable<Entry>(entries, [](Entry& entry, const HashSeed& seed) {
        const std::uint64_t hash = seed.Hash(entry.text);
        entry.tag = static_cast<std::uint32_t>(hash);
        return hash;
    });
}

RowNumber TextRows::RowOf(double number) const {
    return RowOf(NumericValue(number).GetString());
}

}  // namespace nbscore
