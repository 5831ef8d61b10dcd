#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>

namespace nbscore {

/// An element or attribute name as the parser holds texts, made from ASCII at compile time: no name is converted
/// while a document is read.
template <std::size_t N>
struct XmlName {
    XMLCh text[N] = {};

    constexpr XmlName(const char (&ascii)[N]) {  // NOLINT(google-explicit-constructor): a literal is a name
        for (std::size_t i = 0; i < N; ++i)
            text[i] = static_cast<XMLCh>(ascii[i]);
    }
    constexpr operator const XMLCh*() const { return text; }  // NOLINT(google-explicit-constructor)
};

}  // namespace nbscore
