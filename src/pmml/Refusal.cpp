#include "pmml/Refusal.h"

#include <algorithm>

#include "framework/NumberText.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// A comma is what most texts that are no number have in them.
VeskException NotANumber(std::string_view text, Refusal id, Refusal idWithComma) {
    const std::string excerpt = ExcerptOf(text);
    return MakeRefusal(excerpt.find(',') == std::string::npos ? id : idWithComma, {excerpt});
}

/// "a, b or c".
std::string Listed(std::span<const std::string_view> words) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) list += i + 1 < words.size() ? ", " : " or ";
        list += words[i];
    }
    return list;
}

}  // namespace

VeskException RefusalAt(Element element, Refusal id, std::initializer_list<std::string_view> arguments) {
    VeskException refusal = MakeRefusal(id, arguments);
    refusal.SetPlace(element.GetPlace());
    return refusal;
}

void RequireName(Element element, Name name, Element parent, Refusal id) {
    if (!element.Is(name)) throw RefusalAt(element ? element : parent, id);
}

std::string_view RequiredAttribute(Element element, Name name, Refusal id) {
    if (const auto value = element.GetAttribute(name)) return *value;
    throw RefusalAt(element, id, {element.GetTag(), SpellingOf(name)});
}

double RequiredDouble(Element element, Name name, Refusal id) {
    return DoubleAt(element, RequiredAttribute(element, name, id));
}

double DoubleOf(std::string_view text) {
    if (const auto number = ReadNumber(text)) return *number;
    throw NotANumber(text, Refusal::NoNumber, Refusal::NoNumberWithComma);
}

double DoubleAt(Element element, std::string_view text) {
    return Placed(element, [text] { return DoubleOf(text); });
}

int IntOf(std::string_view text, Refusal id) {
    if (const auto number = ReadInt(text)) return *number;
    throw NotANumber(text, id, Refusal::NoWholeNumberWithComma);
}

int IntAt(Element element, std::string_view text, Refusal id) {
    return Placed(element, [&] { return IntOf(text, id); });
}

std::string TextAt(Element element, std::string_view text, const Transcoder& transcoder) {
    return Placed(element, [&] { return transcoder.FromUtf8(text); });
}

std::string AttributeText(const Transcoder& transcoder, Element element, Name name) {
    return TextAt(element, element.GetAttributeOr(name, {}), transcoder);
}

std::string RequiredText(const Transcoder& transcoder, Element element, Name name, Refusal id) {
    return TextAt(element, RequiredAttribute(element, name, id), transcoder);
}

std::size_t WordAttribute(Element element, Name name, std::span<const std::string_view> words) {
    const auto word = element.GetAttribute(name);
    if (!word) return 0;
    const auto found = std::ranges::find(words, *word);
    if (found == words.end()) {
        throw RefusalAt(element, Refusal::NoListedWord,
                        {ExcerptOf(*word), SpellingOf(name), element.GetTag(), Listed(words)});
    }
    return static_cast<std::size_t>(found - words.begin());
}

std::optional<bool> FlagAttribute(Element element, Name name) {
    static constexpr std::string_view words[] = {"true", "1", "false", "0"};
    if (!element.Has(name)) return std::nullopt;
    return WordAttribute(element, name, words) < 2;
}

}  // namespace nbscore
