#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "framework/ScoringRule.h"

/// @file
/// What the tests do while memory runs out: everything that a host does with a document and its rows.

namespace nbscore::test {

/// A piece of work that can be repeated and gives the same answer each time.
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
    ScoringRule rule = ScoringRule::Smoothed;
};

/// How test programs show it.
inline void PrintTo(const DocumentAndRows& about, std::ostream* out) {
    *out << about.name;
}

/// The documents that all of it is done with.
std::vector<DocumentAndRows> AllDocuments();

using WorkMaker = std::function<std::unique_ptr<Work>(const DocumentAndRows&)>;

/// Reads a file with a translator and displays the model. Not for a document that must be adapted.
std::unique_ptr<Work> MakeReading(const DocumentAndRows& about);
/// Parses, adapts and translates, looks for what scoring ignores, and scores the test cases in the document.
std::unique_ptr<Work> MakeVerifying(const DocumentAndRows& about);
/// Checks the document as the command does, and writes the report both ways.
std::unique_ptr<Work> MakeChecking(const DocumentAndRows& about);
/// Scores records with one model; the result of each is filled again by the next one.
std::unique_ptr<Work> MakeScoringWithOneResult(const DocumentAndRows& about);
/// Scores records with one model, each with a new result.
std::unique_ptr<Work> MakeScoringWithNewResults(const DocumentAndRows& about);
/// Scores the table with one model, in each output format.
std::unique_ptr<Work> MakeScoringTables(const DocumentAndRows& about);
/// Opens, describes and scores columns, at once, as a stream and row by row, through the C interface alone.
std::unique_ptr<Work> MakeCallingC(const DocumentAndRows& about);

}  // namespace nbscore::test
