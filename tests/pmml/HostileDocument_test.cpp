#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <streambuf>
#include <string>
#include <vector>

#include "pmml/DocumentProbe.h"
#include "reading/BaseTranslator.h"
#include "support/CollidingName.h"

namespace {

using testing::HasSubstr;

constexpr const char* noDeclaration = "A document type declaration is not accepted.";

void ExpectDoctypeRefused(const std::string& text, std::uint64_t line) {
    const auto refusal = RefusalOfText(text);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetMessage(), noDeclaration);
    EXPECT_EQ(refusal->GetPlace().line, line);
}

TEST(HostileDocument, IsRefused_WhenItHasADocumentType) {
    ExpectDoctypeRefused("<!DOCTYPE a><a/>", 1);
    ExpectDoctypeRefused("<?xml version='1.0'?>\n<!DOCTYPE a>\n<a/>", 2);
    ExpectDoctypeRefused("<!DOCTYPE a []><a/>", 1);
    ExpectDoctypeRefused("<!DOCTYPE a SYSTEM 'http://127.0.0.1:1/a.dtd'><a/>", 1);
    ExpectDoctypeRefused("<!DOCTYPE a PUBLIC 'p' 'file:///etc/passwd' [<!ELEMENT a ANY>]><a/>", 1);
}

TEST(HostileDocument, IsRefusedBeforeItsSubsetIsRead_WhenTheSubsetIsBroken) {
    ExpectDoctypeRefused("<!DOCTYPE a [ this is no declaration <<<", 1);
}

TEST(HostileDocument, IsRefused_WhenItsEntitiesMultiply) {
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'ha'>";
    for (int i = 1; i < 40; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            text += "&e" + std::to_string(i - 1) + ";";
        text += "'>";
    }
    ExpectDoctypeRefused(text + "]><a>&e39;</a>", 1);
}

TEST(HostileDocument, IsRefused_WhenAnEntityNamesALocalFile) {
    const auto secret =
        std::filesystem::temp_directory_path() / ("nbscore_hostile_" + std::to_string(std::random_device()()));
    std::ofstream(secret) << "secret";
    ExpectDoctypeRefused("<!DOCTYPE a [<!ENTITY e SYSTEM '" + secret.string() + "'>]><a>&e;</a>", 1);
    std::filesystem::remove(secret);
}

TEST(HostileDocument, IsRefused_WhenAnEntityWasNeverDeclared) {
    const auto refusal = RefusalOfText("<a>\n&unknown;</a>");
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_THAT(refusal->GetMessage(), HasSubstr("unknown"));
    EXPECT_EQ(refusal->GetPlace().line, 2u);
}

std::string Nested(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += "<e>";
    for (int i = 0; i < depth; ++i)
        text += "</e>";
    return text;
}

TEST(HostileDocument, IsAccepted_WhenItNestsToTheLimit) {
    EXPECT_FALSE(RefusalOfText(Nested(BaseTranslator::maxElementDepth)));
}

TEST(HostileDocument, IsRefusedWithThePlaceOfTheFirstTooDeepElement_WhenItNestsDeeper) {
    const auto refusal = RefusalOfText(Nested(BaseTranslator::maxElementDepth + 1));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetMessage(), "Elements nest deeper than 1000 levels.");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), "1:3001 ");
}

TEST(HostileDocument, IsAccepted_WhenManyElementsStandSideBySide) {
    std::string text = "<a>";
    for (int i = 0; i < 5000; ++i)
        text += "<b><c/></b>";
    EXPECT_FALSE(RefusalOfText(text + "</a>"));
}

std::string ManyNames(int elements, int attributes) {
    std::string text = "<a";
    for (int i = 0; i < attributes; ++i)
        text += " x" + std::to_string(i) + "=''";
    text += ">\n";
    for (int i = 0; i < elements; ++i)
        text += "<e" + std::to_string(i) + "/>";
    return text + "</a>";
}

