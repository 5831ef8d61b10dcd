#include "adapt/DocumentEdits.h"

#include <iterator>
#include <utility>

namespace nbscore {

std::optional<std::string_view> DocumentEdits::GetAttribute(Element element, Name name) const {
    if (!element) return std::nullopt;
    if (const auto edit = edits.find(element.GetIndex()); edit != edits.end()) {
        const auto set = edit->second.attributes.find(name);
        if (set != edit->second.attributes.end()) return set->second;
    }
    return element.GetAttribute(name);
}

void DocumentEdits::SetAttribute(Element element, Name name, std::string value, const std::string& change) {
    Note(element, change);
    edits[element.GetIndex()].attributes[name] = std::move(value);
}

void DocumentEdits::LeaveOut(Element element, const std::string& change) {
    Note(element, change);
    edits[element.GetIndex()].isTakenOut = true;
    if (IsLeftOut(element)) return;
    const auto inside = leftOut.upper_bound(element.GetIndex());
    auto behindIt = inside;
    while (behindIt != leftOut.end() && element.Holds(behindIt->second))
        ++behindIt;
    leftOut.erase(inside, behindIt);
    leftOut.emplace(element.GetIndex(), element);
}

bool DocumentEdits::IsLeftOut(Element element) const {
    const auto behindIt = leftOut.upper_bound(element.GetIndex());
    return behindIt != leftOut.begin() && std::prev(behindIt)->second.Holds(element);
}

void DocumentEdits::Move(Element element, Element parent, const std::string& change) {
    NoteMove(element, change);
    edits[parent.GetIndex()].moved.push_back(element);
}

void DocumentEdits::NoteMove(Element element, const std::string& change) {
    Note(element, change);
    edits[element.GetIndex()].isTakenOut = true;
}

void DocumentEdits::Note(Element element, const std::string& text, bool isMade) {
    sentences.push_back(
        {{.source = {}, .line = element.GetLine(), .column = element.GetColumn(), .elementPath = {}}, text, isMade});
}

ParsedDocument DocumentEdits::Apply() const {
    if (edits.empty() && behind.empty()) return nullptr;
    TreeBuilder builder(tree);
    Copy(tree.GetRoot(), builder, false);
    return builder.Finish();
}

/// Recursive, as deep as the document, whose depth the parser bounds.
void DocumentEdits::Copy(Element node, TreeBuilder& builder, bool isMoved) const {
    tree.GetWatch().Step();
    if (node.IsText()) return builder.AddText(node.GetText());
    const auto found = edits.find(node.GetIndex());
    const Edit* const edit = found == edits.end() ? nullptr : &found->second;
    if (edit == nullptr || !edit->isTakenOut || isMoved) {
        builder.BeginElement(node.GetName(), node.GetLine(), node.GetColumn());
        CopyAttributes(node, edit, builder);
        for (const Element child : node.GetChildNodes())
            Copy(child, builder, false);
        if (edit != nullptr) {
            for (const Element moved : edit->moved)
                Copy(moved, builder, true);
            for (const NewElement& added : edit->added)
                Add(added, node, builder);
        }
        builder.EndElement();
    }
    if (const auto added = behind.find(node.GetIndex()); added != behind.end() && !isMoved) {
        for (const NewElement& element : added->second)
            Add(element, node.GetParent(), builder);
    }
}

void DocumentEdits::CopyAttributes(Element element, const Edit* edit, TreeBuilder& builder) const {
    for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
        const Element::Attribute attribute = element.GetAttributeAt(i);
        if (edit == nullptr || !edit->attributes.contains(attribute.name)) {
            builder.AddKeptAttribute(attribute.name, attribute.value);
        }
    }
    if (edit == nullptr) return;
    for (const auto& [name, value] : edit->attributes)
        builder.AddAttribute(name, value);
}

void DocumentEdits::Add(const NewElement& element, Element around, TreeBuilder& builder) const {
    builder.BeginElement(element.name, around.GetLine(), around.GetColumn());
    for (const NewElement::Attribute& attribute : element.attributes)
        builder.AddAttribute(attribute.name, attribute.value);
    for (const Element moved : element.moved)
        Copy(moved, builder, true);
    for (const NewElement& child : element.children)
        Add(child, around, builder);
    builder.EndElement();
}

}  // namespace nbscore
