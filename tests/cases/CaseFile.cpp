#include "cases/CaseFile.h"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "support/WholeFile.h"

namespace nbscore::test {

namespace {

ExpectedRefusal ReadRefusal(const std::filesystem::path& path) {
    ExpectedRefusal refusal;
    std::istringstream lines(ReadWholeFile(path));
    std::string line;
    while (std::getline(lines, line)) {
        const std::size_t blank = line.find(' ');
        const std::string key = line.substr(0, blank);
        const std::string value = line.substr(blank + 1);
        if (key == "status") {
            refusal.exitStatus = std::stoi(value);
        } else if (key == "error") {
            refusal.code = std::stoi(value);
        } else if (key == "message") {
            refusal.message = value;
        } else if (key == "line") {
            refusal.line = std::stoull(value);
        } else if (key == "column") {
            refusal.column = std::stoull(value);
        } else if (key == "path") {
            refusal.path = value;
        } else if (key == "mentions") {
            refusal.mentions.push_back(value);
        } else {
            throw std::runtime_error(path.string() + ": unknown key " + key);
        }
    }
    return refusal;
}

std::optional<std::string> ReadIfThere(const std::filesystem::path& path) {
    if (!std::filesystem::exists(path)) return std::nullopt;
    return ReadWholeFile(path);
}

ScoringRule ReadRule(const std::filesystem::path& path) {
    const std::optional<std::string> word = ReadIfThere(path);
    if (word && *word != "standard\n") throw std::runtime_error(path.string() + ": must say standard");
    return word ? ScoringRule::Standard : ScoringRule::Smoothed;
}

CaseFile ReadCase(const std::filesystem::path& folder) {
    CaseFile caseFile;
    caseFile.folder = folder;
    caseFile.document = folder / "document.pmml";
    caseFile.rows = folder / "rows.csv";
    caseFile.rule = ReadRule(folder / "rule.txt");
    caseFile.expectedTable = ReadIfThere(folder / "expected.csv");
    caseFile.expectedLongTable = ReadIfThere(folder / "expected-long.csv");
    caseFile.expectedMessages = ReadIfThere(folder / "expected-messages.txt").value_or("");
    const std::filesystem::path refusal = folder / "expected-refusal.txt";
    if (std::filesystem::exists(refusal)) caseFile.expectedRefusal = ReadRefusal(refusal);
    if (caseFile.expectedTable.has_value() == caseFile.expectedRefusal.has_value()) {
        throw std::runtime_error(folder.string() + ": needs expected.csv or expected-refusal.txt, and not both");
    }
    return caseFile;
}

}  // namespace

std::vector<std::string> CaseFile::GetOptions() const {
    if (rule == ScoringRule::Smoothed) return {};
    return {"--rule", "standard"};
}

std::vector<CaseFile> AllCaseFiles() {
    std::vector<CaseFile> cases;
    for (const auto& entry : std::filesystem::directory_iterator(NBSCORE_CASES_DIR)) {
        if (entry.is_directory()) cases.push_back(ReadCase(entry.path()));
    }
    std::ranges::sort(cases, {}, &CaseFile::folder);
    return cases;
}

std::string TestNameOf(const CaseFile& caseFile) {
    std::string name = caseFile.folder.filename().string();
    std::ranges::replace(name, '-', '_');
    return name;
}

void PrintTo(const CaseFile& caseFile, std::ostream* out) {
    *out << caseFile.folder.filename().string();
}

}  // namespace nbscore::test
