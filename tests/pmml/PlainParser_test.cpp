#include "pmml/PlainParser.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "framework/VeskException.h"
#include "pmml/XmlServices.h"
#include "support/TreeText.h"

namespace nbscore::test {
namespace {

/// Nothing where the parser leaves the document to the library.
std::optional<std::string> ReadPlain(const std::string& text) {
    std::istringstream stream(text);
    const Limits limits;
    DocumentBytes bytes(stream, limits);
    const ParsedDocument document = ParsePlain(bytes, limits);
    if (document == nullptr) return std::nullopt;
    return TreeText(*document);
}

std::string ReadByLibrary(const std::string& text) {
    std::istringstream stream(text);
    const Limits limits;
    DocumentBytes bytes(stream, limits);
    try {
        return TreeText(*GetXmlServices().Parse(bytes, limits));
    } catch (const VeskException& refusal) {
        return "refused: " + refusal.GetMessage();
    }
}

void ExpectReadAlike(const std::string& text) {
    const std::optional<std::string> plain = ReadPlain(text);
    ASSERT_TRUE(plain) << text;
    EXPECT_EQ(*plain, ReadByLibrary(text)) << text;
}

TEST(PlainParser, ReadsWhatTheLibraryReads) {
    for (const std::string& text : {
             std::string("<a/>"),
             std::string("<a></a>"),
             std::string("<?xml version=\"1.0\"?><a/>"),
             std::string("<?xml version='1.0' encoding='utf-8' standalone='yes' ?>\n<a/>\n"),
             std::string("\xEF\xBB\xBF<a><b/></a>"),
             std::string("\xEF\xBB\xBF<?xml version=\"1.0\"?><a><b/></a>"),
             std::string("\xEF\xBB\xBF\n\n <a><b/></a>"),
             std::string("\n\n<!-- é -->  <a/>"),
             std::string("<a b='1' c=\"2\"\td = '3'\r\n e\n=\n\"4\" />"),
             std::string("<a b='\"' c=\"'\" d='>' e=''/>"),
             std::string("<a b=' \t\n\r\r\n x &#9;&#10;&#13;&#32; '/>"),
             std::string("<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;&#xe9;'><c/></a>"),
             std::string("<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;&#xe9;<c/></a>"),
             std::string("<a>&#32;<b/>&#9;</a>"),
             std::string("<a>&#32;</a>"),
             std::string("<a> <b/> </a>"),
             std::string("<a>  </a>"),
             std::string("<a>\r\n\t<b/>\r<c/>\n\r<d/></a>"),
             std::string("<a>x\r\ny\rz\n<b/></a>"),
             std::string("<a>é<b/>日本<c/>😀<d x='😀é'/><e/>\n😀<f/></a>"),
             std::string("<a>]<b/>]]<c/>]]x><d/>></a>"),
             std::string("<a><![CDATA[]]></a>"),
             std::string("<a> <![CDATA[]]> </a>"),
             std::string("<a> <![CDATA[ ]]> <b/></a>"),
             std::string("<a><![CDATA[<&]]]>x<b/><![CDATA[\r\n\ré]]><c/></a>"),
             std::string("<a>x<!-- c\n - -->  <!----><b/> <!--\r\n--> <c/></a>"),
             std::string("<a> <?p?> <b/> <?p q\r\n?r ? ?> <c/></a>"),
             std::string("<?p?><?xml-stylesheet href='a'?><!--c--><a/><!--c--><?p?>\n"),
             std::string("<a\n><b\n/></a\n>"),
             std::string("<a.b-c_d:e _='1' x:y='2'/>"),
             std::string(
                 "<p:PMML xmlns:p='http://www.dmg.org/PMML-4_4'><p:a/><b/><p:a xmlns:p='x'><p:b/></p:a></p:PMML>"),
             std::string("<p:PMML xmlns:p='http://www.dmg.org/PMML&#45;4_4'><p:a/></p:PMML>"),
             std::string("<a xmlns='x' xml:space='preserve' xml:lang='en'> <b/> </a>"),
             std::string("<a b='\x7F\xC2\x86\xE2\x80\xA9'>\x7F\xC2\x86<b/>\xE2\x80\xA9<c/>\xEF\xBB\xBF<d/></a>"),
         }) {
        ExpectReadAlike(text);
    }
}

TEST(PlainParser, LeavesToTheLibrary_WhatIsNotWellFormedOrUnusual) {
    for (const std::string& text : {
             std::string(),
             std::string(" "),
             std::string("<a>"),
             std::string("<a></b>"),
             std::string("</a>"),
             std::string("<a/><b/>"),
             std::string("<a/>x"),
             std::string("x<a/>"),
             std::string("<a/>&#32;"),
             std::string("<a/><![CDATA[]]>"),
             std::string("<a b='1' b='2'/>"),
             std::string("<a b='1'c='2'/>"),
             std::string("<a b=1/>"),
             std::string("<a b/>"),
             std::string("<a b='<'/>"),
             std::string("<a b='&'/>"),
             std::string("<a b='&x;'/>"),
             std::string("<a>&#0;</a>"),
             std::string("<a>&#xD800;</a>"),
             std::string("<a>&#xFFFF;</a>"),
             std::string("<a>&#x110000;</a>"),
             std::string("<a>&#99999999999;</a>"),
             std::string("<a>&#;</a>"),
             std::string("<a>&#-1;</a>"),
             std::string("<a>]]></a>"),
             std::string("<a>\x01</a>"),
             std::string("<a>\0</a>", 8),
             std::string("<a>\xEF\xBF\xBF</a>"),
             std::string("<a>\xED\xA0\x80</a>"),
             std::string("<a>\xC0\x80</a>"),
             std::string("<a b='\xFF'/>"),
             std::string("<a><!-- -- --></a>"),
             std::string("<a><!-- ---></a>"),
             std::string("<a><?xml x?></a>"),
             std::string("<a><?XML?></a>"),
             std::string("<a><?p?q?></a?>"),
             std::string("<a><? ?></a>"),
             std::string("<a><![cdata[]]></a>"),
             std::string(" <?xml version='1.0'?><a/>"),
             std::string("<?xml version='1.1'?><a/>"),
             std::string("<?xml version='1.0'\n?><a/>"),
             std::string("<a>\xC2\x85</a>"),
             std::string("<a b='\xE2\x80\xA8'/>"),
             std::string("<?xml version='1.0' encoding='iso-8859-1'?><a/>"),
             std::string("<?xml encoding='UTF-8'?><a/>"),
             std::string("<?xml version='1.0' standalone='maybe'?><a/>"),
             std::string("<!DOCTYPE a><a/>"),
             std::string("<é/>"),
             std::string("<a é='1'/>"),
         }) {
        EXPECT_EQ(ReadPlain(text), std::nullopt) << text;
    }
}

/// Writes documents at random, most of them well-formed, with all that may stand in one.
class RandomMarkup {
public:
    explicit RandomMarkup(unsigned seed) : random(seed) {}

