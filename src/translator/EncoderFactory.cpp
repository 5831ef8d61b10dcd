#include "translator/EncoderFactory.h"

#include "naivebayes/BorrowedText.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "reading/CountCells.h"

namespace nbscore {

namespace {

/// Most targets have two categories; an encoder grows beyond by itself.
constexpr int expectedCategories = 2;

std::unique_ptr<INBVeskEncoder> MakeEmptyEncoder(const ScoreDictVar& var) {
    if (var.GetStorageType() != ScoreDictVar::NumericStorage) {
        return std::make_unique<NBCatStringEncoder>(expectedCategories);
    }
    return std::make_unique<NBCatNumericEncoder>(expectedCategories);
}

}  // namespace

std::unique_ptr<INBVeskEncoder> MakeCategoricalEncoder(const ScoreDictVar& var, LimitWatch& watch) {
    std::unique_ptr<INBVeskEncoder> encoder = MakeEmptyEncoder(var);
    if (const ScoreValueLabelSet* declaredValues = var.GetValueLabelSet()) {
        for (const ScoreValueLabel& label : declaredValues->GetValueLabels()) {
            watch.Step();
            encoder->AddCategory(label.GetValue());
        }
    }
    return encoder;
}

std::size_t CellsOfEncoder(const ScoreDictVar& var) {
    const ScoreValueLabelSet* declaredValues = var.GetValueLabelSet();
    if (declaredValues == nullptr) return 0;
    const bool holdsTexts = var.GetStorageType() != ScoreDictVar::NumericStorage;
    std::size_t cells = 0;
    for (const ScoreValueLabel& label : declaredValues->GetValueLabels()) {
        cells += CountCells::cellsPerCategory;
        if (holdsTexts) cells += BorrowedText(*label.GetValue()).Get().size() / CountCells::bytesPerCell;
    }
    return cells;
}

}  // namespace nbscore
