#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/SeededHash.h"
#include "pmml/DocumentMemory.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// Makes a tree of what it is told in document order. What it takes is counted; VeskException 12, without a place, says
/// when that is too much, and std::bad_alloc when there is no more.
class SCOREFRAMEWORK_API TreeBuilder {
public:
    /// @param limits stay with the tree.
    TreeBuilder(const Limits& limits, std::shared_ptr<DocumentMemory> documentMemory);
    /// For a tree that is made of parts of another one: has its names, and its texts need not be copied.
    explicit TreeBuilder(const DocumentTree& original);
    ~TreeBuilder();
    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;

    /// The name that is spelt so in this tree.
    Name FindOrAddName(std::string_view spelling);
    /// What the tree that is being built calls a name.
    std::string_view GetSpelling(Name name) const { return tree->GetSpelling(name); }

    void BeginElement(Name name, std::uint64_t line, std::uint64_t column);
    /// Of the element that was begun last, before anything in it. The value is copied.
    void AddAttribute(Name name, std::string_view value);
    /// The same of a value that the original holds.
    void AddKeptAttribute(Name name, std::string_view value);
    /// Text that follows text becomes one with it.
    void AddText(std::string_view text);
    void EndElement();

    /// For a tree of a part of a document.
    void SetPathOfRoot(std::string path) { tree->pathOfRoot = std::move(path); }

    ParsedDocument Finish();

private:
    void AddNode(Name name, std::uint64_t line, std::uint64_t column);
    void FlushText();
    std::string_view Keep(std::string_view text);
    void Take(std::uint64_t bytes);

    std::unique_ptr<DocumentTree> tree;
    std::shared_ptr<DocumentMemory> memory;
    SeededMap<std::string_view, Name> numbers;
    std::uint32_t openNode = DocumentTree::noParent;
    std::string pendingText;
    char* nextByte = nullptr;
    std::size_t bytesLeft = 0;
};

}  // namespace nbscore
