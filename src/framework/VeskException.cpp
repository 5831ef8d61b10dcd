#include "framework/VeskException.h"

VeskException::VeskException(ExceptionCode exceptionCode, const std::string& messageText)
    : VeskException(exceptionCode, messageText, nbscore::adviceForAnyRefusal) {}

VeskException::VeskException(ExceptionCode exceptionCode, const std::string& messageText, std::string_view adviceText)
    : code(exceptionCode), message(messageText), advice(adviceText) {}

VeskException::~VeskException() = default;

VeskException::VeskException(const VeskException&) = default;

VeskException& VeskException::operator=(const VeskException&) = default;

const char* VeskException::what() const noexcept {
    return message.c_str();
}

void VeskException::SetPlace(const nbscore::DocumentPlace& faultPlace) {
    place = faultPlace;
    placeKnown = true;
}

void VeskException::SetAdvice(const std::string& adviceText) {
    advice = adviceText;
}

void VeskException::SetSource(const std::string& sourceName) {
    place.source = sourceName;
}
