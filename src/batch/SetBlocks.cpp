#include "batch/SetBlocks.h"

#include <algorithm>

#include "batch/ColumnEncoder.h"
#include "batch/SubModelLoop.h"

namespace nbscore {
namespace {

/// Scores of a block; with the part of the tables that is read at a time they stay within the second cache.
constexpr std::size_t scoresPerBlock = 32768;
constexpr std::size_t mostCasesPerBlock = 1024;

std::size_t GetCasesPerBlock(std::size_t cases, std::size_t pitch) {
    return std::clamp<std::size_t>(scoresPerBlock / pitch, 1,
                                   std::min(std::max<std::size_t>(cases, 1), mostCasesPerBlock));
}

}  // namespace

SetBlocks::SetBlocks(const SetEngine& setEngine, const SetEngine::Part& setPart,
                     std::span<const Column* const> readerColumns, std::size_t numCases,
                     const SubModelColumns& answerColumns)
    : engine(setEngine),
      part(setPart),
      columns(readerColumns),
      cases(numCases),
      answers(answerColumns),
      numReaders(part.group.GetReaders().size()),
      casesPerBlock(GetCasesPerBlock(numCases, part.group.GetPitch())),
      rows(numReaders * casesPerBlock),
      scores(casesPerBlock * part.group.GetPitch(), 0.0) {
    if (answers.missing.empty() && answers.unknown.empty()) return;
    for (const SubModelGroup::Reader& reader : part.group.GetReaders())
        counts.emplace_back(reader.rows.GetNumRows());
}

void SetBlocks::Score() {
    std::vector<const double*> tables;
    std::vector<const RowNumber*> rowsOfReaders;
    for (std::size_t j = 0; j < numReaders; ++j) {
        tables.push_back(part.group.GetReaders()[j].factors.Get());
        rowsOfReaders.push_back(rows.data() + j * casesPerBlock);
    }
    for (std::size_t first = 0; first < cases; first += casesPerBlock) {
        const Block block{first, std::min(casesPerBlock, cases - first)};
        Encode(block);
        if (answers.scores.empty()) continue;
        ScoreSubModels({.pitch = part.group.GetPitch(),
                        .categories = engine.GetNumCategories(),
                        .priors = part.group.GetPriors(),
                        .predictors = numReaders,
                        .tables = tables.data(),
                        .cases = block.cases,
                        .rows = rowsOfReaders.data(),
                        .scores = scores.Get()});
        Answer(block);
    }
    if (!counts.empty()) AnswerCounts();
}

void SetBlocks::Encode(const Block& block) {
    for (std::size_t j = 0; j < numReaders; ++j) {
        RowNumber* const encoded = rows.data() + j * casesPerBlock;
        EncodeColumn(part.group.GetReaders()[j].rows, part.listsOfReaders[j], *columns[part.firstReader + j],
                     block.first, block.cases, encoded);
        for (std::size_t i = 0; !counts.empty() && i < block.cases; ++i)
            ++counts[j][encoded[i]];
    }
}

void SetBlocks::Answer(const Block& block) {
    std::vector<RowNumber> rowsOfCase(numReaders);
    for (std::size_t i = 0; i < block.cases; ++i) {
        for (std::size_t j = 0; j < numReaders; ++j)
            rowsOfCase[j] = rows[j * casesPerBlock + i];
        double* const computed = scores.Get() + i * part.group.GetPitch();
        part.group.RestorePriors(rowsOfCase, computed);
        AnswerCase(block.first + i, computed);
    }
}

void SetBlocks::AnswerCase(std::size_t entry, const double* computed) const {
    const std::vector<std::size_t>& members = part.group.GetMembers();
    const std::size_t numSubModels = engine.GetSubModels().size();
    if (answers.scoreOrder == MatrixOrder::ColumnByColumn) {
        for (std::size_t m = 0; m < members.size(); ++m)
            answers.scores[members[m] * cases + entry] = computed[m];
    } else if (members.size() == numSubModels) {
        // All of them, in their order.
        std::copy_n(computed, numSubModels, answers.scores.data() + entry * numSubModels);
    } else {
        for (std::size_t m = 0; m < members.size(); ++m)
            answers.scores[entry * numSubModels + members[m]] = computed[m];
    }
}

void SetBlocks::AnswerCounts() const {
    for (std::size_t m = 0; m < part.group.GetMembers().size(); ++m) {
        const std::size_t firstPredictor = engine.GetFirstPredictor(part.group.GetMembers()[m]);
        for (std::size_t j = 0; j < numReaders; ++j) {
            if (!answers.missing.empty()) answers.missing[firstPredictor + j] += counts[j][missingRow];
            if (!answers.unknown.empty()) answers.unknown[firstPredictor + j] += CountUnknown(j, m);
        }
    }
}

std::uint64_t SetBlocks::CountUnknown(std::size_t reader, std::size_t member) const {
    const SubModelGroup::Reader& reading = part.group.GetReaders()[reader];
    const std::size_t numMembers = part.group.GetMembers().size();
    std::uint64_t unknown = counts[reader][unknownRow];
    for (RowNumber row = firstKnownRow; row < counts[reader].size(); ++row) {
        if (reading.known[row * numMembers + member] == 0) unknown += counts[reader][row];
    }
    return unknown;
}

}  // namespace nbscore