TEST(HostileDocument, IsRefused_WhenItUsesTooManyNames) {
    const std::string message = "The document uses more than 200000 different names for elements and attributes.";
    EXPECT_FALSE(RefusalOfText(ManyNames(198'999, 1000)));
    const auto elements = RefusalOfText(ManyNames(210'000, 0));
    ASSERT_TRUE(elements);
    EXPECT_EQ(elements->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(elements->GetMessage(), message);
    EXPECT_EQ(PlaceText(elements->GetPlace()), "2:1888881 ");  // e199999, the 200,000th name after "a" makes 200,001
}

TEST(HostileDocument, IsRefused_WhenItsNamesAreTooLongTogether) {
    std::string text = "<a>\n";
    for (int i = 10'000; i < 26'000; ++i)
        text += "<n" + std::to_string(i) + std::string(994, '-') + "/>\n";
    const auto refusal = RefusalOfText(text + "</a>");
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(
        refusal->GetMessage(),
        "The document's different names for elements and attributes have more than 16000000 characters together.");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), "16001:1 ");
}

/// Elements of these names, each on a line of its own behind the first one.
std::string Elements(const std::vector<std::string>& names) {
    std::string text = "<a>\n";
    for (const std::string& name : names)
        text += "<" + name + "/>\n";
    return text + "</a>";
}

void ExpectCollision(const std::vector<std::string>& names, const std::string& place) {
    const auto refusal = RefusalOfText(Elements(names));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetMessage(),
              "The names of elements collide: more than 100 of them fall on one place of the XML parser's table.");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), place + " ");
}

TEST(HostileDocument, IsRefused_WhenNamesHaveOneHash) {
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i)
        names.push_back(nbscore::test::CollidingName(i));
    EXPECT_FALSE(RefusalOfText(Elements(names)));
    names.push_back(nbscore::test::CollidingName(100));
    ExpectCollision(names, "102:1");
}

/// Numbered names from this number on.
std::vector<std::string> SpreadNames(int begin, int count) {
    std::vector<std::string> names;
    for (int i = begin; i < begin + count; ++i)
        names.push_back("n" + std::to_string(i));
    return names;
}

/// Those that fall on the first place of a table of so many, and are spread over other tables.
std::vector<std::string> NamesThatMeet(int count, XMLSize_t places) {
    std::vector<std::string> names;
    for (int i = 1'000'000; std::ssize(names) < count; ++i) {
        const std::string name = "n" + std::to_string(i);
        const std::basic_string<XMLCh> units(name.begin(), name.end());
        if (xercesc::XMLString::hash(units.c_str(), places) == 0) names.push_back(name);
    }
    return names;
}

std::vector<std::string> operator+(std::vector<std::string> names, const std::vector<std::string>& more) {
    names.insert(names.end(), more.begin(), more.end());
    return names;
}

/// The parser's table has 3839 places while it holds 1439 names to 2878.
TEST(HostileDocument, IsRefused_WhenNamesMeetInTheTableAsLargeAsItIs) {
    const std::vector<std::string> meeting = NamesThatMeet(150, 3839);
    EXPECT_FALSE(RefusalOfText(Elements(SpreadNames(0, 1000) + meeting)));
    EXPECT_FALSE(RefusalOfText(Elements(SpreadNames(0, 3000) + meeting)));
    const auto refusal = RefusalOfText(Elements(SpreadNames(0, 2000) + meeting));
    ASSERT_TRUE(refusal);
    EXPECT_GE(refusal->GetPlace().line, 2002U + 90);
    EXPECT_LE(refusal->GetPlace().line, 2002U + 100);
}

TEST(HostileDocument, IsRefused_WhenNamesMeetAsTheTableGrows) {
    ExpectCollision(NamesThatMeet(150, 3839) + SpreadNames(0, 2000), "1440:1");
}

std::string Attributes(int count, const std::string& name = "x", const std::string& value = "") {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += " " + name + std::to_string(i) + "='" + value + "'";
    return text;
}

void ExpectTooManyAttributes(const std::string& text, const std::string& place) {
    const auto refusal = RefusalOfText(text);
    ASSERT_TRUE(refusal) << text.substr(0, 100);
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetMessage(), "A tag has more than 1000 attributes.");
    EXPECT_EQ(PlaceText(refusal->GetPlace()), place + " ");
}

