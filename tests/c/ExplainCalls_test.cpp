// Evidence through the C interface: the terms that C++ callers get, the options, and what is refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "c/ArrowRows.h"
#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "cases/CaseTable.h"
#include "evidence/CaseExplainer.h"
#include "evidence/EvidenceTerms.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "support/InThreads.h"
#include "support/WholeFile.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomSet.h"
#include "table/CaseBinder.h"
#include "table/ModelResults.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

using Rows = std::vector<std::vector<std::string>>;

const std::string titanic = NBSCORE_EXAMPLES "/titanic/titanic.pmml";
const std::string offers = NBSCORE_EXAMPLES "/offers/offers.pmml";

/// The evidence of cases with its column names first, or the message alone.
Rows Explain(const ModelHandle& model, ArrowTable& table, const nbscore_explaining* explaining = nullptr) {
    ArrowScores evidence;
    nbscore_error* failure = nullptr;
    const std::int32_t kind =
        nbscore_explain(model.get(), explaining, &table.GetSchema(), &table.GetArray(), &evidence.array, &failure);
    const ErrorHandle error(failure);
    if (kind != NBSCORE_OK) return {{error->message}};
    EXPECT_EQ(NBSCORE_OK, nbscore_explain_schema(model.get(), explaining, &evidence.schema, nullptr));
    Rows rows = {evidence.GetNames()};
    for (std::int64_t entry = 0; entry < evidence.array.length; ++entry)
        rows.push_back(evidence.GetRow(entry));
    return rows;
}

/// The same from the classes of C++, without the names.
Rows ExplainCases(ScoreModel& model, const Rows& table) {
    const CaseExplainer explainer(model);
    const std::vector<std::string> labels = LabelSubModels(explainer.GetSubModels());
    CaseBinder binder(model, table.front(), "rows.csv", CaseBinderOptions{});
    CaseExplainer::Memory memory;
    Evidence evidence;
    std::vector<EvidenceTerm> terms;
    Rows rows;
    for (std::size_t number = 1; number < table.size(); ++number) {
        const std::vector<std::string_view> cells(table[number].begin(), table[number].end());
        const ScoreCaseRecord& record = binder.Bind(cells, number);
        for (std::size_t classifier = 0; classifier < explainer.GetNumClassifiers(); ++classifier) {
            explainer.Explain(record, classifier, {}, evidence, memory);
            ListTerms(evidence, explainer.GetCategories(), explainer.GetPredictors(classifier), terms);
            for (const EvidenceTerm& term : terms) {
                std::vector<std::string>& row = rows.emplace_back();
                row.push_back(std::to_string(number - 1));
                if (explainer.IsSet()) row.push_back(labels[classifier]);
                for (const auto& text : term.texts)
                    row.emplace_back(text.value_or(""));
                for (const auto& value : term.numbers)
                    row.push_back(value ? FormatNumber(*value) : "");
            }
        }
    }
    return rows;
}

