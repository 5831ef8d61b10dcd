#include "pmml/DomDocument.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <memory>
#include <string>

#include "pmml/DocumentProbe.h"
#include "pmml/Refusal.h"
#include "support/XmlName.h"
#include "support/XmlText.h"

namespace nbscore::test {
namespace {

using xercesc::DOMDocument;

/// A document as text, from its DOM.
std::string TextOf(const DocumentTree& tree) {
    return XmlTextOf(*WriteDom(tree));
}

TEST(DomDocument, HasAllThatTheTreeHas) {
    const std::string text = "<a x=\"1\" y=\"&lt;&quot;\"><b/>one<c z=\"\"><d> </d></c>two</a>";
    EXPECT_NE(TextOf(*TreeOf(text)).find(text), std::string::npos) << TextOf(*TreeOf(text));
}

RC_GTEST_PROP(DomDocument, BecomesTheTreeAgain, ()) {
    const std::vector<std::string> inner = {"<b/>", "<b x='1'/>", "text", "<c>", "<c y='&#10;'>", "\n", "\xC3\xA4"};
    std::string text = "<a>";
    int open = 0;
    for (const auto& piece : *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(inner))) {
        text += piece;
        if (piece.starts_with("<c")) ++open;
        if (open > 0 && text.size() % 3 == 0) {
            text += "</c>";
            --open;
        }
    }
    while (open-- > 0)
        text += "</c>";
    const ParsedDocument tree = TreeOf(text + "</a>");
    const DomDocument dom = WriteDom(*tree);
    const ParsedDocument again = ReadDom(*dom, {});
    RC_ASSERT(TextOf(*again) == TextOf(*tree));
    const auto elements = tree->GetRoot().GetDescendants().List();
    const auto elementsAgain = again->GetRoot().GetDescendants().List();
    RC_ASSERT(elements.size() == elementsAgain.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        RC_ASSERT(PlaceText(elements[i].GetPlace()) == PlaceText(elementsAgain[i].GetPlace()));
}

TEST(DomDocument, IsReadAsItIs_WhenAnotherParserMadeIt) {
    const std::string text = "<?xml version='1.0'?><a  x='1'>\n<!-- x --><b/><![CDATA[<y>]]><?pi?>z</a>";
    xercesc::XMLPlatformUtils::Initialize();  // as a host does that parses by itself
    xercesc::XercesDOMParser parser;
    parser.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "text"));
    const ParsedDocument tree = ReadDom(*parser.getDocument(), {});
    const Element root = tree->GetRoot();
    EXPECT_EQ(root.CountAttributes(), 1U);
    EXPECT_EQ(root.GetTextInside(), "\n<y>z");
    EXPECT_EQ(PlaceText(root.GetFirstChild().GetPlace()), "0:0 /a/b[1]");
}

TEST(DomDocument, GivesThePathFromItsRoot_WhenAPartOfItIsRead) {
    WithDocument("<a>\n<b/>\n<b><c/>\n<c/></b></a>", [](DocumentProbe&, DOMDocument& document) {
        const xercesc::DOMNode* const second = document.getDocumentElement()->getLastChild();
        const ParsedDocument tree = ReadDom(*second, {});
        EXPECT_EQ(PlaceText(tree->GetRoot().GetPlace()), "3:1 /a/b[2]");
        EXPECT_EQ(PlaceText(tree->GetRoot().GetFirstChild().GetNextSibling().GetPlace()), "4:1 /a/b[2]/c[2]");
    });
}

TEST(DomDocument, IsRefused_WhenItNeedsMoreMemoryThanTheLimitsAllow) {
    std::string text = "<a>";
    for (int i = 0; i < 10'000; ++i)
        text += "<b x='1'/>";
    Limits limits;
    limits.maxMemory = 1'500'000;
    const ParsedDocument tree = TreeOf(text + "</a>", limits);
    const auto written = RefusalOf([&] { WriteDom(*tree); });
    ASSERT_TRUE(written);
    EXPECT_EQ(written->GetCode(), VeskException::InconsistentDocument);
    EXPECT_EQ(written->GetMessage(), "The document needs more memory than max-memory allows: 1500000 bytes.");
    limits.maxMemory = 10'000;
    WithDocument(text + "</a>", [&](DocumentProbe&, DOMDocument& document) {
        EXPECT_TRUE(RefusalOf([&] { ReadDom(document, limits); }));
    });
}

TEST(DomDocument, IsReadWhateverItsDepth) {
    WithDocument("<a/>", [](DocumentProbe&, DOMDocument& document) {
        xercesc::DOMNode* innermost = document.getDocumentElement();
        for (int i = 0; i < 100'000; ++i)
            innermost = innermost->appendChild(document.createElement(XmlName("a")));
        const ParsedDocument tree = ReadDom(document, {});
        EXPECT_EQ(tree->GetRoot().GetDescendants().List().size(), 100'000U);
    });
}

TEST(PlaceInDom, IsTheOwningElements_WhenTheNodeIsNoElement) {
    WithDocument("<a>\n <b x='1'>text</b></a>", [](DocumentProbe&, DOMDocument& document) {
        const auto* b = BaseTranslator::GetFirstChildElt(document.getDocumentElement());
        EXPECT_EQ(PlaceText(PlaceOf(b->getFirstChild())), "2:2 /a/b[1]");
        EXPECT_EQ(PlaceText(PlaceOf(b->getAttributeNode(XmlName("x")))), "2:2 /a/b[1]");
        EXPECT_EQ(PlaceText(PlaceOf(&document)), "1:1 /a");
        EXPECT_EQ(PlaceText(PlaceOf(nullptr)), "0:0 ");
    });
}

TEST(PlaceInDom, HasOnlyAPath_WhenTheDocumentWasMadeWithoutTheParser) {
    const DocumentProbe startsTheLibrary(nullptr);
    auto* implementation = xercesc::DOMImplementation::getImplementation();
    DOMDocument* document = implementation->createDocument(nullptr, XmlName("PMML"), nullptr);
    document->getDocumentElement()->appendChild(document->createElement(XmlName("Header")));
    EXPECT_EQ(PlaceText(PlaceOf(document->getDocumentElement()->getFirstChild())), "0:0 /PMML/Header[1]");
    document->release();
}

TEST(PlaceInDom, HasOnlyAPath_WhenTheElementHangsOutsideItsDocument) {
    WithDocument("<a/>", [](DocumentProbe&, DOMDocument& document) {
        EXPECT_EQ(PlaceText(PlaceOf(document.createElement(XmlName("loose")))), "0:0 /loose");
    });
}

TEST(PlaceInDom, GoesWithItsDocument_WhenTheDocumentIsCopied) {
    WithDocument("<a><b/></a>", [](DocumentProbe&, DOMDocument& document) {
        xercesc::DOMNode* copy = document.cloneNode(true);
        EXPECT_EQ(PlaceText(PlaceOf(copy->getFirstChild()->getFirstChild())), "0:0 /a/b[1]");
        copy->release();
        EXPECT_EQ(PlaceText(PlaceOf(document.getDocumentElement())), "1:1 /a");
    });
}

}  // namespace
}  // namespace nbscore::test
