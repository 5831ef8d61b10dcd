#include "transform/functions/PatternStore.h"

#include "pmml/Refusal.h"

namespace nbscore {
namespace {

/// Compiling takes time in proportion to the length: these are ten seconds at worst.
constexpr std::size_t greatestLength = 100'000;

constexpr std::size_t greatestMemory = std::size_t{1} << 28;
constexpr std::size_t memoryOfLarge = std::size_t{1} << 20;
constexpr std::size_t memoryOfSmall = std::size_t{1} << 18;
/// Whatever is compiled to no more instructions is as fast with little memory.
constexpr std::size_t sizeOfSmall = 300;

VeskException TooMuch(Element element, const std::string& limit) {
    return RefusalAt(element, VeskException::InconsistentDocument,
                     "The regular expressions of the document are together " + limit + ".");
}

}  // namespace

std::shared_ptr<const RegularExpression> PatternStore::Compile(const std::string& pattern, Element element) {
    std::shared_ptr<const RegularExpression>& stored = compiled[pattern];
    if (stored) return stored;
    length += pattern.size();
    if (length > greatestLength) throw TooMuch(element, "longer than 100,000 bytes");
    auto expression = std::make_shared<const RegularExpression>(pattern, memoryOfLarge);
    const bool isSmall = expression->IsUsable() && expression->Size() <= sizeOfSmall;
    if (isSmall) expression = std::make_shared<const RegularExpression>(pattern, memoryOfSmall);
    memory += isSmall ? memoryOfSmall : memoryOfLarge;
    if (memory > greatestMemory) throw TooMuch(element, "more than 256 megabytes of memory could hold");
    stored = std::move(expression);
    return stored;
}

}  // namespace nbscore
