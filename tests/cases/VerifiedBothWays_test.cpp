// Test cases of sub-models are verified alike, whether a set scores the one that a case is for or only all of them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <sstream>

#include "cases/PlainModel.h"
#include "cases/RandomSet.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "verify/ModelVerifier.h"

namespace nbscore::test {
namespace {

/// What verifying tells, difference by difference: "SUBMODEL ROW FIELD EXPECTED ACTUAL BITS".
std::vector<std::string> Verify(ScoreModel& model, const std::vector<VerificationSuite>& suites) {
    std::vector<std::string> told;
    const auto onDifference = [&told](const CellDifference& difference) {
        const double actual = difference.actual.number.value_or(0.0);
        std::ostringstream line;
        line << difference.subModel.value_or("-") << ' ' << difference.row << ' ' << difference.field << ' '
             << difference.expected.text << ' ' << difference.actual.text << ' '
             << (std::isnan(actual) ? ~std::uint64_t{0} : std::bit_cast<std::uint64_t>(actual));
        told.push_back(line.str());
    };
    const VerificationSummary summary = VerifyModel(model, suites, onDifference, [] {});
    told.push_back(std::to_string(summary.rows) + " rows, " + std::to_string(summary.cells) + " cells");
    return told;
}

/// Two models of one document, because a model keeps what its first case tells it.
void ExpectSameBothWays(const LoadedModel& ableToScoreOne, const LoadedModel& other,
                        const std::vector<VerificationSuite>& suites, std::size_t& differences) {
    PlainModel plain(other.Get());
    const std::vector<std::string> told = Verify(plain, suites);
    ASSERT_EQ(Verify(ableToScoreOne.Get(), suites), told);
    differences += told.size() - 1;
}

/// Nothing for a document that is no XML.
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

/// A test case for each sub-model, which expects a score that hardly any has.
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
