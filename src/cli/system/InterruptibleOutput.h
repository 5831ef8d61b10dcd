#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string_view>

#include "output/OutputBuffer.h"
#include "output/OutputSink.h"

namespace nbscore {

/// How the thread that writes notices a request to stop: a signal comes to one thread only, and another one may be
/// waiting for a full pipe.
OutputWaiting InterruptibleWriting();

/// The process's standard output, bytes as they are on every system, with every failure (a closed pipe, a full
/// disk) reported. A process must ignore the signal of a closed pipe to get it as a failure.
class StandardOutput : public OutputSink {
public:
    /// @param waiting what it throws is passed on.
    explicit StandardOutput(OutputWaiting waiting = {});
    /// Writes what is left, if it can.
    ~StandardOutput() override;
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    void Write(std::string_view bytes) override;
    void Flush() override;
    void Commit() override;

private:
    OutputBuffer buffer;
};

/// A stream that hands everything on to an output sink, in pieces. Exceptions of the sink, and those for a request to
/// stop, are passed on by the operation that writes.
class SinkStream : public std::ostream {
public:
    /// @param sink borrowed.
    explicit SinkStream(OutputSink& sink) : std::ostream(nullptr), buffer(sink) {
        rdbuf(&buffer);
        exceptions(badbit);
    }

private:
    class Buffer : public std::streambuf {
    public:
        explicit Buffer(OutputSink& destination) : sink(destination) {
            setp(piece.data(), piece.data() + piece.size());
        }

    protected:
        int_type overflow(int_type character) override;
        int sync() override;

    private:
        OutputSink& sink;
        std::array<char, 16384> piece{};
    };

    Buffer buffer;
};

}  // namespace nbscore
