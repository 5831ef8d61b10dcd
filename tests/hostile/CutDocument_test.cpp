#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "framework/ScoreModel.h"
#include "framework/ScoreTranslator.h"
#include "framework/ScoringRule.h"
#include "framework/VeskException.h"
#include "host/PluginLibrary.h"
#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

/// Reads texts as documents in this process, without a file for each.
class Reader {
public:
    /// Nothing when the text can be read by this rule.
    std::optional<VeskException> RefusalOf(const std::string& text, ScoringRule rule) const {
        std::istringstream stream(text);
        try {
            delete plugin->MakeTranslator(rule)->ParseFromTree(stream, "UTF-8");
            return std::nullopt;
        } catch (const VeskException& refusal) {
            return refusal;
        }
    }

private:
    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
};

std::vector<std::filesystem::path> ExampleDocuments() {
    std::vector<std::filesystem::path> documents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(NBSCORE_EXAMPLES)) {
        if (entry.path().extension() == ".pmml") documents.push_back(entry.path());
    }
    std::sort(documents.begin(), documents.end());
    return documents;
}

class CutDocument : public testing::TestWithParam<std::filesystem::path> {};

/// The place is the end, or before it the start of what is incomplete.
TEST_P(CutDocument, IsRefusedWithAPlace_WhereverItIsCut) {
    const Reader reader;
    const std::string whole = ReadWholeFile(GetParam());
    const std::size_t end = whole.rfind("</PMML>") + std::string("</PMML>").size();
    std::vector<ScoringRule> rules = {ScoringRule::Smoothed, ScoringRule::Standard};
    std::erase_if(rules, [&](ScoringRule rule) { return reader.RefusalOf(whole, rule).has_value(); });
    ASSERT_FALSE(rules.empty());
    for (const ScoringRule rule : rules)
        EXPECT_FALSE(reader.RefusalOf(whole.substr(0, end), rule));
    std::uint64_t lines = 1;
    for (std::size_t length = 0; length < end; ++length) {
        const auto refusal = reader.RefusalOf(whole.substr(0, length), rules[length % rules.size()]);
        ASSERT_TRUE(refusal) << length;
        EXPECT_EQ(refusal->GetCode(), VeskException::MalformedDocument) << length;
        EXPECT_GE(refusal->GetPlace().line, 1U) << length;
        EXPECT_LE(refusal->GetPlace().line, lines) << length;
        EXPECT_GE(refusal->GetPlace().column, 1U) << length;
        if (whole[length] == '\n') ++lines;
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, CutDocument, testing::ValuesIn(ExampleDocuments()),
                         [](const auto& instance) { return instance.param.stem().string(); });

}  // namespace
}  // namespace nbscore::test
