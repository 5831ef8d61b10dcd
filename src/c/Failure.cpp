#include "c/Failure.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "framework/Limits.h"
#include "framework/VeskException.h"
#include "output/HostError.h"

namespace nbscore {
namespace {

/// More than any version of a struct will have: what is larger was never set.
constexpr std::size_t largestOptions = 4096;

/// An error with the texts that it shows.
struct OwnedError : nbscore_error {
    OwnedError(std::int32_t errorKind, std::string messageText)
        : nbscore_error(), messageOwned(std::move(messageText)) {
        kind = errorKind;
        Show();
    }
    explicit OwnedError(const VeskException& refusal)
        : nbscore_error(),
          messageOwned(refusal.GetMessage()),
          adviceOwned(refusal.GetAdvice()),
          place(refusal.GetPlace()) {
        const bool isUnreadable = refusal.GetCode() == VeskException::UnreadableSource;
        kind = isUnreadable ? NBSCORE_UNREADABLE : NBSCORE_REFUSED;
        code = static_cast<std::int32_t>(refusal.GetCode());
        line = place.line;
        column = place.column;
        Show();
    }

private:
    void Show() {
        message = messageOwned.c_str();
        advice = adviceOwned.c_str();
        file = place.source.c_str();
        path = place.elementPath.c_str();
    }

    std::string messageOwned;
    std::string adviceOwned;
    DocumentPlace place;
};

/// Stands for every error that there is no memory for; it is never freed.
const nbscore_error outOfMemory = {NBSCORE_OUT_OF_MEMORY, 0, 0, 0, "Memory ran out.", "", "", ""};

/// Throws std::bad_alloc.
std::unique_ptr<OwnedError> CopyException() {
    const auto make = [](std::int32_t kind, const char* message) {
        return std::make_unique<OwnedError>(kind, message);
    };
    try {
        throw;
    } catch (const VeskException& refusal) {
        return std::make_unique<OwnedError>(refusal);
    } catch (const CancelledError& error) {
        return make(NBSCORE_CANCELLED, error.what());
    } catch (const InputOutputError& error) {
        return make(NBSCORE_UNREADABLE, error.what());
    } catch (const BadCases& error) {
        return make(NBSCORE_BAD_CASES, error.what());
    } catch (const UnscorableModelError& error) {
        return make(NBSCORE_REFUSED, error.what());
    } catch (const BadArgument& error) {
        return make(NBSCORE_BAD_ARGUMENT, error.what());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::length_error&) {
        // More than any memory could hold.
        throw std::bad_alloc();
    } catch (const std::exception& error) {
        return make(NBSCORE_FAILED, error.what());
    } catch (...) {
        return make(NBSCORE_FAILED, "The library failed for a reason unknown.");
    }
}

/// Never null.
nbscore_error* MakeErrorOfException() noexcept {
    try {
        return CopyException().release();
    } catch (...) {
        return const_cast<nbscore_error*>(&outOfMemory);
    }
}

}  // namespace

void RefuseNull(const char* name) {
    throw BadArgument(std::string(name) + " is null.");
}

void RequireChoice(std::int32_t choice, std::int32_t last, const char* name) {
    if (choice >= 0 && choice <= last) return;
    throw BadArgument(std::string(name) + " is " + std::to_string(choice) + ", and must be from 0 to " +
                      std::to_string(last) + ".");
}

void RequireKnownOptions(const void* options, std::size_t givenSize, std::size_t knownSize) {
    if (givenSize < knownSize || givenSize > largestOptions) {
        throw BadArgument("The size of the options is " + std::to_string(givenSize) +
                          ": set it to that of their struct.");
    }
    const auto* const bytes = static_cast<const unsigned char*>(options);
    if (std::all_of(bytes + knownSize, bytes + givenSize, [](unsigned char byte) { return byte == 0; })) return;
    throw BadArgument("The options ask for what only a newer version of this library knows.");
}

std::int32_t GiveErrorOfException(nbscore_error** error) noexcept {
    nbscore_error* const failure = MakeErrorOfException();
    const std::int32_t kind = failure->kind;
    if (error != nullptr) {
        *error = failure;
    } else {
        nbscore_error_free(failure);
    }
    return kind;
}

}  // namespace nbscore

void nbscore_error_free(nbscore_error* error) {
    if (error != &nbscore::outOfMemory) delete static_cast<nbscore::OwnedError*>(error);
}
