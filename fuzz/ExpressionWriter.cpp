#include "ExpressionWriter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "XmlCharacters.h"
#include "framework/NumberText.h"
#include "support/documents/Elements.h"
#include "transform/functions/BuiltInFunctions.h"

namespace nbscore::fuzz {
namespace {

using test::Attribute;
using test::XmlElement;

constexpr std::size_t mostElements = 40;
constexpr std::size_t mostDepth = 8;
constexpr std::size_t mostTextBytes = 40;

constexpr std::array<std::string_view, 10> patternPieces = {"a*",   "(b|c)+", "[^x]", "\\s+", "\\d{2,5}",
                                                            "(?i)", "^.$",    "\\pL", "$1",   "\\2"};
constexpr std::array<std::string_view, 24> formatPieces = {
    "%5.2f", "%d", "%-8i", "%x",   "%#o", "%X",           "%+g",  "%s", "%012.3e", "% G",      "%u", "%Y-%m-%d",
    "%j",    "%a", "%B",   "%I%p", "%T",  "%U%V%W%G%u%w", "%y%C", "%e", "%z",      "%k%l%n%t", "%c", " %% of "};
constexpr std::array<std::string_view, 8> dates = {
    "2024-02-29", "2024-02-29T23:59:59Z", "0000-01-01", "9999-12-31T00:00:00+14:00", "17:05:09", "1900",
    "1970",       "2023-12-31 12:00:00.5"};
constexpr std::array<std::string_view, 12> numbers = {"0",   "-0",  "1",     "2",      "-1",         "0.5",
                                                      "3.7", "1e9", "1e308", "1e-300", "4294967296", "1000000"};

/// An element that holds a text, which is escaped.
std::string TextElement(std::string_view name, std::string_view attributes, std::string_view text) {
    return test::XmlElement(name, attributes, test::Escaped(text));
}

/// The names of a function's parameters, of which the last one that may be repeated stands for the rest.
std::vector<std::string> NamesIn(std::string_view parameters) {
    std::vector<std::string> names(1);
    for (const char c : parameters) {
        if (c == ',') {
            names.emplace_back();
        } else if (c >= 'a' && c <= 'z') {
            names.back() += c;
        }
    }
    return names;
}

}  // namespace

ExpressionWriter::ExpressionWriter(FuzzedDataProvider& decisions, std::vector<std::string> fields,
                                   std::vector<std::string> functions)
    : source(decisions), fieldNames(std::move(fields)), functionNames(std::move(functions)) {}

std::string ExpressionWriter::Write() {
    elementsLeft = mostElements;
    depth = 0;
    return WriteNested();
}

std::string ExpressionWriter::WriteNested() {
    static constexpr std::array<Kind, 16> kinds = {
        &ExpressionWriter::WriteConstant,  &ExpressionWriter::WriteFieldRef,   &ExpressionWriter::WriteNormContinuous,
        &ExpressionWriter::WriteFieldRef,  &ExpressionWriter::WriteDiscretize, &ExpressionWriter::WriteNormDiscrete,
        &ExpressionWriter::WriteMapValues, &ExpressionWriter::WriteTextIndex,  &ExpressionWriter::WriteTextIndex,
        &ExpressionWriter::WriteCall,      &ExpressionWriter::WriteApply,      &ExpressionWriter::WriteApply,
        &ExpressionWriter::WriteApply,     &ExpressionWriter::WriteApply,      &ExpressionWriter::WriteApply,
        &ExpressionWriter::WriteApply};
    if (elementsLeft == 0 || depth >= mostDepth || source.remaining_bytes() == 0) return WriteLeaf();
    --elementsLeft;
    ++depth;
    const std::string written = (this->*kinds[Below(kinds.size())])();
    --depth;
    return written;
}

std::string ExpressionWriter::WriteLeaf() {
    return Maybe() ? WriteConstant() : WriteFieldRef();
}

std::string ExpressionWriter::WriteConstant() {
    static constexpr std::array<std::string_view, 4> truths = {"true", "false", "1", "0"};
    switch (Below(6)) {
        case 0:
            return TextElement("Constant", Attribute("dataType", "string"), AnyText());
        case 1:
            return TextElement("Constant", Attribute("dataType", "double"), AnyNumber());
        case 2:
            return TextElement("Constant", Attribute("dataType", "boolean"), OneOf(truths));
        case 3:
            return XmlElement("Constant", Attribute("missing", "true"));
        case 4:
            return TextElement("Constant", "", OneOf(dates));
        default:
            return TextElement("Constant", "", AnyText());
    }
}

std::string ExpressionWriter::WriteFieldRef() {
    return XmlElement("FieldRef", Field() + AttributeMaybe("mapMissingTo", AnyText()));
}

std::string ExpressionWriter::WriteNormContinuous() {
    std::string points;
    double orig = source.ConsumeFloatingPointInRange(-100.0, 100.0);
    for (std::size_t left = 2 + Below(3); left > 0; --left) {
        points += XmlElement("LinearNorm", Attribute("orig", FormatNumber(orig)) + Attribute("norm", AnyNumber()));
        orig += source.ConsumeFloatingPointInRange(0.0, 100.0);
    }
    return XmlElement("NormContinuous",
                      Field() + AttributeMaybe("mapMissingTo", AnyNumber()) +
                          AttributeMaybe("outliers", {"asIs", "asExtremeValues", "asMissingValues"}),
                      points);
}

std::string ExpressionWriter::WriteNormDiscrete() {
    return XmlElement("NormDiscrete",
                      Field() + Attribute("value", AnyText()) + AttributeMaybe("mapMissingTo", AnyNumber()));
}

std::string ExpressionWriter::WriteDiscretize() {
    std::string bins;
    double margin = source.ConsumeFloatingPointInRange(-100.0, 100.0);
    for (std::size_t left = Below(4); left > 0; --left) {
        const double next = margin + source.ConsumeFloatingPointInRange(0.0, 100.0);
        bins += XmlElement("DiscretizeBin", Attribute("binValue", AnyText()),
                           XmlElement("Interval", Attribute("closure", Maybe() ? "closedClosed" : "openClosed") +
                                                      Attribute("leftMargin", FormatNumber(margin)) +
                                                      Attribute("rightMargin", FormatNumber(next))));
        margin = next;
    }
    return XmlElement("Discretize",
                      Field() + AttributeMaybe("mapMissingTo", AnyText()) + AttributeMaybe("defaultValue", AnyText()) +
                          AttributeMaybe("dataType", {"double", "integer", "string", "boolean"}),
                      bins);
}

std::string ExpressionWriter::WriteMapValues() {
    const std::size_t numKeys = 1 + Below(2);
    std::string content;
    for (std::size_t key = 0; key < numKeys; ++key) {
        content += XmlElement("FieldColumnPair", Field() + Attribute("column", "k" + std::to_string(key)));
    }
    std::string rows;
    for (std::size_t left = Below(4); left > 0; --left) {
        std::string cells;
        for (std::size_t key = 0; key < numKeys; ++key)
            cells += TextElement("k" + std::to_string(key), "", AnyText());
        rows += XmlElement("row", "", cells + (Maybe() ? "" : TextElement("out", "", AnyText())));
    }
    return XmlElement("MapValues",
                      Attribute("outputColumn", "out") + AttributeMaybe("mapMissingTo", AnyText()) +
                          AttributeMaybe("defaultValue", AnyText()) +
                          AttributeMaybe("dataType", {"double", "integer", "string", "boolean"}),
                      content + XmlElement("InlineTable", "", rows));
}

std::string ExpressionWriter::WriteTextIndex() {
    std::string content;
    for (std::size_t left = Below(3); left > 0; --left)
        content += WriteNormalization();
    return XmlElement(
        "TextIndex",
        Attribute("textField", OneOf(fieldNames)) +
            AttributeMaybe("localTermWeights",
                           {"termFrequency", "binary", "logarithmic", "augmentedNormalizedTermFrequency"}) +
            AttributeMaybe("isCaseSensitive", {"true", "false"}) +
            AttributeMaybe("maxLevenshteinDistance", {"0", "1", "2", "50"}) +
            AttributeMaybe("countHits", {"allHits", "bestHits"}) +
            AttributeMaybe("wordSeparatorCharacterRE", AnyPattern()) + AttributeMaybe("tokenize", {"true", "false"}),
        content + WriteNested());
}

std::string ExpressionWriter::WriteNormalization() {
    std::string rows;
    for (std::size_t left = 1 + Below(3); left > 0; --left) {
        const bool isPattern = Maybe();
        rows += XmlElement("row", "",
                           TextElement("string", "", isPattern ? AnyPattern() : AnyText()) +
                               TextElement("stem", "", AnyText()) + (isPattern ? XmlElement("regex", "", "true") : ""));
    }
    return XmlElement("TextIndexNormalization",
                      AttributeMaybe("recursive", {"true", "false"}) + AttributeMaybe("tokenize", {"true", "false"}) +
                          AttributeMaybe("maxLevenshteinDistance", {"0", "1", "3"}),
                      XmlElement("InlineTable", "", rows));
}

std::string ExpressionWriter::WriteApply() {
    const std::span<const BuiltInFunction> functions = GetBuiltInFunctions();
    const BuiltInFunction& function = functions[Below(functions.size())];
    const std::size_t most = std::min(function.mostArguments, function.fewestArguments + 2);
    const std::size_t count = function.fewestArguments + Below(most - function.fewestArguments + 1);
    const std::vector<std::string> names = NamesIn(function.parameters);
    std::string content;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& name = names[std::min(i, names.size() - 1)];
        content += WriteArgument(function.family == "Formatting" && name == "pattern" ? "format" : name);
    }
    return XmlElement("Apply",
                      Attribute("function", function.name) + AttributeMaybe("mapMissingTo", AnyText()) +
                          AttributeMaybe("defaultValue", AnyText()) +
                          AttributeMaybe("invalidValueTreatment", {"returnInvalid", "asMissing", "asIs"}),
                      content);
}