    std::string Write() {
        text.clear();
        if (OneIn(3)) text += "\xEF\xBB\xBF";
        if (OneIn(2)) text += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
        WriteMiscellany();
        WriteElement(0);
        WriteMiscellany();
        if (OneIn(2)) Damage();
        return text;
    }
    unsigned Draw(unsigned count) { return static_cast<unsigned>(random() % count); }

private:
    static constexpr std::array<std::string_view, 33> words = {
        "a",      "b c",      " ",     "\t",    "\n",    "\r",     "\r\n",   "  \n  ",
        "é",      "日本",     "😀",     "]",     ">",     "]]",     "-",      "?",
        "'",      "&lt;",     "&amp;", "&#10;", "&#13;", "&#x20;", "&#233;", "&#x1F600;",
        "&quot;", "\xC2\x86", "/",     "=",     "1.5",   "",       "x y z",  "long text without anything",
        "\x7F"};
    static constexpr std::array<std::string_view, 28> faults = {"<",
                                                                "&",
                                                                "]]>",
                                                                "--",
                                                                "?>",
                                                                "\"",
                                                                "'",
                                                                "<a>",
                                                                "</a>",
                                                                "<b/>",
                                                                "\x01",
                                                                "\xFF",
                                                                "\xED\xA0\x80",
                                                                "\xEF\xBF\xBF",
                                                                "<?xml version=\"1.0\"?>",
                                                                "<!DOCTYPE a>",
                                                                "&x;",
                                                                "&#0;",
                                                                "<!--",
                                                                "-->",
                                                                "<![CDATA[",
                                                                "é",
                                                                ":",
                                                                "\r",
                                                                "\n",
                                                                " b='1'",
                                                                "/>",
                                                                "xmlns:p"};
    static constexpr std::array<std::string_view, 6> elementNames = {"a", "PMML", "p:Value", "x.y", "_", "p:q:r"};
    static constexpr std::array<std::string_view, 8> attributeNames = {"b",         "value", "xmlns:p",  "xmlns",
                                                                       "xml:space", "c-d",   "xml:lang", "e"};

