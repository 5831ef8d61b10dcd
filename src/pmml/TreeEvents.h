#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>

#include "framework/VeskException.h"
#include "pmml/RefusalTable.h"
#include "pmml/TreeBuilder.h"

/// @file
/// What the parsers of documents have in common.

namespace nbscore {

/// Line and column in a document, counted from 1, the column in units of UTF-16.
struct TextPosition {
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

/// A fault in a document's first bytes is found before the XML library counts lines.
inline VeskException RefusalAtPosition(VeskException refusal, const TextPosition& position) {
    DocumentPlace place;
    place.line = std::max<std::uint64_t>(position.line, 1);
    place.column = std::max<std::uint64_t>(position.column, 1);
    refusal.SetPlace(place);
    return refusal;
}

/// Parses; when memory runs out, all that was built must be gone before this says so, which needs some itself.
/// @param parse is given a position and leaves there, where it throws, how far it came: refusals that have no place,
///     as those for a limit, get this one.
template <typename Parse>
ParsedDocument ParseWithinMemory(const Parse& parse) {
    TextPosition reached;
    try {
        return parse(reached);
    } catch (const VeskException& refusal) {
        if (refusal.HasPlace()) throw;
        throw RefusalAtPosition(refusal, reached);
    } catch (const std::bad_alloc&) {
        throw RefusalAtPosition(MakeRefusal(Refusal::OutOfMemory), reached);
    }
}

/// Takes the root element's prefix off the names of elements where the prefix stands for PMML.
class PmmlPrefix {
public:
    explicit PmmlPrefix(TreeBuilder& treeBuilder) : builder(treeBuilder) {}

    /// What an element that begins is called in the tree.
    /// @param depth from 1.
    /// @param findAttribute gives the value of the element's attribute of a name, as std::optional<std::string>.
    template <typename FindAttribute>
    Name NameOf(Name name, int depth, const FindAttribute& findAttribute) {
        if (depth == 1) FindPrefix(name, findAttribute);
        if (prefix.empty() || foreignDepth != 0) return name;
        if (const auto boundTo = findAttribute(declaration); boundTo && !IsPmml(*boundTo)) {
            foreignDepth = depth;
            return name;
        }
        return WithoutPmmlPrefix(name);
    }
    void EndElement(int depth) {
        if (foreignDepth == depth) foreignDepth = 0;
    }

private:
    static bool IsPmml(std::string_view boundTo) {
        constexpr std::string_view pmmlNamespace = "http://www.dmg.org/PMML-";
        return boundTo.starts_with(pmmlNamespace);
    }

    template <typename FindAttribute>
    void FindPrefix(Name root, const FindAttribute& findAttribute) {
        const std::string_view spelling = builder.GetSpelling(root);
        prefix = spelling.substr(0, spelling.size() - WithoutPrefix(spelling).size());
        if (prefix.empty()) return;
        declaration = "xmlns:" + prefix.substr(0, prefix.size() - 1);
        const auto boundTo = findAttribute(declaration);
        if (!boundTo || !IsPmml(*boundTo)) prefix.clear();
    }
    Name WithoutPmmlPrefix(Name name) {
        const std::string_view spelling = builder.GetSpelling(name);
        return spelling.starts_with(prefix) ? builder.FindOrAddName(spelling.substr(prefix.size())) : name;
    }

    TreeBuilder& builder;
    /// With its colon; empty where the root has none that stands for PMML.
    std::string prefix;
    /// The attribute that binds it.
    std::string declaration;
    /// Of the element for which, and for all that is in it, the prefix stands for something else; 0 outside.
    int foreignDepth = 0;
};

/// Makes a tree of what a parser reports in document order. Blanks are content where they are all that an element
/// holds, or stand beside text or a processing instruction.
class TreeEvents {
public:
    explicit TreeEvents(TreeBuilder& treeBuilder) : builder(treeBuilder), prefix(treeBuilder) {}

    int GetDepth() const { return depth; }

    /// Its attributes go to the builder.
    /// @param findAttribute as PmmlPrefix wants it.
    template <typename FindAttribute>
    void BeginElement(Name name, const TextPosition& begin, const FindAttribute& findAttribute) {
        pendingBlanks.clear();
        isBehindStartTag = true;
        isBehindText = false;
        ++depth;
        builder.BeginElement(prefix.NameOf(name, depth, findAttribute), begin.line, begin.column);
    }
    void EndElement() {
        if (isBehindStartTag) AddPendingBlanks();
        pendingBlanks.clear();
        isBehindStartTag = false;
        isBehindText = false;
        builder.EndElement();
        prefix.EndElement(depth--);
    }
    /// A piece of text with nothing but blanks.
    void AddBlanks(std::string_view text) {
        if (isBehindText) {
            builder.AddText(text);
        } else {
            pendingBlanks += text;
        }
    }
    /// Any other piece; a section of text as it is marked by CDATA.
    void AddText(std::string_view text) {
        AddPendingBlanks();
        isBehindText = true;
        builder.AddText(text);
    }
    void AddInstruction() { AddPendingBlanks(); }

private:
    void AddPendingBlanks() {
        builder.AddText(pendingBlanks);
        pendingBlanks.clear();
    }

    TreeBuilder& builder;
    PmmlPrefix prefix;
    int depth = 0;
    /// Blanks behind a tag: whether they are content, what comes next tells.
    std::string pendingBlanks;
    bool isBehindStartTag = false;
    bool isBehindText = false;
};

}  // namespace nbscore
