#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/xml/DocumentProbe.h"
#include "framework/xml/Utf8.h"
#include "framework/xml/XmlName.h"

namespace {

using nbscore::Utf8Of;
using nbscore::XmlName;
using xercesc::DOMAttr;
using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

/// A node and all below it, as "element{attribute='value'}(child,child)", with text in brackets.
std::string Outline(const DOMNode* node) {
    if (node->getNodeType() == DOMNode::TEXT_NODE) return "[" + Utf8Of(node->getNodeValue()) + "]";
    std::string outline = Utf8Of(node->getNodeName());
    if (const auto* attributes = node->getAttributes(); attributes != nullptr && attributes->getLength() > 0) {
        outline += "{";
        for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
            outline += (i > 0 ? "," : "") + Utf8Of(attributes->item(i)->getNodeName()) + "='" +
                       Utf8Of(attributes->item(i)->getNodeValue()) + "'";
        }
        outline += "}";
    }
    std::string children;
    for (const DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling())
        children += (children.empty() ? "" : ",") + Outline(child);
    return children.empty() ? outline : outline + "(" + children + ")";
}

std::string OutlineOf(const std::string& text) {
    std::string outline;
    WithDocument(text,
                 [&](DocumentProbe&, DOMDocument& document) { outline = Outline(document.getDocumentElement()); });
    return outline;
}

TEST(BuiltTree, HasNoBlanksBetweenElements) {
    EXPECT_EQ(OutlineOf("<a>\n <b>\r\n\t<c/> </b> <d/>\n</a>\n"), "a(b(c),d)");
    EXPECT_EQ(OutlineOf("<a> <!-- x --> <b/> <!-- y --> </a>"), "a(b)");
}

TEST(BuiltTree, KeepsBlanksThatAreAnElementsContent) {
    EXPECT_EQ(OutlineOf("<a> </a>"), "a([ ])");
    EXPECT_EQ(OutlineOf("<a>\n<b> \t</b></a>"), "a(b([ \t]))");
    EXPECT_EQ(OutlineOf("<a> <!-- x --> </a>"), "a([  ])");
    EXPECT_EQ(OutlineOf("<a><b/><b> </b></a>"), "a(b,b([ ]))");
}

TEST(BuiltTree, KeepsBlanksAroundText) {
    EXPECT_EQ(OutlineOf("<a> x </a>"), "a([ x ])");
    EXPECT_EQ(OutlineOf("<a> <b/> x <b/> </a>"), "a(b,[ x ],b)");
    EXPECT_EQ(OutlineOf("<a>x<!-- y --> </a>"), "a([x ])");
    EXPECT_EQ(OutlineOf("<a> <?p i?> </a>"), "a([ ],p,[ ])");
    EXPECT_EQ(OutlineOf("<a> <!-- y -->x</a>"), "a([ x])");
    EXPECT_EQ(OutlineOf("<a>&#32;&#10;<b/></a>"), OutlineOf("<a> \n<b/></a>"));
    EXPECT_EQ(OutlineOf("<a>" + std::string(200000, ' ') + "x</a>"), "a([" + std::string(200000, ' ') + "x])");
}

TEST(BuiltTree, KeepsBlanksInSectionsOfCharacterData) {
    WithDocument("<a><![CDATA[ ]]><b/></a>", [](DocumentProbe&, DOMDocument& document) {
        const DOMNode* section = document.getDocumentElement()->getFirstChild();
        EXPECT_EQ(section->getNodeType(), DOMNode::CDATA_SECTION_NODE);
        EXPECT_EQ(Utf8Of(section->getNodeValue()), " ");
    });
}

/// What an operation on the attribute x='one' of a document's root tells, in a document of the framework's own parser
/// and in one that the XML library builds by itself.
class AttributeOperations : public testing::TestWithParam<std::function<std::string(DOMDocument&, DOMAttr&)>> {
protected:
    static constexpr const char* text = "<a x='one' y='' z='a&#10;&lt;b'><b x='one'/></a>";

    static std::string Told(DOMDocument& document) {
        DOMAttr* attribute = document.getDocumentElement()->getAttributeNode(XmlName("x"));
        std::string told = GetParam()(document, *attribute);
        return told + " / " + Outline(document.getDocumentElement());
    }
};

TEST_P(AttributeOperations, TellTheSameAsTheXmlLibrarysOwn) {
    std::string ours;
    WithDocument(text, [&](DocumentProbe&, DOMDocument& document) { ours = Told(document); });
    xercesc::XercesDOMParser parser;
    const std::string bytes = text;
    parser.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(), "text"));
    EXPECT_EQ(ours, Told(*parser.getDocument()));
}

std::string Counted(const DOMNode& node) {
    return std::to_string(node.getChildNodes()->getLength()) + (node.hasChildNodes() ? " children" : " none");
}

