#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "framework/DocumentPlace.h"
#include "framework/Export.h"

namespace nbscore {

/// What to do about a refusal of which nothing better is known.
inline constexpr std::string_view adviceForAnyRefusal =
    "Mend the document at this place; docs/documents.md says what it may hold.";

}  // namespace nbscore

/// Why a document was refused.
///
/// Thrown by value, with one deliberate exception: the mining schema's "Only one target is allowed." is thrown as
/// a pointer to a new VeskException. Code that reads documents must catch both and delete the pointer.
///
/// The message is fixed text. The place and the advice stand beside it and never inside it, so that messages can be
/// compared.
class SCOREFRAMEWORK_API VeskException : public std::exception {
public:
    enum ExceptionCode {
        UnexpectedElement = 1,
        MissingAttribute = 2,
        MalformedDocument = 3,
        UnreadableSource = 4,
        InvalidContent = 5,
        DerivedFieldExpected = 6,
        UnknownInput = 7,
        UnknownVariable = 8,
        InvalidNumber = 9,
        UnsupportedEncoding = 10,
        UnsupportedExpression = 11,
        InconsistentDocument = 12
    };

    VeskException(ExceptionCode exceptionCode, const std::string& messageText);
    /// @param adviceText what to do about it, as a sentence or two.
    VeskException(ExceptionCode exceptionCode, const std::string& messageText, std::string_view adviceText);
    ~VeskException() override;
    VeskException(const VeskException&);
    VeskException& operator=(const VeskException&);

    ExceptionCode GetCode() const noexcept { return code; }
    const std::string& GetMessage() const noexcept { return message; }
    const std::string& GetAdvice() const noexcept { return advice; }

    /// The message, for code that only knows std::exception.
    const char* what() const noexcept override;

    /// Where the fault stands. HasPlace is false until SetPlace was called.
    const nbscore::DocumentPlace& GetPlace() const noexcept { return place; }
    bool HasPlace() const noexcept { return placeKnown; }
    void SetPlace(const nbscore::DocumentPlace& faultPlace);

    /// For a thrower who knows better what to do.
    void SetAdvice(const std::string& adviceText);

    /// Names the document, leaving line, column and path as they are.
    void SetSource(const std::string& sourceName);

private:
    ExceptionCode code;
    std::string message;
    std::string advice;
    nbscore::DocumentPlace place;
    bool placeKnown = false;
};
