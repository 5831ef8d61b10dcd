#pragma once

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdint>
#include <string>
#include <vector>

namespace nbscore::test {

/// Those that the loops are compiled for and this processor has.
inline std::vector<std::int64_t> InstructionSets() {
    std::vector<std::int64_t> sets;
    for (std::int64_t left = hwy::SupportedTargets() & HWY_TARGETS; left != 0; left &= left - 1)
        sets.push_back(left & -left);
    return sets;
}

/// A test that runs with each set of instructions.
class WithInstructionSet : public testing::TestWithParam<std::int64_t> {
protected:
    void SetUp() override { hwy::SetSupportedTargetsForTest(GetParam()); }
    void TearDown() override { hwy::SetSupportedTargetsForTest(0); }
};

inline std::string NameOfInstructionSet(const testing::TestParamInfo<std::int64_t>& parameter) {
    return hwy::TargetName(parameter.param);
}

}  // namespace nbscore::test
