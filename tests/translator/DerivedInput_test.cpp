// Derived fields of every kind as inputs of a model: the same answers as when their values stood in the case itself.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <thread>
#include <vector>

#include "framework/NumberText.h"
#include "selflearning/SelfLearningModel.h"
#include "selflearning/SelfLearningResult.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

/// One way to derive a field "d", and what it gives for two cases.
struct Derivation {
    std::string kind;
    std::string expression;
    /// When it is rain at 5 degrees, and when it is sunny at 25.
    std::string rainy, sunny;
    bool isNumeric = false;
};

const std::string isSunny =
    "<DefineFunction name='is' optype='categorical'><ParameterField name='a'/><ParameterField name='b'/>"
    "<Apply function='equal'><FieldRef field='a'/><FieldRef field='b'/></Apply></DefineFunction>";

const std::vector<Derivation>& Derivations() {
    static const std::vector<Derivation> derivations = {
        {"Constant", "<Constant dataType='string'>7</Constant>", "7", "7", true},
        {"FieldRef to a text", "<FieldRef field='outlook'/>", "rain", "sunny"},
        {"FieldRef to a number", "<FieldRef field='temperature'/>", "5", "25", true},
        {"NormContinuous",
         "<NormContinuous field='temperature'><LinearNorm orig='5' norm='0'/><LinearNorm orig='45' "
         "norm='1'/></NormContinuous>",
         "0", "0.5", true},
        {"NormDiscrete", "<NormDiscrete field='outlook' value='sunny'/>", "0", "1", true},
        {"Discretize",
         "<Discretize field='temperature' defaultValue='warm'><DiscretizeBin binValue='cold'><Interval "
         "closure='openOpen' rightMargin='20'/></DiscretizeBin></Discretize>",
         "cold", "warm"},
        {"MapValues",
         "<MapValues outputColumn='o'><FieldColumnPair field='outlook' "
         "column='i'/><InlineTable><row><i>rain</i><o>wet</o>"
         "</row><row><i>sunny</i><o>dry</o></row></InlineTable></MapValues>",
         "wet", "dry"},
        {"TextIndex",
         "<TextIndex textField='outlook'><TextIndexNormalization><InlineTable><row><string>s[un]+y</string><stem>bright"
         "</stem><regex>true</regex></row></InlineTable></TextIndexNormalization><Constant>bright</Constant></"
         "TextIndex>",
         "0", "1", true},
        {"Apply", "<Apply function='greaterThan'><FieldRef field='temperature'/><Constant>20</Constant></Apply>",
         "false", "true"},
        {"a defined function", "<Apply function='is'><FieldRef field='outlook'/><Constant>sunny</Constant></Apply>",
         "false", "true"},
    };
    return derivations;
}

std::string Counts(const std::string& value, int yes, int no) {
    return "<PairCounts value='" + value + "'><TargetValueCounts><TargetValueCount value='yes' count='" +
           std::to_string(yes) + "'/><TargetValueCount value='no' count='" + std::to_string(no) +
           "'/></TargetValueCounts></PairCounts>";
}

/// The counts of both values, for one that is the same in both cases just once.
std::string CategoricalInput(const Derivation& derivation) {
    std::string counts = Counts(derivation.rainy, 1, 4);
    if (derivation.sunny != derivation.rainy) counts += Counts(derivation.sunny, 6, 2);
    return "<BayesInput fieldName='d'>" + counts + Counts("99", 3, 3) + "</BayesInput>";
}

const std::string binnedInput =
    "<BayesInput fieldName='d'><DerivedField name='b' optype='categorical'><Discretize field='d'>"
    "<DiscretizeBin binValue='low'><Interval closure='openClosed' rightMargin='0.25'/></DiscretizeBin>"
    "<DiscretizeBin binValue='high'><Interval closure='openOpen' leftMargin='0.25'/></DiscretizeBin>"
    "</Discretize></DerivedField>" +
    Counts("0", 1, 4) + Counts("1", 6, 2) + "</BayesInput>";

enum class Values { Declared, Learned };

std::string Declarations(const Derivation& derivation, Values values) {
    if (values == Values::Learned) return "";
    std::string text = "<Value value='" + derivation.rainy + "'/>";
    if (derivation.sunny != derivation.rainy) text += "<Value value='" + derivation.sunny + "'/>";
    return text + "<Value value='99'/>";
}

