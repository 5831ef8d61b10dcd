#pragma once

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/VeskException.h"
#include "pmml/TreeBuilder.h"

/// @file
/// The names in a document while it is parsed.

namespace nbscore {

/// Knows how full each place is in the table in which the XML library looks the names of elements up.
///
/// The library compares a name with all that share its place, again for every element. Names fall on places by a hash
/// that everybody can compute: real ones spread over the table, which grows with them; names that were made to meet in
/// one place make reading them take time that grows with the square of their number.
class ElementNameTable {
public:
    /// How many names may share a place. Of real ones hardly ten do.
    static constexpr std::uint32_t mostInOnePlace = 100;

    /// Adds a name that the table does not have. False when it, or the growing of the table that it makes necessary,
    /// puts too many into one place.
    bool Add(const XMLCh* name);

private:
    void Grow();
    void Count(std::size_t hash);

    std::vector<std::size_t> hashes;
    /// The library's table begins with 29 places.
    std::vector<std::uint32_t> namesByPlace = std::vector<std::uint32_t>(29);
    bool isOverfull = false;
};

/// The names that a document uses, as many and as long as they may be. Throws VeskException 3, without a place.
class DocumentNames {
public:
    explicit DocumentNames(TreeBuilder& treeBuilder) : builder(treeBuilder) {}

    Name Find(const XMLCh* spelling);
    /// Of an element; nearly all are found by the number that the library gives their name.
    Name FindOfElement(const xercesc::XMLElementDecl& declaration);

private:
    void Count(std::size_t size);

    TreeBuilder& builder;
    std::string utf8;
    /// By number.
    std::vector<bool> isUsed;
    /// By the library's number.
    std::vector<Name> namesByNumber;
    ElementNameTable table;
    std::uint64_t count = 0;
    std::uint64_t length = 0;
};

/// Takes the root element's prefix off the names of elements where the prefix stands for PMML.
class PmmlPrefix {
public:
    using Attributes = xercesc::RefVectorOf<xercesc::XMLAttr>;

    explicit PmmlPrefix(TreeBuilder& treeBuilder) : builder(treeBuilder) {}

    /// What an element that begins is called in the tree.
    /// @param depth from 1.
    Name NameOf(Name name, int depth, const Attributes& attributes, XMLSize_t count);
    void EndElement(int depth);

private:
    void FindPrefix(Name root, const Attributes& attributes, XMLSize_t count);
    const XMLCh* FindBinding(const Attributes& attributes, XMLSize_t count) const;

    TreeBuilder& builder;
    /// With its colon; empty where the root has none that stands for PMML.
    std::string prefix;
    std::basic_string<XMLCh> declaration;
    /// Of the element for which, and for all that is in it, the prefix stands for something else; 0 outside.
    int foreignDepth = 0;
};

}  // namespace nbscore
