#include <gtest/gtest.h>

#include <vector>

#include "batch/InstructionSets.h"
#include "batch/Loops.h"

namespace nbscore {
namespace {

class Transposition : public test::WithInstructionSet {};

TEST_P(Transposition, TurnsRowsIntoColumns_AndTouchesNothingElse) {
    constexpr std::size_t longest = 35;
    constexpr std::size_t pitch = longest + 2;
    std::vector<double> from(longest * pitch);
    for (std::size_t i = 0; i < from.size(); ++i)
        from[i] = static_cast<double>(i);
    for (std::size_t rows = 1; rows <= longest; ++rows) {
        for (std::size_t columns = 1; columns <= longest; columns += columns < 18 ? 1 : 5) {
            std::vector<double> to(longest * pitch, -1.0);
            Transpose(from.data(), pitch, rows, columns, to.data(), pitch);
            for (std::size_t c = 0; c < longest; ++c) {
                for (std::size_t r = 0; r < pitch; ++r) {
                    const bool isInside = c < columns && r < rows;
                    ASSERT_EQ(to[c * pitch + r], isInside ? from[r * pitch + c] : -1.0)
                        << rows << " rows, " << columns << " columns: row " << r << ", column " << c;
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, Transposition, testing::ValuesIn(test::InstructionSets()),
                         test::NameOfInstructionSet);

}  // namespace
}  // namespace nbscore
