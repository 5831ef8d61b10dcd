#include "naivebayes/NBCatStringEncoder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <memory>

#include "ModelParts.h"

namespace {

using nbscore::test::DisplayText;
using Texts = std::vector<std::string>;

TEST(NBCatStringEncoder, HasNoCategories_WhenNew) {
    const NBCatStringEncoder encoder(2);
    EXPECT_EQ(encoder.GetEncoderType(), 3);
    EXPECT_EQ(encoder.GetNumCategories(), 0);
    EXPECT_EQ(encoder.GetCategory(std::string()), -1);
    EXPECT_EQ(DisplayText(encoder), "\tNBCatStringEncoder object:  Last code = -1\n");
}

TEST(NBCatStringEncoder, TakesAnyExpectedNumber) {
    EXPECT_EQ(NBCatStringEncoder(-5).GetNumCategories(), 0);
    NBCatStringEncoder encoder(0);
    EXPECT_EQ(encoder.AddCategory("a"), 0);
    EXPECT_EQ(encoder.AddCategory("b"), 1);
}

TEST(NBCatStringEncoder, GivesCodesInOrderOfFirstRegistration) {
    NBCatStringEncoder encoder(2);
    EXPECT_EQ(encoder.AddCategory("b"), 0);
    EXPECT_EQ(encoder.AddCategory("a"), 1);
    EXPECT_EQ(encoder.AddCategory("b"), 0);
    EXPECT_EQ(encoder.AddCategory("c"), 2);
    EXPECT_EQ(encoder.GetNumCategories(), 3);
    EXPECT_EQ(encoder.GetCategory("a"), 1);
    EXPECT_EQ(encoder.GetCategory("c"), 2);
}

TEST(NBCatStringEncoder, KeepsTheFirstCode_WhenTheListRepeatsAText) {
    const NBCatStringEncoder encoder(Texts{"a", "b", "a"});
    EXPECT_EQ(encoder.GetNumCategories(), 2);
    EXPECT_EQ(encoder.GetCategory("a"), 0);
}

TEST(NBCatStringEncoder, TellsUpperFromLowerCase) {
    const NBCatStringEncoder encoder(Texts{"a"});
    EXPECT_EQ(encoder.GetCategory("A"), -1);
}

TEST(NBCatStringEncoder, TakesBlanksAsTheyStand) {
    const NBCatStringEncoder encoder(Texts{"a ", ""});
    EXPECT_EQ(encoder.GetCategory("a"), -1);
    EXPECT_EQ(encoder.GetCategory("a "), 0);
    EXPECT_EQ(encoder.GetCategory(std::string()), 1);
}

TEST(NBCatStringEncoder, UsesAValuesText) {
    NBCatStringEncoder encoder(2);
    const StringValue text("a");
    const NumericValue number(1.5);
    const NumericValue missing(NumericValue::GetSysmisValue());
    EXPECT_EQ(encoder.AddCategory(&text), 0);
    EXPECT_EQ(encoder.AddCategory(&number), 1);
    EXPECT_EQ(encoder.GetCategory("1.5"), 1);
    EXPECT_EQ(encoder.GetCategory(&text), 0);
    EXPECT_EQ(encoder.GetCategory(&number), 1);
    EXPECT_EQ(encoder.GetCategory(&missing), -1);
}

/// Gives another text from GetString than the one it holds.
class DecoratedValue : public StringValue {
public:
    using StringValue::StringValue;
    std::string GetString() const override { return "<" + GetText() + ">"; }
};

TEST(NBCatStringEncoder, AsksForTheText_WhenAValueMakesItsOwn) {
    const NBCatStringEncoder encoder(Texts{"a", "<a>"});
    const DecoratedValue decorated("a");
    EXPECT_EQ(encoder.GetCategory(&decorated), 1);
}

/// Sees whether the forms that take a value go through the interface.
class MarkingEncoder : public NBCatStringEncoder {
public:
    using NBCatStringEncoder::AddCategory;
    using NBCatStringEncoder::GetCategory;
    using NBCatStringEncoder::NBCatStringEncoder;
    int AddCategory(const std::string& text) override { return NBCatStringEncoder::AddCategory(text + "!"); }
    int GetCategory(const std::string& text) const override { return NBCatStringEncoder::GetCategory(text + "!"); }
};

TEST(NBCatStringEncoder, GoesThroughTheInterface_WhenGivenAValue) {
    MarkingEncoder encoder(1);
    const StringValue text("a");
    EXPECT_EQ(encoder.AddCategory(&text), 0);
    EXPECT_EQ(encoder.GetCategory(&text), 0);
    EXPECT_NE(DisplayText(encoder).find("a!"), std::string::npos);
}

TEST(NBCatStringEncoder, ListsItsTextsInCodeOrder) {
    EXPECT_EQ(DisplayText(NBCatStringEncoder(Texts{"sunny", "rain", "b c"})),
              "\tNBCatStringEncoder object:  Last code = 2\n"
              "\t\t0\t\tsunny\n"
              "\t\t1\t\train\n"
              "\t\t2\t\tb c\n");
}

TEST(NBCatStringEncoder, CopyStandsOnItsOwn_WhenTheSourceIsGone) {
    auto source = std::make_unique<NBCatStringEncoder>(Texts{"z", "a"});
    NBCatStringEncoder copied(*source);
    NBCatStringEncoder assigned(Texts{"other", "things", "before"});
    assigned = *source;
    const std::unique_ptr<INBVeskEncoder> cloned(source->Clone());
    const std::string shown = DisplayText(*source);
    source.reset();

    EXPECT_EQ(DisplayText(copied), shown);
    EXPECT_EQ(DisplayText(assigned), shown);
    EXPECT_EQ(DisplayText(*cloned), shown);
    EXPECT_EQ(copied.AddCategory("new"), 2);
    EXPECT_EQ(cloned->GetNumCategories(), 2);
    EXPECT_EQ(cloned->GetEncoderType(), 3);
}

TEST(NBCatStringEncoder, IsUnchanged_WhenAssignedToItself) {
    NBCatStringEncoder encoder(Texts{"z", "a"});
    const NBCatStringEncoder& same = encoder;
    encoder = same;
    EXPECT_EQ(DisplayText(encoder), "\tNBCatStringEncoder object:  Last code = 1\n\t\t0\t\tz\n\t\t1\t\ta\n");
}

RC_GTEST_PROP(NBCatStringEncoder, CodesAsAListOfDifferentTextsWould, (const Texts& texts)) {
    NBCatStringEncoder encoder(2);
    Texts different;
    for (const std::string& text : texts) {
        const auto known = std::find(different.begin(), different.end(), text);
        const auto expected = static_cast<int>(known - different.begin());
        if (known == different.end()) different.push_back(text);
        RC_ASSERT(encoder.AddCategory(text) == expected);
        RC_ASSERT(encoder.GetCategory(text) == expected);
    }
    RC_ASSERT(encoder.GetNumCategories() == static_cast<int>(different.size()));
}

}  // namespace
