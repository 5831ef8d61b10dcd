#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

#include "pmml/DocumentProbe.h"

namespace {

using Places = std::vector<std::string>;

/// The places of all elements, in document order.
Places PlacesOf(const std::string& text) {
    const auto tree = nbscore::test::TreeOf(text);
    Places places = {PlaceText(tree->GetRoot().GetPlace())};
    for (const nbscore::Element element : tree->GetRoot().GetDescendants())
        places.push_back(PlaceText(element.GetPlace()));
    return places;
}

TEST(ElementPlace, IsTheOpeningBracket_WhenTheDocumentIsOneLine) {
    EXPECT_EQ(PlacesOf("<a><b/><b><c/></b></a>"),
              (Places{"1:1 /a", "1:4 /a/b[1]", "1:8 /a/b[2]", "1:11 /a/b[2]/c[1]"}));
}

TEST(ElementPlace, IsBehindTheXmlDeclaration_WhenTheFirstElementFollowsIt) {
    EXPECT_EQ(PlacesOf("<?xml version=\"1.0\"?><a/>"), (Places{"1:22 /a"}));
    EXPECT_EQ(PlacesOf("<?xml version=\"1.0\"?>\n  <a/>"), (Places{"2:3 /a"}));
}

TEST(ElementPlace, IsFound_WhenLinesEndInCarriageReturnAndLineFeed) {
    EXPECT_EQ(PlacesOf("<?xml version='1.0'?>\r\n<a>\r\n  <b\r\n x='1'/>\r\n  <c/></a>\r\n"),
              (Places{"2:1 /a", "3:3 /a/b[1]", "5:3 /a/c[1]"}));
}

TEST(ElementPlace, IsTheStartOfTheTag_WhenTheTagSpansLines) {
    EXPECT_EQ(PlacesOf("<a\n  x='1'\n  y='2'\n><b\n/><c\n></c\n>\n</a>"),
              (Places{"1:1 /a", "4:2 /a/b[1]", "5:3 /a/c[1]"}));
}

TEST(ElementPlace, IsFound_WhenAttributesHoldLineBreaksAndBrackets) {
    EXPECT_EQ(PlacesOf("<a x='1\n2\r\n3' y='>'><b z='&#10;&lt;'/>\n<c/></a>"),
              (Places{"1:1 /a", "3:10 /a/b[1]", "4:1 /a/c[1]"}));
}

TEST(ElementPlace, IsFound_WhenCommentsSectionsAndInstructionsStandBefore) {
    EXPECT_EQ(
        PlacesOf("<!-- one\ntwo --><a><!-- <x> --><b/><![CDATA[<y>\n]]><c/><?do\nit?><d/>text &amp; more<e/></a>"),
        (Places{"2:8 /a", "2:23 /a/b[1]", "3:4 /a/c[1]", "4:5 /a/d[1]", "4:24 /a/e[1]"}));
}

TEST(ElementPlace, IsFound_WhenASectionCommentOrInstructionIsEmpty) {
    EXPECT_EQ(PlacesOf("<a><![CDATA[]]><b/><!----><c/><?x?><d/></a>"),
              (Places{"1:1 /a", "1:16 /a/b[1]", "1:27 /a/c[1]", "1:36 /a/d[1]"}));
}

TEST(ElementPlace, CountsCharacters_WhenTextIsNotAscii) {
    EXPECT_EQ(PlacesOf("<a>\xC3\xA4\xE2\x82\xAC<b/></a>"), (Places{"1:1 /a", "1:6 /a/b[1]"}));
}

TEST(ElementPlace, StartsAtColumnOne_WhenTheDocumentStartsWithAByteOrderMark) {
    EXPECT_EQ(PlacesOf("\xEF\xBB\xBF<a/>"), (Places{"1:1 /a"}));
}

TEST(ElementPlace, IsFound_WhenTextIsLongerThanTheParsersBuffers) {
    const std::string longText(300000, 'x');
    EXPECT_EQ(PlacesOf("<a>" + longText + "<b/>\n" + longText + "<c y='" + longText + "'/><d/></a>"),
              (Places{"1:1 /a", "1:300004 /a/b[1]", "2:300001 /a/c[1]", "2:600010 /a/d[1]"}));
}

TEST(ElementPlace, CountsNamesakesOnly_WhenSiblingsDiffer) {
    EXPECT_EQ(PlacesOf("<r><x/><y/><x/><x><x/></x><y/></r>"),
              (Places{"1:1 /r", "1:4 /r/x[1]", "1:8 /r/y[1]", "1:12 /r/x[2]", "1:16 /r/x[3]", "1:19 /r/x[3]/x[1]",
                      "1:27 /r/y[2]"}));
}

/// Where each '<' that opens a start tag stands, by counting characters, for documents put together from the pieces
/// below.
Places PlacesByCounting(const std::vector<std::string>& pieces) {
    Places places;
    std::size_t line = 1;
    std::size_t column = 1;
    for (const std::string& piece : pieces) {
        const bool opensElement = piece.size() > 1 && piece[0] == '<' && piece[1] >= 'a' && piece[1] <= 'z';
        if (opensElement) places.push_back(std::to_string(line) + ":" + std::to_string(column));
        for (std::size_t i = 0; i < piece.size(); ++i) {
            const bool isLineEnd = piece[i] == '\n' || (piece[i] == '\r' && piece.substr(i + 1, 1) != "\n");
            line += isLineEnd ? 1 : 0;
            column = isLineEnd ? 1 : column + (piece[i] == '\r' ? 0 : 1);
        }
    }
    return places;
}

RC_GTEST_PROP(ElementPlace, IsWhereCountingCharactersFindsIt, ()) {
    const std::vector<std::string> inner = {"<b/>",
                                            "<b x='1'/>",
                                            "<b\n\n/>",
                                            "<b x='a\nb' \r\n y='>' />",
                                            "<b x='&lt;&#10;'></b>",
                                            "<b></b\n>",
                                            "text",
                                            " ",
                                            "\n",
                                            "\r\n",
                                            "\t",
                                            "x\r\n",
                                            "&amp;",
                                            "&#60;",
                                            "<!-- <c> -->",
                                            "<!--\n-->",
                                            "<![CDATA[<d/>\n]]>",
                                            "<![CDATA[]]>",
                                            "<?pi some\n<e/> ?>",
                                            "] ",
                                            " >",
                                            "<b\t>\n<c>\n</c></b >"};
    std::vector<std::string> pieces = {
        *rc::gen::element<std::string>("", "<?xml version='1.0'?>", "<?xml version='1.0'?>\r\n", "<!--x\n-->")};
    pieces.push_back("<a>");
    for (const auto& piece : *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(inner))) {
        // The last piece holds a second start tag; it is counted as two.
        const std::size_t second = piece.find("\n<c>");
        if (second == std::string::npos) {
            pieces.push_back(piece);
        } else {
            pieces.push_back(piece.substr(0, second + 1));
            pieces.push_back(piece.substr(second + 1));
        }
    }
    pieces.push_back("</a>");
    std::string text;
    for (const std::string& piece : pieces)
        text += piece;
    Places found = PlacesOf(text);
    for (std::string& place : found)
        place.resize(place.find(' '));
    RC_ASSERT(found == PlacesByCounting(pieces));
}

}  // namespace
