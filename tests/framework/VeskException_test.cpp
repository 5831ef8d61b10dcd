#include "framework/VeskException.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

const nbscore::DocumentPlace place{"churn.xml", 12, 7, "/PMML/NaiveBayesModel[1]"};

TEST(VeskException, GivesCodeAndMessage) {
    const VeskException error(VeskException::UnknownVariable, "age is not defined!");

    EXPECT_EQ(error.GetCode(), 8);
    EXPECT_EQ(error.GetMessage(), "age is not defined!");
    EXPECT_STREQ(error.what(), "age is not defined!");
    EXPECT_FALSE(error.HasPlace());
}

TEST(VeskException, HasAdviceForAnyRefusal_UnlessItIsGivenAnother) {
    VeskException error(VeskException::UnknownVariable, "age is not defined!");
    EXPECT_EQ(error.GetAdvice(), "Mend the document at this place; docs/documents.md says what it may hold.");
    error.SetAdvice("Define age.");
    EXPECT_EQ(error.GetAdvice(), "Define age.");
    EXPECT_EQ(VeskException(VeskException::UnknownVariable, "x", "Define x.").GetAdvice(), "Define x.");
}

TEST(VeskException, KeepsThePlaceBesideTheMessage) {
    VeskException error(VeskException::UnexpectedElement, "BayesInputs was expected here.");
    error.SetPlace(place);

    EXPECT_TRUE(error.HasPlace());
    EXPECT_EQ(error.GetPlace().source, "churn.xml");
    EXPECT_EQ(error.GetPlace().line, 12U);
    EXPECT_EQ(error.GetPlace().column, 7U);
    EXPECT_EQ(error.GetPlace().elementPath, "/PMML/NaiveBayesModel[1]");
    EXPECT_EQ(error.GetMessage(), "BayesInputs was expected here.");
    EXPECT_STREQ(error.what(), "BayesInputs was expected here.");
}

TEST(VeskException, ChangesOnlyTheDocumentsName_WhenTheSourceIsSet) {
    VeskException error(VeskException::InvalidNumber, "x");
    error.SetPlace(place);
    error.SetSource("other.xml");

    EXPECT_EQ(error.GetPlace().source, "other.xml");
    EXPECT_EQ(error.GetPlace().line, 12U);
    EXPECT_EQ(error.GetPlace().column, 7U);
    EXPECT_EQ(error.GetPlace().elementPath, "/PMML/NaiveBayesModel[1]");
}

TEST(VeskException, HasNoPlace_WhenOnlyTheSourceIsSet) {
    VeskException error(VeskException::UnreadableSource, "x");
    error.SetSource("churn.xml");

    EXPECT_FALSE(error.HasPlace());
    EXPECT_EQ(error.GetPlace().source, "churn.xml");
}

TEST(VeskException, IsCopiedWhole) {
    VeskException error(VeskException::InvalidContent, "first", "advice");
    error.SetPlace(place);
    const VeskException copy = error;
    VeskException assigned(VeskException::UnexpectedElement, "second");
    assigned = error;

    for (const VeskException* each : {&copy, static_cast<const VeskException*>(&assigned)}) {
        EXPECT_EQ(each->GetCode(), 5);
        EXPECT_EQ(each->GetMessage(), "first");
        EXPECT_EQ(each->GetAdvice(), "advice");
        EXPECT_TRUE(each->HasPlace());
        EXPECT_EQ(each->GetPlace().line, 12U);
    }
}

TEST(VeskException, IsCaught_AsAStandardException) {
    try {
        throw VeskException(VeskException::InvalidContent, "caught");
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "caught");
    }
}

TEST(VeskException, IsCaughtAsAPointer_WhenThrownAsOne) {
    try {
        throw new VeskException(VeskException::InconsistentDocument, "Only one target is allowed.");
    } catch (VeskException* thrown) {
        const std::unique_ptr<VeskException> error(thrown);
        EXPECT_EQ(error->GetCode(), 12);
    }
}

}  // namespace
