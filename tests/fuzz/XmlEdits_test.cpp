#include "fuzz/XmlEdits.h"

#include <gtest/gtest.h>

#include <set>

#include "cli/FruitDocument.h"
#include "fuzz/XmlOutline.h"

namespace nbscore::fuzz {
namespace {

/// Every start tag has an end tag of the same name in the right place.
bool IsBalanced(std::string_view text) {
    for (const ElementSpan& element : OutlineOf(text)) {
        const std::string name(element.name.In(text));
        const std::string_view closing = text.substr(element.content.end, element.whole.end - element.content.end);
        const bool isOneTag = closing.empty() && element.whole.In(text).ends_with("/>");
        if (!isOneTag && closing != "</" + name + ">") return false;
    }
    return true;
}

std::string Edited(std::string text, unsigned int number) {
    test::Randomness random(number);
    EXPECT_TRUE(EditXml(text, random));
    return text;
}

TEST(XmlEdits, ChangeNothing_WhereThereIsNoElement) {
    for (const std::string text : {"", "text", "<!-- <a/> -->"}) {
        std::string edited = text;
        test::Randomness random(1);
        EXPECT_FALSE(EditXml(edited, random));
        EXPECT_FALSE(SpliceXml(edited, "<a/>", random));
        EXPECT_EQ(edited, text);
        std::string other = "<a/>";
        EXPECT_FALSE(SpliceXml(other, text, random));
        EXPECT_EQ(other, "<a/>");
    }
}

TEST(XmlEdits, AreTheSameForTheSameSeed) {
    for (unsigned int number = 0; number < 100; ++number)
        EXPECT_EQ(Edited(test::fruitDocument, number), Edited(test::fruitDocument, number));
}

TEST(XmlEdits, LeaveElementsBalanced) {
    for (const std::string& text : {test::fruitDocument, std::string("<a>b<b p='1'></b>b<c/></a>a")}) {
        ASSERT_TRUE(IsBalanced(text));
        for (unsigned int number = 0; number < 4000; ++number) {
            const std::string edited = Edited(text, number);
            ASSERT_TRUE(IsBalanced(edited)) << number << ": " << edited;
        }
    }
}

TEST(XmlEdits, MakeAllKindsOfChanges) {
    const std::string text = "<a><b p='1'>x</b><c q='2'/></a>";
    std::set<std::string> seen;
    for (unsigned int number = 0; number < 20'000; ++number)
        seen.insert(Edited(text, number));
    for (const char* expected : {
             "<a><c q='2'/></a>",                              // dropped
             "<a><b p='1'>x</b><b p='1'>x</b><c q='2'/></a>",  // repeated
             "<a><c q='2'/><b p='1'>x</b><c q='2'/></a>",      // copied
             "<a><c q='2'/><b p='1'>x</b></a>",                // swapped
             "<a><b p='1'>x</b><b p='1'>x</b></a>",            // replaced
             "<a>x<c q='2'/></a>",                             // unwrapped
             "<a><c p='1'>x</c><c q='2'/></a>",                // renamed like another
             "<a><bM p='1'>x</bM><c q='2'/></a>",              // renamed otherwise
             "<a><b p='1'>2</b><c q='2'/></a>",                // content from elsewhere
             "<a><b p='1'>xM</b><c q='2'/></a>",               // content changed
             "<a><b>x</b><c q='2'/></a>",                      // without the attribute
             "<a><b p='1'>x</b><c p='1' q='2'/></a>",          // another's attribute
             "<a><b p='2'>x</b><c q='2'/></a>",                // another's value
             "<a><b p='1M'>x</b><c q='2'/></a>",               // value changed
             "<a><b p='NaN'>x</b><c q='2'/></a>",              // an odd value
         })
        EXPECT_TRUE(seen.contains(expected)) << expected;
}

TEST(XmlSplices, InsertAnElementOfTheOtherText) {
    const std::string text = "<a><b>x</b></a>";
    std::set<std::string> seen;
    for (unsigned int number = 0; number < 1000; ++number) {
        test::Randomness random(number);
        std::string spliced = text;
        ASSERT_TRUE(SpliceXml(spliced, "-<c><d/></c>-", random));
        EXPECT_TRUE(IsBalanced(spliced)) << spliced;
        EXPECT_NE(spliced.find("<d/>"), std::string::npos) << spliced;
        seen.insert(spliced);
    }
    for (const char* expected : {"<a><d/></a>", "<d/>", "<c><d/></c>", "<a><b>x</b><d/></a>", "<a><d/><b>x</b></a>",
                                 "<a><b><c><d/></c>x</b></a>"})
        EXPECT_TRUE(seen.contains(expected)) << expected;
}

}  // namespace
}  // namespace nbscore::fuzz