std::string ExpressionWriter::WriteCall() {
    if (functionNames.empty()) return WriteLeaf();
    return XmlElement("Apply", Attribute("function", OneOf(functionNames)), WriteNested() + WriteNested());
}

std::string ExpressionWriter::WriteArgument(std::string_view parameter) {
    if (Maybe()) return WriteNested();
    const std::string asText = Attribute("dataType", "string");
    if (parameter == "format") return TextElement("Constant", asText, AnyFormat());
    if (parameter == "pattern" || parameter == "replacement") return TextElement("Constant", asText, AnyPattern());
    if (parameter.starts_with("date")) return TextElement("Constant", asText, OneOf(dates));
    return WriteNested();
}

std::string ExpressionWriter::Field() {
    return Attribute("field", OneOf(fieldNames));
}

std::string ExpressionWriter::AttributeMaybe(std::string_view name, const std::string& value) {
    return Maybe() ? Attribute(name, value) : "";
}

std::string ExpressionWriter::AttributeMaybe(std::string_view name, std::initializer_list<std::string_view> words) {
    return Maybe() ? Attribute(name, OneOf(words)) : "";
}

std::string ExpressionWriter::AnyText() {
    switch (Below(4)) {
        case 0:
            return AnyNumber();
        case 1:
            return OneOf(dates);
        default:
            return AsXmlCharacters(source.ConsumeRandomLengthString(mostTextBytes));
    }
}

std::string ExpressionWriter::AnyNumber() {
    return Maybe() ? FormatNumber(source.ConsumeFloatingPointInRange(-1000.0, 1000.0)) : OneOf(numbers);
}

std::string ExpressionWriter::AnyPattern() {
    std::string pattern;
    for (std::size_t left = Below(4); left > 0; --left)
        pattern += OneOf(patternPieces);
    return pattern + (Maybe() ? AnyText() : "");
}

std::string ExpressionWriter::AnyFormat() {
    const std::string format = OneOf(formatPieces);
    return Maybe() ? format + OneOf(formatPieces) + AnyText() : format;
}

}  // namespace nbscore::fuzz
