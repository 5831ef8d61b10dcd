#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nbscore::test {

/// A text that stands between quotation marks in a source file.
struct SourceMessage {
    /// Its path below src.
    std::string file;
    std::string text;
};

/// All texts with a blank or a mark of punctuation in them, each as many times as it is written, in the sources of
/// whatever may refuse a document.
std::vector<SourceMessage> FindSourceMessages(const std::filesystem::path& repository);

}  // namespace nbscore::test
