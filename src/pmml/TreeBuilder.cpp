#include "pmml/TreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace nbscore {
namespace {

/// Longer texts get a piece of memory of their own.
constexpr std::size_t bytesPerTextBlock = 32768;
constexpr std::size_t longestSharedText = 1024;
/// Of a name beside its text: the place in the list and in the map that it is found by.
constexpr std::uint64_t bytesPerName = 96;

/// Numbers beyond 32 bits are held at the limit.
std::uint32_t Saturated(std::uint64_t number) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(number, std::numeric_limits<std::uint32_t>::max()));
}

template <typename Item>
bool HasMostItems(const Blocks<Item>& items) {
    return items.GetSize() == std::numeric_limits<std::uint32_t>::max() - 1;
}

}  // namespace

TreeBuilder::TreeBuilder(const Limits& limits, std::shared_ptr<DocumentMemory> documentMemory)
    : tree(new DocumentTree(limits)), memory(std::move(documentMemory)) {
    numbers.reserve(2 * knownNameCount);
    for (std::uint32_t i = static_cast<std::uint32_t>(Name::text) + 1; i < knownNameCount; ++i)
        numbers.emplace(knownNames[i], static_cast<Name>(i));
}

TreeBuilder::TreeBuilder(const DocumentTree& original)
    : TreeBuilder(original.watch.GetLimits(), std::make_shared<DocumentMemory>(original.watch.GetLimits())) {
    memory->Take(original.memory - original.bytesOfTexts);
    Take(original.bytesOfTexts);
    tree->bytesOfTexts = original.bytesOfTexts;
    tree->texts = original.texts;
    tree->ownNames = original.ownNames;
    tree->pathOfRoot = original.pathOfRoot;
    for (std::uint32_t i = 0; i < tree->ownNames.size(); ++i)
        numbers.emplace(tree->ownNames[i], static_cast<Name>(knownNameCount + i));
}

TreeBuilder::~TreeBuilder() = default;

void TreeBuilder::Take(std::uint64_t bytes) {
    memory->Take(bytes);
    tree->memory += bytes;
}

std::string_view TreeBuilder::Keep(std::string_view text) {
    if (text.empty()) return {};
    if (text.size() > bytesLeft) {
        const bool isLong = text.size() > longestSharedText;
        const std::size_t size = isLong ? text.size() : bytesPerTextBlock;
        Take(size);
        tree->bytesOfTexts += size;
        std::shared_ptr<char[]> block(new char[size]);
        tree->texts.push_back(block);
        if (isLong) {
            std::memcpy(block.get(), text.data(), text.size());
            return {block.get(), text.size()};
        }
        nextByte = block.get();
        bytesLeft = size;
    }
    char* const kept = nextByte;
    std::memcpy(kept, text.data(), text.size());
    nextByte += text.size();
    bytesLeft -= text.size();
    return {kept, text.size()};
}

Name TreeBuilder::FindOrAddName(std::string_view spelling) {
    if (const auto found = numbers.find(spelling); found != numbers.end()) return found->second;
    Take(bytesPerName);
    const auto name = static_cast<Name>(knownNameCount + tree->ownNames.size());
    tree->ownNames.push_back(Keep(spelling));
    numbers.emplace(tree->ownNames.back(), name);
    return name;
}

void TreeBuilder::AddNode(Name name, std::uint64_t line, std::uint64_t column) {
    auto& nodes = tree->nodes;
    if (nodes.IsFull()) {
        if (HasMostItems(nodes)) throw std::bad_alloc();
        Take(sizeof(DocumentTree::Node) * Blocks<DocumentTree::Node>::itemsPerBlock);
        nodes.AddBlock();
    }
    const std::uint32_t index = nodes.GetSize();
    nodes.Add({name, openNode, index + 1, tree->attributes.GetSize(), Saturated(line), Saturated(column)});
}

void TreeBuilder::BeginElement(Name name, std::uint64_t line, std::uint64_t column) {
    FlushText();
    const std::uint32_t index = tree->nodes.GetSize();
    AddNode(name, line, column);
    openNode = index;
}

void TreeBuilder::AddAttribute(Name name, std::string_view value) {
    AddKeptAttribute(name, Keep(value));
}

void TreeBuilder::AddKeptAttribute(Name name, std::string_view value) {
    auto& attributes = tree->attributes;
    if (attributes.IsFull()) {
        if (HasMostItems(attributes)) throw std::bad_alloc();
        Take(sizeof(DocumentTree::AttributeNode) * Blocks<DocumentTree::AttributeNode>::itemsPerBlock);
        attributes.AddBlock();
    }
    attributes.Add({value.data(), static_cast<std::uint32_t>(value.size()), name});
}

void TreeBuilder::AddText(std::string_view text) {
    if (pendingText.capacity() - pendingText.size() < text.size()) {
        memory->RequireRoom(2 * (pendingText.size() + text.size()));
    }
    pendingText += text;
}

void TreeBuilder::FlushText() {
    if (pendingText.empty()) return;
    const DocumentTree::Node& parent = tree->nodes[openNode];
    AddNode(Name::text, parent.line, parent.column);
    AddAttribute(Name::text, pendingText);
    pendingText.clear();
    if (pendingText.capacity() > bytesPerTextBlock) pendingText = std::string();
}

void TreeBuilder::EndElement() {
    FlushText();
    DocumentTree::Node& ended = tree->nodes[openNode];
    ended.end = tree->nodes.GetSize();
    openNode = ended.parent;
}

ParsedDocument TreeBuilder::Finish() {
    AddNode(Name::none, 0, 0);
    return std::move(tree);
}

}  // namespace nbscore
