#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapt/DocumentAdapter.h"
#include "pmml/DocumentTree.h"
#include "pmml/TreeBuilder.h"

namespace nbscore {

/// A new element. Its place is that of the element that it is added to.
struct NewElement {
    struct Attribute {
        Name name;
        std::string value;
    };

    Name name;
    std::vector<Attribute> attributes;
    std::vector<NewElement> children;
    /// Elements of the document that move into it.
    std::vector<Element> moved;
};

/// Changes to a document: noted one by one, each with a sentence for people, and made all at once in a new tree. Its
/// attributes are already the changed ones.
class DocumentEdits {
public:
    /// @param adaptations takes the sentences, in the order of the notes.
    DocumentEdits(const DocumentTree& original, std::vector<Adaptation>& adaptations)
        : tree(original), sentences(adaptations) {}

    std::optional<std::string_view> GetAttribute(Element element, Name name) const;
    bool Has(Element element, Name name) const { return GetAttribute(element, name).has_value(); }

    void SetAttribute(Element element, Name name, std::string value, const std::string& change);
    /// With everything in it.
    void LeaveOut(Element element, const std::string& change);
    /// Whether the element, or one that it stands in, is left out.
    bool IsLeftOut(Element element) const;
    /// Moves an element to the end of another one.
    void Move(Element element, Element parent, const std::string& change);
    /// For elements that are moved into new ones.
    void NoteMove(Element element, const std::string& change);
    void AddBehind(Element elder, NewElement element) { behind[elder.GetIndex()].push_back(std::move(element)); }
    /// At the end of the parent.
    void AddInto(Element parent, NewElement element) { edits[parent.GetIndex()].added.push_back(std::move(element)); }

    /// Notes a change that is made elsewhere.
    void Note(Element element, const std::string& change) { Note(element, change, true); }
    /// Notes what could not be changed without changing what the document means.
    void NoteWhatStays(Element element, const std::string& reason) { Note(element, reason, false); }

    /// The tree with all changes made; null where there is none.
    ParsedDocument Apply() const;

private:
    struct Edit {
        std::map<Name, std::string> attributes;
        bool isTakenOut = false;
        std::vector<Element> moved;
        std::vector<NewElement> added;
    };

    void Note(Element element, const std::string& text, bool isMade);
    void Copy(Element node, TreeBuilder& builder, bool isMoved) const;
    void CopyAttributes(Element element, const Edit* edit, TreeBuilder& builder) const;
    void Add(const NewElement& element, Element around, TreeBuilder& builder) const;

    const DocumentTree& tree;
    std::vector<Adaptation>& sentences;
    std::map<std::uint32_t, Edit> edits;
    std::map<std::uint32_t, std::vector<NewElement>> behind;
    /// What is left out, none of it inside another.
    std::map<std::uint32_t, Element> leftOut;
};

}  // namespace nbscore
