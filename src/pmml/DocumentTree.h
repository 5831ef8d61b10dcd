#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/DocumentPlace.h"
#include "framework/Export.h"
#include "framework/Limits.h"
#include "pmml/Names.h"

namespace nbscore {

class DocumentTree;
class ElementRange;

/// An element of a document's tree, or none. A handle of two words, to be passed by value; it lives as long as the
/// tree. What is asked of none is answered with none, nothing or an empty text, so that steps can follow one another.
class SCOREFRAMEWORK_API Element {
public:
    struct Attribute {
        Name name;
        std::string_view value;
    };

    /// None.
    Element() = default;

    explicit operator bool() const { return tree != nullptr; }
    bool operator==(const Element&) const = default;

    inline Name GetName() const;
    bool Is(Name name) const { return GetName() == name; }
    /// The name as it is spelt.
    std::string_view GetSpelling() const;
    /// As messages have it: "<Discretize>"; of none "The document".
    std::string GetTag() const;

    Element GetParent() const;
    Element GetFirstChild() const;
    Element GetNextSibling() const;
    /// The first child of this name.
    Element GetChild(Name name) const;

    /// To be walked through with `for`; each step asks the limits that the document was read under, and may throw
    /// CancelledError. Elements only, of any name or of one.
    ElementRange GetChildren(Name name = Name::none) const;
    /// At any depth, in document order; the element itself is not among them.
    ElementRange GetDescendants(Name name = Name::none) const;
    /// Children and, as handles for which IsText holds, the texts between them.
    ElementRange GetChildNodes() const;

    /// The attribute's value, in UTF-8; nothing without such an attribute.
    inline std::optional<std::string_view> GetAttribute(Name name) const;
    bool Has(Name attribute) const { return GetAttribute(attribute).has_value(); }
    std::string_view GetAttributeOr(Name name, std::string_view absent) const {
        return GetAttribute(name).value_or(absent);
    }
    /// All, in the order of the document.
    std::size_t CountAttributes() const;
    Attribute GetAttributeAt(std::size_t position) const;

    bool IsText() const { return GetName() == Name::text; }
    /// Of a handle for which IsText holds.
    std::string_view GetText() const;
    /// All text that stands directly in the element, put together.
    std::string GetTextInside() const;
    /// The same with the text of all elements in it.
    std::string GetWholeText() const;

    /// Whether the other element is inside this one or is this one.
    bool Holds(Element other) const;
    /// Whether two elements are spelt alike: names, attributes in any order, texts and children.
    bool IsLike(Element other) const;

    /// Where the start tag begins, from 1; 0 where that is unknown.
    std::uint32_t GetLine() const;
    std::uint32_t GetColumn() const;
    /// With the path, which takes a walk along the elder siblings: see ElementPaths for many.
    DocumentPlace GetPlace() const;

    const DocumentTree& GetTree() const { return *tree; }
    /// Its number in the tree: those of elements grow in document order.
    std::uint32_t GetIndex() const { return index; }

private:
    friend class DocumentTree;
    friend class ElementPaths;
    friend class ElementRange;

    Element(const DocumentTree* itsTree, std::uint32_t itsIndex) : tree(itsTree), index(itsIndex) {}

    const DocumentTree* tree = nullptr;
    std::uint32_t index = 0;
};

/// Elements of a tree, one after the other, for `for`.
class SCOREFRAMEWORK_API ElementRange {
public:
    enum class Kind { Children, ChildrenAndTexts, Descendants };
    struct End {};

    class SCOREFRAMEWORK_API Iterator {
    public:
        Element operator*() const { return {tree, index}; }
        Iterator& operator++() {
            Step();
            FindWanted();
            return *this;
        }
        bool operator==(End /*end*/) const { return index >= end; }

    private:
        friend class ElementRange;

        Iterator(const DocumentTree* walkedTree, std::uint32_t firstIndex, std::uint32_t endIndex, Kind rangeKind,
                 Name wantedName)
            : tree(walkedTree), index(firstIndex), end(endIndex), kind(rangeKind), wanted(wantedName) {
            FindWanted();
        }
        inline void Step();
        void FindWanted() {
            while (index < end && !IsWanted())
                Step();
        }
        inline bool IsWanted() const;

        const DocumentTree* tree;
        std::uint32_t index;
        std::uint32_t end;
        Kind kind;
        Name wanted;
    };

    /// @param wantedName none for elements of any name.
    ElementRange(Element parent, Kind rangeKind, Name wantedName = Name::none)
        : top(parent), kind(rangeKind), wanted(wantedName) {}

    // Named as the language wants them.
    Iterator begin() const;
    static End end() { return {}; }