void ExpectExplainedAlike(const std::string& document, const std::string& csv) {
    SCOPED_TRACE(document + "\n" + csv);
    const auto plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
    std::istringstream source(document);
    LoadedModel model(plugin, std::unique_ptr<ScoreModel>(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8")));
    ErrorHandle error;
    const ModelHandle opened =
        Give<ModelHandle>(error, nbscore_open_memory, document.data(), document.size(), "a document", nullptr);
    ASSERT_EQ(nullptr, error);
    const Rows rows = ReadRows(csv);
    ArrowTable table(static_cast<std::int64_t>(rows.size() - 1));
    AddRows(table, rows, model.Get(), ScoringRule::Smoothed, TextShape::Utf8);
    Rows told = Explain(opened, table);
    told.erase(told.begin());
    ASSERT_EQ(ExplainCases(model.Get(), rows), told);
}

TEST(CEvidence, IsThatOfExplainingEachCase) {
    for (const char* const example :
         {"/titanic/titanic.pmml", "/titanic/people.csv", "/offers/offers.pmml", "/offers/customers.csv"}) {
        static std::string document;
        const std::string text = ReadWholeFile(std::string(NBSCORE_EXAMPLES) + example);
        if (std::string(example).ends_with(".csv")) {
            ExpectExplainedAlike(document, text);
        } else {
            document = text;
        }
    }
    Randomness random(5);
    for (int number = 0; number < 40 && !testing::Test::HasFatalFailure(); ++number) {
        const RandomSet set = MakeRandomSet(random);
        if (!set.subModels.empty()) {
            const auto cases = DrawEach(10, [&] { return MakeRandomSetCase(set, random); });
            ExpectExplainedAlike(set.text, CsvTableText(set.columns, cases));
        }
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        const auto cases = DrawEach(10, [&] { return MakeRandomDerivedCase(made, random); });
        ExpectExplainedAlike(made.document.text, CsvTableText(made.columns, cases));
    }
}

void AddWoman(ArrowTable& table) {
    table.AddTexts<std::int32_t>("class", {"first"});
    table.AddTexts<std::int32_t>("sex", {"female"});
    table.AddTexts<std::int32_t>("age", {std::nullopt});
}

// Of 2201 people 1490 died and 711 lived; of 470 women 126 and 344. The document's threshold is 0.001.
TEST(CEvidence, HoldsWhatScoringMultiplies_WhereFactorsAreAskedFor) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable table(1);
    AddWoman(table);
    nbscore_explaining explaining = NBSCORE_EXPLAINING_INIT;
    explaining.factors = 1;
    const Rows rows = Explain(model, table, &explaining);
    ASSERT_THAT(rows, SizeIs(6));
    EXPECT_THAT(rows[0],
                ElementsAre("case", "state", "category", "against", "term", "predictor", "value", "use", "weight",
                            "against_average", "average", "lowest", "highest", "factor_no", "factor_yes"));
    EXPECT_THAT(std::vector(rows[3].begin(), rows[3].begin() + 8),
                ElementsAre("0", "explained", "yes", "no", "predictor", "sex", "female", "known"));
    EXPECT_NEAR(std::stod(rows[1][14]) / std::stod(rows[1][13]), 711.001 / 1490.001, 1e-9);
    EXPECT_NEAR(std::stod(rows[3][13]), 126.001 / 1490.002, 1e-9);
    EXPECT_NEAR(std::stod(rows[3][14]), 344.001 / 711.002, 1e-9);
    EXPECT_EQ(rows[4][6], "");
    EXPECT_EQ(rows[4][7], "missing");
    EXPECT_EQ(rows[4][13], "");
    double no = 1;
    double yes = 1;
    for (const std::size_t term : {1U, 2U, 3U}) {
        no *= std::stod(rows[term][13]);
        yes *= std::stod(rows[term][14]);
    }
    EXPECT_EQ(rows[5][14], FormatNumber(yes / (no + yes)));
}

TEST(CEvidence, IsOfTheCategoriesAndTheSubModelThatAreAskedFor) {
    const ModelHandle people = OpenFile(titanic);
    ArrowTable woman(1);
    AddWoman(woman);
    nbscore_explaining explaining = NBSCORE_EXPLAINING_INIT;
    explaining.category = "no";
    const Rows rows = Explain(people, woman, &explaining);
    EXPECT_EQ(rows[1][2], "no");
    EXPECT_EQ(rows[1][3], "yes");

    const ModelHandle set = OpenFile(offers);
    explaining = NBSCORE_EXPLAINING_INIT;
    explaining.lacking_as_absent = 1;
    explaining.sub_model = "travel_card";
    ArrowTable nobody(2);
    const Rows ofCard = Explain(set, nobody, &explaining);
    ASSERT_GT(ofCard.size(), 2U);
    EXPECT_EQ(ofCard[0][1], "model");
    for (std::size_t i = 1; i < ofCard.size(); ++i)
        EXPECT_EQ(ofCard[i][1], "travel_card");
    EXPECT_EQ(ofCard.back()[0], "1");
}

TEST(CEvidence, IsRefused_WhenArgumentsOrOptionsAreWrong) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable table(1);
    AddWoman(table);
    const auto messageWith = [&](const auto& change) {
        nbscore_explaining explaining = NBSCORE_EXPLAINING_INIT;
        change(explaining);
        return Explain(model, table, &explaining).front().front();
    };
    EXPECT_THAT(messageWith([](auto& options) { options.category = "maybe"; }),
                HasSubstr("category: the model has no category \"maybe\""));
    EXPECT_THAT(messageWith([](auto& options) { options.against = ""; }), HasSubstr("against: the model has no"));
    EXPECT_THAT(messageWith([](auto& options) { options.category = options.against = "no"; }), HasSubstr("same"));
    EXPECT_THAT(messageWith([](auto& options) { options.sub_model = "card"; }), HasSubstr("single classifier"));
    EXPECT_THAT(messageWith([](auto& options) { options.factors = 2; }), HasSubstr("factors"));
    EXPECT_THAT(messageWith([](auto& options) { options.size = 8; }), HasSubstr("size"));
    ArrowTable lacking(1);
    EXPECT_THAT(Explain(model, lacking).front().front(), HasSubstr("lack the columns"));

    ArrowArray evidence;
    ArrowSchema schema;
    nbscore_model* const none = nullptr;
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT,
              nbscore_explain(none, nullptr, &table.GetSchema(), &table.GetArray(), &evidence, nullptr));
    EXPECT_EQ(nullptr, evidence.release);
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT,
              nbscore_explain(model.get(), nullptr, nullptr, &table.GetArray(), &evidence, nullptr));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT,
              nbscore_explain(model.get(), nullptr, &table.GetSchema(), nullptr, &evidence, nullptr));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT,
              nbscore_explain(model.get(), nullptr, &table.GetSchema(), &table.GetArray(), nullptr, nullptr));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_explain_schema(none, nullptr, &schema, nullptr));
    EXPECT_EQ(nullptr, schema.release);
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_explain_schema(model.get(), nullptr, nullptr, nullptr));
}

TEST(CEvidence, IsTheSameOnManyThreads) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable first(1);
    AddWoman(first);
    const Rows expected = Explain(model, first);
    const auto explain = [&](int) {
        ArrowTable table(1);
        AddWoman(table);
        return Explain(model, table) == expected ? 1 : 0;
    };
    EXPECT_THAT(InThreads(explain, 8), testing::Each(1));
}

}  // namespace
}  // namespace nbscore::test
