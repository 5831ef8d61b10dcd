#include "cli/verbs/CountedDocuments.h"

#include <stdexcept>

#include "cli/CommandLine.h"
#include "count/CountedDocument.h"
#include "count/TestCases.h"
#include "output/HostError.h"
#include "pmml/DocumentFile.h"
#include "pmml/Refusal.h"

namespace nbscore {

CountedModel ReadCountedModel(const std::string& argument, const Limits& limits) {
    try {
        DocumentFile file(argument, limits);
        return ReadCountedDocument(file.GetStream(), argument, limits);
    } catch (const VeskException& refusal) {
        if (refusal.GetCode() != VeskException::UnreadableSource) throw;
        throw InputOutputError(refusal.GetMessage());  // which names the file
    }
}

void AddCountedModel(CountedModel& sum, const CountedModel& added, const std::string& document) {
    try {
        sum.Add(added);
    } catch (const std::invalid_argument& difference) {
        VeskException refusal = MakeRefusal(Refusal::CountsDiffer, {difference.what()});
        refusal.SetSource(document);
        throw refusal;
    }
}

std::string WriteVerifiedDocument(const CountedModel& model, const ReadingArgument& reading) {
    const std::string version = CommandLine::GetVersion();
    const std::string unverified = WriteCountedDocument(model, version, {});
    const SourceDocument source = SourceDocument::Read({"the counted document", unverified}, reading.GetLimits());
    const LoadedModel loaded = LoadedModel::Read(reading.LoadPlugin(), source, reading.GetRule());
    loaded.RequireScorable();
    return WriteCountedDocument(model, version, MakeTestCases(model, loaded.Get()));
}

}  // namespace nbscore
