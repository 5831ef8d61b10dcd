#include "standardtranslator/KnownContent.h"

#include <algorithm>
#include <string_view>

#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {

VeskException NotUnderstood(Element element) {
    return RefusalAt(element, Refusal::ContentNotUnderstood,
                     {ExcerptOf(element.GetTag()), ExcerptOf(element.GetParent().GetTag())});
}

VeskException ThereTwice(Element second) {
    return RefusalAt(second, Refusal::ChildTwice, {second.GetSpelling(), second.GetParent().GetSpelling()});
}

void RequireKnownAttributes(Element element, std::initializer_list<Name> known) {
    for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
        const Name name = element.GetAttributeAt(i).name;
        if (std::ranges::find(known, name) != known.end()) continue;
        const std::string_view spelling = element.GetTree().GetSpelling(name);
        if (spelling == "xmlns" || spelling.starts_with("x-") || spelling.find(':') != std::string_view::npos) continue;
        throw RefusalAt(element, Refusal::AttributeNotUnderstood, {ExcerptOf(spelling), element.GetTag()});
    }
}

void RequireKnownChildren(Element element, std::initializer_list<Name> known) {
    for (const Element child : element.GetChildren()) {
        if (!child.Is(Name::Extension) && std::ranges::find(known, child.GetName()) == known.end()) {
            throw NotUnderstood(child);
        }
    }
}

}  // namespace nbscore
