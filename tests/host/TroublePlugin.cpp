#include <exception>
#include <istream>

#include "framework/ScoreTranslator.h"
#include "framework/VeskException.h"

namespace {

/// Classes whose code goes when this library is unloaded.
class HomeMadeError : public std::exception {
public:
    const char* what() const noexcept override { return "made at home"; }
};

class HomeMadeRefusal : public VeskException {
public:
    HomeMadeRefusal() : VeskException(InvalidContent, "refused at home") {}
    const char* what() const noexcept override { return "not to be called any more"; }
};

/// Fails in the way that the document's name says.
class TroubleTranslator : public ScoreTranslator {
public:
    ScoreModel* ParseFromTree(const std::string& path, const std::string&) override {
        if (path == "pointer") throw new VeskException(VeskException::InvalidContent, "thrown as a pointer");
        if (path == "value") throw VeskException(VeskException::InvalidNumber, "thrown by value");
        if (path == "unreadable") throw VeskException(VeskException::UnreadableSource, "no such thing");
        if (path == "refusal of its own") throw HomeMadeRefusal();
        if (path == "error of its own") throw HomeMadeError();
        if (path == "number") throw 42;
        return nullptr;
    }
    ScoreModel* ParseFromTree(std::istream&, const std::string&) override { return nullptr; }
    ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }
    ScoreModel* ParseFromTree(std::istream&, const std::string&, const std::string&) override { return nullptr; }
};

}  // namespace

extern "C" NBSCORE_SYMBOL_EXPORT ScoreTranslator* GiveMyTranslator() {
    return new TroubleTranslator;
}
