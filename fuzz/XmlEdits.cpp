#include "XmlEdits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "XmlOutline.h"

/// The fuzzer's own change of a few bytes, which knows its dictionary.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace nbscore::fuzz {
namespace {

using test::OneIn;
using test::OneOf;
using test::Randomness;

constexpr std::array<std::string_view, 30> oddTexts = {
    "",    "0",     "-0",         "1",           "2",       "-1",      "0.5",    "1e308", "-1e308",     "1e-320",
    "NaN", "INF",   "2000000000", "4294967296",  "1000000", "1000001", "999999", "1e309", "0x10",       "1,5",
    " 1 ", "&#10;", "&#x1F600;",  "&#x301;&#9;", "true",    "false",   "(",      "a*",    "2024-02-29", "%s"};

/// A text with its outline, about to be changed at random.
class Draft {
public:
    Draft(std::string& document, Randomness& draws) : text(document), elements(OutlineOf(document)), random(draws) {}

    bool IsEmpty() const { return elements.empty(); }
    const ElementSpan& AnyElement() { return OneOf(elements, random); }
    std::string TextOf(const Span& span) const { return std::string(span.In(text)); }
    void Replace(const Span& span, std::string_view by) { text.replace(span.begin, span.Size(), by); }

    /// Null when there are none.
    const AttributeSpan* AnyAttribute() {
        std::vector<const AttributeSpan*> all;
        for (const ElementSpan& element : elements) {
            for (const AttributeSpan& attribute : element.attributes)
                all.push_back(&attribute);
        }
        return all.empty() ? nullptr : OneOf(all, random);
    }

    std::string Mutated(std::string bytes) {
        const std::size_t size = bytes.size();
        bytes.resize(size + 64);
        bytes.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()), size, bytes.size()));
        return bytes;
    }

    /// Another text for a value in the document.
    std::string OtherText(const std::string& old) {
        const AttributeSpan* const other = AnyAttribute();
        if (other == nullptr || OneIn(4, random)) return std::string(OneOf(oddTexts, random));
        return OneIn(4, random) ? Mutated(old) : TextOf(other->value);
    }

    /// At the start of an element's content, or after the element.
    std::size_t AnyPlaceForElement() {
        const ElementSpan& element = AnyElement();
        return OneIn(2, random) && element.content.Size() > 0 ? element.content.begin : element.whole.end;
    }

    std::string& text;
    std::vector<ElementSpan> elements;
    Randomness& random;
};

void DropElement(Draft& draft) {
    draft.Replace(draft.AnyElement().whole, "");
}

void RepeatElement(Draft& draft) {
    const Span whole = draft.AnyElement().whole;
    draft.text.insert(whole.end, draft.TextOf(whole));
}

void CopyElement(Draft& draft) {
    const std::string copy = draft.TextOf(draft.AnyElement().whole);
    draft.text.insert(draft.AnyPlaceForElement(), copy);
}

void SwapElements(Draft& draft) {
    Span first = draft.AnyElement().whole;
    Span second = draft.AnyElement().whole;
    if (second.begin < first.begin) std::swap(first, second);
    if (first.end > second.begin) return;
    const std::string front = draft.TextOf(first);
    const std::string back = draft.TextOf(second);
    draft.Replace(second, front);
    draft.Replace(first, back);
}

void ReplaceElement(Draft& draft) {
    const std::string copy = draft.TextOf(draft.AnyElement().whole);
    draft.Replace(draft.AnyElement().whole, copy);
}

/// Replaces an element by its content.
void UnwrapElement(Draft& draft) {
    const ElementSpan& element = draft.AnyElement();
    draft.Replace(element.whole, draft.TextOf(element.content));
}

void RenameElement(Draft& draft) {
    const ElementSpan& element = draft.AnyElement();
    const std::string oldName = draft.TextOf(element.name);
    const std::string newName = OneIn(8, draft.random) ? draft.Mutated(oldName) : draft.TextOf(draft.AnyElement().name);
    const std::size_t closing = draft.text.rfind(oldName, element.whole.end - oldName.size());
    if (element.content.end < element.whole.end && closing != std::string::npos && closing > element.content.end) {
        draft.Replace({closing, closing + oldName.size()}, newName);
    }
    draft.Replace(element.name, newName);
}

void ChangeContent(Draft& draft) {
    const Span content = draft.AnyElement().content;
    if (content.Size() > 0) draft.Replace(content, draft.OtherText(draft.TextOf(content)));
}

void DropAttribute(Draft& draft) {
    if (const AttributeSpan* const attribute = draft.AnyAttribute()) draft.Replace(attribute->whole, "");
}

void ChangeAttribute(Draft& draft) {
    const AttributeSpan* const attribute = draft.AnyAttribute();
    if (attribute == nullptr) return;
    std::string value = draft.OtherText(draft.TextOf(attribute->value));
    std::erase_if(value, [](char c) { return c == '"' || c == '\'' || c == '<'; });
    draft.Replace(attribute->value, value);
}

/// Gives an element an attribute of another one.
void CopyAttribute(Draft& draft) {
    const AttributeSpan* const attribute = draft.AnyAttribute();
    if (attribute == nullptr) return;
    draft.text.insert(draft.AnyElement().name.end, draft.TextOf(attribute->whole));
}

/// Changing values is the most fruitful, so it is drawn more often.
constexpr std::array<void (*)(Draft&), 14> edits = {
    DropElement,   RepeatElement, CopyElement,   SwapElements,    ReplaceElement,  UnwrapElement,   RenameElement,
    ChangeContent, DropAttribute, CopyAttribute, ChangeAttribute, ChangeAttribute, ChangeAttribute, ChangeAttribute};

}  // namespace

bool EditXml(std::string& text, Randomness& random) {
    Draft draft(text, random);
    if (draft.IsEmpty()) return false;
    OneOf(edits, random)(draft);
    return true;
}

bool SpliceXml(std::string& text, std::string_view other, Randomness& random) {
    Draft draft(text, random);
    const std::vector<ElementSpan> donors = OutlineOf(other);
    if (draft.IsEmpty() || donors.empty()) return false;
    const std::string_view piece = OneOf(donors, random).whole.In(other);
    if (OneIn(2, random)) {
        draft.Replace(draft.AnyElement().whole, piece);
    } else {
        draft.text.insert(draft.AnyPlaceForElement(), piece);
    }
    return true;
}

}  // namespace nbscore::fuzz
