#include "pmml/DocumentTree.h"

#include <algorithm>

#include "pmml/Utf8.h"

namespace nbscore {

std::string_view Element::GetSpelling() const {
    return tree == nullptr ? std::string_view() : tree->GetSpelling(GetName());
}

std::string Element::GetTag() const {
    return tree == nullptr ? "The document" : "<" + ExcerptOf(GetSpelling()) + ">";
}

Element Element::GetParent() const {
    if (tree == nullptr || tree->nodes[index].parent == DocumentTree::noParent) return {};
    return {tree, tree->nodes[index].parent};
}

Element Element::GetFirstChild() const {
    const ElementRange children = GetChildren();
    const auto first = children.begin();
    return first == ElementRange::end() ? Element() : *first;
}

Element Element::GetNextSibling() const {
    const Element parent = GetParent();
    if (!parent) return {};
    std::uint32_t next = tree->nodes[index].end;
    const std::uint32_t end = tree->nodes[parent.index].end;
    while (next < end && tree->nodes[next].name == Name::text)
        next = tree->nodes[next].end;
    return next < end ? Element(tree, next) : Element();
}

Element Element::GetChild(Name name) const {
    const ElementRange children = GetChildren(name);
    const auto first = children.begin();
    return first == ElementRange::end() ? Element() : *first;
}

ElementRange Element::GetChildren(Name name) const {
    return {*this, ElementRange::Kind::Children, name};
}

ElementRange Element::GetDescendants(Name name) const {
    return {*this, ElementRange::Kind::Descendants, name};
}

ElementRange Element::GetChildNodes() const {
    return {*this, ElementRange::Kind::ChildrenAndTexts};
}

std::size_t Element::CountAttributes() const {
    if (tree == nullptr || IsText()) return 0;
    return tree->nodes[index + 1].firstAttribute - tree->nodes[index].firstAttribute;
}

Element::Attribute Element::GetAttributeAt(std::size_t position) const {
    const auto& attribute = tree->attributes[tree->nodes[index].firstAttribute + static_cast<std::uint32_t>(position)];
    return {attribute.name, attribute.GetValue()};
}

std::string_view Element::GetText() const {
    return tree->attributes[tree->nodes[index].firstAttribute].GetValue();
}

std::string Element::GetTextInside() const {
    std::string text;
    for (const Element node : GetChildNodes()) {
        if (node.IsText()) text += node.GetText();
    }
    return text;
}

std::string Element::GetWholeText() const {
    std::string text;
    for (const Element node : ElementRange(*this, ElementRange::Kind::Descendants, Name::text))
        text += node.GetText();
    return text;
}

bool Element::Holds(Element other) const {
    return tree != nullptr && other.tree == tree && other.index >= index && other.index < tree->nodes[index].end;
}

namespace {

bool HaveLikeAttributes(Element left, Element right) {
    if (left.CountAttributes() != right.CountAttributes()) return false;
    for (std::size_t i = 0; i < left.CountAttributes(); ++i) {
        const Element::Attribute attribute = left.GetAttributeAt(i);
        if (right.GetAttribute(attribute.name) != attribute.value) return false;
    }
    return true;
}

}  // namespace

bool Element::IsLike(Element other) const {
    if (tree == nullptr || other.tree != tree) return false;
    const std::uint32_t count = tree->nodes[index].end - index;
    if (tree->nodes[other.index].end - other.index != count) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Element ours(tree, index + i);
        const Element theirs(tree, other.index + i);
        // Of the same extent and the same shape below, they are children of the same.
        if (ours.GetName() != theirs.GetName()) return false;
        if (tree->nodes[ours.index].end - ours.index != tree->nodes[theirs.index].end - theirs.index) return false;
        if (ours.IsText() ? ours.GetText() != theirs.GetText() : !HaveLikeAttributes(ours, theirs)) return false;
        tree->watch.Step();
    }
    return true;
}

std::uint32_t Element::GetLine() const {
    return tree == nullptr ? 0 : tree->nodes[index].line;
}

std::uint32_t Element::GetColumn() const {
    return tree == nullptr ? 0 : tree->nodes[index].column;
}

namespace {

constexpr std::size_t longestStartTag = 200;

std::string SpellStartTag(Element element) {
    std::string tag = '<' + ExcerptOf(element.GetSpelling());
    for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
        if (tag.size() > longestStartTag) return tag + " ...>";
        const auto [name, value] = element.GetAttributeAt(i);
        tag += ' ' + ExcerptOf(element.GetTree().GetSpelling(name)) + "=\"" + ExcerptOf(value) + '"';
    }
    return tag + '>';
}

/// Most elements of an input look like those of others.
std::string SpellStartTagWithInput(Element element) {
    const std::string tag = SpellStartTag(element);
    Element around = element.GetParent();
    while (around && !around.Is(Name::BayesInput))
        around = around.GetParent();
    return around ? tag + " of " + SpellStartTag(around) : tag;
}

}  // namespace

DocumentPlace Element::GetPlace() const {
    if (tree == nullptr) return {};
    return {.source = {},
            .line = GetLine(),
            .column = GetColumn(),
            .elementPath = ElementPaths().Find(*this),
            .startTag = SpellStartTagWithInput(*this)};
}

ElementRange::Iterator ElementRange::begin() const {
    if (!top) return {nullptr, 0, 0, kind, wanted};
    return {top.tree, top.index + 1, top.tree->nodes[top.index].end, kind, wanted};
}

std::vector<Element> ElementRange::List() const {
    std::vector<Element> elements;
    for (const Element element : *this)
        elements.push_back(element);
    return elements;
}

DocumentTree::~DocumentTree() = default;

std::string_view DocumentTree::GetSpelling(Name name) const {
    const auto number = static_cast<std::uint32_t>(name);
    return number < knownNameCount ? knownNames[number] : ownNames[number - knownNameCount];
}

std::string ElementPaths::Find(Element element) {
    std::vector<Element> ancestry;
    for (Element each = element; each; each = each.GetParent())
        ancestry.push_back(each);
    if (ancestry.empty()) return {};
    const Element root = ancestry.back();
    ancestry.pop_back();
    std::string path = root.GetTree().pathOfRoot;
    if (path.empty()) path = "/" + std::string(root.GetSpelling());
    for (auto step = ancestry.rbegin(); step != ancestry.rend(); ++step)
        path += "/" + std::string(step->GetSpelling()) + "[" + std::to_string(PositionAmongNamesakes(*step)) + "]";
    return path;
}

std::size_t ElementPaths::PositionAmongNamesakes(Element element) {
    const Element parent = element.GetParent();
    Counted& last = lastCounted[{parent.GetIndex(), element.GetName()}];
    const bool isBehind = last.position > 0 && last.index <= element.GetIndex();
    if (!isBehind) last = {parent.GetChild(element.GetName()).GetIndex(), 1};
    Element each(&element.GetTree(), last.index);
    while (each != element) {
        each.GetTree().GetWatch().Step();
        each = each.GetNextSibling();
        if (each.Is(element.GetName())) ++last.position;
    }
    last.index = element.GetIndex();
    return last.position;
}

}  // namespace nbscore
