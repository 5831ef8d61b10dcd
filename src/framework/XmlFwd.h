#pragma once

/// @file
/// The XML classes that the framework's headers only mention.

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
class DOMNodeList;
XERCES_CPP_NAMESPACE_END
