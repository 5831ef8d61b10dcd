#include "pmml/DocumentNames.h"

#include <xercesc/util/XercesDefs.hpp>

#include <limits>
#include <string>

#include "pmml/DocumentLimits.h"
#include "pmml/RefusalTable.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// The XML library's hash before it is fitted to a table.
std::size_t HashOf(std::string_view name) {
    std::size_t hash = 0;
    for (const XMLCh unit : Utf16Of(name))
        hash = hash * 38 + (hash >> 24) + unit;
    return hash % std::numeric_limits<std::size_t>::max();
}

}  // namespace

bool ElementNameTable::Add(std::string_view name) {
    // The library's table grows when three quarters of it would be exceeded.
    if (hashes.size() >= namesByPlace.size() * 3 / 4) Grow();
    hashes.push_back(HashOf(name));
    Count(hashes.back());
    return !isOverfull;
}

void ElementNameTable::Grow() {
    namesByPlace.assign(namesByPlace.size() * 2 + 1, 0);
    for (const std::size_t hash : hashes)
        Count(hash);
}

void ElementNameTable::Count(std::size_t hash) {
    if (++namesByPlace[hash % namesByPlace.size()] > mostInOnePlace) isOverfull = true;
}

Name DocumentNames::Find(std::string_view spelling) {
    const std::size_t size = CountUtf16(spelling);
    if (size > DocumentLimits::longestName) {
        throw MakeRefusal(Refusal::NameTooLong, {ExcerptOf(spelling), std::to_string(DocumentLimits::longestName)});
    }
    const Name name = builder.FindOrAddName(spelling);
    const auto number = static_cast<std::size_t>(name);
    if (number >= uses.size()) uses.resize(2 * number + 1);
    if (!uses[number].isCounted) Count(size);
    uses[number].isCounted = true;
    return name;
}

Name DocumentNames::FindOfElement(std::string_view spelling) {
    const Name name = Find(spelling);
    Uses& use = uses[static_cast<std::size_t>(name)];
    if (use.isOfElement) return name;
    use.isOfElement = true;
    if (table.Add(spelling)) return name;
    throw MakeRefusal(Refusal::NamesCollide, {std::to_string(ElementNameTable::mostInOnePlace)});
}

void DocumentNames::Count(std::size_t size) {
    length += size;
    if (++count > DocumentLimits::mostNames) {
        throw MakeRefusal(Refusal::TooManyNames, {std::to_string(DocumentLimits::mostNames)});
    }
    if (length > DocumentLimits::longestNames) {
        throw MakeRefusal(Refusal::NamesTooLong, {std::to_string(DocumentLimits::longestNames)});
    }
}

}  // namespace nbscore
