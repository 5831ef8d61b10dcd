#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace nbscore::test {

/// A terminal with a test in the place of keyboard and screen.
class PseudoTerminal {
public:
    PseudoTerminal() : master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        EXPECT_EQ(grantpt(master), 0);
        EXPECT_EQ(unlockpt(master), 0);
        const char* const name = ptsname(master);
        if (name == nullptr) throw std::runtime_error("this machine has no pseudo-terminals (/dev/pts)");
        path = name;
    }
    ~PseudoTerminal() { close(master); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// Where programs open it.
    const std::string& GetPath() const { return path; }
    /// What is typed is written to this descriptor, what is shown is read from it.
    int GetDescriptor() const { return master; }

private:
    int master;
    std::string path;
};

}  // namespace nbscore::test
