#include <gtest/gtest.h>
#include <xercesc/dom/DOMNodeList.hpp>
#include <xercesc/util/XMLString.hpp>

#include <string>

#include "pmml/DocumentProbe.h"
#include "support/XmlName.h"

namespace {

using nbscore::XmlName;
using xercesc::DOMDocument;

constexpr const char* document =
    "<root x='1' empty=''>\n"
    "  text <!-- note --> <one a='b'/><?pi?>\n"
    "  <two/><one a='c'><two/></one>\n"
    "</root>";

std::string Name(const xercesc::DOMNode* node) {
    return node ? Transcoder("").transcodeTo(node->getNodeName()) : "none";
}

TEST(BaseTranslator, StepsFromElementToElement_WhenOtherNodesStandBetween) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* root = BaseTranslator::GetFirstChildElt(&dom);
        EXPECT_EQ(Name(root), "root");
        EXPECT_EQ(BaseTranslator::GetNextSiblingElt(root), nullptr);
        const auto* first = BaseTranslator::GetFirstChildElt(root);
        EXPECT_EQ(Name(first), "one");
        const auto* second = BaseTranslator::GetNextSiblingElt(first);
        EXPECT_EQ(Name(second), "two");
        EXPECT_EQ(BaseTranslator::GetFirstChildElt(second), nullptr);
        const auto* third = BaseTranslator::GetNextSiblingElt(second);
        EXPECT_EQ(Name(third), "one");
        EXPECT_EQ(BaseTranslator::GetNextSiblingElt(third), nullptr);
    });
}

TEST(BaseTranslator, AnswersNull_WhenAskedOfNull) {
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(nullptr), nullptr);
    EXPECT_EQ(BaseTranslator::GetNextSiblingElt(nullptr), nullptr);
    EXPECT_EQ(BaseTranslator::GetChildByTag(nullptr, XmlName("a")), nullptr);
    EXPECT_EQ(BaseTranslator::GetAttribute(nullptr, XmlName("a")), nullptr);
}

TEST(BaseTranslator, FindsTheFirstChildOfAName_WhenThereAreSeveral) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* root = BaseTranslator::GetChildByTag(&dom, XmlName("root"));
        const auto* one = BaseTranslator::GetChildByTag(root, XmlName("one"));
        EXPECT_TRUE(BaseTranslator::IsEqual(BaseTranslator::GetAttribute(one, XmlName("a")), "b"));
        EXPECT_EQ(BaseTranslator::GetChildByTagForced(root, XmlName("one")), one);
        EXPECT_EQ(BaseTranslator::GetChildByTag(root, XmlName("One")), nullptr);
        EXPECT_EQ(BaseTranslator::GetChildByTag(&dom, XmlName("one")), nullptr);
    });
}

TEST(BaseTranslator, NamesChildParentAndPlace_WhenARequiredChildIsMissing) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* one = BaseTranslator::GetFirstChildElt(dom.getDocumentElement());
        const auto refusal = RefusalOf([&] { BaseTranslator::GetChildByTagForced(one, XmlName("two")); });
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetCode(), VeskException::UnexpectedElement);
        EXPECT_EQ(refusal->GetMessage(), "<one> has no child <two>.");
        EXPECT_EQ(PlaceText(refusal->GetPlace()), "2:22 /root/one[1]");
    });
}

TEST(BaseTranslator, SpeaksOfTheDocument_WhenTheRequiredChildIsItsRoot) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto refusal = RefusalOf([&] { BaseTranslator::GetChildByTagForced(&dom, XmlName("PMML")); });
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetMessage(), "The document has no child <PMML>.");
        EXPECT_EQ(PlaceText(refusal->GetPlace()), "1:1 /root");
    });
    const auto refusal = RefusalOf([] { BaseTranslator::GetChildByTagForced(nullptr, XmlName("PMML")); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnexpectedElement);
}

TEST(BaseTranslator, TellsAnEmptyAttributeFromNone_WhenAskedForIt) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* root = dom.getDocumentElement();
        const XMLCh* empty = BaseTranslator::GetAttribute(root, XmlName("empty"));
        ASSERT_NE(empty, nullptr);
        EXPECT_EQ(*empty, 0);
        EXPECT_EQ(BaseTranslator::GetAttributeForced(root, XmlName("empty")), empty);
        EXPECT_EQ(BaseTranslator::GetAttribute(root, XmlName("absent")), nullptr);
    });
}

TEST(BaseTranslator, NamesAttributeElementAndPlace_WhenARequiredAttributeIsMissing) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        const auto* two = BaseTranslator::GetChildByTag(dom.getDocumentElement(), XmlName("two"));
        const auto refusal = RefusalOf([&] { BaseTranslator::GetAttributeForced(two, XmlName("count")); });
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetCode(), VeskException::MissingAttribute);
        EXPECT_EQ(refusal->GetMessage(), "<two> has no attribute \"count\".");
        EXPECT_EQ(PlaceText(refusal->GetPlace()), "3:3 /root/two[1]");
    });
    const auto refusal = RefusalOf([] { BaseTranslator::GetAttributeForced(nullptr, XmlName("count")); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::MissingAttribute);
}

TEST(BaseTranslator, WritesMessagesInUtf8_WhenNamesAreNotAscii) {
    WithDocument("<\xC3\xA4\xE2\x82\xAC/>", [](DocumentProbe&, DOMDocument& dom) {
        const auto refusal =
            RefusalOf([&] { BaseTranslator::GetAttributeForced(dom.getDocumentElement(), XmlName("x")); });
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetMessage(), "<\xC3\xA4\xE2\x82\xAC> has no attribute \"x\".");
        EXPECT_EQ(refusal->GetPlace().elementPath, "/\xC3\xA4\xE2\x82\xAC");
    });
}

