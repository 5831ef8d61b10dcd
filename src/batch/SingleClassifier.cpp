#include "batch/SingleClassifier.h"

#include <algorithm>
#include <cstdint>

#include "batch/AlignedNumbers.h"
#include "batch/Loops.h"

namespace nbscore {
namespace {

/// Of joint probabilities that are computed, normalized and answered at a time: they stay in the first cache, or in the
/// second where tables do not fit the first and must be read for few cases at a time otherwise.
constexpr std::size_t fewestNumbersAtOnce = 2048;
constexpr std::size_t mostNumbersAtOnce = 32768;

std::size_t CountCasesAtOnce(std::size_t cases, std::size_t categories, std::size_t numbersOfTables) {
    const std::size_t numbers = std::clamp(numbersOfTables, fewestNumbersAtOnce, mostNumbersAtOnce);
    return std::min(RoundUpCases(cases), std::max<std::size_t>(numbers / categories / caseMultiple, 1) * caseMultiple);
}

}  // namespace

SingleClassifier::SingleClassifier(const ClassifierTables& tables, const RowLists& rowLists)
    : categories(tables.priors.size()),
      targetCounts(tables.targetCounts),
      factors(tables, categories, rowLists, rowLists.GetListsOfPredictors()) {}

/// One call: the cases in blocks that stay in the processor's cache from the first look at their values to the answers.
class SingleClassifier::Call {
public:
    /// All is borrowed for the object's life, and fits together.
    Call(const SingleClassifier& scoringClassifier, const RowLists& rowLists, const CaseValues& caseValues,
         const AnswerColumns& answerColumns)
        : classifier(scoringClassifier),
          lists(rowLists.GetListsOfPredictors()),
          answers(answerColumns),
          cases(caseValues.cases),
          block(rowLists, caseValues, 1, !answers.missing.empty() || !answers.unknown.empty()),
          usable(block.GetPitch()),
          casesAtOnce(CountCasesAtOnce(block.GetPitch(), classifier.categories, classifier.factors.GetSize())),
          probabilities(casesAtOnce * classifier.categories, 0.0),
          scratch(classifier.factors.CountScratch(casesAtOnce), 0.0),
          predicted(casesAtOnce),
          confidence(casesAtOnce, 0.0) {}

    void Score() {
        while (block.Next()) {
            std::ranges::fill(usable, std::uint8_t{0});
            block.NoteUsable(lists, usable.data());
            classifier.factors.JoinLeftEnd(block);
            for (std::size_t first = 0; first < block.CountCases(); first += casesAtOnce)
                ScorePart(first, std::min(casesAtOnce, block.CountCases() - first));
        }
        block.AnswerCounts(answers);
    }

private:
    /// @param first counted within the block.
    void ScorePart(std::size_t first, std::size_t count) {
        const std::size_t numCategories = classifier.categories;
        const std::size_t begin = block.GetFirst() + first;
        const std::size_t filledUp = RoundUpCases(count);
        classifier.factors.Multiply(block, first, filledUp, probabilities.Get(), scratch.Get());
        // What is filled up must not be written to the caller's memory.
        const bool isWhole = count == filledUp;
        PosteriorTask task{.probabilities = probabilities.Get(),
                           .pitch = filledUp,
                           .categories = numCategories,
                           .cases = filledUp,
                           .usable = usable.data() + first,
                           .targetCounts = classifier.targetCounts,
                           .predicted = predicted.data(),
                           .confidence = confidence.Get()};
        const bool isByCase = answers.probabilityOrder == MatrixOrder::CaseByCase;
        const bool storesByCase =
            isWhole && isByCase && !answers.probabilities.empty() && PosteriorTask::StoresByCase(numCategories);
        if (isWhole && !answers.predicted.empty()) task.predicted = answers.predicted.data() + begin;
        if (isWhole && !answers.confidence.empty()) task.confidence = answers.confidence.data() + begin;
        if (storesByCase) task.byCase = answers.probabilities.data() + begin * numCategories;
        NormalizeAndPredict(task);
        if (!isWhole && !answers.predicted.empty()) {
            std::copy_n(predicted.data(), count, answers.predicted.data() + begin);
        }
        if (!isWhole && !answers.confidence.empty()) {
            std::copy_n(confidence.Get(), count, answers.confidence.data() + begin);
        }
        if (storesByCase || answers.probabilities.empty()) return;
        if (isByCase) {
            Transpose(probabilities.Get(), filledUp, numCategories, count,
                      answers.probabilities.data() + begin * numCategories, numCategories);
            return;
        }
        for (std::size_t k = 0; k < numCategories; ++k)
            std::copy_n(probabilities.Get() + k * filledUp, count, answers.probabilities.data() + k * cases + begin);
    }

    const SingleClassifier& classifier;
    const std::vector<std::size_t>& lists;
    const AnswerColumns& answers;
    std::size_t cases;
    RowLists::Block block;
    std::vector<std::uint8_t> usable;
    /// A part of a block; what is filled up in the last one, too.
    std::size_t casesAtOnce;
    AlignedNumbers probabilities;
    AlignedNumbers scratch;
    std::vector<std::int32_t> predicted;
    AlignedNumbers confidence;
};

void SingleClassifier::Score(const RowLists& rowLists, const CaseValues& values, const AnswerColumns& answers) const {
    Call(*this, rowLists, values, answers).Score();
}

}  // namespace nbscore
