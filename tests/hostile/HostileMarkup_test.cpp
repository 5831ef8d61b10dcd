// XML that is much too much of something. Most of it comes through a pipe, so that nobody has to store it.

#include <filesystem>
#include <functional>

#include "hostile/HostileTest.h"
#include "support/CollidingName.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr int mega = 1'000'000;
constexpr const char* tooLong = "error 3: A tag, comment or section is longer than 8000000 bytes.";
constexpr const char* tooManyAttributes = "error 3: A tag has more than 1000 attributes.";
constexpr const char* collision =
    "error 3: The names of elements collide: more than 100 of them fall on one place of the XML parser's table.";
constexpr const char* notXml = "error 3: The document is no well-formed XML: .+";

/// A document that is written piece by piece.
struct Stream {
    std::string name;
    std::string begin;
    /// A million bytes or thereabouts, of this number.
    std::function<std::string(int)> block;
    int blocks = 0;
    std::string end;
    /// Behind the name of the document.
    std::string errorPattern;
};

void PrintTo(const Stream& stream, std::ostream* out) {
    *out << stream.name;
}

std::function<std::string(int)> Filled(std::string_view piece) {
    std::string block;
    while (block.size() < mega)
        block += piece;
    return [block](int) { return block; };
}

/// Attributes that all have names of their own.
std::string Attributes(int number) {
    std::string block;
    for (int i = 0; i < 100'000; ++i)
        block += "a" + std::to_string(number * 100'000 + i) + "='' ";
    return block;
}

/// The same, and finding any takes looking at all before it.
std::string CollidingAttributes(int number) {
    std::string block;
    for (int i = 0; i < 25'000; ++i)
        block += CollidingName(number * 25'000 + i) + "='' ";
    return block;
}

std::string CollidingElements(int number) {
    std::string block;
    for (int i = 0; i < 25'000; ++i)
        block += "<" + CollidingName(number * 25'000 + i) + "/>";
    return block;
}

/// The first 850 characters are the same too. The parser would compare all of them with all.
std::string LongCollidingElements(int number) {
    std::string block;
    for (int i = 0; i < 1000; ++i)
        block += "<" + std::string(850, 'x') + CollidingName(number * 1000 + i) + "/>";
    return block;
}

const std::vector<Stream> streams = {
    {"AGigabyteOfBrackets", "", Filled("<"), 1000, "", std::string("1:2: ") + notXml},
    {"AGigabyteOfLetters", "", Filled("a"), 1000, "", std::string("1:1: ") + notXml},
    {"AGigabyteOfBlanks", "", Filled(" \n"), 1000, "", std::string("1:1: ") + tooLong},
    {"AGigabyteOfBlanksBehindTheEnd", "<PMML/>", Filled(" "), 1000, "", std::string("1:8: ") + tooLong},
    {"AGigabyteOfHalfCharacters", "<PMML>", Filled("\xC3"), 1000, "", std::string("1:[17]: ") + notXml},
    {"MillionsOfNestedElements", "", Filled("<a>"), 10, "", "1:3001: error 3: Elements nest deeper than 1000 levels."},
    {"AnAttribute", "<PMML a='", Filled("x"), 200, "'/>", std::string("1:1: ") + tooLong},
    {"AnAttributeOfReferences", "<PMML a='", Filled("&#x41;"), 200, "'/>", std::string("1:1: ") + tooLong},
    {"TenMillionAttributes", "<PMML ", Attributes, 100, "/>", std::string("1:1: ") + tooManyAttributes},
    {"AttributesThatCollide", "<PMML ", CollidingAttributes, 5, "/>", std::string("1:1: ") + tooManyAttributes},
    {"ElementsThatCollide", "<PMML>", CollidingElements, 5, "</PMML>", std::string("1:3707: ") + collision},
    {"LongElementsThatCollide", "<PMML>", LongCollidingElements, 10, "</PMML>", std::string("1:88707: ") + collision},
    {"ANameOfAnElement", "<PMML><", Filled("x"), 200, "/></PMML>", std::string("1:7: ") + tooLong},
    {"ANameOfAnAttribute", "<PMML ", Filled("x"), 200, "=''/>", std::string("1:1: ") + tooLong},
    {"ANameOfAnEntity", "<PMML>&", Filled("x"), 200, ";</PMML>", std::string("1:7: ") + tooLong},
    {"ANameOfADocumentType", "<!DOCTYPE ", Filled("x"), 200, "><PMML/>", std::string("1:1: ") + tooLong},
    {"ATag", "<PMML", Filled(" "), 200, "/>", std::string("1:1: ") + tooLong},
    {"AnEndTag", "<PMML></PMML", Filled(" "), 200, ">", std::string("1:7: ") + tooLong},
    {"AComment", "<PMML><!--", Filled("x"), 200, "--></PMML>", std::string("1:7: ") + tooLong},
    {"ACommentOfBrackets", "<PMML><!--", Filled("<a>"), 200, "--></PMML>", std::string("1:7: ") + tooLong},
    {"ASection", "<PMML><![CDATA[", Filled("<a>"), 200, "]]></PMML>", std::string("1:7: ") + tooLong},
    {"AnInstruction", "<PMML><?x ", Filled("<a>"), 200, "?></PMML>", std::string("1:7: ") + tooLong},
    {"AnXmlDeclaration", "<?xml version='1.0'", Filled(" "), 200, "?><PMML/>", std::string("1:1: ") + notXml},
    {"AText", "<PMML>", Filled("x"), 200, "</PMML>", "1:7: error 3: A text is longer than 16000000 characters."},
    {"ATextInManyPieces", "<PMML>", Filled("xxxxxxxxxxxxxxx<!---->"), 200, "</PMML>",
     "1:7: error 3: A text is longer than 16000000 characters."},
    {"ATextOfEmptyLines", "<PMML>", Filled("\n"), 200, "</PMML>",
     "1:7: error 3: A text is longer than 16000000 characters."},
};

class HostileStream : public HostileTest, public testing::WithParamInterface<Stream> {};

}  // namespace

TEST_P(HostileStream, IsRefusedWhereItGoesWrong) {
    const Stream& stream = GetParam();
    for (const std::vector<std::string>& arguments : WaysToRead("/dev/stdin")) {
        SCOPED_TRACE(arguments.front());
        StartedCommand command(LimitedCall(arguments));
        command.WriteInput(stream.begin);
        for (int i = 0; i < stream.blocks; ++i)
            command.WriteInput(stream.block(i));
        command.WriteInput(stream.end);
        command.CloseInput();
        ExpectRefused(command.Wait(), stream.errorPattern);
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, HostileStream, testing::ValuesIn(streams),
                         [](const auto& instance) { return instance.param.name; });

namespace {

class HostileMarkup : public HostileTest {};

/// The model of fruits, which is fine, and more elements behind it than memory holds.
TEST_F(HostileMarkup, IsRefusedWhereMemoryEnds_WhenElementsAreTooMany) {
    if (!memoryIsLimited) GTEST_SKIP() << "memory never ends here";
    const std::string elements = Filled("<a/>\n")(0);
    for (const std::vector<std::string>& arguments : WaysToRead("/dev/stdin")) {
        StartedCommand command(LimitedCall(arguments));
        command.WriteInput(Replace(fruitDocument, "</PMML>", ""));
        for (int i = 0; i < 50; ++i)
            command.WriteInput(elements);
        command.WriteInput("</PMML>");
        command.CloseInput();
        ExpectRefused(command.Wait(), "[0-9]{6,}:[0-9]: error 12: The document takes more memory than there is.");
    }
}

/// Each name twice, also where a prefix is to be taken off every one.
TEST_F(HostileMarkup, IsScored_WhenElementsHaveAHundredAndFiftyThousandNames) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    for (const std::string prefix : {"", "p:"}) {
        std::string names;
        for (int i = 0; i < 300'000; ++i)
            names += "<" + prefix + "term_" + std::to_string(i % 150'000) + "/>\n";
        std::string document = Replace(fruitDocument, "<Header/>", "<Header>" + names + "</Header>");
        document = Replace(document, "<PMML", "<" + prefix + "PMML xmlns:p=\"http://www.dmg.org/PMML-4_4\"");
        folder.Write("model.pmml", Replace(document, "</PMML>", "</" + prefix + "PMML>"));
        const CommandResult result = RunLimited({"score", "model.pmml", "cases.csv"});
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_EQ(result.out, expected);
    }
}

/// A million bins, which take more than a hundred megabytes when the model is made.
TEST_F(HostileMarkup, IsRefusedAndTheNextOneChecked_WhenMemoryEndsBehindTheParser) {
    if (!memoryIsLimited) GTEST_SKIP() << "memory never ends here";
    folder.Write("large.pmml", Replace(fruitDocument, "<PairCounts value=\"0\">", "<PairCounts value=\"1000000\">"));
    const std::string refusal = "The document takes more memory than there is.";
    for (const std::string format : {"text", "json"}) {
        CommandCall call = LimitedCall({"check", "large.pmml", "model.pmml", "--format", format});
        call.memoryLimit = std::uint64_t{100} << 20;
        const CommandResult result = RunCommand(call);
        EXPECT_EQ(result.exitStatus, 3) << result.err;
        EXPECT_THAT(result.out + result.err, HasSubstr(refusal)) << format;
        const std::string sound = format == "text" ? "model.pmml: single classifier, sound" : "\"sound\": true";
        EXPECT_THAT(result.out, HasSubstr(sound)) << result.err;
    }
    EXPECT_EQ(RunLimited({"check", "large.pmml"}).exitStatus, 0);
}

TEST_F(HostileMarkup, IsRefused_WhenItIsAGigabyteOfZeros) {
    std::filesystem::resize_file(folder.Write("zeros.pmml", ""), std::uintmax_t{1} << 30);
    ExpectRefusedByAll("zeros.pmml", std::string("1:1: ") + notXml);
    EXPECT_EQ(RunLimited({"check", "zeros.pmml"}).exitStatus, 3);
}

TEST_F(HostileMarkup, IsRefused_WhenABinIsNumberedTwoBillion) {
    folder.Write("model.pmml", Replace(fruitDocument, "<PairCounts value=\"0\">", "<PairCounts value=\"2000000000\">"));
    ExpectRefusedByAll("model.pmml", "43:9: error 12: Bin number of input 'weight' 2000000000 is above 1000000.");
}

TEST_F(HostileMarkup, IsRefused_WhenItsEntitiesMultiply) {
    std::string declarations = "<!ENTITY e0 'ha'>";
    for (int i = 1; i < 10; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            declarations += "&e" + std::to_string(i - 1) + ";";
        declarations += "'>";
    }
    folder.Write("model.pmml", "<!DOCTYPE PMML [" + declarations + "]>\n<PMML>&e9;</PMML>");
    ExpectRefusedByAll("model.pmml", "1:1: error 3: A document type declaration is not accepted.");
}

TEST_F(HostileMarkup, TellsNothingOfAFile_WhenAnEntityNamesIt) {
    folder.Write("secret", "hush");
    folder.Write("model.pmml", "<!DOCTYPE PMML [<!ENTITY e SYSTEM \"secret\">]>\n" +
                                   Replace(fruitDocument.substr(fruitDocument.find("<PMML")), "<Header/>",
                                           "<Header copyright=\"mine\">&e;</Header>"));
    for (const std::vector<std::string>& arguments : WaysToRead("model.pmml")) {
        const CommandResult result = RunLimited(arguments);
        ExpectRefused(result, "1:1: error 3: A document type declaration is not accepted.");
        EXPECT_THAT(result.err, Not(HasSubstr("hush")));
    }
}

}  // namespace
}  // namespace nbscore::test