/// A document in which "d" is derived, read by so many inputs.
TestDocument WithDerived(const std::string& declaration, const std::string& content, const std::string& input,
                         int times = 1) {
    TestDocument document;
    document.transformations = "<TransformationDictionary><DerivedField name='d' " + declaration + ">" + content +
                               "</DerivedField>" + isSunny + "</TransformationDictionary>";
    document.miningSchema +=
        R"(<Extension extender="scoring.nbscore" name="DerivedFields"><MiningField name="d"/></Extension>)";
    document.bayesInputs.clear();
    for (int i = 0; i < times; ++i)
        document.bayesInputs += input;
    return document;
}

/// The same model, to which cases bring "d" themselves.
TestDocument WithGiven(const std::string& declaration, const std::string& values, const std::string& input) {
    TestDocument document;
    document.dataFields += "<DataField name='d' " + declaration + ">" + values + "</DataField>";
    document.miningSchema += "<MiningField name='d'/>";
    document.bayesInputs = input;
    return document;
}

BaseCaseRecord Weather(const std::string& outlook, double temperature) {
    BaseCaseRecord record({"outlook", "temperature"});
    record.SetText(0, outlook);
    record.SetNumber(1, temperature);
    return record;
}

BaseCaseRecord GivenD(const std::string& value, bool asNumber) {
    BaseCaseRecord record({"d"});
    if (asNumber) {
        record.SetNumber(0, ReadNumber(value).value());
    } else {
        record.SetText(0, value);
    }
    return record;
}

void ExpectSameScores(const Derivation& derivation, const TestDocument& derived, const TestDocument& given,
                      bool asNumber) {
    const ParseOutcome derivedOutcome = Parse(derived.Text());
    ASSERT_TRUE(derivedOutcome.model) << derivation.kind << derivedOutcome.refusal->GetMessage();
    const ParseOutcome givenOutcome = Parse(given.Text());
    ASSERT_TRUE(givenOutcome.model) << derivation.kind << givenOutcome.refusal->GetMessage();
    EXPECT_EQ(Probabilities(*derivedOutcome.model, Weather("rain", 5)),
              Probabilities(*givenOutcome.model, GivenD(derivation.rainy, asNumber)))
        << derivation.kind;
    EXPECT_EQ(Probabilities(*derivedOutcome.model, Weather("sunny", 25)),
              Probabilities(*givenOutcome.model, GivenD(derivation.sunny, asNumber)))
        << derivation.kind;
    // Not the priors: the input counts.
    EXPECT_NE(Probabilities(*derivedOutcome.model, Weather("rain", 5)),
              Probabilities(*givenOutcome.model, BaseCaseRecord({"d"})))
        << derivation.kind;
}

TEST(DerivedInput, IsCategorical_WhetherItsValuesAreDeclaredOrLearned) {
    for (const Derivation& derivation : Derivations()) {
        for (const bool asNumber : {false, true}) {
            if (asNumber && !derivation.isNumeric) continue;
            const std::string declaration =
                std::string("optype='categorical' dataType='") + (asNumber ? "double'" : "string'");
            for (const Values values : {Values::Declared, Values::Learned}) {
                const std::string declared = Declarations(derivation, values);
                const std::string input = CategoricalInput(derivation);
                ExpectSameScores(derivation, WithDerived(declaration, derivation.expression + declared, input),
                                 WithGiven(declaration, declared, input), asNumber);
            }
        }
    }
}

TEST(DerivedInput, IsBinnedByTheInputItself_WhenItIsContinuous) {
    const std::string declaration = "optype='continuous' dataType='double'";
    for (const Derivation& derivation : Derivations()) {
        if (!derivation.isNumeric) continue;
        ExpectSameScores(derivation, WithDerived(declaration, derivation.expression, binnedInput),
                         WithGiven(declaration, "", binnedInput), true);
    }
}

