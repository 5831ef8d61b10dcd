#include "batch/ClassifierFactors.h"

#include <algorithm>
#include <utility>

namespace nbscore {
namespace {

/// Of a left end that is looked up within registers, and of any other.
constexpr std::size_t mostRowsInRegisters = rowsInRegisters[1];
constexpr std::size_t mostNumbersOfLeftEnd = 4096;

constexpr std::size_t vectorLength = 8;

std::size_t RoundUpNumbers(std::size_t count) {
    return (count + vectorLength - 1) / vectorLength * vectorLength;
}

}  // namespace

ClassifierFactors::ClassifierFactors(const ClassifierTables& classifier, std::size_t categories, const RowLists& lists,
                                     std::span<const std::size_t> listsOfPredictors)
    : numCategories(categories) {
    std::vector<Part> predictors;
    for (std::size_t j = 0; j < classifier.predictors.size(); ++j) {
        const PredictorTables& predictor = classifier.predictors[j];
        if (predictor.probabilities == nullptr) continue;
        const RowLists::List& list = lists.Get(listsOfPredictors[j]);
        predictors.push_back({{&predictor}, {&list}, list.numRows});
    }
    std::vector<Part> parts = Divide(predictors);
    const std::size_t cost = CostOf(parts);
    registerLoop = FindRegisterLoop();
    if (registerLoop != nullptr) {
        std::vector<Part> inRegisters = Divide(predictors);
        if (CostOf(inRegisters) < cost) {
            parts = std::move(inRegisters);
        } else {
            registerLoop = nullptr;
        }
    }

    std::vector<double> priors(
        classifier.priors.begin(),
        classifier.priors.begin() + static_cast<std::ptrdiff_t>(std::min(categories, classifier.priors.size())));
    priors.resize(categories, 1.0);
    const std::vector<double> ones(categories, 1.0);
    std::size_t size = 0;
    for (const Part& part : parts)
        size += CountNumbers(part.numRows);
    tables = AlignedNumbers(size, 1.0);
    double* table = tables.Get();
    for (const Part& part : parts) {
        LayOut(part, steps.empty() ? priors : ones, table);
        steps.push_back(
            {table, part.numRows, part.lists.size() == 1 ? part.lists.front()->place : lists.CountNarrow()});
        table += CountNumbers(part.numRows);
    }
    isLeftEndJoined = parts.front().lists.size() != 1;
    std::size_t distance = 1;
    for (const RowLists::List* list : parts.front().lists) {
        leftEnd.push_back({list->place, distance});
        distance *= list->numRows;
    }
}

/// As many predictors in front as have a small table together; at least one, if there is any.
std::vector<ClassifierFactors::Part> ClassifierFactors::Divide(std::span<const Part> predictors) const {
    const std::size_t mostRows = registerLoop != nullptr
                                     ? mostRowsInRegisters
                                     : std::min(longestByteList, mostNumbersOfLeftEnd / RowStride(numCategories));
    std::vector<Part> parts(1);
    for (const Part& predictor : predictors) {
        Part& left = parts.front();
        const bool isFirst = left.predictors.empty();
        const bool fits = left.numRows * predictor.numRows <= mostRows;
        if (parts.size() > 1 || !(isFirst || fits)) {
            parts.push_back(predictor);
            continue;
        }
        left.predictors.push_back(predictor.predictors.front());
        left.lists.push_back(predictor.lists.front());
        left.numRows *= predictor.numRows;
    }
    return parts;
}

/// How long a product takes, as measured, in units of a sixteenth of a look-up in registers for sixteen cases.
std::size_t ClassifierFactors::CostOf(const std::vector<Part>& parts) const {
    std::size_t cost = 0;
    for (const Part& part : parts) {
        if (registerLoop == nullptr) {
            cost += numCategories <= 4 ? 105 : 150 * ((numCategories + 7) / 8);
        } else if (part.numRows <= rowsInRegisters[1]) {
            cost += 16 * numCategories;
        } else if (part.numRows <= rowsInRegisters[2]) {
            cost += 28 * numCategories;
        } else {
            cost += numCategories <= 2 ? 91 : 150 * ((numCategories + 3) / 4);
        }
    }
    return cost;
}

std::size_t ClassifierFactors::CountNumbers(std::size_t numRows) const {
    if (registerLoop == nullptr) return RoundUpNumbers(numRows * RowStride(numCategories));
    for (const std::size_t most : rowsInRegisters) {
        if (numRows <= most) return most * numCategories;
    }
    const std::size_t part = RowPart(numCategories);
    return RoundUpNumbers(numRows * ((numCategories + part - 1) / part * part));
}

/// @param begin what stands at the left of the part's factors. @param table of ones.
void ClassifierFactors::LayOut(const Part& part, std::span<const double> begin, double* table) const {
    const std::size_t length = RowPart(numCategories);
    const auto placeOf = [&](std::size_t row, std::size_t k) {
        if (registerLoop == nullptr) return row * RowStride(numCategories) + k;
        for (const std::size_t most : rowsInRegisters) {
            if (part.numRows <= most) return k * most + row;
        }
        return k / length * length * part.numRows + row * length + k % length;
    };
    for (std::size_t row = 0; row < part.numRows; ++row) {
        for (std::size_t k = 0; k < numCategories; ++k) {
            double product = begin[k];
            std::size_t rest = row;
            for (std::size_t j = 0; j < part.predictors.size(); ++j) {
                const std::size_t own = rest % part.lists[j]->numRows;
                rest /= part.lists[j]->numRows;
                if (own > 0) product *= part.predictors[j]->probabilities->at(own - 1).at(k);
            }
            table[placeOf(row, k)] = product;
        }
    }
}

std::size_t ClassifierFactors::CountScratch(std::size_t cases) const {
    return registerLoop == nullptr ? cases * RowStride(numCategories) : 0;
}

void ClassifierFactors::JoinLeftEnd(RowLists::Block& block) const {
    if (!isLeftEndJoined) return;
    std::uint8_t* const joined = block.GetSpare(0);
    const std::size_t cases = block.GetPitch();
    std::fill_n(joined, cases, std::uint8_t{0});
    for (const Joined& list : leftEnd) {
        AddMultiplesToBytes(block.GetNarrowRows() + list.list * cases, static_cast<std::uint8_t>(list.distance), cases,
                            joined);
    }
}

void ClassifierFactors::Multiply(const RowLists::Block& block, std::size_t first, std::size_t cases, double* joints,
                                 double* scratch) const {
    ProductTask task{.steps = steps,
                     .categories = numCategories,
                     .narrowRows = block.GetNarrowRows(),
                     .wideRows = block.GetWideRows(),
                     .rowPitch = block.GetPitch(),
                     .first = first,
                     .cases = cases,
                     .joints = joints,
                     .pitch = cases};
    if (registerLoop != nullptr) return registerLoop(task);
    task.joints = scratch;
    task.pitch = RowStride(numCategories);
    MultiplyRows(task);
    Transpose(scratch, task.pitch, cases, numCategories, joints, cases);
}

}  // namespace nbscore