    bool IsEmpty() const { return begin() == end(); }
    /// All at once.
    std::vector<Element> List() const;

private:
    Element top;
    Kind kind;
    Name wanted;
};

/// Items in blocks: grows without a second copy of everything.
template <typename Item>
class Blocks {
public:
    static constexpr std::uint32_t itemsPerBlock = 1024;

    Item& operator[](std::uint32_t position) { return blocks[position / itemsPerBlock][position % itemsPerBlock]; }
    const Item& operator[](std::uint32_t position) const {
        return blocks[position / itemsPerBlock][position % itemsPerBlock];
    }
    std::uint32_t GetSize() const { return size; }
    bool IsFull() const { return size == blocks.size() * itemsPerBlock; }
    void AddBlock() { blocks.push_back(std::make_unique_for_overwrite<Item[]>(itemsPerBlock)); }
    /// There must be a block with room.
    void Add(const Item& item) { (*this)[size++] = item; }

private:
    std::vector<std::unique_ptr<Item[]>> blocks;
    std::uint32_t size = 0;
};

/// A document that was read: its elements, their attributes and texts in UTF-8, as they stood there. Comments,
/// processing instructions and the blanks between elements are left out; blanks that are all that an element holds
/// are its content. A UTF-16 text with half of a pair, which no parser gives but a host's own DOM may have, holds that
/// half as three bytes that are no valid UTF-8.
///
/// Never changes. Used by one thread at a time, because walking asks the limits.
class SCOREFRAMEWORK_API DocumentTree {
public:
    DocumentTree(const DocumentTree&) = delete;
    DocumentTree& operator=(const DocumentTree&) = delete;
    ~DocumentTree();

    /// None of a document without elements.
    Element GetRoot() const { return nodes.GetSize() > 1 ? Element(this, 0) : Element(); }
    /// Of a name in this document.
    std::string_view GetSpelling(Name name) const;
    /// The bytes that it takes.
    std::uint64_t GetMemory() const { return memory; }
    /// To be asked at every element or so by who goes through the tree without the ranges. Throws CancelledError.
    LimitWatch& GetWatch() const { return watch; }

private:
    friend class Element;
    friend class ElementRange;
    friend class ElementPaths;
    friend class TreeBuilder;

    /// Of the root, which has none.
    static constexpr std::uint32_t noParent = 0xFFFFFFFF;

    struct Node {
        Name name;
        std::uint32_t parent;
        /// Behind all that is in it.
        std::uint32_t end;
        /// Behind those of the node before; a text is the value of one attribute.
        std::uint32_t firstAttribute;
        std::uint32_t line;
        std::uint32_t column;
    };
    struct AttributeNode {
        const char* text;
        std::uint32_t size;
        Name name;

        std::string_view GetValue() const { return {text, size}; }
    };

    explicit DocumentTree(const Limits& limits) : watch(limits) {}

    /// In document order. Behind the last one stands one that ends its attributes.
    Blocks<Node> nodes;
    Blocks<AttributeNode> attributes;
    std::vector<std::string_view> ownNames;
    /// What the texts and names stand in; trees that were made of one another share it.
    std::vector<std::shared_ptr<const char[]>> texts;
    /// The path of the root where that is not its name: the tree of a part of a document.
    std::string pathOfRoot;
    std::uint64_t memory = 0;
    std::uint64_t bytesOfTexts = 0;
    mutable LimitWatch watch;
};

using ParsedDocument = std::unique_ptr<const DocumentTree>;

/// Tells the paths of elements of one tree, as in DocumentPlace. Those that are asked for in document order take the
/// time of one walk along their elder siblings together.
class SCOREFRAMEWORK_API ElementPaths {
public:
    std::string Find(Element element);

private:
    struct Counted {
        std::uint32_t index;
        std::size_t position;
    };
    std::size_t PositionAmongNamesakes(Element element);

    /// By parent and name the last one whose position was asked for.
    std::map<std::pair<std::uint32_t, Name>, Counted> lastCounted;
};

inline Name Element::GetName() const {
    return tree == nullptr ? Name::none : tree->nodes[index].name;
}
inline std::optional<std::string_view> Element::GetAttribute(Name name) const {
    if (tree == nullptr) return std::nullopt;
    const std::uint32_t end = tree->nodes[index + 1].firstAttribute;
    for (std::uint32_t i = tree->nodes[index].firstAttribute; i < end; ++i) {
        if (tree->attributes[i].name == name) return tree->attributes[i].GetValue();
    }
    return std::nullopt;
}
inline bool ElementRange::Iterator::IsWanted() const {
    const Name name = tree->nodes[index].name;
    if (wanted != Name::none) return name == wanted;
    return name != Name::text || kind == Kind::ChildrenAndTexts;
}
inline void ElementRange::Iterator::Step() {
    tree->watch.Step();
    index = kind == Kind::Descendants ? index + 1 : tree->nodes[index].end;
}

}  // namespace nbscore
