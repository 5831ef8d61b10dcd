#include "framework/xml/ElementPaths.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <random>
#include <vector>

#include "framework/BaseTranslator.h"
#include "framework/xml/DocumentProbe.h"

namespace {

using nbscore::ElementPaths;
using xercesc::DOMElement;

constexpr const char* text = "<r>x<a><b/><!-- --><b/></a><c/><a/><c><b/></c><a/></r>";
const std::vector<std::string> paths = {"/r",      "/r/a[1]", "/r/a[1]/b[1]", "/r/a[1]/b[2]", "/r/c[1]",
                                        "/r/a[2]", "/r/c[2]", "/r/c[2]/b[1]", "/r/a[3]"};

void Collect(const DOMElement* element, std::vector<const DOMElement*>& elements) {
    for (; element != nullptr; element = BaseTranslator::GetNextSiblingElt(element)) {
        elements.push_back(element);
        Collect(BaseTranslator::GetFirstChildElt(element), elements);
    }
}

TEST(ElementPaths, CountNamesakes_InWhateverOrderTheyAreAskedFor) {
    WithDocument(text, [](DocumentProbe&, xercesc::DOMDocument& document) {
        std::vector<const DOMElement*> elements;
        Collect(document.getDocumentElement(), elements);
        ASSERT_EQ(elements.size(), paths.size());
        std::vector<std::size_t> order(paths.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::mt19937 random(3);
        for (int round = 0; round < 50; ++round) {
            ElementPaths finder;
            for (const std::size_t i : order)
                EXPECT_EQ(finder.Find(*elements[i]), paths[i]);
            for (const std::size_t i : order)
                EXPECT_EQ(finder.Find(*elements[i]), paths[i]) << "asked for again";
            std::shuffle(order.begin(), order.end(), random);
        }
    });
}

}  // namespace
