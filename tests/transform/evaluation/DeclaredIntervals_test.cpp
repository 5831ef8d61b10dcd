#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "framework/ValueInterval.h"
#include "transform/DerivedDocument.h"

namespace {

const std::vector<std::string> closures = {"openOpen", "openClosed", "closedOpen", "closedClosed"};

struct Declared {
    ValueInterval interval;
    std::string text;
};

/// Small whole numbers, so that intervals meet and overlap often.
Declared AnyInterval() {
    Declared declared;
    const int closure = *rc::gen::inRange(0, 4);
    declared.interval.closure = static_cast<ValueInterval::Closure>(closure);
    declared.text = "<Interval closure='" + closures[static_cast<std::size_t>(closure)] + "'";
    const int left = *rc::gen::inRange(-5, 5);
    const int right = left + 1 + *rc::gen::inRange(0, 3);
    const int shape = *rc::gen::inRange(0, 6);
    if (shape != 0) {
        declared.interval.leftMargin = left;
        declared.text += " leftMargin='" + std::to_string(left) + "'";
    }
    if (shape != 1) {
        declared.interval.rightMargin = right;
        declared.text += " rightMargin='" + std::to_string(right) + "'";
    }
    declared.text += "/>";
    return declared;
}

RC_GTEST_PROP(DeclaredIntervals, AllowWhatOneOfThemContains, ()) {
    std::vector<ValueInterval> intervals;
    std::string texts;
    const int count = *rc::gen::inRange(1, 8);
    for (int i = 0; i < count; ++i) {
        const Declared declared = AnyInterval();
        intervals.push_back(declared.interval);
        texts += declared.text;
    }
    const DerivedDocument document("<DataField name='x' dataType='double' optype='continuous'>" + texts +
                                       "</DataField><DataField name='s' dataType='string' optype='categorical'/>",
                                   "<DerivedField name='d' dataType='boolean'><Apply function='isValid'><FieldRef "
                                   "field='x'/></Apply></DerivedField>");
    std::vector<double> numbers = {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    for (double number = -7; number <= 10; number += 0.5)
        numbers.push_back(number);
    for (const double number : numbers) {
        const Case record(number, "");
        const bool isInside = std::ranges::any_of(
            intervals, [number](const ValueInterval& interval) { return interval.Contains(number); });
        RC_ASSERT(document.ValueOf("d", &record) == (isInside ? "text true" : "text false"));
    }
}

}  // namespace
