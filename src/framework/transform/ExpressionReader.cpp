#include "framework/transform/ExpressionReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "framework/transform/ApplyReader.h"
#include "framework/transform/ConstantExpression.h"
#include "framework/transform/DiscretizeReader.h"
#include "framework/transform/ElementReading.h"
#include "framework/transform/FieldRefExpression.h"
#include "framework/transform/MapValuesReader.h"
#include "framework/transform/NormContinuousExpression.h"
#include "framework/transform/NormDiscreteExpression.h"
#include "framework/transform/TextIndexReader.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/Utf8.h"

namespace nbscore {
namespace {

struct Kind {
    std::string_view name;
    std::unique_ptr<const Expression> (*read)(const xercesc::DOMElement* element, FieldScope& scope);
};

// Aggregate and Lag look at other cases than the one at hand: they are unsupported by intent.
constexpr Kind kinds[] = {
    {"Constant", ReadConstant},         {"FieldRef", ReadFieldRef},     {"NormContinuous", ReadNormContinuous},
    {"NormDiscrete", ReadNormDiscrete}, {"Discretize", ReadDiscretize}, {"MapValues", ReadMapValues},
    {"TextIndex", ReadTextIndex},       {"Apply", ReadApply},
};

}  // namespace

std::unique_ptr<const Expression> ReadExpression(const xercesc::DOMElement* element, FieldScope& scope) {
    const XMLCh* name = element->getNodeName();
    const auto* kind = std::ranges::find_if(kinds, [name](const Kind& each) { return EqualsUtf8(name, each.name); });
    if (kind == std::end(kinds)) {
        throw RefusalAt(element, VeskException::UnsupportedExpression,
                        "The expression " + TagOf(element) + " is not supported.");
    }
    const DeeperLevel level(scope.GetCost(), element);
    return kind->read(element, scope);
}

}  // namespace nbscore
