#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "framework/Export.h"
#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"
#include "pmml/RefusalTable.h"
#include "pmml/Transcoder.h"

/// @file
/// Refusals of documents at an element, and the small steps that end in one where an attribute is not as it must be.

namespace nbscore {

/// The exception for a refusal (MakeRefusal), with the place of the element at fault.
SCOREFRAMEWORK_API VeskException RefusalAt(Element element, Refusal id,
                                           std::initializer_list<std::string_view> arguments = {});

/// Does something that knows no place, and gives its complaint the element's.
template <typename Work>
auto Placed(Element element, const Work& work) {
    try {
        return work();
    } catch (VeskException& refusal) {
        refusal.SetPlace(element.GetPlace());
        throw;
    }
}

/// Refuses the document unless the element is there and has this name. The fault stands at the element, or at
/// its parent when there is none.
SCOREFRAMEWORK_API void RequireName(Element element, Name name, Element parent, Refusal id);

/// A required attribute; throws VeskException 2 with the element's place.
/// @param id whose message says the element's tag and the attribute's name.
SCOREFRAMEWORK_API std::string_view RequiredAttribute(Element element, Name name,
                                                      Refusal id = Refusal::AttributeMissing);
/// The same as a number; throws VeskException 2 or 9 with the element's place.
SCOREFRAMEWORK_API double RequiredDouble(Element element, Name name, Refusal id = Refusal::AttributeMissing);

/// The finite number, or the whole number of 32 bits, that a text holds; throws VeskException 9 naming the text,
/// without a place.
double DoubleOf(std::string_view text);
int IntOf(std::string_view text, Refusal id = Refusal::NoWholeNumber);
/// Any text of an element (an attribute's, mostly) as a number; throws VeskException 9 with the element's place.
SCOREFRAMEWORK_API double DoubleAt(Element element, std::string_view text);
/// @param id what a text that is no whole number is refused with.
SCOREFRAMEWORK_API int IntAt(Element element, std::string_view text, Refusal id = Refusal::NoWholeNumber);

/// A text of the element in the transcoder's encoding; throws VeskException 10 with the element's place when the
/// encoding cannot hold it.
SCOREFRAMEWORK_API std::string TextAt(Element element, std::string_view text, const Transcoder& transcoder);
/// An attribute in the transcoder's encoding, empty where it is not there; of a required one, throws VeskException 2.
SCOREFRAMEWORK_API std::string AttributeText(const Transcoder& transcoder, Element element, Name name);
SCOREFRAMEWORK_API std::string RequiredText(const Transcoder& transcoder, Element element, Name name,
                                            Refusal id = Refusal::AttributeMissing);

/// The position of the attribute among the words; 0 when the element has no such attribute. Throws VeskException 5,
/// with all the words, for any other.
SCOREFRAMEWORK_API std::size_t WordAttribute(Element element, Name name, std::span<const std::string_view> words);
/// true, false, 1 or 0; nothing when the element has no such attribute. Throws VeskException 5 for any other word.
SCOREFRAMEWORK_API std::optional<bool> FlagAttribute(Element element, Name name);

}  // namespace nbscore
