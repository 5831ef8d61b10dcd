#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <climits>
#include <filesystem>
#include <string>
#include <thread>

namespace nbscore::test {

/// A pipe with a name and an open reading end, for a program to write to.
class NamedPipe {
public:
    explicit NamedPipe(std::filesystem::path pipePath) : path(std::move(pipePath)) {
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        // Opened so, it does not wait for the writer.
        readingEnd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        EXPECT_GE(readingEnd, 0);
    }
    ~NamedPipe() { Close(); }
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    const std::filesystem::path& GetPath() const { return path; }

    /// Waits for the next line and answers it without its end; a failed test when none comes.
    std::string ReadLine() {
        while (gathered.find('\n') == std::string::npos) {
            if (!ReadSome()) {
                ADD_FAILURE() << "no line comes, only \"" << gathered << '"';
                return {};
            }
        }
        const std::size_t end = gathered.find('\n');
        const std::string line = gathered.substr(0, end);
        gathered.erase(0, end + 1);
        return line;
    }

    /// Waits until a writer that hands over PIPE_BUF bytes at a time finds no more room, or all but one time none.
    void WaitUntilFull() const {
        using namespace std::chrono_literals;
        const int almostAll = fcntl(readingEnd, F_GETPIPE_SZ) - 2 * PIPE_BUF;
        int waiting = 0;
        for (int i = 0; i < 6000 && waiting < almostAll; ++i) {
            std::this_thread::sleep_for(10ms);
            ASSERT_EQ(ioctl(readingEnd, FIONREAD, &waiting), 0);
        }
        ASSERT_GE(waiting, almostAll);
    }

    /// Throws some of what waits in it away; false when nothing was left.
    bool TakeSome() {
        gathered.clear();
        std::array<char, 4096> piece;
        return read(readingEnd, piece.data(), piece.size()) > 0;
    }

    void Close() {
        if (readingEnd >= 0) close(readingEnd);
        readingEnd = -1;
    }

private:
    /// Waits for some bytes, also while no writer has the pipe open yet; false when none come for a minute.
    bool ReadSome() {
        using namespace std::chrono_literals;
        std::array<char, 4096> piece;
        for (int i = 0; i < 6000; ++i) {
            pollfd waited = {readingEnd, POLLIN, 0};
            poll(&waited, 1, 10);
            const ssize_t count = read(readingEnd, piece.data(), piece.size());
            if (count > 0) {
                gathered.append(piece.data(), static_cast<std::size_t>(count));
                return true;
            }
            if (count == 0) std::this_thread::sleep_for(10ms);
        }
        return false;
    }

    std::filesystem::path path;
    int readingEnd = -1;
    std::string gathered;
};

}  // namespace nbscore::test
