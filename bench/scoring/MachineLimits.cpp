#include "scoring/MachineLimits.h"

#define HWY_COMPILE_ONLY_STATIC  // for the processor that this file is compiled for
#include <hwy/highway.h>

#include <algorithm>

namespace nbscore::bench {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Numbers = hn::ScalableTag<double>;
using Vector = hn::Vec<Numbers>;
constexpr std::size_t vectorsAtOnce = 12;

double SumOf(const Vector (&values)[vectorsAtOnce]) {
    const Numbers numbers;
    Vector sum = hn::Zero(numbers);
    for (const Vector& value : values)
        sum = hn::Add(sum, value);
    return hn::GetLane(hn::SumOfLanes(numbers, sum));
}

/// @param step of one vector, a number at a time.
template <typename Step>
double Repeat(std::size_t rounds, const Step& step) {
    const Numbers numbers;
    Vector values[vectorsAtOnce];
    for (std::size_t v = 0; v < vectorsAtOnce; ++v)
        values[v] = hn::Set(numbers, 1.0 + static_cast<double>(v));
    for (std::size_t round = 0; round < rounds; ++round) {
        for (Vector& value : values)
            value = step(value);
    }
    return SumOf(values);
}

}  // namespace

std::size_t CountLanesOfARound() {
    return vectorsAtOnce * hn::Lanes(Numbers());
}

double MultiplyInRegisters(std::size_t rounds) {
    const Vector factor = hn::Set(Numbers(), 0.9999999999);
    return Repeat(rounds, [factor](Vector value) { return hn::Mul(value, factor); });
}

double DivideInRegisters(std::size_t rounds) {
    const Vector divisor = hn::Set(Numbers(), 1.0000000001);
    return Repeat(rounds, [divisor](Vector value) { return hn::Div(value, divisor); });
}

double ReadMemory(std::span<const double> numbers) {
    const Numbers tag;
    const std::size_t width = hn::Lanes(tag);
    Vector sums[vectorsAtOnce];
    for (Vector& sum : sums)
        sum = hn::Zero(tag);
    for (std::size_t i = 0; i + vectorsAtOnce * width <= numbers.size(); i += vectorsAtOnce * width) {
        for (std::size_t v = 0; v < vectorsAtOnce; ++v)
            sums[v] = hn::Add(sums[v], hn::LoadU(tag, numbers.data() + i + v * width));
    }
    return SumOf(sums);
}

void WriteMemory(std::span<double> numbers, double value) {
    std::ranges::fill(numbers, value);
}

}  // namespace nbscore::bench
