#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "pmml/DocumentProbe.h"
#include "support/XmlName.h"

namespace {

using nbscore::XmlName;

/// The attribute "x" of the root element, as UTF-8.
std::string RootAttribute(const std::string& text) {
    std::string value;
    WithDocument(text, [&](DocumentProbe& probe, xercesc::DOMDocument& document) {
        value = probe.GetTranscoder()->transcodeTo(
            BaseTranslator::GetAttribute(document.getDocumentElement(), XmlName("x")));
    });
    return value;
}

std::string Utf16(const std::string& ascii, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char letter : ascii)
        bytes += bigEndian ? std::string{'\0', letter} : std::string{letter, '\0'};
    return bytes;
}

TEST(DocumentEncoding, IsUtf8_WhenTheDocumentSaysNothing) {
    EXPECT_EQ(RootAttribute("<a x='\xC3\xA4\xF0\x9F\x98\x80'/>"), "\xC3\xA4\xF0\x9F\x98\x80");
    EXPECT_EQ(RootAttribute("\xEF\xBB\xBF<a x='\xC3\xA4'/>"), "\xC3\xA4");
}

TEST(DocumentEncoding, IsTheDeclaredOne_WhenTheDocumentDeclaresOne) {
    EXPECT_EQ(RootAttribute("<?xml version='1.0' encoding='ISO-8859-1'?><a x='\xE4'/>"), "\xC3\xA4");
    EXPECT_EQ(RootAttribute("<?xml version='1.0' encoding='windows-1252'?><a x='\x80'/>"), "\xE2\x82\xAC");
    EXPECT_EQ(RootAttribute("<?xml version='1.0' encoding='US-ASCII'?><a x='&#228;'/>"), "\xC3\xA4");
}

TEST(DocumentEncoding, IsUtf16_WhenAByteOrderMarkSaysSo) {
    EXPECT_EQ(RootAttribute(Utf16("<a x='&#228;b'/>", false)),
              "\xC3\xA4"
              "b");
    EXPECT_EQ(RootAttribute(Utf16("<?xml version='1.0' encoding='UTF-16'?><a x='b'/>", true)), "b");
}

TEST(DocumentEncoding, IsRefused_WhenItIsPlainlyNotTheDeclaredOne) {
    for (const std::string declared : {"UTF-16", "utf-16", "UCS-4"}) {
        const auto refusal = RefusalOfText("<?xml version='1.0' encoding='" + declared + "'?><a x='b'/>");
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument);
        EXPECT_EQ(refusal->GetPlace().line, 1u);
        EXPECT_THAT(refusal->GetMessage(), testing::EndsWith(", but is in UTF-8."));
    }
}

#ifndef _WIN32  // which encodings there are, beside the usual ones, is in the registry of each machine

TEST(DocumentEncoding, IsTakenAtItsWord_WhenItsNameOnlyLooksWide) {
    EXPECT_EQ(RootAttribute("<?xml version='1.0' encoding='ISO-8859-15'?><a x='\xA4'/>"), "\xE2\x82\xAC");
}

#endif

TEST(DocumentEncoding, IsRefusedWithItsOwnCode_WhenNobodyKnowsIt) {
    const auto refusal = RefusalOfText("<?xml version='1.0' encoding='no-such-encoding'?><a/>");
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->GetCode(), VeskException::UnsupportedEncoding);
    EXPECT_EQ(refusal->GetMessage().find("The document's encoding is not supported: "), 0u);
    // The library writes the name in capital letters.
    EXPECT_NE(refusal->GetMessage().find("NO-SUCH-ENCODING"), std::string::npos) << refusal->GetMessage();
    EXPECT_EQ(refusal->GetPlace().line, 1u);
}

TEST(DocumentEncoding, IsRefused_WhenTheBytesDoNotFitIt) {
    for (const std::string& text :
         {std::string("<a x='\xE4'/>"), std::string("<?xml version='1.0' encoding='UTF-8'?><a x='\xFF'/>"),
          std::string("<?xml version='1.0' encoding='UTF-8'?><a>\xC3</a>"),
          std::string("<a x='\xED\xA0\x80'/>"),  // half of a surrogate pair
          std::string("<a x='\xC0\xAF'/>"),      // longer than it needs to be
          std::string("<?xml version='1.0' encoding='US-ASCII'?><a x='\xE4'/>"), Utf16("<a>", false) + "x"}) {
        const auto refusal = RefusalOfText(text);
        ASSERT_TRUE(refusal) << text;
        EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument) << text << refusal->GetMessage();
    }
}

}  // namespace
