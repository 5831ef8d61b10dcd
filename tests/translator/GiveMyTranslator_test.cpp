#include "translator/GiveMyTranslator.h"

#include <gtest/gtest.h>

#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

TEST(GiveMyTranslator, GivesANewTranslatorEachTime) {
    const std::unique_ptr<ScoreTranslator> first(GiveMyTranslator());
    const std::unique_ptr<ScoreTranslator> second(GiveMyTranslator());
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
}

TEST(GiveMyTranslator, GivesATranslatorWithoutADocumentName) {
    const std::unique_ptr<ScoreTranslator> translator(GiveMyTranslator());
    const auto* naiveBayes = dynamic_cast<NaiveBayesTranslator*>(translator.get());
    ASSERT_NE(naiveBayes, nullptr);
    EXPECT_EQ(naiveBayes->GetDocumentName(), "");
    EXPECT_TRUE(ParseWith(*translator, TestDocument().Text()).model);
}

}  // namespace
}  // namespace nbscore::test
