#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>

/// Stands before RapidCheck's own header of this name where its library is not built for the system: properties are
/// compiled, and each tells that it was skipped. They hold rules that do not differ from system to system, and are
/// checked where the library is.
#define RC_GTEST_PROP(Suite, Name, Arguments)                                      \
    [[maybe_unused]] static void Property_##Suite##_##Name Arguments;              \
    TEST(Suite, Name) {                                                            \
        GTEST_SKIP() << "a property, and RapidCheck is not built for this system"; \
    }                                                                              \
    static void Property_##Suite##_##Name Arguments
