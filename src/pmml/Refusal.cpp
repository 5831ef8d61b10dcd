#include "pmml/Refusal.h"

#include <optional>

#include "framework/NumberText.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

VeskException NotANumber(std::string_view text, const std::string& kind) {
    return {VeskException::InvalidNumber, "\"" + ExcerptOf(text) + "\" is no " + kind + "."};
}

}  // namespace

VeskException RefusalAt(Element element, VeskException::ExceptionCode code, const std::string& message) {
    VeskException refusal(code, message);
    refusal.SetPlace(element.GetPlace());
    return refusal;
}

VeskException AttributeLacking(const std::string& tag, std::string_view attribute) {
    return {VeskException::MissingAttribute, tag + " has no attribute \"" + ExcerptOf(attribute) + "\"."};
}

void RequireName(Element element, Name name, Element parent, VeskException::ExceptionCode code, const char* message) {
    if (!element.Is(name)) throw RefusalAt(element ? element : parent, code, message);
}

Element RequiredChild(Element parent, Name name) {
    if (const Element child = parent.GetChild(name)) return child;
    throw RefusalAt(parent, VeskException::UnexpectedElement,
                    parent.GetTag() + " has no child <" + std::string(SpellingOf(name)) + ">.");
}

std::string_view RequiredAttribute(Element element, Name name) {
    if (const auto value = element.GetAttribute(name)) return *value;
    return Placed(element, [&]() -> std::string_view { throw AttributeLacking(element.GetTag(), SpellingOf(name)); });
}

double RequiredDouble(Element element, Name name) {
    return DoubleAt(element, RequiredAttribute(element, name));
}

double DoubleOf(std::string_view text) {
    if (const auto number = ReadNumber(text)) return *number;
    throw NotANumber(text, "number");
}

double DoubleAt(Element element, std::string_view text) {
    return Placed(element, [text] { return DoubleOf(text); });
}

int IntOf(std::string_view text) {
    if (const auto number = ReadInt(text)) return *number;
    throw NotANumber(text, "whole number of 32 bits");
}

int IntAt(Element element, std::string_view text) {
    return Placed(element, [text] { return IntOf(text); });
}

std::string TextAt(Element element, std::string_view text, const Transcoder& transcoder) {
    return Placed(element, [&] { return transcoder.FromUtf8(text); });
}

std::string AttributeText(const Transcoder& transcoder, Element element, Name name) {
    return TextAt(element, element.GetAttributeOr(name, {}), transcoder);
}

std::string RequiredText(const Transcoder& transcoder, Element element, Name name) {
    return TextAt(element, RequiredAttribute(element, name), transcoder);
}

}  // namespace nbscore
