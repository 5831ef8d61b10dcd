#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "batch/BatchScorer.h"
#include "host/LoadedModel.h"
#include "scoring/CodedCases.h"
#include "scoring/TightLoops.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::bench {

/// Cases of one shape, to be scored in a batch and by the tight loop for that shape. The constructors
/// throw std::runtime_error unless both give the same bits, and `GetScore` the same for a sample of the cases.
class ClassifierWorkload {
public:
    using TightLoop = void (*)(const TightTables& tables, const CodeColumns& codes, std::size_t cases,
                               const TightAnswers& answers);

    ClassifierWorkload(const test::DocumentShape& documentShape, std::size_t numCases, TightLoop tightLoop);

    std::size_t CountCases() const { return cases.Count(); }
    void ScoreInBatch();
    void ScoreInTightLoop();

private:
    void CheckOneByOne();

    test::DocumentShape shape;
    LoadedModel model;
    BatchScorer scorer;
    CodedCases<std::int8_t> cases;
    TightTables tables;
    TightLoop loop;
    Answers batchAnswers;
    Answers loopAnswers;
};

/// The same of 200 sub-models of 8 predictors and 2 target categories.
class SetWorkload {
public:
    /// @param categories of each input.
    SetWorkload(std::size_t categories, std::size_t numCases);

    std::size_t CountCases() const { return cases.Count(); }
    void ScoreInBatch();
    void ScoreInTightLoop();

private:
    void CheckOneByOne();

    test::DocumentShape shape;
    LoadedModel model;
    BatchScorer scorer;
    CodedCases<std::int8_t> cases;
    TightSetTables tables;
    std::vector<double> batchScores;
    std::vector<double> loopScores;
};

}  // namespace nbscore::bench
