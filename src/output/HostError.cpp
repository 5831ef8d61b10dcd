#include "output/HostError.h"

#include <exception>
#include <memory>
#include <new>

#include "framework/Limits.h"
#include "framework/VeskException.h"

namespace nbscore {

void RethrowPluginFailure(const std::string& whatWasDone) {
    try {
        throw;
        // Plug-ins throw some by pointer.
    } catch (const VeskException* thrown) {
        const std::unique_ptr<const VeskException> owned(thrown);
        throw VeskException(*owned);
    } catch (const VeskException& thrown) {
        throw VeskException(thrown);  // a copy: the plug-in's may be of a class of its own
    } catch (const CancelledError& thrown) {
        throw CancelledError(thrown);
    } catch (const InputOutputError& thrown) {
        throw InputOutputError(thrown);
    } catch (const std::bad_alloc&) {
        throw std::bad_alloc();
    } catch (const std::exception& thrown) {
        throw InputOutputError(whatWasDone + " failed: " + thrown.what());
    } catch (...) {
        throw InputOutputError(whatWasDone + " failed for a reason unknown");
    }
}

}  // namespace nbscore
