#include "framework/xml/ElementPaths.h"

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include <vector>

#include "framework/xml/Utf8.h"

namespace nbscore {

using xercesc::DOMNode;

std::string ElementPaths::Find(const xercesc::DOMElement& element) {
    std::vector<const DOMNode*> ancestry;
    for (const DOMNode* node = &element; node && node->getNodeType() == DOMNode::ELEMENT_NODE;
         node = node->getParentNode())
        ancestry.push_back(node);
    std::string path;
    for (auto step = ancestry.rbegin(); step != ancestry.rend(); ++step) {
        path += "/" + Utf8Of((*step)->getNodeName());
        const bool isRoot = step == ancestry.rbegin();
        if (!isRoot) path += "[" + std::to_string(PositionAmongNamesakes(**step)) + "]";
    }
    return path;
}

std::size_t ElementPaths::PositionAmongNamesakes(const DOMNode& element) {
    std::size_t position = 0;
    for (const DOMNode* node = &element; node; node = node->getPreviousSibling()) {
        const bool isNamesake = node->getNodeType() == DOMNode::ELEMENT_NODE &&
                                xercesc::XMLString::equals(node->getNodeName(), element.getNodeName());
        if (!isNamesake) continue;
        if (const auto counted = positions.find(node); counted != positions.end()) {
            position += counted->second;
            break;
        }
        ++position;
    }
    positions[&element] = position;
    return position;
}

}  // namespace nbscore
