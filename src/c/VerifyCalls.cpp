// The calls that score a document's own test cases.

#include <sstream>
#include <vector>

#include "c/CallTexts.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "check/DocumentCheck.h"
#include "verify/ModelVerifier.h"
#include "verify/VerificationJson.h"

namespace nbscore {
namespace {

std::string Verify(const DocumentOrigin& origin, const ReadingOptions& options) {
    SourceDocument source = SourceDocument::Read(origin, options.limits);
    if (options.adapts) source.Adapt();
    const LoadedModel model = OpenModel::ReadScorable(source, options);
    std::ostringstream text;
    VerificationJson json(text, origin.name);
    json.Finish(VerifyModel(
        model.Get(), source.ReadVerification(options.rule),
        [&](const CellDifference& difference) { json.AddDifference(difference); },
        [&] { options.limits.ThrowIfCancelled(); }));
    return text.str();
}

std::int32_t Verify(const nbscore_reading* reading, char** json, nbscore_error** error, const auto& originOf) {
    return GiveText(json, error, [&] {
        const ReadingOptions options(reading);
        return Verify(originOf(), options);
    });
}

}  // namespace
}  // namespace nbscore

int32_t nbscore_verify_file(const char* path, const nbscore_reading* reading, char** json, nbscore_error** error) {
    return nbscore::Verify(reading, json, error, [&] { return nbscore::FileOf(path); });
}

int32_t nbscore_verify_memory(const void* bytes, size_t size, const char* name, const nbscore_reading* reading,
                              char** json, nbscore_error** error) {
    return nbscore::Verify(reading, json, error, [&] { return nbscore::MemoryOf(bytes, size, name); });
}
