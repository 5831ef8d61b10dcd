#include "framework/xml/ElementPlaces.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <algorithm>
#include <limits>

#include "framework/xml/XmlName.h"

namespace nbscore {
namespace {

constexpr XmlName placesKey = "nbscore:elementPlaces";

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

void ElementPlaces::Attach(xercesc::DOMDocument* document, std::unique_ptr<ElementPlaces> places) {
    // Without a handler of its own: that would be looked for at every node when the document is released.
    document->setUserData(placesKey, places.get(), nullptr);
    static_cast<void>(places.release());
}

std::unique_ptr<ElementPlaces> ElementPlaces::Detach(xercesc::DOMDocument* document) {
    return std::unique_ptr<ElementPlaces>(
        static_cast<ElementPlaces*>(document->setUserData(placesKey, nullptr, nullptr)));
}

const ElementPlaces* ElementPlaces::Find(const xercesc::DOMDocument* document) {
    return static_cast<const ElementPlaces*>(document->getUserData(placesKey));
}

}  // namespace nbscore
