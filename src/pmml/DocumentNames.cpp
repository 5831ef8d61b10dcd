#include "pmml/DocumentNames.h"

#include <xercesc/util/XMLString.hpp>

#include <limits>
#include <string_view>

#include "pmml/DocumentLimits.h"
#include "pmml/RefusalTable.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

bool IsPmml(const XMLCh* boundTo) {
    constexpr std::string_view pmmlNamespace = "http://www.dmg.org/PMML-";
    return Utf8Of(boundTo).starts_with(pmmlNamespace);
}

}  // namespace

bool ElementNameTable::Add(const XMLCh* name) {
    // The library's table grows when three quarters of it would be exceeded.
    if (hashes.size() >= namesByPlace.size() * 3 / 4) Grow();
    // The library's hash before it is fitted to a table.
    hashes.push_back(xercesc::XMLString::hash(name, std::numeric_limits<XMLSize_t>::max()));
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

Name DocumentNames::Find(const XMLCh* spelling) {
    utf8.clear();
    const std::size_t size = xercesc::XMLString::stringLen(spelling);
    AppendUtf8(utf8, spelling, size);
    if (size > DocumentLimits::longestName) {
        throw MakeRefusal(Refusal::NameTooLong, {ExcerptOf(utf8), std::to_string(DocumentLimits::longestName)});
    }
    const Name name = builder.FindOrAddName(utf8);
    const auto number = static_cast<std::size_t>(name);
    if (number >= isUsed.size()) isUsed.resize(2 * number + 1);
    if (!isUsed[number]) Count(size);
    isUsed[number] = true;
    return name;
}

Name DocumentNames::FindOfElement(const xercesc::XMLElementDecl& declaration) {
    const XMLSize_t number = declaration.getId();
    if (number >= namesByNumber.size()) namesByNumber.resize(2 * number + 1, Name::none);
    Name& known = namesByNumber[number];
    if (known != Name::none) return known;
    known = Find(declaration.getFullName());
    if (table.Add(declaration.getFullName())) return known;
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

Name PmmlPrefix::NameOf(Name name, int depth, const Attributes& attributes, XMLSize_t count) {
    if (depth == 1) FindPrefix(name, attributes, count);
    if (prefix.empty() || foreignDepth != 0) return name;
    if (const XMLCh* const boundTo = FindBinding(attributes, count); boundTo != nullptr && !IsPmml(boundTo)) {
        foreignDepth = depth;
        return name;
    }
    const std::string_view spelling = builder.GetSpelling(name);
    return spelling.starts_with(prefix) ? builder.FindOrAddName(spelling.substr(prefix.size())) : name;
}

void PmmlPrefix::EndElement(int depth) {
    if (foreignDepth == depth) foreignDepth = 0;
}

void PmmlPrefix::FindPrefix(Name root, const Attributes& attributes, XMLSize_t count) {
    const std::string_view spelling = builder.GetSpelling(root);
    prefix = spelling.substr(0, spelling.size() - WithoutPrefix(spelling).size());
    if (prefix.empty()) return;
    declaration = Utf16Of("xmlns:" + prefix.substr(0, prefix.size() - 1));
    const XMLCh* const boundTo = FindBinding(attributes, count);
    if (boundTo == nullptr || !IsPmml(boundTo)) prefix.clear();
}

/// What an element binds the prefix to, for itself and all that is in it; null where it says nothing of it.
const XMLCh* PmmlPrefix::FindBinding(const Attributes& attributes, XMLSize_t count) const {
    for (XMLSize_t i = 0; i < count; ++i) {
        const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
        if (xercesc::XMLString::equals(attribute.getQName(), declaration.c_str())) return attribute.getValue();
    }
    return nullptr;
}

}  // namespace nbscore
