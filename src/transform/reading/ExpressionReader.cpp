#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <iterator>

#include "pmml/Refusal.h"
#include "transform/evaluation/ConstantExpression.h"
#include "transform/evaluation/FieldRefExpression.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

struct Kind {
    Name name;
    std::unique_ptr<const Expression> (*read)(Element element, FieldScope& scope);
};

// Aggregate and Lag look at other cases than the one at hand: they are unsupported by intent.
constexpr Kind kinds[] = {
    {Name::Constant, ReadConstant},
    {Name::FieldRef, ReadFieldRef},
    {Name::NormContinuous, ReadNormContinuous},
    {Name::NormDiscrete, ReadNormDiscrete},
    {Name::Discretize, ReadDiscretize},
    {Name::MapValues, ReadMapValues},
    {Name::TextIndex, ReadTextIndex},
    {Name::Apply, ReadApply},
};

}  // namespace

std::unique_ptr<const Expression> ReadExpression(Element element, FieldScope& scope) {
    const auto* kind = std::ranges::find(kinds, element.GetName(), &Kind::name);
    if (kind == std::end(kinds)) {
        throw RefusalAt(element, VeskException::UnsupportedExpression,
                        "The expression " + element.GetTag() + " is not supported.");
    }
    const DeeperLevel level(scope.GetCost(), element);
    return kind->read(element, scope);
}

}  // namespace nbscore
