// XML with far too much of something. It comes through a pipe, so that it is never stored.

#include <functional>

#include "hostile/HostileTest.h"
#include "support/CollidingName.h"

namespace nbscore::test {
namespace {

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
    /// The block of this number, about a million bytes.
    std::function<std::string(int)> block;
    int blocks = 0;
    std::string end;
    /// What the command says after the name of the document.
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

/// Attributes with different names.
std::string Attributes(int number) {
    std::string block;
    for (int i = 0; i < 100'000; ++i)
        block += "a" + std::to_string(number * 100'000 + i) + "='' ";
    return block;
}

/// The same with names that collide: finding one means comparing it with all before it.
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

/// Their first 850 characters are the same, too, so that each comparison takes long.
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

TEST_P(HostileStream, IsRefusedWhereTheFaultIs) {
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

using StreamedElements = HostileTest;

/// The model of fruits, which has no fault, and after it more elements than memory holds, or than the default limit
/// allows: half of the addresses that the process may have.
TEST_F(StreamedElements, AreRefusedWhereMemoryRunsOut_WhenThereAreTooMany) {
    if (!memoryIsLimited) GTEST_SKIP() << "memory never ends here";
    const std::string elements = Filled("<a/>\n")(0);
    for (const bool isDefault : {true, false}) {
        for (std::vector<std::string> arguments : WaysToRead("/dev/stdin")) {
            if (!isDefault) arguments.insert(arguments.end(), {"--max-memory", "1G"});
            CommandCall call = LimitedCall(arguments);
            call.memoryLimit = std::uint64_t{1} << 28;
            StartedCommand command(call);
            command.WriteInput(Replace(fruitDocument, "</PMML>", ""));
            for (int i = 0; i < 100; ++i)
                command.WriteInput(elements);
            command.WriteInput("</PMML>");
            command.CloseInput();
            ExpectRefused(command.Wait(),
                          std::string("[0-9]{6,}:[0-9]: error 12: ") +
                              (isDefault ? "The document needs more memory than max-memory allows: 134217728 bytes."
                                         : "The document takes more memory than there is."));
        }
    }
}

}  // namespace
}  // namespace nbscore::test
