#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// @file
/// What is done while memory runs out: each thing that a host does with a document, over one document and its rows.

namespace nbscore::test {

/// Something to do, any number of times over, with the same answer each time.
class Work {
public:
    virtual ~Work() = default;
    virtual std::string Do() = 0;

protected:
    Work() = default;
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
};

struct DocumentAndRows {
    std::string name;
    std::filesystem::path document;
    std::filesystem::path rows;
};

/// The documents that all of it is done with.
std::vector<DocumentAndRows> AllDocuments();

using WorkMaker = std::function<std::unique_ptr<Work>(const DocumentAndRows&)>;

/// Reads a file with a translator and writes the model down. Not for a document that must be adapted.
std::unique_ptr<Work> MakeReading(const DocumentAndRows& about);
/// Parses, adapts, translates, looks for what is not heeded, and scores the test cases that the document carries.
std::unique_ptr<Work> MakeVerifying(const DocumentAndRows& about);
/// Checks the document as the command does, and writes the report both ways.
std::unique_ptr<Work> MakeChecking(const DocumentAndRows& about);
/// Scores records with one model; the result of each is handed back for the next one.
std::unique_ptr<Work> MakeScoringWithOneResult(const DocumentAndRows& about);
/// Scores records with one model, each with a new result.
std::unique_ptr<Work> MakeScoringWithNewResults(const DocumentAndRows& about);
/// Scores the table with one model, in each form of result.
std::unique_ptr<Work> MakeScoringTables(const DocumentAndRows& about);

}  // namespace nbscore::test
