#include "XmlOutline.h"

#include <algorithm>
#include <string>

namespace nbscore::fuzz {
namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view nameEnds = " \t\r\n/>=<\"'";

class Outliner {
public:
    explicit Outliner(std::string_view document) : text(document) {}

    std::vector<ElementSpan> Outline() {
        while (Find("<")) {
            if (Begins("<!--"))
                PassBehind("-->");
            else if (Begins("<![CDATA["))
                PassBehind("]]>");
            else if (Begins("<?") || Begins("<!"))
                PassBehind(">");
            else if (Begins("</"))
                CloseElement();
            else
                OpenElement();
        }
        while (!open.empty())
            Close({text.size(), text.size()});
        return std::move(elements);
    }

private:
    bool Begins(std::string_view start) const { return text.substr(at).starts_with(start); }

    bool Find(std::string_view what) {
        at = std::min(text.find(what, at), text.size());
        return at < text.size();
    }

    void PassBehind(std::string_view what) {
        if (Find(what)) at += what.size();
    }

    void PassBlanks() { at = std::min(text.find_first_not_of(blanks, at), text.size()); }

    Span TakeName() {
        const std::size_t begin = at;
        at = std::min(text.find_first_of(nameEnds, at), text.size());
        return {begin, at};
    }

    void OpenElement() {
        ElementSpan element;
        element.whole = {at, text.size()};
        ++at;
        element.name = TakeName();
        while (TakeAttribute(element)) {
        }
        const bool isWhole = Begins("/");
        PassBehind(">");
        element.content = {at, at};
        open.push_back(elements.size());
        elements.push_back(std::move(element));
        if (isWhole) Close({at, at});
    }

    bool TakeAttribute(ElementSpan& element) {
        AttributeSpan attribute;
        const std::size_t start = at;
        PassBlanks();
        if (at == text.size() || Begins("/") || Begins(">") || Begins("<")) return false;
        attribute.whole.begin = start;
        TakeName();
        PassBlanks();
        if (!Begins("=")) return false;
        ++at;
        PassBlanks();
        if (!Begins("\"") && !Begins("'")) return false;
        const char quote = text[at];
        attribute.value.begin = ++at;
        if (!Find(std::string_view(&quote, 1))) return false;
        attribute.value.end = at++;
        attribute.whole.end = at;
        element.attributes.push_back(attribute);
        return true;
    }

    void CloseElement() {
        const std::size_t begin = at;
        PassBehind(">");
        if (!open.empty()) Close({begin, at});
    }

    /// Ends the innermost element that is open.
    void Close(const Span& tag) {
        ElementSpan& element = elements[open.back()];
        open.pop_back();
        element.content.end = tag.begin;
        element.whole.end = tag.end;
    }

    std::string_view text;
    std::size_t at = 0;
    std::vector<ElementSpan> elements;
    /// Positions in the list above, the innermost last.
    std::vector<std::size_t> open;
};

}  // namespace

std::vector<ElementSpan> OutlineOf(std::string_view text) {
    return Outliner(text).Outline();
}

}  // namespace nbscore::fuzz
