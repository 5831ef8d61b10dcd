#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nbscore::bench {

/// A document and a table that hold any given number of one kind of part.
struct GrowingDocument {
    std::string name;
    /// The largest number to try: limits allow no more, or it takes some seconds.
    std::size_t most;
    std::function<void(std::size_t number, const std::filesystem::path& document, const std::filesystem::path& table)>
        write;
};

/// One for each kind of part that a document or a table can have many of.
std::vector<GrowingDocument> GetGrowingDocuments();

}  // namespace nbscore::bench
