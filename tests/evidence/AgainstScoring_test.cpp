// Evidence against scoring, over documents, sets and models of every shape drawn at random: prior and factors multiply
// to the model's own answer, to the last bit, and the weights sum up to its log-odds.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include "batch/RandomStandardModel.h"
#include "cases/CaseTable.h"
#include "evidence/CaseExplainer.h"
#include "framework/BaseCaseRecord.h"
#include "framework/CaseFacts.h"
#include "framework/ScoreClsResult.h"
#include "framework/SubModelScoring.h"
#include "host/PluginLibrary.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"
#include "table/ModelResults.h"

namespace nbscore::test {
namespace {

constexpr int casesPerModel = 12;

std::unique_ptr<ScoreModel> Parse(const std::string& text) {
    static const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    std::istringstream source(text);
    return std::unique_ptr<ScoreModel>(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8"));
}

bool HaveSameBits(double one, double other) {
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

bool TakesPart(const PredictorEvidence& predictor) {
    return predictor.kind == PredictorReading::Known;
}

/// Plain products from the left, divided by their sum.
std::vector<double> ReplaySmoothed(const Evidence& evidence) {
    std::vector<double> joints = evidence.priors;
    for (const PredictorEvidence& predictor : evidence.predictors) {
        for (std::size_t k = 0; TakesPart(predictor) && k < joints.size(); ++k) {
            EXPECT_EQ(predictor.factors[k].exponent, 0.0);
            joints[k] *= predictor.factors[k].mantissa;
        }
    }
    const double sum = std::accumulate(joints.begin(), joints.end(), 0.0);
    for (double& joint : joints)
        joint /= sum;
    return joints;
}

/// The same with the exponents of both kept apart, at every step; the largest product then has the exponent 0.
std::vector<double> ReplayScaled(const Evidence& evidence) {
    std::vector<double> joints = evidence.priors;
    std::vector<double> exponents(joints.size(), 0.0);
    const auto takeExponent = [](double& mantissa, double& exponent) {
        int shift = 0;
        mantissa = std::frexp(mantissa, &shift);
        exponent += shift;
    };
    for (const PredictorEvidence& predictor : evidence.predictors) {
        for (std::size_t k = 0; TakesPart(predictor) && k < joints.size(); ++k) {
            auto [mantissa, exponent] = predictor.factors[k];
            takeExponent(mantissa, exponent);
            takeExponent(joints[k], exponents[k]);
            joints[k] *= mantissa;
            exponents[k] += exponent;
        }
    }
    double highest = -1e300;
    for (std::size_t k = 0; k < joints.size(); ++k) {
        takeExponent(joints[k], exponents[k]);
        if (joints[k] > 0.0) highest = std::max(highest, exponents[k]);
    }
    for (std::size_t k = 0; k < joints.size(); ++k)
        joints[k] = std::ldexp(joints[k], static_cast<int>(std::max(exponents[k] - highest, -10000.0)));
    const double sum = std::accumulate(joints.begin(), joints.end(), 0.0);
    for (double& joint : joints)
        joint /= sum;
    return joints;
}

/// How often what was met.
struct Seen {
    int explained = 0;
    int nothingKnown = 0;
    int without = 0;
    int sums = 0;
    int averages = 0;
    int densities = 0;
};

void ExpectEqualBits(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t k = 0; k < actual.size(); ++k)
        EXPECT_TRUE(HaveSameBits(actual[k], expected[k])) << k << ": " << actual[k] << " instead of " << expected[k];
}

void ExpectSums(const Evidence& evidence, Seen& seen) {
    if (!evidence.base) return;
    double sum = *evidence.base;
    double size = std::abs(sum);
    double averageSum = 0.0;
    double averageSize = size;
    int usable = 0;
    for (const PredictorEvidence& predictor : evidence.predictors) {
        if (!predictor.weight) {
            EXPECT_EQ(evidence.logOdds, std::nullopt);
            return;
        }
        if (!TakesPart(predictor)) {
            EXPECT_EQ(*predictor.weight, 0.0);
        }
        EXPECT_TRUE(std::isfinite(*predictor.weight));
        usable += TakesPart(predictor) ? 1 : 0;
        sum += *predictor.weight;
        size += std::abs(*predictor.weight);
        averageSum += predictor.againstAverage ? *predictor.againstAverage : *predictor.weight;
        averageSize += std::abs(predictor.average.value_or(0.0));
        seen.densities += TakesPart(predictor) && !predictor.average ? 1 : 0;
    }
    EXPECT_EQ(evidence.logOdds, sum);
    ASSERT_TRUE(evidence.averageBase);
    const double unit = std::numeric_limits<double>::epsilon();
    EXPECT_NEAR(averageSum + *evidence.averageBase, sum,
                (4.0 * static_cast<double>(evidence.predictors.size()) + 4.0) * unit * (size + 2 * averageSize));
    ++seen.averages;

    const double ofCategory = evidence.probabilities[evidence.category];
    const double ofAgainst = evidence.probabilities[evidence.against];
    // Else a product has lost digits on its way, which the weights keep.
    constexpr double least = 1e-290;
    if (!(ofCategory > least) || !(ofAgainst > least)) return;
    EXPECT_NEAR(sum, std::log(ofCategory / ofAgainst), (2.0 * usable + 4.0) * unit * std::max(1.0, size));
    ++seen.sums;
}

/// Whether plain products stay far enough from the ends of what doubles hold.
bool KeepsAllDigits(const Evidence& evidence) {
    for (std::size_t k = 0; k < evidence.priors.size(); ++k) {
        double joint = evidence.priors[k];
        if (!std::isnormal(joint)) return false;
        for (const PredictorEvidence& predictor : evidence.predictors) {
            if (!TakesPart(predictor)) continue;
            joint *= predictor.factors[k].mantissa;
            if (!std::isnormal(joint)) return false;
        }
    }
    return true;
}

TEST(Evidence, MultipliesToTheSmoothedRulesAnswers_ForRandomDocuments) {
    Randomness random(1718);
    Seen seen;
    for (int number = 0; number < 1500 && !testing::Test::HasFailure(); ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + document.text);
        const std::unique_ptr<ScoreModel> model = Parse(document.text);
        const CaseExplainer explainer(*model);
        CaseExplainer::Memory memory;
        BaseCaseRecord record(NamesOf(document.inputs));
        CategoryProbabilities categories(*model->GetTargetVar());
        ReusedResult result;
        Evidence evidence;
        for (int i = 0; i < casesPerModel; ++i) {
            FillRecord(record, document.inputs, MakeRandomCase(document, random).cells);
            explainer.Explain(record, 0, {}, evidence, memory);
            const auto& scored = RequireClassification(result.Score(*model, record));
            const std::vector<double> expected = categories.Arrange(scored);
            if (evidence.probabilities.empty()) {
                EXPECT_EQ(evidence.state, Evidence::NothingPossible);
                EXPECT_FALSE(
                    std::ranges::all_of(expected, [](double probability) { return std::isfinite(probability); }));
                EXPECT_EQ(evidence.logOdds, std::nullopt);
                ++seen.without;
                continue;
            }
            ExpectEqualBits(evidence.probabilities, expected);
            if (evidence.state == Evidence::NothingKnown) {
                EXPECT_EQ(evidence.priors, expected);
                EXPECT_EQ(evidence.logOdds, evidence.base);
                ++seen.nothingKnown;
                continue;
            }
            ExpectEqualBits(ReplaySmoothed(evidence), expected);
            if (expected.size() > 2) {
                EXPECT_EQ(explainer.GetCategories()[evidence.category], scored.GetPrediction()->GetString());
            }
            if (expected.size() > 1 && KeepsAllDigits(evidence)) ExpectSums(evidence, seen);
            ++seen.explained;
        }
    }
    EXPECT_GT(seen.explained, 5000);
    EXPECT_GT(seen.nothingKnown, 50);
    EXPECT_GT(seen.sums, 3000);
}

TEST(Evidence, MultipliesToTheScoresOfSubModels_ForRandomSets) {
    Randomness random(1909);
    Seen seen;
    for (int number = 0; number < 800 && !testing::Test::HasFailure(); ++number) {
        const RandomSet set = MakeRandomSet(random);
        SCOPED_TRACE("set " + std::to_string(number) + ":\n" + set.text);
        const std::unique_ptr<ScoreModel> model = Parse(set.text);
        const CaseExplainer explainer(*model);
        ASSERT_TRUE(explainer.IsSet());
        ASSERT_EQ(explainer.GetSubModels().size(), set.subModels.size());
        CaseExplainer::Memory memory;
        BaseCaseRecord record(NamesOf(set.columns));
        std::vector<Evidence> ofCase(set.subModels.size());
        for (int i = 0; i < casesPerModel; ++i) {
            FillRecord(record, set.columns, MakeRandomSetCase(set, random).cells);
            for (std::size_t m = 0; m < set.subModels.size(); ++m) {
                if (m == 0) {
                    explainer.Explain(record, m, {}, ofCase[m], memory);
                } else {
                    explainer.ExplainAnother(m, {}, ofCase[m], memory);
                }
            }
            for (std::size_t m = 0; m < set.subModels.size(); ++m) {
                const Evidence& evidence = ofCase[m];
                const double score =
                    dynamic_cast<SubModelScoring&>(*model).ScoreSubModel(&record, static_cast<int>(m), false);
                if (evidence.probabilities.empty()) {
                    EXPECT_EQ(evidence.state, Evidence::NothingPossible);
                    ++seen.without;
                    continue;
                }
                EXPECT_TRUE(HaveSameBits(evidence.probabilities[1], score)) << m;
                if (evidence.state != Evidence::Explained) {
                    EXPECT_EQ(evidence.priors[1], score);
                    ++seen.nothingKnown;
                    continue;
                }
                EXPECT_EQ(evidence.category, 1U);
                EXPECT_EQ(evidence.against, 0U);
                EXPECT_TRUE(HaveSameBits(ReplaySmoothed(evidence)[1], score)) << m;
                if (KeepsAllDigits(evidence)) ExpectSums(evidence, seen);
                ++seen.explained;
            }
        }
    }
    EXPECT_GT(seen.explained, 5000);
    EXPECT_GT(seen.nothingKnown, 50);
    EXPECT_GT(seen.sums, 3000);
}

/// Counts how often its only value is asked for.
class CountingRecord : public ScoreCaseRecord {
public:
    const ScoreValue* GetValueByIndex(int) const override { return nullptr; }
    const ScoreValue* GetValueByName(const std::string& name) const override {
        if (name != "x") return nullptr;
        ++asked;
        return &value;
    }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string&) const override { return -1; }

