#pragma once

#include <gtest/gtest.h>

#include <string>

namespace nbscore::test {

/// The message of the exception of this class that is thrown; the test fails when none is.
template <typename Exception, typename Action>
std::string GetMessageOf(Action action) {
    try {
        action();
    } catch (const Exception& thrown) {
        return thrown.what();
    } catch (const std::exception& thrown) {
        ADD_FAILURE() << "another class of exception: " << thrown.what();
        return {};
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

}  // namespace nbscore::test
