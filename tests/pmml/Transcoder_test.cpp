#include "pmml/Transcoder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <xercesc/util/XercesDefs.hpp>

#include <string>

#include "framework/VeskException.h"
#include "pmml/DocumentProbe.h"
#include "support/XmlName.h"

namespace {

using nbscore::XmlName;

const XMLCh mixed[] = {'a', 0xE4, 0x20AC, 0xD83D, 0xDE00, 'z', 0};
constexpr const char* mixedInUtf8 = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z";

TEST(Transcoder, WritesUtf8_WhenNamedSoOrNotAtAll) {
    for (const char* name : {"", "UTF-8", "utf-8", "UTF8"}) {
        EXPECT_EQ(Transcoder(name).transcodeTo(mixed), mixedInUtf8) << name;
        EXPECT_EQ(Transcoder(name).transcodeTo(XmlName("plain")), "plain") << name;
    }
}

TEST(Transcoder, AnswersAnEmptyText_WhenGivenNullOrNothing) {
    for (const char* name : {"UTF-8", "ISO-8859-1"}) {
        EXPECT_EQ(Transcoder(name).transcodeTo(nullptr), "");
        EXPECT_EQ(Transcoder(name).transcodeTo(XmlName("")), "");
    }
}

TEST(Transcoder, WritesTheNamedEncoding_WhenItIsKnown) {
    const XMLCh umlaut[] = {'x', 0xE4, 0};
    const XMLCh euro[] = {0x20AC, 0};
    EXPECT_EQ(Transcoder("ISO-8859-1").transcodeTo(umlaut), "x\xE4");
    EXPECT_EQ(Transcoder("windows-1252").transcodeTo(euro), "\x80");
    EXPECT_EQ(Transcoder("US-ASCII").transcodeTo(XmlName("plain")), "plain");
}

void ExpectUnsupported(const std::function<void()>& step, const std::string& message) {
    const auto refusal = RefusalOf(step);
    ASSERT_TRUE(refusal) << message;
    EXPECT_EQ(refusal->GetCode(), VeskException::UnsupportedEncoding);
    EXPECT_EQ(refusal->GetMessage(), message);
}

TEST(Transcoder, NamesTheEncoding_WhenNobodyKnowsIt) {
    ExpectUnsupported([] { Transcoder("no-such-encoding"); }, "The encoding \"no-such-encoding\" is not supported.");
    ExpectUnsupported([] { Transcoder("\xC3\xA4"); }, "The encoding \"\xC3\xA4\" is not supported.");
    ExpectUnsupported([] { Transcoder(" "); }, "The encoding \" \" is not supported.");
}

TEST(Transcoder, NamesTheEncodingAndTheText_WhenACharacterDoesNotFit) {
    ExpectUnsupported([] { Transcoder("ISO-8859-1").transcodeTo(mixed); },
                      "The encoding \"ISO-8859-1\" cannot hold the text \"" + std::string(mixedInUtf8) + "\".");
    ExpectUnsupported([] { Transcoder("US-ASCII").transcodeTo(mixed); },
                      "The encoding \"US-ASCII\" cannot hold the text \"" + std::string(mixedInUtf8) + "\".");
}

TEST(Transcoder, RefusesHalfAPair_WhenWritingUtf8) {
    const XMLCh halves[][3] = {{0xD83D, 0, 0}, {0xDE00, 0, 0}, {0xD83D, 'a', 0}, {'a', 0xDE00, 0}, {'a', 0xD83D, 0}};
    for (const auto& half : halves) {
        const auto refusal = RefusalOf([&] { Transcoder("").transcodeTo(half); });
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->GetCode(), VeskException::UnsupportedEncoding);
        EXPECT_EQ(refusal->GetMessage().find("The encoding \"UTF-8\" cannot hold the text \""), 0u);
    }
}

TEST(Transcoder, WorksOn_WhenItRefusedATextBefore) {
    const Transcoder latin("ISO-8859-1");
    EXPECT_THROW(latin.transcodeTo(mixed), VeskException);
    EXPECT_EQ(latin.transcodeTo(XmlName("next")), "next");
}

TEST(Transcoder, KeepsEveryCharacter_WhenTheTextIsLongerThanItsBuffers) {
    std::basic_string<XMLCh> text;
    std::string expected;
    for (int i = 0; i < 100001; ++i) {
        text += static_cast<XMLCh>(i % 3 == 0 ? 0xE4 : 'a');
        expected += i % 3 == 0 ? '\xE4' : 'a';
    }
    EXPECT_EQ(Transcoder("ISO-8859-1").transcodeTo(text.c_str()), expected);
    EXPECT_EQ(Transcoder("UTF-8").transcodeTo(text.c_str()).size(), expected.size() + 33334);
}

#ifndef _WIN32  // which encodings there are, beside the usual ones, is in the registry of each machine

TEST(Transcoder, KeepsPairsWhole_WhenTheyFallOnAnEdgeOfItsBuffers) {
    for (std::size_t shift = 0; shift < 2; ++shift) {
        std::basic_string<XMLCh> text(shift, 'a');
        for (int i = 0; i < 20000; ++i)
            text += {XMLCh{0xD83D}, XMLCh{0xDE00}};
        std::string expected;
        for (int i = 0; i < 20000; ++i)
            expected += "\x94\x39\xFC\x36";
        EXPECT_EQ(Transcoder("GB18030").transcodeTo(text.c_str()).substr(shift), expected);
    }
}

#endif

RC_GTEST_PROP(Transcoder, GivesBackWhatTheParserRead, ()) {
    const auto characters = *rc::gen::container<std::u32string>(
        rc::gen::oneOf(rc::gen::inRange<char32_t>('A', 'Z'), rc::gen::inRange<char32_t>(0xA0, 0xD7FF),
                       rc::gen::inRange<char32_t>(0xE000, 0xFFFD), rc::gen::inRange<char32_t>(0x10000, 0x10FFFF)));
    std::string references;
    std::string fromParser;
    for (const char32_t character : characters) {
        references += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ";";
    }
    WithDocument("<a x='" + references + "'/>", [&](DocumentProbe& probe, xercesc::DOMDocument& document) {
        const XMLCh* value = BaseTranslator::GetAttribute(document.getDocumentElement(), XmlName("x"));
        fromParser = probe.GetTranscoder()->transcodeTo(value);
        RC_ASSERT(BaseTranslator::IsEqual(value, fromParser));
    });
    std::string again;
    WithDocument("<a x='" + fromParser + "'/>", [&](DocumentProbe& probe, xercesc::DOMDocument& document) {
        again = probe.GetTranscoder()->transcodeTo(
            BaseTranslator::GetAttribute(document.getDocumentElement(), XmlName("x")));
    });
    RC_ASSERT(again == fromParser);
}

}  // namespace
