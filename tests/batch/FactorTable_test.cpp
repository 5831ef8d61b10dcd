#include "batch/FactorTable.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace nbscore {
namespace {

bool IsAligned(const double* numbers) {
    return reinterpret_cast<std::uintptr_t>(numbers) % AlignedNumbers::alignment == 0;
}

TEST(FactorTable, HoldsOnes_WhereNoRowWasSet) {
    FactorTable table(4, 3);
    table.SetRow(2, std::vector<double>{0.5, 0.25, 0.125});
    const std::size_t stride = FactorTable::GetStride(3);
    const std::vector<double> rows(table.GetRows(), table.GetRows() + 4 * stride);
    EXPECT_EQ(rows, (std::vector<double>{1, 1, 1, 1, 1, 1, 1, 1, 0.5, 0.25, 0.125, 1, 1, 1, 1, 1}));
}

TEST(FactorTable, HoldsTheSameCategoryByCategory) {
    FactorTable table(4, 2);
    table.SetRow(3, std::vector<double>{0.5, 0.25});
    const double* planes = table.GetPlanes();
    ASSERT_NE(planes, nullptr);
    for (std::size_t row = 0; row < FactorTable::maxPlaneRows; ++row) {
        EXPECT_EQ(planes[row], row == 3 ? 0.5 : 1.0);
        EXPECT_EQ(planes[FactorTable::maxPlaneRows + row], row == 3 ? 0.25 : 1.0);
    }
}

TEST(FactorTable, HasPlanes_ForUpToSixteenRowsOnly) {
    EXPECT_NE(FactorTable(16, 2).GetPlanes(), nullptr);
    EXPECT_EQ(FactorTable(17, 2).GetPlanes(), nullptr);
}

TEST(FactorTable, LeavesFactorsBeyondTheCategoriesOut) {
    FactorTable table(3, 1);
    table.SetRow(2, std::vector<double>{0.5, 0.25, 0.125});
    EXPECT_EQ(table.GetRows()[2 * FactorTable::GetStride(1)], 0.5);
    EXPECT_EQ(table.GetRows()[2 * FactorTable::GetStride(1) + 1], 1.0);
}

TEST(FactorTable, LaysRowsOutInWholeVectors) {
    EXPECT_EQ(FactorTable::GetStride(1), 2u);
    EXPECT_EQ(FactorTable::GetStride(2), 2u);
    EXPECT_EQ(FactorTable::GetStride(3), 4u);
    EXPECT_EQ(FactorTable::GetStride(4), 4u);
    EXPECT_EQ(FactorTable::GetStride(5), 8u);
    EXPECT_EQ(FactorTable::GetStride(8), 8u);
    EXPECT_EQ(FactorTable::GetStride(9), 16u);
}

TEST(FactorTable, BeginsWhereTheWidestVectorsMayBeLoaded) {
    for (const std::size_t categories : {1U, 3U, 9U}) {
        const FactorTable table(5, categories);
        EXPECT_TRUE(IsAligned(table.GetRows()));
        EXPECT_TRUE(IsAligned(table.GetPlanes()));
    }
}

}  // namespace
}  // namespace nbscore