TEST(HostileDocument, IsAccepted_WhenTagsHaveAsManyAttributesAsTheyMay) {
    const std::string longest(990, 'n');
    const std::string value(2000, 'v');
    EXPECT_FALSE(RefusalOfText("<a" + Attributes(1000, longest, value) + "/>"));
    EXPECT_FALSE(RefusalOfText("<a><b" + Attributes(1000) + "/><b" + Attributes(1000, "y", value) + "/>\n<c" +
                               Attributes(1000, longest) + "><d/></c></a>"));
    EXPECT_FALSE(RefusalOfText("<a>text<!-- " + Attributes(100'000) + "--><b" + Attributes(1000) + "/></a>"));
}

TEST(HostileDocument, IsRefusedAtTheTag_WhenItHasTooManyAttributes) {
    ExpectTooManyAttributes("<a" + Attributes(1001) + "/>", "1:1");
    ExpectTooManyAttributes("<a>\n<b" + Attributes(1001) + "/></a>", "2:1");
    ExpectTooManyAttributes("<a>\n<b" + Attributes(1000) + "/><c" + Attributes(1001) + "/></a>", "2:7895");
}

/// What never ends is no tag.
TEST(HostileDocument, IsRefusedInTheTag_WhenItsAttributesGoOn) {
    ExpectTooManyAttributes("<a>\n<b" + Attributes(3000), "2:1");
    ExpectTooManyAttributes("<a>\n<b" + Attributes(1000) + "/><c" + Attributes(4000), "2:7895");
}

void ExpectTooLong(const std::string& text, const std::string& message, const std::string& place) {
    const auto refusal = RefusalOfText(text);
    ASSERT_TRUE(refusal) << message;
    EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
    EXPECT_EQ(refusal->GetMessage(), message);
    EXPECT_EQ(PlaceText(refusal->GetPlace()), place + " ");
}

TEST(HostileDocument, IsRefusedAtTheTag_WhenANameIsTooLong) {
    const std::string longest(1000, 'n');
    EXPECT_FALSE(RefusalOfText("<" + longest + " " + longest + "=''/>"));
    const std::string message = "The name \"" + std::string(80, 'n') + "...\" is longer than 1000 characters.";
    ExpectTooLong("<a>\n <n" + longest + "/></a>", message, "2:2");
    ExpectTooLong("<a>\n <b n" + longest + "=''/></a>", message, "2:2");
}

/// Whatever the parser holds as a whole until its end.
TEST(HostileDocument, IsRefusedWhereItBegins_WhenATagCommentOrSectionIsTooLong) {
    const std::string message = "A tag, comment or section is longer than 8000000 bytes.";
    const std::string brackets(8'100'000, '<');
    const std::string letters(8'100'000, 'x');
    const std::string blanks(8'100'000, ' ');
    ExpectTooLong("<a>\n<b c='" + letters + "'/></a>", message, "2:1");
    ExpectTooLong("<a>\n<" + letters + "/></a>", message, "2:1");
    ExpectTooLong("<a>\n<b></b" + blanks + "></a>", message, "2:4");
    ExpectTooLong("<a>\n<b/><!--" + brackets + "--></a>", message, "2:5");
    ExpectTooLong("<a>\n<b/><![CDATA[" + brackets + "]]></a>", message, "2:5");
    ExpectTooLong("<a>\n<b/><?p " + brackets + "?></a>", message, "2:5");
    ExpectTooLong("<a>\n<b/>&" + letters + ";</a>", message, "2:5");
    ExpectTooLong(blanks + "<a/>", message, "1:1");
    ExpectTooLong("<a/>" + blanks, message, "1:5");
    const std::string bearable(7'900'000, '<');
    EXPECT_FALSE(RefusalOfText("<a><!--" + bearable + "--><![CDATA[" + bearable + "]]></a>"));
}

TEST(HostileDocument, IsRefusedWhereItBegins_WhenATextIsTooLong) {
    const std::string message = "A text is longer than 16000000 characters.";
    const std::string longest(16'000'000, 'x');
    EXPECT_FALSE(RefusalOfText("<a>" + longest + "<b/>" + longest + "</a>"));
    ExpectTooLong("<a>\n<b>x" + longest + "</b></a>", message, "2:4");
    ExpectTooLong("<a>\n<b/>" + std::string(16'000'001, '\n') + "</a>", message, "2:5");
    const std::string half(8'000'000, 'x');
    ExpectTooLong("<a>" + half + "<!-- -->" + half + "<![CDATA[x]]></a>", message, "1:4");
}

TEST(HostileDocument, IsRefusedAtItsBeginning_WhenItsXmlDeclarationDoesNotEnd) {
    ExpectTooLong("<?xml version='1.0' " + std::string(9'000'000, ' ') + "?><a/>",
                  "The document is no well-formed XML: its XML declaration cannot be read or does not end.", "1:1");
}

/// A stream of start tags that is never held in memory.
class EndlessTags : public std::streambuf {
public:
    explicit EndlessTags(int tags) : left(tags) {}

protected:
    int_type underflow() override {
        if (left-- == 0) return traits_type::eof();
        std::copy_n("<e>", 3, tag);
        setg(tag, tag, tag + 3);
        return traits_type::to_int_type(tag[0]);
    }

private:
    int left;
    char tag[3] = {};
};

TEST(HostileDocument, IsRefused_WhenAStreamNestsAMillionLevelsDeep) {
    EndlessTags tags(1000000);
    std::istream stream(&tags);
    const auto refusal = RefusalOf([&] { nbscore::ParseDocument(stream); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetMessage(), "Elements nest deeper than 1000 levels.");
}

TEST(HostileDocument, IsRefused_WhenItIsCutAnywhere) {
    const std::string whole =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version='4.1'><!-- c --><Header x='&lt;'/>"
        "<![CDATA[ d ]]><?p i?><A>\xC3\xA4 &#10;</A></PMML>";
    ASSERT_FALSE(RefusalOfText(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto refusal = RefusalOfText(whole.substr(0, length));
        ASSERT_TRUE(refusal) << length;
        EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument) << length;
        EXPECT_TRUE(refusal->HasPlace()) << length;
        EXPECT_FALSE(refusal->GetMessage().empty()) << length;
    }
}

TEST(HostileDocument, IsRefused_WhenItIsEmptyOrNoXml) {
    const std::string zeros(1000, '\0');
    const std::string binary =
        "\x7F"
        "ELF\x02\x01\x01\xFF\xFE\x80\x81";
    for (const std::string& text :
         {std::string(), std::string("\n"), std::string("   \r\n"), zeros, binary, std::string("a,b\n1,2\n"),
          std::string("{\"a\": 1}"), std::string("<"), std::string("<a></b>"), std::string("<a/><b/>"),
          std::string("<a/>text"), std::string("<a x='1' x='2'/>"), std::string("<a x=1/>"), std::string("<a>\x01</a>"),
          std::string("<a>]]></a>"), std::string("<a>]]><b/></a>"), std::string("\xEF\xBB\xBF")}) {
        const auto refusal = RefusalOfText(text);
        ASSERT_TRUE(refusal) << text;
        EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument) << text;
        EXPECT_TRUE(refusal->HasPlace()) << text;
    }
}

TEST(HostileDocument, IsRefusedWithThePlaceOfTheFault_WhenATagIsNotClosed) {
    const auto refusal = RefusalOfText("<a>\n  <b>\n</a>");
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetPlace().line, 3u);
    EXPECT_THAT(refusal->GetMessage(), HasSubstr("b"));
    EXPECT_EQ(refusal->GetPlace().elementPath, "");
}

TEST(HostileDocument, IsRefused_WhenEveryByteOfARandomTextIsTried) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(64, static_cast<char>(byte));
        EXPECT_TRUE(RefusalOfText(text)) << byte;
        const std::string inside = "<a" + text + ">" + text + "</a>";
        const auto refusal = RefusalOfText(inside);
        EXPECT_TRUE(!refusal || refusal->GetCode() == VeskException::MalformedDocument) << byte;
    }
}

}  // namespace
