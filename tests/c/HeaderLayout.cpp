// What programs that were built with an earlier nbscore.h rely on: where members stand, which number stands for what,
// and what calls take. Nothing here runs. A difference is a break for all of them: it takes a new NBSCORE_ABI and new
// numbers here. What is added goes behind what is there, or is a call of its own, and gets a line here.

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "nbscore.h"

namespace {

#define NBSCORE_MEMBER(type, member, offset, kind) \
    static_assert(offsetof(type, member) == (offset) && std::is_same_v<decltype(type::member), kind>)
#define NBSCORE_SIGNATURE(call, ...) static_assert(std::is_same_v<decltype(call), __VA_ARGS__>)

static_assert(NBSCORE_ABI == 1);
static_assert(sizeof(void*) == 8 && sizeof(std::size_t) == 8);

NBSCORE_MEMBER(ArrowSchema, format, 0, const char*);
NBSCORE_MEMBER(ArrowSchema, name, 8, const char*);
NBSCORE_MEMBER(ArrowSchema, metadata, 16, const char*);
NBSCORE_MEMBER(ArrowSchema, flags, 24, std::int64_t);
NBSCORE_MEMBER(ArrowSchema, n_children, 32, std::int64_t);
NBSCORE_MEMBER(ArrowSchema, children, 40, ArrowSchema**);
NBSCORE_MEMBER(ArrowSchema, dictionary, 48, ArrowSchema*);
NBSCORE_MEMBER(ArrowSchema, release, 56, void (*)(ArrowSchema*));
NBSCORE_MEMBER(ArrowSchema, private_data, 64, void*);
static_assert(sizeof(ArrowSchema) == 72);

NBSCORE_MEMBER(ArrowArray, length, 0, std::int64_t);
NBSCORE_MEMBER(ArrowArray, null_count, 8, std::int64_t);
NBSCORE_MEMBER(ArrowArray, offset, 16, std::int64_t);
NBSCORE_MEMBER(ArrowArray, n_buffers, 24, std::int64_t);
NBSCORE_MEMBER(ArrowArray, n_children, 32, std::int64_t);
NBSCORE_MEMBER(ArrowArray, buffers, 40, const void**);
NBSCORE_MEMBER(ArrowArray, children, 48, ArrowArray**);
NBSCORE_MEMBER(ArrowArray, dictionary, 56, ArrowArray*);
NBSCORE_MEMBER(ArrowArray, release, 64, void (*)(ArrowArray*));
NBSCORE_MEMBER(ArrowArray, private_data, 72, void*);
static_assert(sizeof(ArrowArray) == 80);

NBSCORE_MEMBER(ArrowArrayStream, get_schema, 0, int (*)(ArrowArrayStream*, ArrowSchema*));
NBSCORE_MEMBER(ArrowArrayStream, get_next, 8, int (*)(ArrowArrayStream*, ArrowArray*));
NBSCORE_MEMBER(ArrowArrayStream, get_last_error, 16, const char* (*)(ArrowArrayStream*));
NBSCORE_MEMBER(ArrowArrayStream, release, 24, void (*)(ArrowArrayStream*));
NBSCORE_MEMBER(ArrowArrayStream, private_data, 32, void*);
static_assert(sizeof(ArrowArrayStream) == 40);

static_assert(ARROW_FLAG_DICTIONARY_ORDERED == 1 && ARROW_FLAG_NULLABLE == 2 && ARROW_FLAG_MAP_KEYS_SORTED == 4);

static_assert(NBSCORE_OK == 0 && NBSCORE_REFUSED == 1 && NBSCORE_BAD_CASES == 2 && NBSCORE_UNREADABLE == 3 &&
              NBSCORE_BAD_ARGUMENT == 4 && NBSCORE_OUT_OF_MEMORY == 5 && NBSCORE_CANCELLED == 6 && NBSCORE_FAILED == 7);
static_assert(NBSCORE_RULE_SMOOTHED == 0 && NBSCORE_RULE_STANDARD == 1);

NBSCORE_MEMBER(nbscore_error, kind, 0, std::int32_t);
NBSCORE_MEMBER(nbscore_error, code, 4, std::int32_t);
NBSCORE_MEMBER(nbscore_error, line, 8, std::uint64_t);
NBSCORE_MEMBER(nbscore_error, column, 16, std::uint64_t);
NBSCORE_MEMBER(nbscore_error, message, 24, const char*);
NBSCORE_MEMBER(nbscore_error, advice, 32, const char*);
NBSCORE_MEMBER(nbscore_error, file, 40, const char*);
NBSCORE_MEMBER(nbscore_error, path, 48, const char*);
static_assert(sizeof(nbscore_error) == 56);

NBSCORE_MEMBER(nbscore_reading, size, 0, std::size_t);
NBSCORE_MEMBER(nbscore_reading, rule, 8, std::int32_t);
NBSCORE_MEMBER(nbscore_reading, adapt, 12, std::int32_t);
NBSCORE_MEMBER(nbscore_reading, plain_densities, 16, std::int32_t);
NBSCORE_MEMBER(nbscore_reading, reserved, 20, std::int32_t);
NBSCORE_MEMBER(nbscore_reading, max_memory, 24, std::uint64_t);
NBSCORE_MEMBER(nbscore_reading, max_document_bytes, 32, std::uint64_t);
NBSCORE_MEMBER(nbscore_reading, is_cancelled, 40, int (*)(void*));
NBSCORE_MEMBER(nbscore_reading, cancel_data, 48, void*);
static_assert(sizeof(nbscore_reading) == 56);

NBSCORE_MEMBER(nbscore_scoring, size, 0, std::size_t);
NBSCORE_MEMBER(nbscore_scoring, usual_columns, 8, std::int32_t);
NBSCORE_MEMBER(nbscore_scoring, prediction_only, 12, std::int32_t);
NBSCORE_MEMBER(nbscore_scoring, lacking_as_absent, 16, std::int32_t);
NBSCORE_MEMBER(nbscore_scoring, reserved, 20, std::int32_t);
NBSCORE_MEMBER(nbscore_scoring, best, 24, std::uint64_t);
NBSCORE_MEMBER(nbscore_scoring, reasons, 32, std::int32_t);
NBSCORE_MEMBER(nbscore_scoring, reasons_that_lift, 36, std::int32_t);
static_assert(sizeof(nbscore_scoring) == 40);

NBSCORE_MEMBER(nbscore_explaining, size, 0, std::size_t);
NBSCORE_MEMBER(nbscore_explaining, lacking_as_absent, 8, std::int32_t);
NBSCORE_MEMBER(nbscore_explaining, factors, 12, std::int32_t);
NBSCORE_MEMBER(nbscore_explaining, category, 16, const char*);
NBSCORE_MEMBER(nbscore_explaining, against, 24, const char*);
NBSCORE_MEMBER(nbscore_explaining, sub_model, 32, const char*);
static_assert(sizeof(nbscore_explaining) == 40);

NBSCORE_MEMBER(nbscore_answer, predicted, 0, std::int32_t);
NBSCORE_MEMBER(nbscore_answer, reserved, 4, std::int32_t);
NBSCORE_MEMBER(nbscore_answer, confidence, 8, double);
NBSCORE_MEMBER(nbscore_answer, numbers, 16, const double*);
NBSCORE_MEMBER(nbscore_answer, count, 24, std::size_t);
static_assert(sizeof(nbscore_answer) == 32);

NBSCORE_MEMBER(nbscore_ranked, position, 0, std::size_t);
NBSCORE_MEMBER(nbscore_ranked, score, 8, double);
static_assert(sizeof(nbscore_ranked) == 16);

NBSCORE_MEMBER(nbscore_room, size, 0, std::size_t);
NBSCORE_MEMBER(nbscore_room, predicted, 8, std::int32_t*);
NBSCORE_MEMBER(nbscore_room, confidence, 16, double*);
NBSCORE_MEMBER(nbscore_room, probabilities, 24, double*);
NBSCORE_MEMBER(nbscore_room, columns, 32, std::uint64_t);
NBSCORE_MEMBER(nbscore_room, by_columns, 40, std::int32_t);
NBSCORE_MEMBER(nbscore_room, reserved, 44, std::int32_t);
static_assert(sizeof(nbscore_room) == 48);

NBSCORE_SIGNATURE(nbscore_abi, std::uint32_t());
NBSCORE_SIGNATURE(nbscore_version, const char*());
NBSCORE_SIGNATURE(nbscore_error_free, void(nbscore_error*));
NBSCORE_SIGNATURE(nbscore_open_file,
                  std::int32_t(const char*, const nbscore_reading*, nbscore_model**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_open_memory, std::int32_t(const void*, std::size_t, const char*, const nbscore_reading*,
                                                    nbscore_model**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_close, void(nbscore_model*));
NBSCORE_SIGNATURE(nbscore_describe, std::int32_t(const nbscore_model*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_check_file, std::int32_t(const char*, const nbscore_reading*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_check_memory,
                  std::int32_t(const void*, std::size_t, const char*, const nbscore_reading*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_text_free, void(char*));
NBSCORE_SIGNATURE(nbscore_score_schema,
                  std::int32_t(const nbscore_model*, const nbscore_scoring*, ArrowSchema*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_score, std::int32_t(const nbscore_model*, const nbscore_scoring*, const ArrowSchema*,
                                              const ArrowArray*, ArrowArray*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_score_stream, std::int32_t(const nbscore_model*, const nbscore_scoring*, ArrowArrayStream*,
                                                     ArrowArrayStream*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_explain_schema,
                  std::int32_t(const nbscore_model*, const nbscore_explaining*, ArrowSchema*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_explain, std::int32_t(const nbscore_model*, const nbscore_explaining*, const ArrowSchema*,
                                                const ArrowArray*, ArrowArray*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_row_make, std::int32_t(const nbscore_model*, nbscore_row**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_row_free, void(nbscore_row*));
NBSCORE_SIGNATURE(nbscore_find_field, std::int32_t(const nbscore_model*, const char*, std::size_t*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_field_name, const char*(const nbscore_model*, std::size_t));
NBSCORE_SIGNATURE(nbscore_answer_name, const char*(const nbscore_model*, std::size_t));
NBSCORE_SIGNATURE(nbscore_row_set_text,
                  std::int32_t(nbscore_row*, std::size_t, const char*, std::size_t, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_row_set_number, std::int32_t(nbscore_row*, std::size_t, double, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_row_set_missing, std::int32_t(nbscore_row*, std::size_t, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_row_score, std::int32_t(nbscore_row*, nbscore_answer*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_row_best,
                  std::int32_t(nbscore_row*, nbscore_ranked*, std::size_t, std::size_t*, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_display, std::int32_t(const nbscore_model*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_content, std::int32_t(const nbscore_model*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_verify_file, std::int32_t(const char*, const nbscore_reading*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_verify_memory,
                  std::int32_t(const void*, std::size_t, const char*, const nbscore_reading*, char**, nbscore_error**));
NBSCORE_SIGNATURE(nbscore_score_into, std::int32_t(const nbscore_model*, const nbscore_scoring*, const ArrowSchema*,
                                                   const ArrowArray*, const nbscore_room*, nbscore_error**));

}  // namespace
