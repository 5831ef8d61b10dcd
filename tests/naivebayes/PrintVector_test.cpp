#include "naivebayes/Dump.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "framework/MCMV.h"

namespace {

std::string Printed(const std::vector<double>& vector, const std::string& label) {
    std::ostringstream out;
    PrintVector(out, vector, label);
    return out.str();
}

TEST(PrintVector, WritesLabelAndEmpty_WhenThereAreNoElements) {
    EXPECT_EQ(Printed({}, "Counts  "), "Counts  : <empty>\n");
}

TEST(PrintVector, WritesElementInTheSingular_WhenThereIsOne) {
    EXPECT_EQ(Printed({1.5}, "L"), "L (1 element): \n     1.5 \n");
}

TEST(PrintVector, WritesFieldsOfWidthEight_WhenThereAreSeveral) {
    EXPECT_EQ(Printed({1, 0.25}, "L"), "L (2 elements): \n       1     0.25 \n");
}

TEST(PrintVector, RoundsToFiveDigits) {
    EXPECT_EQ(Printed({1.0 / 3.0, 1234567}, "L"), "L (2 elements): \n 0.33333 1.2346e+06 \n");
}

TEST(PrintVector, StaysOnOneLine_WhenThereAreExactlyEight) {
    EXPECT_EQ(Printed({1, 2, 3, 4, 5, 6, 7, 8}, "L"),
              "L (8 elements): \n"
              "       1        2        3        4        5        6        7        8 \n");
}

TEST(PrintVector, StartsANewLine_AfterEveryEight) {
    EXPECT_EQ(Printed({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}, "L"),
              "L (17 elements): \n"
              "       1        2        3        4        5        6        7        8 \n"
              "       9       10       11       12       13       14       15       16 \n"
              "      17 \n");
}

TEST(PrintVector, WritesMissingInWords_WhenAnElementIsExactlyTheMissingValue) {
    EXPECT_EQ(Printed({MCMV::gMissingValue, 2}, "L"), "L (2 elements): \n<missing>        2 \n");
}

TEST(PrintVector, WritesNanWithoutSign_WhateverItsSignBit) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Printed({nan, -nan}, "L"), "L (2 elements): \n     nan      nan \n");
}

TEST(PrintVector, WritesInfinitiesWithTheirSign) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Printed({infinity, -infinity}, "L"), "L (2 elements): \n     inf     -inf \n");
}

TEST(PrintVector, LeavesTheStreamsPrecisionAsItWas) {
    std::ostringstream out;
    out.precision(11);
    PrintVector(out, {0.5}, "L");
    EXPECT_EQ(out.precision(), 11);
}

}  // namespace
