#include "cli/system/InterruptibleOutput.h"

#include <gtest/gtest.h>

#include <string>

#include "cli/TestConsole.h"
#include "output/HostError.h"

namespace nbscore {

namespace {

class FullSink : public OutputSink {
public:
    void Write(std::string_view) override { throw InputOutputError("no space left"); }
    void Commit() override {}
};

}  // namespace

TEST(SinkStream, HandsEverythingOnInOrder_WhenItIsLongerThanItsBuffer) {
    test::TextSink sink;
    std::string expected;
    {
        SinkStream stream(sink);
        for (int i = 0; i < 20000; ++i) {
            stream << i << ';';
            expected += std::to_string(i) + ';';
        }
        stream.flush();
    }
    EXPECT_EQ(sink.text, expected);
}

TEST(SinkStream, ThrowsWhatTheSinkThrows_WhenItIsFull) {
    FullSink sink;
    SinkStream stream(sink);
    stream << "text";
    EXPECT_THROW(stream.flush(), InputOutputError);
}

TEST(SinkStream, ThrowsWhatTheSinkThrows_WhenItIsFullInTheMiddleOfALongText) {
    FullSink sink;
    SinkStream stream(sink);
    EXPECT_THROW(stream << std::string(100000, 'x'), InputOutputError);
}

}  // namespace nbscore
