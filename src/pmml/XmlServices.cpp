#include "pmml/XmlServices.h"

#include "pmml/RefusalTable.h"

#ifndef _WIN32
#include <dlfcn.h>
#endif

/// In the library that has them. The version in its file's name is this one's.
extern "C" const nbscore::XmlServices* GiveXmlServices();

namespace nbscore {
namespace {

#ifdef _WIN32

const XmlServices& LoadXmlServices() {
    return *GiveXmlServices();
}

#else

[[noreturn]] void Refuse() {
    const char* const reason = dlerror();
    throw MakeRefusal(Refusal::XmlLibraryCannotStart, {reason == nullptr ? "unknown reason" : reason});
}

/// By its bare name it is searched for as those are that this library needs from the start: beside this library and in
/// the system's folders, and never in the current one. It stays loaded, because objects that it made may.
const XmlServices& LoadXmlServices() {
    void* const library = dlopen(NBSCORE_XML_FILE, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) Refuse();
    void* const give = dlsym(library, "GiveXmlServices");
    if (give == nullptr) Refuse();
    return *reinterpret_cast<decltype(&GiveXmlServices)>(give)();
}

#endif

}  // namespace

TextEncoder::~TextEncoder() = default;
XmlServices::~XmlServices() = default;

const XmlServices& GetXmlServices() {
    static const XmlServices& services = LoadXmlServices();
    return services;
}

void PrepareLoadedXmlLibrary() {
#ifndef _WIN32
    void* const loaded = dlopen(NBSCORE_XERCES_FILE, RTLD_LAZY | RTLD_NOLOAD);
    if (loaded == nullptr) return;
    dlclose(loaded);
#endif
    GetXmlServices();
}

void RethrowWithoutXmlFaults() {
    GetXmlServices().Rethrow();
    throw;  // not reached
}

}  // namespace nbscore
