// The half of BaseTranslator that turns a file or a stream into a document and has it read; the small steps over a
// parsed document are in BaseTranslator.cpp.

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "framework/BaseTranslator.h"
#include "framework/VeskException.h"
#include "framework/xml/ParsedDocument.h"
#include "framework/xml/XmlFaults.h"
#include "framework/xml/XmlPlatform.h"

namespace {

VeskException UnreadableFile(const std::string& path, std::errc fault) {
    VeskException refusal(VeskException::UnreadableSource,
                          "The file \"" + path + "\" cannot be read: " + std::make_error_code(fault).message() + ".");
    refusal.SetSource(path);
    return refusal;
}

/// Opening a directory succeeds on some systems and only reading it fails, so it is asked for by name.
void OpenFile(std::ifstream& file, const std::string& path) {
    // A zero would end the name early for the system, and another file be read than the one that was named.
    if (path.find('\0') != std::string::npos) throw UnreadableFile(path, std::errc::invalid_argument);
    const std::filesystem::path native(std::u8string(path.begin(), path.end()));
    std::error_code ignored;
    if (std::filesystem::is_directory(native, ignored)) throw UnreadableFile(path, std::errc::is_a_directory);
    errno = 0;
    file.open(native, std::ios::binary);
    if (!file) throw UnreadableFile(path, errno == 0 ? std::errc::io_error : static_cast<std::errc>(errno));
}

}  // namespace

BaseTranslator::BaseTranslator() {
    nbscore::EnsureXmlPlatform();
}

BaseTranslator::~BaseTranslator() = default;

ScoreModel* BaseTranslator::ParseFromTree(const std::string& path, const std::string& encoding) {
    std::ifstream file;
    OpenFile(file, path);
    return ParseFromTree(file, encoding, path);
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream& source, const std::string& encoding) {
    return ParseFromTree(source, encoding, std::string());
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream& source, const std::string& encoding,
                                          const std::string& sourceName) {
    try {
        return nbscore::WithoutXmlFaults([&] {
            const nbscore::ParsedDocument document = nbscore::ParseDocument(source);
            return ParseFromTree(document.get(), encoding);
        });
    } catch (VeskException& refusal) {
        unfinishedModel.reset();
        refusal.SetSource(sourceName);
        throw;
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference,cert-err09-cpp,cert-err61-cpp): see below
    } catch (VeskException* refusal) {
        // A second target in a mining schema is thrown as a pointer; it stays the same pointer for the catcher.
        unfinishedModel.reset();
        refusal->SetSource(sourceName);
        throw;
    } catch (...) {
        unfinishedModel.reset();
        throw;
    }
}

ScoreModel* BaseTranslator::TakeUnfinishedModel() {
    return unfinishedModel.release();
}

void BaseTranslator::CreateTranscoder(const std::string& encoding) {
    transcoder = std::make_unique<Transcoder>(encoding);
}

void BaseTranslator::LeaveUnfinishedModel(ScoreModel* model) {
    unfinishedModel.reset(model);
}
