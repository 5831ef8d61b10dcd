// What the fuzzer calls to change a document, or to combine two.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed);
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize, std::uint8_t* out,
                                                 std::size_t maxOutSize, unsigned int seed);

namespace nbscore::fuzz {
namespace {

const std::uint8_t* BytesOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

/// In a buffer of exactly this size, so that a sanitizer finds writes behind its end.
std::string Mutated(const std::string& text, std::size_t maxSize, unsigned int seed) {
    std::vector<std::uint8_t> bytes(BytesOf(text), BytesOf(text) + text.size());
    bytes.resize(maxSize);
    const std::size_t size = LLVMFuzzerCustomMutator(bytes.data(), text.size(), maxSize, seed);
    EXPECT_LE(size, maxSize);
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

TEST(XmlMutator, ChangesMostTexts_AndTheSameWayForTheSameSeed) {
    const std::string text = "<a><b p='1'>x</b><c q='2'/></a>";
    int changed = 0;
    for (unsigned int seed = 0; seed < 500; ++seed) {
        const std::string mutated = Mutated(text, 1000, seed);
        EXPECT_EQ(mutated, Mutated(text, 1000, seed));
        changed += mutated != text ? 1 : 0;
    }
    EXPECT_GT(changed, 400);
}

TEST(XmlMutator, ChangesBytes_WhereThereIsNoElement) {
    EXPECT_TRUE(Mutated("text", 100, 1).starts_with("textM"));
    EXPECT_TRUE(Mutated("", 100, 1).starts_with("M"));
}

TEST(XmlMutator, StaysWithinTheGivenSize) {
    const std::string text = "<a><b p='1'>x</b><c q='2'/></a>";
    for (const std::size_t room : {text.size(), text.size() + 1, text.size() + 20}) {
        for (unsigned int seed = 0; seed < 2000; ++seed)
            Mutated(text, room, seed);
    }
}

TEST(XmlCrossOver, CombinesTwoTexts_WithinTheGivenSize) {
    const std::string first = "<a><b/></a>";
    const std::string second = "<c/>";
    for (const std::size_t room : {std::size_t{0}, std::size_t{5}, std::size_t{100}}) {
        for (unsigned int seed = 0; seed < 200; ++seed) {
            std::vector<std::uint8_t> out(room + 1);  // a buffer of no size may be nowhere
            const std::size_t size = LLVMFuzzerCustomCrossOver(BytesOf(first), first.size(), BytesOf(second),
                                                               second.size(), out.data(), room, seed);
            ASSERT_LE(size, room);
            const std::string text(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(size));
            if (room == 100) {
                EXPECT_NE(text.find("<c/>"), std::string::npos) << text;
            }
        }
    }
}

}  // namespace
}  // namespace nbscore::fuzz
