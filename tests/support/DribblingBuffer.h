#pragma once

#include <algorithm>
#include <cstddef>
#include <streambuf>
#include <string>

namespace nbscore::test {

/// A stream buffer that has only a few bytes ready at a time, like a slow pipe.
class DribblingBuffer : public std::streambuf {
public:
    DribblingBuffer(std::string content, std::size_t bytesAtATime) : text(std::move(content)), step(bytesAtATime) {}

protected:
    int_type underflow() override {
        if (given == text.size()) return traits_type::eof();
        char* const next = text.data() + given;
        const std::size_t count = std::min(step, text.size() - given);
        given += count;
        setg(next, next, next + count);
        return traits_type::to_int_type(*next);
    }

private:
    std::string text;
    std::size_t step;
    std::size_t given = 0;
};

}  // namespace nbscore::test