    NumericValue value{3};
    mutable int asked = 0;
};

TEST(Evidence, HasItsDerivedFieldsComputedOnce_ForAllSubModelsOfACase) {
    std::string text = R"(<PMML version="4.4"><DataDictionary>
<DataField name="x" optype="continuous" dataType="double"/>
<DataField name="t" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
</DataDictionary><TransformationDictionary>
<DerivedField name="d" optype="categorical" dataType="string"><Apply function="if">
<Apply function="greaterThan"><FieldRef field="x"/><Constant>2</Constant></Apply>
<Constant>high</Constant><Constant>low</Constant></Apply></DerivedField>
</TransformationDictionary>)";
    for (const char* name : {"one", "two", "three"})
        text += std::string("<NaiveBayesModel modelName=\"") + name + R"(" algorithmName="SelfLearning" threshold="0.5">
<MiningSchema><MiningField name="x"/>
<Extension extender="scoring.nbscore" name="DerivedFields"><MiningField name="d"/></Extension>
<MiningField name="t" usageType="predicted"/></MiningSchema>
<BayesInputs><BayesInput fieldName="d"><PairCounts value="high"><TargetValueCounts>
<TargetValueCount value="no" count="1"/><TargetValueCount value="yes" count="3"/></TargetValueCounts></PairCounts>
</BayesInput></BayesInputs>
<BayesOutput fieldName="t"><TargetValueCounts><TargetValueCount value="no" count="4"/>
<TargetValueCount value="yes" count="4"/></TargetValueCounts></BayesOutput></NaiveBayesModel>)";
    const std::unique_ptr<ScoreModel> model = Parse(text + "</PMML>");
    const CaseExplainer explainer(*model);
    ASSERT_EQ(explainer.GetNumClassifiers(), 3U);
    CaseExplainer::Memory memory;
    Evidence evidence;
    EXPECT_THROW(explainer.ExplainAnother(0, {}, evidence, memory), std::logic_error);
    CountingRecord record;
    explainer.Explain(record, 0, {}, evidence, memory);
    const int askedForOne = record.asked;
    EXPECT_GT(askedForOne, 0);
    for (const std::size_t another : {1U, 2U}) {
        explainer.ExplainAnother(another, {}, evidence, memory);
        EXPECT_EQ(evidence.predictors[0].value, "high");
        EXPECT_EQ(evidence.predictors[0].kind, PredictorReading::Known);
    }
    EXPECT_EQ(record.asked, askedForOne);
}

