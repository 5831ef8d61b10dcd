#pragma once

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <new>
#include <string>

#include "framework/VeskException.h"
#include "framework/xml/Utf8.h"

namespace nbscore {

/// Runs a step over the XML library; what the library throws leaves as VeskException 3 or std::bad_alloc, so that
/// no caller has to know the library.
template <typename Step>
auto WithoutXmlFaults(const Step& step) {
    const auto refusal = [](const XMLCh* text) {
        return VeskException(VeskException::MalformedDocument, "The document cannot be read: " + Utf8Of(text));
    };
    try {
        return step();
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const xercesc::XMLException& fault) {
        throw refusal(fault.getMessage());
    } catch (const xercesc::DOMException& fault) {
        throw refusal(fault.getMessage());
    } catch (const xercesc::SAXException& fault) {
        throw refusal(fault.getMessage());
    }
}

}  // namespace nbscore