    bool OneIn(unsigned count) { return Draw(count) == 0; }
    std::string_view Word() { return words[Draw(words.size())]; }

    void WriteBlanks(bool areNeeded) {
        if (areNeeded) text += " \n\t\r"[Draw(4)];
        while (OneIn(5))
            text += " \n\t\r"[Draw(4)];
    }
    void WriteInside(std::string_view forbidden) {
        while (!OneIn(3)) {
            const std::string_view word = Word();
            if (word.find_first_of(forbidden) == word.npos) text += word;
        }
    }
    void WriteComment() {
        text += "<!--";
        WriteInside("-");
        text += "-->";
    }
    void WriteInstruction() {
        text += "<?p";
        if (OneIn(2)) {
            text += ' ';
            WriteInside("?");
        }
        text += "?>";
    }
    void WriteMiscellany() {
        while (OneIn(2)) {
            WriteBlanks(false);
            if (OneIn(2)) WriteComment();
            if (OneIn(3)) WriteInstruction();
        }
    }
    void WriteElement(int depth) {
        const std::string_view name = elementNames[Draw(elementNames.size())];
        text += '<';
        text += name;
        for (std::size_t i = Draw(3); i < attributeNames.size(); i += 1 + Draw(5)) {
            WriteBlanks(true);
            text += attributeNames[i];
            WriteBlanks(false);
            text += '=';
            WriteBlanks(false);
            const char quote = OneIn(2) ? '"' : '\'';
            text += quote;
            if (OneIn(4)) text += "http://www.dmg.org/PMML-4_4";
            WriteInside(std::string_view(&quote, 1));
            text += quote;
        }
        WriteBlanks(false);
        if (OneIn(3)) {
            text += "/>";
            return;
        }
        text += '>';
        for (unsigned parts = Draw(6); parts > 0; --parts) {
            const unsigned kind = Draw(8);
            if (kind < 3) WriteInside("]");
            if (kind == 3) WriteComment();
            if (kind == 4) WriteInstruction();
            if (kind == 5) {
                text += "<![CDATA[";
                WriteInside("]");
                text += "]]>";
            }
            if (kind > 5 && depth < 6) WriteElement(depth + 1);
        }
        text += "</";
        text += name;
        WriteBlanks(false);
        text += '>';
    }
    void Damage() {
        const std::size_t at = Draw(static_cast<unsigned>(text.size()) + 1);
        if (OneIn(3)) {
            text.resize(at);
        } else if (OneIn(2)) {
            text.erase(at, 1 + Draw(4));
        } else {
            text.insert(at, faults[Draw(faults.size())]);
        }
    }

    std::mt19937 random;
    std::string text;
};

/// The number of documents that the parser read.
int CountReadAlike(int documents, unsigned seed, std::size_t blanksBefore) {
    RandomMarkup markup(seed);
    int read = 0;
    for (int i = 0; i < documents; ++i) {
        std::string text = markup.Write();
        // Somewhere in the document the bytes that are read at once end.
        if (blanksBefore > 0) text.insert(0, blanksBefore - markup.Draw(static_cast<unsigned>(text.size()) + 1), '\n');
        const std::optional<std::string> plain = ReadPlain(text);
        if (!plain) continue;
        ++read;
        const std::string library = ReadByLibrary(text);
        EXPECT_EQ(*plain, library) << text.substr(text.find_first_not_of('\n'));
        if (*plain != library) break;
    }
    return read;
}

TEST(PlainParser, ReadsRandomDocumentsAsTheLibraryDoes_OrLeavesThem) {
    EXPECT_GT(CountReadAlike(3000, 1, 0), 1000);
}

TEST(PlainParser, ReadsRandomDocumentsAsTheLibraryDoes_WhereTheyAreReadInParts) {
    EXPECT_GT(CountReadAlike(300, 2, 48 * 1024), 30);
}

}  // namespace
}  // namespace nbscore::test
