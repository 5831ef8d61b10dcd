#include "cli/SinkStream.h"

#include <string_view>

#include "cli/Interrupts.h"

namespace nbscore {

SinkStream::Buffer::int_type SinkStream::Buffer::overflow(int_type character) {
    sync();
    if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

int SinkStream::Buffer::sync() {
    Interrupts::ThrowIfRequested();
    sink.Write(std::string_view(pbase(), static_cast<std::size_t>(pptr() - pbase())));
    setp(piece.data(), piece.data() + piece.size());
    return 0;
}

}  // namespace nbscore
