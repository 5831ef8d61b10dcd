#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "framework/ScoringRule.h"

namespace nbscore::test {

/// How a case file's document or rows must be refused; what is not stated is not compared.
struct ExpectedRefusal {
    int exitStatus = 0;
    std::optional<int> code;
    std::optional<std::string> message;
    std::optional<std::uint64_t> line;
    std::optional<std::uint64_t> column;
    std::optional<std::string> path;
    /// Texts that the message must contain.
    std::vector<std::string> mentions;
};

/// One folder of tests/cases: a document, the rows to score with it, and what must come out.
///
/// The folder holds document.pmml, rows.csv and either expected.csv (the scored table) or expected-refusal.txt
/// (lines of a key and its value: status, error, message, line, column, path, mentions). Beside expected.csv there may
/// be expected-long.csv (the table with a row for each case and sub-model) and expected-messages.txt (what the command
/// writes to standard error, for both tables; without this file nothing; notes only where it has one). A case of the
/// standard's rule says so in rule.txt, whose one line is the word.
struct CaseFile {
    std::filesystem::path folder;
    std::filesystem::path document;
    std::filesystem::path rows;
    ScoringRule rule = ScoringRule::Smoothed;
    std::optional<std::string> expectedTable;
    std::optional<std::string> expectedLongTable;
    std::string expectedMessages;
    std::optional<ExpectedRefusal> expectedRefusal;

    /// What the command is called with, beside the document and the rows.
    std::vector<std::string> GetOptions() const;
};

/// Every case of the repository, by name; stops the test program when a folder is not as described.
std::vector<CaseFile> AllCaseFiles();

/// The case's name in the form that names of tests must have.
std::string TestNameOf(const CaseFile& caseFile);

/// How test programs show the case.
void PrintTo(const CaseFile& caseFile, std::ostream* out);

}  // namespace nbscore::test
