#include "framework/xml/ElementNameTable.h"

#include <xercesc/util/XMLString.hpp>

#include <limits>

namespace nbscore {
namespace {

/// The library's hash before it is fitted to a table.
std::size_t HashOf(const XMLCh* name) {
    return xercesc::XMLString::hash(name, std::numeric_limits<XMLSize_t>::max());
}

}  // namespace

bool ElementNameTable::Add(const XMLCh* name) {
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
    std::uint32_t& names = namesByPlace[hash % namesByPlace.size()];
    if (++names > mostInOnePlace) isOverfull = true;
}

}  // namespace nbscore