TEST(Evidence, MultipliesToTheAnswers_WhenInputsAreDerivedFields) {
    Randomness random(808);
    int explained = 0;
    for (int number = 0; number < 300 && !testing::Test::HasFailure(); ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + made.document.text);
        const std::unique_ptr<ScoreModel> model = Parse(made.document.text);
        const CaseExplainer explainer(*model);
        CaseExplainer::Memory memory;
        BaseCaseRecord record(NamesOf(made.columns));
        CategoryProbabilities categories(*model->GetTargetVar());
        ReusedResult result;
        Evidence evidence;
        for (int i = 0; i < casesPerModel; ++i) {
            FillRecord(record, made.columns, MakeRandomDerivedCase(made, random).cells);
            explainer.Explain(record, 0, {}, evidence, memory);
            const std::vector<double> expected =
                categories.Arrange(RequireClassification(result.Score(*model, record)));
            if (evidence.probabilities.empty()) continue;
            ExpectEqualBits(evidence.probabilities, expected);
            if (evidence.state == Evidence::NothingKnown) continue;
            ExpectEqualBits(ReplaySmoothed(evidence), expected);
            ++explained;
        }
    }
    EXPECT_GT(explained, 800);
}

TEST(Evidence, MultipliesToTheStandardsAnswers_ForRandomModels) {
    Randomness random(77);
    Seen seen;
    for (int number = 0; number < 1000 && !testing::Test::HasFailure(); ++number) {
        SCOPED_TRACE(number);
        const std::unique_ptr<StandardModel> model = MakeRandomStandardModel(random);
        const InputTable table = DrawCases(*model, 20, random);
        const CaseExplainer explainer(*model);
        CaseExplainer::Memory memory;
        RecordOfTable record(table);
        CategoryProbabilities categories(*model->GetTables().target);
        ScoreResult* result = nullptr;
        Evidence evidence;
        for (std::size_t entry = 0; entry < table.cases; ++entry) {
            record.GoTo(entry);
            explainer.Explain(record, 0, {}, evidence, memory, true);
            model->GetScore(&record, result, true);
            const CaseFacts& facts = dynamic_cast<const ResultFacts&>(*result).GetFacts();
            if (facts.outcome != CaseOutcome::Scored) {
                EXPECT_EQ(evidence.state, facts.outcome == CaseOutcome::InvalidValue ? Evidence::InvalidValue
                                                                                     : Evidence::NothingPossible);
                EXPECT_EQ(evidence.invalidField, facts.field);
                EXPECT_TRUE(evidence.probabilities.empty());
                ++seen.without;
                continue;
            }
            const std::vector<double> expected = categories.Arrange(dynamic_cast<const ScoreClsResult&>(*result));
            ExpectEqualBits(evidence.probabilities, expected);
            if (facts.usable == 0) {
                EXPECT_EQ(evidence.state, Evidence::NothingKnown);
                ++seen.nothingKnown;
                continue;
            }
            ExpectEqualBits(ReplayScaled(evidence), expected);
            ExpectSums(evidence, seen);
            ++seen.explained;
        }
        delete result;
    }
    EXPECT_GT(seen.explained, 3000);
    EXPECT_GT(seen.nothingKnown, 30);
    EXPECT_GT(seen.without, 300);
    EXPECT_GT(seen.sums, 1000);
    EXPECT_GT(seen.densities, 300);
}

}  // namespace
}  // namespace nbscore::test
