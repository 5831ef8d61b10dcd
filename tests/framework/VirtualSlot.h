#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <vector>

/// Where in a virtual table an operation stands can be read off a pointer to it under the Itanium C++ ABI on
/// x86-64: the first word of a pointer to a virtual operation is 1 plus the offset in the table.
#if defined(__GXX_ABI_VERSION) && (defined(__x86_64__) || defined(_M_X64)) && !defined(_MSC_VER)
constexpr bool virtualSlotsAreKnown = true;
#else
constexpr bool virtualSlotsAreKnown = false;
#endif

/// A virtual destructor declared first takes two slots, so the first operation behind it has this one.
constexpr std::ptrdiff_t firstSlotAfterDestructor = 2;

/// The slot of an operation in its class's virtual table; -1 when the operation is not virtual.
template <class Operation>
std::ptrdiff_t VirtualSlot(Operation operation) {
    std::array<std::ptrdiff_t, 2> words{};
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words.data(), &operation, sizeof words);
    const bool isVirtual = (words[0] & 1) != 0;
    return isVirtual ? (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) : -1;
}

/// Expects operations to stand one behind the other, from the one behind the destructor on.
template <class... Operations>
void ExpectInOrder(Operations... operations) {
    if (!virtualSlotsAreKnown) GTEST_SKIP() << "pointers to operations do not tell their slot on this platform";
    const std::vector<std::ptrdiff_t> slots{VirtualSlot(operations)...};
    for (std::size_t i = 0; i < slots.size(); ++i)
        EXPECT_EQ(slots[i], firstSlotAfterDestructor + static_cast<std::ptrdiff_t>(i)) << "operation " << i;
}
