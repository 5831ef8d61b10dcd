// Test cases of sub-models are verified with the same result whether a set can score one sub-model or only all of them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cases/CaseTable.h"
#include "framework/ScoreModel.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "support/documents/RandomSet.h"
#include "verify/ModelVerifier.h"

namespace nbscore::test {
namespace {

/// Another model, reduced to the interface ScoreModel.
class PlainModel : public ScoreModel {
public:
    /// @param hidden borrowed.
    explicit PlainModel(ScoreModel& hidden) : model(hidden) {}

    void SetScoreDictionary(ScoreDictionary* dictionary) override { model.SetScoreDictionary(dictionary); }
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary) override {
        model.SetTransformationScoreDictionary(dictionary);
    }
    bool SetVarRole(const std::string& name, VarRole role) override { return model.SetVarRole(name, role); }
    bool SetVarRole(const ScoreDictVar* var, VarRole role) override { return model.SetVarRole(var, role); }
    void SetMissingValuePolicy(MVPolicy policy) override { model.SetMissingValuePolicy(policy); }
    void SetVersionInfo(ScoreVersionInfo* version) override { model.SetVersionInfo(version); }
    void SetPredictionOnly(bool only) override { model.SetPredictionOnly(only); }
    int GetVarRole(const std::string& name) const override { return model.GetVarRole(name); }
    int GetVarRole(const ScoreDictVar* var) const override { return model.GetVarRole(var); }
    const ScoreVersionInfo* GetVersionInfo() const override { return model.GetVersionInfo(); }
    ScoreDictionary* GetVarsOfRole(VarRole role) const override { return model.GetVarsOfRole(role); }
    const ScoreDictVar* GetTargetVar() const override { return model.GetTargetVar(); }
    const ScoreDictionary* GetDictionary() const override { return model.GetDictionary(); }
    TransformationDictionary* GetTransformationDictionary() const override {
        return model.GetTransformationDictionary();
    }
    MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) override {
        return model.GetScore(record, result, derivedInRecord);
    }
    MVPolicy GetMissingValuePolicy() override { return model.GetMissingValuePolicy(); }
    ModelType GetModelType() override { return model.GetModelType(); }
    bool GetPredictionOnly() const override { return model.GetPredictionOnly(); }
    void Display(std::ostream& out) const override { model.Display(out); }

private:
    ScoreModel& model;
};

/// The differences that verifying finds, each as "SUBMODEL ROW FIELD EXPECTED ACTUAL BITS", and the totals.
std::vector<std::string> Verify(ScoreModel& model, const std::vector<VerificationSuite>& suites) {
    std::vector<std::string> told;
    const auto onDifference = [&told](const CellDifference& difference) {
        std::ostringstream line;
        line << difference.subModel.value_or("-") << ' ' << difference.row << ' ' << difference.field << ' '
             << difference.expected.text << ' ' << difference.actual.text << ' '
             << BitsOf(difference.actual.number.value_or(0.0));
        told.push_back(line.str());
    };
    const VerificationSummary summary = VerifyModel(model, suites, onDifference, [] {});
    told.push_back(std::to_string(summary.rows) + " rows, " + std::to_string(summary.cells) + " cells");
    return told;
}

/// Takes two models of one document, because a model keeps the positions of its first record.
void ExpectSameBothWays(const LoadedModel& ableToScoreOne, const LoadedModel& other,
                        const std::vector<VerificationSuite>& suites, std::size_t& differences) {
    PlainModel plain(other.Get());
    const std::vector<std::string> told = Verify(plain, suites);
    ASSERT_EQ(Verify(ableToScoreOne.Get(), suites), told);
    differences += told.size() - 1;
}

/// Nothing for a document that is not XML.
std::optional<SourceDocument> ReadAdapted(const std::filesystem::path& path) {
    try {
        SourceDocument document = SourceDocument::Read(path.string());
        document.Adapt();
        return document;
    } catch (const VeskException&) {
        return std::nullopt;
    }
}

class VerifiedBothWays : public testing::Test {
protected:
    const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    std::size_t differences = 0;
};

TEST_F(VerifiedBothWays, GivesTheSame_ForEachDocumentWithTestCases) {
    std::size_t verified = 0;
    for (const char* folder : {NBSCORE_EXAMPLES_DIR, NBSCORE_FAULT_DOCUMENTS_DIR, NBSCORE_CASES_DIR}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".pmml") continue;
            SCOPED_TRACE(entry.path());
            const std::optional<SourceDocument> document = ReadAdapted(entry.path());
            if (!document) continue;
            std::vector<VerificationSuite> suites = document->ReadVerification();
            if (suites.empty()) continue;
            ++verified;
            for (VerificationSuite& suite : suites) {
                for (VerificationField& field : suite.fields)
                    field.precision = 0.0;
            }
            ExpectSameBothWays(LoadedModel::Read(plugin, *document), LoadedModel::Read(plugin, *document), suites,
                               differences);
        }
    }
    EXPECT_GE(verified, 4U);
}

VerificationField Named(const std::string& name) {
    VerificationField field;
    field.name = name;
    return field;
}

/// Test cases for each sub-model, which expect a score that hardly any has.
std::vector<VerificationSuite> MakeSuites(const RandomSet& set, const std::string& scoredValue, Randomness& random) {
    std::vector<VerificationSuite> suites(set.subModels.size());
    for (std::size_t m = 0; m < suites.size(); ++m) {
        VerificationSuite& suite = suites[m];
        suite.modelIndex = m;
        suite.outputs = {{.name = "the score", .feature = "probability", .value = scoredValue}};
        suite.fields = {Named("the score")};
        for (const RandomInput& input : set.columns)
            suite.fields.push_back(Named(input.name));
        for (int i = 0; i < 5; ++i) {
            const RandomSetCase randomCase = MakeRandomSetCase(set, random);
            VerificationRow& row = suite.rows.emplace_back();
            row.cells = {{0, "0.123"}};
            for (std::size_t column = 0; column < set.columns.size(); ++column) {
                if (!randomCase.cells[column].empty()) row.cells.push_back({column + 1, randomCase.cells[column]});
            }
        }
    }
    return suites;
}

TEST_F(VerifiedBothWays, GivesTheSame_ForRandomSets) {
    Randomness random(20261122);
    std::size_t rows = 0;
    for (int number = 0; number < 300; ++number) {
        const RandomSet set = MakeRandomSet(random);
        if (set.subModels.empty()) continue;
        SCOPED_TRACE("set " + std::to_string(number) + ":\n" + set.text);
        const auto read = [&] {
            std::istringstream source(set.text);
            return LoadedModel(plugin,
                               std::unique_ptr<ScoreModel>(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8")));
        };
        const LoadedModel model = read();
        const auto& labels = model.Get().GetTargetVar()->GetValueLabelSet()->GetValueLabels();
        const std::vector<VerificationSuite> suites = MakeSuites(set, labels[1].GetValue()->GetString(), random);
        rows += 5 * suites.size();
        ExpectSameBothWays(model, read(), suites, differences);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(rows, 4000U);
    EXPECT_GT(differences, rows * 9 / 10);
}

}  // namespace
}  // namespace nbscore::test
