#include "framework/xml/ElementPlaces.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace nbscore {
namespace {

/// The tables of all documents that there are. They do not hang on the documents as user data, because a document that
/// has any looks at each of its nodes when it is released.
struct Tables {
    std::mutex mutex;
    std::unordered_map<const xercesc::DOMDocument*, std::unique_ptr<ElementPlaces>> byDocument;

    static Tables& Get() {
        static Tables tables;
        return tables;
    }
};

std::uint32_t Saturated(std::uint64_t number) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(number, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

void ElementPlaces::Add(std::uint64_t line, std::uint64_t column) {
    marks.push_back({Saturated(line), Saturated(column)});
}

ElementPlaces::Mark ElementPlaces::Get(std::size_t ordinal) const {
    return ordinal < marks.size() ? marks[ordinal] : Mark{};
}

void ElementPlaces::Attach(const xercesc::DOMDocument* document, std::unique_ptr<ElementPlaces> places) {
    Tables& tables = Tables::Get();
    const std::lock_guard lock(tables.mutex);
    tables.byDocument.insert_or_assign(document, std::move(places));
}

void ElementPlaces::Detach(const xercesc::DOMDocument* document) {
    Tables& tables = Tables::Get();
    const std::lock_guard lock(tables.mutex);
    tables.byDocument.erase(document);
}

const ElementPlaces* ElementPlaces::Find(const xercesc::DOMDocument* document) {
    Tables& tables = Tables::Get();
    const std::lock_guard lock(tables.mutex);
    const auto found = tables.byDocument.find(document);
    return found == tables.byDocument.end() ? nullptr : found->second.get();
}

}  // namespace nbscore