const std::vector<std::function<std::string(DOMDocument&, DOMAttr&)>> operations = {
    [](DOMDocument&, DOMAttr& x) { return Utf8Of(x.getValue()) + Utf8Of(x.getName()); },
    [](DOMDocument&, DOMAttr& x) { return Utf8Of(x.getNodeValue()) + Utf8Of(x.getTextContent()); },
    [](DOMDocument&, DOMAttr& x) { return Outline(x.getFirstChild()) + Outline(x.getLastChild()); },
    [](DOMDocument&, DOMAttr& x) { return Counted(x); },
    [](DOMDocument&, DOMAttr& x) { return std::string(x.hasChildNodes() ? "has" : "has not"); },
    [](DOMDocument& d, DOMAttr&) { return Counted(*d.getDocumentElement()->getAttributeNode(XmlName("y"))); },
    [](DOMDocument&, DOMAttr& x) {
        x.setValue(XmlName("two"));
        return Counted(x) + Outline(x.getFirstChild());
    },
    [](DOMDocument&, DOMAttr& x) {
        x.setNodeValue(XmlName("two"));
        return Counted(x);
    },
    [](DOMDocument&, DOMAttr& x) {
        x.setTextContent(XmlName("two"));
        return Counted(x);
    },
    [](DOMDocument& d, DOMAttr& x) {
        x.appendChild(d.createTextNode(XmlName(" more")));
        const std::string before = Counted(x);
        x.normalize();
        return before + Counted(x);
    },
    [](DOMDocument& d, DOMAttr& x) {
        x.insertBefore(d.createTextNode(XmlName("first ")), x.getFirstChild());
        return Counted(x);
    },
    [](DOMDocument& d, DOMAttr& x) {
        x.replaceChild(d.createTextNode(XmlName("other")), x.getFirstChild())->release();
        return Counted(x);
    },
    [](DOMDocument&, DOMAttr& x) {
        x.removeChild(x.getFirstChild())->release();
        return Counted(x) + Utf8Of(x.getValue());
    },
    [](DOMDocument&, DOMAttr& x) {
        DOMNode* clone = x.cloneNode(true);
        std::string told = Utf8Of(clone->getNodeValue()) + Counted(*clone);
        clone->release();
        return told;
    },
    [](DOMDocument& d, DOMAttr&) { return Outline(d.getDocumentElement()->cloneNode(true)); },
    [](DOMDocument& d, DOMAttr& x) {
        const DOMElement* other = static_cast<DOMElement*>(d.getDocumentElement()->getFirstChild());
        const DOMAttr* same = other->getAttributeNode(XmlName("x"));
        return std::string(x.isEqualNode(same) && same->isEqualNode(&x) ? "equal" : "unequal");
    },
    [](DOMDocument& d, DOMAttr& x) {
        x.setValue(XmlName("two"));
        const DOMElement* other = static_cast<DOMElement*>(d.getDocumentElement()->getFirstChild());
        return std::string(x.isEqualNode(other->getAttributeNode(XmlName("x"))) ? "equal" : "unequal");
    },
    [](DOMDocument& d, DOMAttr& x) { return Utf8Of(d.renameNode(&x, nullptr, XmlName("w"))->getNodeValue()); },
    [](DOMDocument& d, DOMAttr& x) {
        auto* implementation = xercesc::DOMImplementation::getImplementation();
        const std::unique_ptr<DOMDocument, void (*)(DOMDocument*)> other(implementation->createDocument(),
                                                                         [](DOMDocument* gone) { gone->release(); });
        return Outline(other->importNode(d.getDocumentElement(), true)) +
               Utf8Of(other->importNode(&x, true)->getNodeValue());
    },
    [](DOMDocument& d, DOMAttr& x) {
        d.getDocumentElement()->removeAttributeNode(&x);
        x.release();
        d.getDocumentElement()->setAttribute(XmlName("new"), XmlName("value"));
        return std::string();
    },
    [](DOMDocument& d, DOMAttr&) {
        d.normalizeDocument();
        return std::string();
    },
#ifndef _WIN32  // attributes are never identifiers there, see CompactAttribute.h
    [](DOMDocument& d, DOMAttr& x) {
        d.getDocumentElement()->setIdAttributeNode(&x, true);
        x.setValue(XmlName("identity"));
        return std::string(d.getElementById(XmlName("identity")) == d.getDocumentElement() ? "found" : "lost");
    },
#endif
    [](DOMDocument& d, DOMAttr&) {
        auto* implementation = xercesc::DOMImplementation::getImplementation();
        const std::unique_ptr<xercesc::DOMLSSerializer, void (*)(xercesc::DOMLSSerializer*)> serializer(
            implementation->createLSSerializer(), [](xercesc::DOMLSSerializer* gone) { gone->release(); });
        XMLCh* written = serializer->writeToString(d.getDocumentElement());
        std::string told = Utf8Of(written);
        xercesc::XMLString::release(&written);
        return told;
    },
};

INSTANTIATE_TEST_SUITE_P(All, AttributeOperations, testing::ValuesIn(operations));

}  // namespace
