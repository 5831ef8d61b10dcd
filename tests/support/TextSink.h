#pragma once

#include <string>
#include <string_view>

#include "output/OutputSink.h"

namespace nbscore::test {

/// Keeps what is written to it.
class TextSink : public OutputSink {
public:
    void Write(std::string_view bytes) override { text += bytes; }
    void Commit() override {}

    std::string text;
};

}  // namespace nbscore::test
