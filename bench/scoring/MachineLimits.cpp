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
    Vector sum = hn::Zero(numbers);
    for (const Vector& value : values)
        sum = hn::Add(sum, value);
    return hn::GetLane(hn::SumOfLanes(numbers, sum));
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
    Vector sums[4] = {hn::Zero(tag), hn::Zero(tag), hn::Zero(tag), hn::Zero(tag)};
    for (std::size_t i = 0; i + 4 * width <= numbers.size(); i += 4 * width) {
        for (std::size_t v = 0; v < 4; ++v)
            sums[v] = hn::Add(sums[v], hn::LoadU(tag, numbers.data() + i + v * width));
    }
    return hn::GetLane(hn::SumOfLanes(tag, hn::Add(hn::Add(sums[0], sums[1]), hn::Add(sums[2], sums[3]))));
}

void WriteMemory(std::span<double> numbers, double value) {
    std::ranges::fill(numbers, value);
}

}  // namespace nbscore::bench
