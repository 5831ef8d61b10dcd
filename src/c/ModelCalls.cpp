// The calls that open, describe, check and close.

#include "c/CallTexts.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "check/DocumentCheck.h"

namespace nbscore {
namespace {

std::int32_t Open(const nbscore_reading* reading, nbscore_model** model, nbscore_error** error, const auto& originOf) {
    if (model != nullptr) *model = nullptr;
    return Guarded(error, [&] {
        RequireArgument(model, "model");
        const ReadingOptions options(reading);
        *model = new nbscore_model{std::make_shared<const OpenModel>(originOf(), options)};
    });
}

std::int32_t Check(const nbscore_reading* reading, char** json, nbscore_error** error, const auto& originOf) {
    return GiveText(json, error, [&] {
        const ReadingOptions options(reading);
        return WriteChecksAsJson(
            {CheckDocument(GetLinkedPlugin(), originOf(), options.adapts, options.limits, options.rule)});
    });
}

}  // namespace
}  // namespace nbscore

uint32_t nbscore_abi(void) {
    return NBSCORE_ABI;
}

const char* nbscore_version(void) {
    return NBSCORE_VERSION;
}

int32_t nbscore_open_file(const char* path, const nbscore_reading* reading, nbscore_model** model,
                          nbscore_error** error) {
    return nbscore::Open(reading, model, error, [&] { return nbscore::FileOf(path); });
}

int32_t nbscore_open_memory(const void* bytes, size_t size, const char* name, const nbscore_reading* reading,
                            nbscore_model** model, nbscore_error** error) {
    return nbscore::Open(reading, model, error, [&] { return nbscore::MemoryOf(bytes, size, name); });
}

void nbscore_close(nbscore_model* model) {
    delete model;
}

int32_t nbscore_describe(const nbscore_model* model, char** json, nbscore_error** error) {
    return nbscore::GiveText(json, error, [&] { return nbscore::RequireArgument(model, "model").open->Describe(); });
}

int32_t nbscore_check_file(const char* path, const nbscore_reading* reading, char** json, nbscore_error** error) {
    return nbscore::Check(reading, json, error, [&] { return nbscore::FileOf(path); });
}

int32_t nbscore_check_memory(const void* bytes, size_t size, const char* name, const nbscore_reading* reading,
                             char** json, nbscore_error** error) {
    return nbscore::Check(reading, json, error, [&] { return nbscore::MemoryOf(bytes, size, name); });
}

void nbscore_text_free(char* text) {
    delete[] text;
}
