// A model scores by a plan that it makes for its first case; with an encoder of a class that it does not know it asks
// the encoders themselves. Both must say the same, bit for bit, of every case, however a record holds it.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

#include "framework/MCMV.h"
#include "naivebayes/ForeignVariable.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "selflearning/EitherModel.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {
namespace {

/// An encoder of another class, which nobody knows to answer as its base does.
template <typename Encoder>
class Own : public Encoder {
public:
    using Encoder::Encoder;
};

/// A value of a host's own class, which says different things of itself.
class HostValue : public StringValue {
public:
    HostValue(ValueType reportedType, double reportedNumber, const std::string& content)
        : StringValue(content), type(reportedType), number(reportedNumber) {}
    ScoreValue* Clone() const override { return new HostValue(*this); }
    double GetDouble() const override { return number; }
    ValueType GetType() const override { return type; }
    bool IsSystemMissingValue() const override { return MCMV::IsMissing(number); }

private:
    ValueType type;
    double number;
};

/// By position, but not of the class that is known best.
class OwnRecord : public BaseCaseRecord {
public:
    using BaseCaseRecord::BaseCaseRecord;
};

using Held = std::unique_ptr<ScoreValue>;

Held DrawValue(Randomness& random) {
    static const std::vector<double> numbers = {0.0,
                                                -0.0,
                                                1.0,
                                                2.0,
                                                2.5,
                                                -99.0,
                                                7.0,
                                                MCMV::gMissingValue,
                                                std::numeric_limits<double>::quiet_NaN(),
                                                std::numeric_limits<double>::infinity()};
    static const std::vector<std::string> texts = {"1", "2.5", "a", "b", "", "n/a", " 1", "a text that is long enough"};
    switch (Between(0, 9, random)) {
        case 0:
            return nullptr;
        case 1: {
            static const std::vector<ScoreValue::ValueType> types = {ScoreValue::Numeric, ScoreValue::String,
                                                                     ScoreValue::Vector};
            return std::make_unique<HostValue>(OneOf(types, random), OneOf(numbers, random), OneOf(texts, random));
        }
        case 2:
        case 3:
        case 4:
            return std::make_unique<NumericValue>(OneOf(numbers, random));
        default:
            return std::make_unique<StringValue>(OneOf(texts, random));
    }
}

std::unique_ptr<ScoreDictVar> MakeVariable(const std::string& name, int shape) {
    if (shape == 0) return std::make_unique<ForeignVariable>(name);
    auto var = shape < 3 ? ContinuousVariable(name) : TextVariable(name, {});
    if (shape % 2 == 1) {
        var->AddMissingValue(std::make_unique<NumericValue>(-99.0));
        var->AddMissingValue(std::make_unique<StringValue>("n/a"));
    }
    return var;
}

/// What two models of the same kind are made of.
struct DrawnPredictor {
    std::string name;
    int shapeOfVariable;
    int kind;
    std::size_t categories;
    NBayesInputBase::Matrix counts;
};

DrawnPredictor DrawPredictor(int number, Randomness& random) {
    DrawnPredictor drawn{"x" + std::to_string(number),
                         Between(0, 4, random),
                         Between(0, 2, random),
                         static_cast<std::size_t>(Between(1, 4, random)),
                         {}};
    for (std::size_t row = 0; row <= drawn.categories; ++row)
        drawn.counts.push_back(
            {static_cast<double>(Between(0, 5, random)), static_cast<double>(Between(0, 5, random))});
    return drawn;
}

template <template <typename> typename Class>
INBVeskEncoder* MakeEncoder(const DrawnPredictor& drawn) {
    static const std::vector<std::string> texts = {"a", "1", "n/a", "a text that is long enough"};
    static const std::vector<double> numbers = {0.0, 1.0, 2.5, -99.0};
    const auto count = static_cast<std::ptrdiff_t>(drawn.categories);
    if (drawn.kind == 0) {
        return new typename Class<NBCatStringEncoder>::Type(std::vector(texts.begin(), texts.begin() + count));
    }
    std::vector<double> held(numbers.begin(), numbers.begin() + count);
    if (drawn.kind == 1) return new typename Class<NBCatNumericEncoder>::Type(held);
    std::ranges::sort(held);
    return new typename Class<NBinningEncoder>::Type(held);
}

template <typename Encoder>
struct Known {
    using Type = Encoder;
};
template <typename Encoder>
struct Unknown {
    using Type = Own<Encoder>;
};

template <template <typename> typename Class>
EitherModel MakeModelOf(bool isSet, const std::vector<DrawnPredictor>& predictors) {
    EitherModel model(isSet, 0.5, {5, 4});
    for (const DrawnPredictor& drawn : predictors) {
        model.AddPredictor(MakeVariable(drawn.name, drawn.shapeOfVariable), MakeEncoder<Class>(drawn), drawn.counts);
    }
    // One that reads a field once more, as the same categories.
    const DrawnPredictor& again = predictors.front();
    model.AddPredictor(*model.Get().GetDictionary()->GetVar(again.name), MakeEncoder<Class>(again), again.counts);
    return model;
}

std::vector<std::uint64_t> BitsOf(const std::vector<double>& numbers) {
    std::vector<std::uint64_t> bits;
    for (const double number : numbers)
        bits.push_back(std::bit_cast<std::uint64_t>(number));
    return bits;
}

void FillIn(BaseCaseRecord& record, int position, const ScoreValue* value) {
    record.SetAbsent(position);
    if (value == nullptr) return;
    if (value->GetType() == ScoreValue::Numeric) {
        record.SetNumber(position, value->GetDouble());
    } else {
        record.SetText(position, value->GetString());
    }
}

class PlannedScoring : public testing::TestWithParam<bool> {};

TEST_P(PlannedScoring, SaysWhatTheEncodersSay_OfEveryRecordAndValue) {
    Randomness random(1);
    for (int round = 0; round < 300 && !HasFailure(); ++round) {
        std::vector<DrawnPredictor> predictors;
        std::vector<std::string> names;
        for (int j = Between(1, 70, random) % 35; j >= 0; --j) {
            predictors.push_back(DrawPredictor(j, random));
            names.push_back(predictors.back().name);
        }
        const EitherModel planned = MakeModelOf<Known>(GetParam(), predictors);
        const EitherModel byEncoders = MakeModelOf<Unknown>(GetParam(), predictors);
        ASSERT_EQ(planned.As<ModelSelfTables>().GetTables().classifiers.back().predictors.front().kind,
                  static_cast<PredictorTables::Kind>(predictors.front().kind));
        ASSERT_EQ(byEncoders.As<ModelSelfTables>().GetTables().classifiers.back().predictors.front().kind,
                  PredictorTables::Foreign);
        BaseCaseRecord byPosition(names);
        OwnRecord ofOwnClass(names);
        for (int entry = 0; entry < 20; ++entry) {
            NamedRecord byName;
            NamedRecord withoutOwnValues;
            for (std::size_t j = 0; j < names.size(); ++j) {
                const Held value = DrawValue(random);
                FillIn(byPosition, static_cast<int>(j), value.get());
                FillIn(ofOwnClass, static_cast<int>(j), value.get());
                const ScoreValue* const plain = byPosition.GetValueByIndex(static_cast<int>(j));
                if (plain != nullptr) withoutOwnValues.Set(names[j], Held(plain->Clone()));
                if (value != nullptr) byName.Set(names[j], Held(value->Clone()));
            }
            std::unique_ptr<ScoreResult> result;
            std::unique_ptr<ScoreResult> other;
            const auto ofPlain = BitsOf(byEncoders.ScoreAll(withoutOwnValues, other));
            EXPECT_EQ(BitsOf(planned.ScoreAll(byPosition, result)), ofPlain);
            EXPECT_EQ(BitsOf(planned.ScoreAll(ofOwnClass, result)), ofPlain);
            EXPECT_EQ(BitsOf(planned.ScoreAll(withoutOwnValues, result)), ofPlain);
            EXPECT_EQ(BitsOf(byEncoders.ScoreAll(byPosition, other)), ofPlain);
            EXPECT_EQ(BitsOf(planned.ScoreAll(byName, result)), BitsOf(byEncoders.ScoreAll(byName, other)));
        }
    }
}

/// Each change is one that scoring with the parts as they were would not show.
TEST_P(PlannedScoring, TakesTheModelAsItIs_WhenItChangesAfterTheFirstCase) {
    const DrawnPredictor first{"x", 3, 0, 1, {{3, 1}, {1, 1}}};
    const DrawnPredictor second{"y", 3, 0, 1, {{1, 4}, {1, 1}}};
    EitherModel model(GetParam(), 0.5, {5, 4});
    const NamedRecord record = TextRecord({{"x", "a"}, {"y", "a"}});
    const double prior = model.Score(record);
    model.AddPredictor(MakeVariable("x", 3), MakeEncoder<Known>(first), first.counts);
    const double withFirst = model.Score(record);
    EXPECT_NE(withFirst, prior);
    model.AddPredictor(MakeVariable("y", 3), MakeEncoder<Known>(second), second.counts);
    EitherModel fresh(GetParam(), 0.5, {5, 4});
    fresh.AddPredictor(MakeVariable("x", 3), MakeEncoder<Known>(first), first.counts);
    fresh.AddPredictor(MakeVariable("y", 3), MakeEncoder<Known>(second), second.counts);
    EXPECT_EQ(model.Score(record), fresh.Score(record));
    EXPECT_NE(model.Score(record), withFirst);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, PlannedScoring, testing::Bool(), NameOfKind);

}  // namespace
}  // namespace nbscore::test