TEST(BaseTranslator, FindsElementsAtAnyDepth_WhenAskedByTagName) {
    WithDocument(document, [](DocumentProbe&, DOMDocument& dom) {
        EXPECT_EQ(BaseTranslator::GetElementsByTagName(&dom, XmlName("two"))->getLength(), 2u);
        const auto* one = BaseTranslator::GetFirstChildElt(dom.getDocumentElement());
        EXPECT_EQ(BaseTranslator::GetElementsByTagName(one, XmlName("two"))->getLength(), 0u);
        EXPECT_EQ(BaseTranslator::GetElementsByTagName(dom.getDocumentElement(), XmlName("one"))->getLength(), 2u);
    });
}

TEST(BaseTranslator, ComparesWholeTexts_WhenAskedForEquality) {
    const XMLCh pair[] = {0xE4, 0xD83D, 0xDE00, 0};
    const XMLCh half[] = {0xD83D, 0};
    EXPECT_TRUE(BaseTranslator::IsEqual(XmlName("abc"), "abc"));
    EXPECT_FALSE(BaseTranslator::IsEqual(XmlName("abc"), "ab"));
    EXPECT_FALSE(BaseTranslator::IsEqual(XmlName("ab"), "abc"));
    EXPECT_FALSE(BaseTranslator::IsEqual(XmlName("abc"), "Abc"));
    EXPECT_TRUE(BaseTranslator::IsEqual(pair, "\xC3\xA4\xF0\x9F\x98\x80"));
    EXPECT_FALSE(BaseTranslator::IsEqual(pair, "\xC3\xA4"));
    EXPECT_FALSE(BaseTranslator::IsEqual(half, "?"));
    EXPECT_TRUE(BaseTranslator::IsEqual(static_cast<const XMLCh*>(nullptr), ""));
    EXPECT_FALSE(BaseTranslator::IsEqual(static_cast<const XMLCh*>(nullptr), "a"));
    EXPECT_FALSE(BaseTranslator::IsEqual(XmlName("a"), std::string("a\0b", 3)));
}

TEST(BaseTranslator, ComparesInTheTranscodersEncoding_WhenGivenATranscoder) {
    const XMLCh umlaut[] = {0xE4, 0};
    const Transcoder latin("ISO-8859-1");
    EXPECT_TRUE(BaseTranslator::IsEqual(latin, umlaut, "\xE4"));
    EXPECT_FALSE(BaseTranslator::IsEqual(latin, umlaut, "\xC3\xA4"));
    EXPECT_TRUE(BaseTranslator::IsEqual(latin, nullptr, ""));
}

TEST(BaseTranslator, ReadsNumbers_WhenTheWholeTextIsOne) {
    EXPECT_EQ(BaseTranslator::VerifyInt(XmlName(" -12\t")), -12);
    EXPECT_EQ(BaseTranslator::VerifyInt(XmlName("2147483647")), 2147483647);
    EXPECT_EQ(BaseTranslator::VerifyDouble(XmlName(" 1.5e2\n")), 150.0);
    EXPECT_EQ(BaseTranslator::VerifyDouble(XmlName(".5")), 0.5);
}

void ExpectNumberRefused(const std::function<void()>& step, const std::string& message) {
    const auto refusal = RefusalOf(step);
    ASSERT_TRUE(refusal) << message;
    EXPECT_EQ(refusal->GetCode(), VeskException::InvalidNumber);
    EXPECT_EQ(refusal->GetMessage(), message);
    EXPECT_FALSE(refusal->HasPlace());
}

TEST(BaseTranslator, NamesTheText_WhenItIsNoNumber) {
    const std::string end = "\" is no whole number of 32 bits.";
    ExpectNumberRefused([] { BaseTranslator::VerifyInt(XmlName("1.5")); }, "\"1.5" + end);
    ExpectNumberRefused([] { BaseTranslator::VerifyInt(XmlName("2147483648")); }, "\"2147483648" + end);
    ExpectNumberRefused([] { BaseTranslator::VerifyInt(nullptr); }, "\"" + end);
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(XmlName("abc")); }, "\"abc\" is no number.");
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(XmlName("")); }, "\"\" is no number.");
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(nullptr); }, "\"\" is no number.");
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(XmlName("nan")); }, "\"nan\" is no number.");
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(XmlName("INF")); }, "\"INF\" is no number.");
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(XmlName("1e999")); }, "\"1e999\" is no number.");
    ExpectNumberRefused([] { BaseTranslator::VerifyDouble(XmlName("0x10")); }, "\"0x10\" is no number.");
}

TEST(BaseTranslator, ShortensTheText_WhenItIsLong) {
    std::basic_string<XMLCh> text(1000, 'x');
    ExpectNumberRefused([&] { BaseTranslator::VerifyDouble(text.c_str()); },
                        "\"" + std::string(80, 'x') + "...\" is no number.");
    text.resize(80);
    ExpectNumberRefused([&] { BaseTranslator::VerifyDouble(text.c_str()); },
                        "\"" + std::string(80, 'x') + "\" is no number.");
}

TEST(BaseTranslator, KeepsMessagesPrintable_WhenTextsHoldControlCharactersOrBrokenPairs) {
    const XMLCh wild[] = {0x1B, '[', '2', 'J', 0x0A, 0x9B, 0xDC00, 0xD83D, 0};
    ExpectNumberRefused([&] { BaseTranslator::VerifyDouble(wild); },
                        "\"?[2J??\xEF\xBF\xBD\xEF\xBF\xBD\" is no number.");
}

}  // namespace
