#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>
#include <xercesc/dom/DOMLSSerializer.hpp>

#include <memory>
#include <string>

#include "pmml/Utf8.h"

namespace nbscore::test {

/// A document as text.
inline std::string XmlTextOf(const xercesc::DOMDocument& document) {
    const auto release = [](auto* thing) { thing->release(); };
    const XMLCh nothing[] = {0};
    auto* implementation =
        static_cast<xercesc::DOMImplementationLS*>(xercesc::DOMImplementationRegistry::getDOMImplementation(nothing));
    const std::unique_ptr<xercesc::DOMLSSerializer, decltype(release)> serializer(implementation->createLSSerializer(),
                                                                                  release);
    XMLCh* text = serializer->writeToString(&document);
    std::string utf8 = Utf8Of(text);
    xercesc::XMLPlatformUtils::fgMemoryManager->deallocate(text);
    return utf8;
}

}  // namespace nbscore::test
