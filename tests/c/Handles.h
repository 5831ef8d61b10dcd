#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "nbscore.h"

/// @file
/// What the C interface hands out, freed by itself.

namespace nbscore::test {

struct Closing {
    void operator()(nbscore_model* model) const { nbscore_close(model); }
    void operator()(nbscore_error* error) const { nbscore_error_free(error); }
    void operator()(nbscore_row* row) const { nbscore_row_free(row); }
    void operator()(char* text) const { nbscore_text_free(text); }
};

using ModelHandle = std::unique_ptr<nbscore_model, Closing>;
using RowHandle = std::unique_ptr<nbscore_row, Closing>;
using ErrorHandle = std::unique_ptr<nbscore_error, Closing>;
using TextHandle = std::unique_ptr<char, Closing>;

/// Calls a function of the interface whose last two arguments are what it gives and the error.
/// @return what it gave; null where it failed, with the error in `error`.
template <typename Handle, typename Call, typename... Arguments>
Handle Give(ErrorHandle& error, const Call& call, const Arguments&... arguments) {
    typename Handle::pointer given = nullptr;
    nbscore_error* failure = nullptr;
    call(arguments..., &given, &failure);
    error.reset(failure);
    return Handle(given);
}

inline ModelHandle OpenFile(const std::string& path, const nbscore_reading* reading = nullptr) {
    ErrorHandle error;
    ModelHandle model = Give<ModelHandle>(error, nbscore_open_file, path.c_str(), reading);
    if (error) throw std::runtime_error(error->message);
    return model;
}

}  // namespace nbscore::test
