#include "framework/xml/XmlPlatform.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "framework/VeskException.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

class XmlPlatform {
public:
    XmlPlatform() {
        try {
            xercesc::XMLPlatformUtils::Initialize();
        } catch (const xercesc::XMLException& fault) {
            throw VeskException(VeskException::MalformedDocument,
                                "The XML library cannot start: " + Utf8Of(fault.getMessage()));
        }
    }
    ~XmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
    XmlPlatform(const XmlPlatform&) = delete;
    XmlPlatform& operator=(const XmlPlatform&) = delete;
};

}  // namespace

void EnsureXmlPlatform() {
    static const XmlPlatform platform;
}

}  // namespace nbscore