TEST(DerivedInput, IsAnInputOfEachSubModel) {
    for (const Derivation& derivation : Derivations()) {
        const std::string declaration = "optype='categorical' dataType='string'";
        const std::string input = CategoricalInput(derivation);
        const TestDocument plain = WithDerived(declaration, derivation.expression, input);
        const ParseOutcome single = Parse(plain.Text());
        ASSERT_TRUE(single.model) << derivation.kind;
        SubModelText subModel = Named("a");
        subModel.schema = Schema(plain.miningSchema);
        subModel.inputs = "<BayesInputs>" + input + "</BayesInputs>";
        SubModelText other = subModel;
        other.attributes = Named("b").attributes;
        const ParseOutcome set = Parse(SelfLearningText({subModel, other}, plain));
        ASSERT_TRUE(set.model) << derivation.kind << set.refusal->GetMessage();
        for (const BaseCaseRecord& record : {Weather("rain", 5), Weather("sunny", 25)}) {
            ScoreResult* scored = nullptr;
            set.model->GetScore(&record, scored, false);
            const std::unique_ptr<ScoreResult> owner(scored);
            const auto& prediction =
                dynamic_cast<const VectorValue<SelfLearningResult::ModelDescriptor>&>(*scored->GetPrediction());
            for (const auto& descriptor : prediction.GetVectorValue())
                EXPECT_EQ(descriptor.score, Probabilities(*single.model, record)[1]) << derivation.kind;
        }
    }
}

/// A record that counts how often each variable is asked for.
class CountingRecord : public ScoreCaseRecord {
public:
    const ScoreValue* GetValueByIndex(int) const override { return nullptr; }
    const ScoreValue* GetValueByName(const std::string& name) const override {
        ++questions[name];
        return name == "temperature" ? &number : nullptr;
    }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string&) const override { return -1; }

    mutable std::map<std::string, int> questions;
    NumericValue number{25.0};
};

const std::string warmth =
    "<Apply function='greaterThan'><FieldRef field='temperature'/><Constant>20</Constant></Apply>";
const Derivation warm{"", warmth, "false", "true"};

TEST(DerivedInput, IsComputedOncePerCase_HoweverManyInputsReadIt) {
    TestDocument document = WithDerived("optype='categorical' dataType='string'", warmth, CategoricalInput(warm), 5);
    const std::string unread =
        "<DerivedField name='unread' dataType='string'><FieldRef field='outlook'/></DerivedField>";
    document.transformations.insert(document.transformations.find("<DerivedField"), unread);
    const ParseOutcome outcome = Parse(document.Text());
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    const CountingRecord record;
    ScoreResult* scored = nullptr;
    for (int cases = 1; cases <= 3; ++cases) {
        outcome.model->GetScore(&record, scored, false);
        EXPECT_EQ(record.questions["temperature"], cases);
        EXPECT_EQ(record.questions.count("outlook"), 0u);
    }
    const std::unique_ptr<ScoreResult> owner(scored);
}

TEST(DerivedInput, IsComputedOncePerCase_HoweverManySubModelsReadIt) {
    const TestDocument plain = WithDerived("optype='categorical' dataType='string'", warmth, CategoricalInput(warm));
    std::vector<SubModelText> subModels;
    for (int i = 0; i < 10; ++i) {
        subModels.push_back(Named("m" + std::to_string(i)));
        subModels.back().schema = Schema(plain.miningSchema);
        subModels.back().inputs = "<BayesInputs>" + CategoricalInput(warm) + "</BayesInputs>";
    }
    const ParseOutcome outcome = Parse(SelfLearningText(subModels, plain));
    ASSERT_TRUE(outcome.model) << outcome.refusal->GetMessage();
    const CountingRecord record;
    ScoreResult* scored = nullptr;
    outcome.model->GetScore(&record, scored, false);
    const std::unique_ptr<ScoreResult> owner(scored);
    EXPECT_EQ(record.questions["temperature"], 1);
}

TEST(DerivedInput, IsEachThreadsOwn_WhenSeveralScoreAtOnce) {
    for (const Derivation& derivation : Derivations()) {
        const ParseOutcome outcome = Parse(
            WithDerived("optype='categorical' dataType='string'", derivation.expression, CategoricalInput(derivation))
                .Text());
        ASSERT_TRUE(outcome.model) << derivation.kind;
        const auto rainy = Probabilities(*outcome.model, Weather("rain", 5));
        const auto sunny = Probabilities(*outcome.model, Weather("sunny", 25));
        std::vector<int> wrong(4, 0);
        std::vector<std::thread> threads;
        for (std::size_t worker = 0; worker < wrong.size(); ++worker) {
            threads.emplace_back([&, worker] {
                for (std::size_t i = 0; i < 200; ++i) {
                    const bool isRain = (worker + i) % 2 == 0;
                    const auto probabilities =
                        Probabilities(*outcome.model, isRain ? Weather("rain", 5) : Weather("sunny", 25));
                    if (probabilities != (isRain ? rainy : sunny)) ++wrong[worker];
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(wrong, std::vector<int>(4, 0)) << derivation.kind;
    }
}

}  // namespace
}  // namespace nbscore::test
