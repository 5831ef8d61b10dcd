#pragma once

#include <cstddef>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace nbscore::test {

/// Takes a text and remembers at which places it was flushed.
class FlushedText : public std::stringbuf {
public:
    /// What was written before each flush, since the one before; at the end what was never flushed.
    std::vector<std::string> GetPieces() const {
        std::vector<std::string> all = pieces;
        if (str().size() > flushed) all.push_back(str().substr(flushed));
        return all;
    }

protected:
    int sync() override {
        pieces.push_back(str().substr(flushed));
        flushed = str().size();
        return 0;
    }

private:
    std::vector<std::string> pieces;
    std::size_t flushed = 0;
};

/// The pieces in which an object writes about itself.
template <typename Displayed>
std::vector<std::string> DisplayedPieces(const Displayed& displayed) {
    FlushedText text;
    std::ostream out(&text);
    displayed.Display(out);
    return text.GetPieces();
}

}  // namespace nbscore::test
