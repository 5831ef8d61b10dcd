// One case through the C interface: what is set stays, what is refused, whose memory answers are, and threads. What
// rows are answered with is held to tables in ColumnsAgainstTables_test.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string titanic = NBSCORE_EXAMPLES "/titanic/titanic.pmml";
const std::string offers = NBSCORE_EXAMPLES "/offers/offers.pmml";
const std::string iris = NBSCORE_EXAMPLES "/iris/iris.pmml";

std::size_t Find(const ModelHandle& model, const char* name) {
    std::size_t position = 0;
    EXPECT_EQ(NBSCORE_OK, nbscore_find_field(model.get(), name, &position, nullptr)) << name;
    return position;
}

RowHandle MakeRow(const ModelHandle& model) {
    ErrorHandle error;
    return Give<RowHandle>(error, nbscore_row_make, model.get());
}

void Set(const RowHandle& row, std::size_t field, std::string_view text) {
    EXPECT_EQ(NBSCORE_OK, nbscore_row_set_text(row.get(), field, text.data(), text.size(), nullptr));
}

nbscore_answer Score(const RowHandle& row) {
    nbscore_answer answer;
    EXPECT_EQ(NBSCORE_OK, nbscore_row_score(row.get(), &answer, nullptr));
    return answer;
}

/// The error that a call answers, which must be of this kind.
template <typename Call>
std::string MessageOf(std::int32_t kind, const Call& call) {
    nbscore_error* failure = nullptr;
    EXPECT_EQ(kind, call(&failure));
    const ErrorHandle error(failure);
    if (error == nullptr) return {};
    EXPECT_EQ(kind, error->kind);
    return error->message;
}

TEST(CRow, TellsTheFieldsAndAnswersOfItsModelByName) {
    const ModelHandle model = OpenFile(titanic);
    for (const char* const name : {"class", "sex", "age"})
        EXPECT_STREQ(name, nbscore_field_name(model.get(), Find(model, name)));
    EXPECT_EQ(nullptr, nbscore_field_name(model.get(), 3));
    EXPECT_EQ(nullptr, nbscore_field_name(model.get(), SIZE_MAX));
    EXPECT_STREQ("no", nbscore_answer_name(model.get(), 0));
    EXPECT_STREQ("yes", nbscore_answer_name(model.get(), 1));
    EXPECT_EQ(nullptr, nbscore_answer_name(model.get(), 2));
    EXPECT_EQ(nullptr, nbscore_field_name(nullptr, 0));
    EXPECT_EQ(nullptr, nbscore_answer_name(nullptr, 0));
    std::size_t position = 0;
    EXPECT_EQ("The model reads no field \"shoes\".", MessageOf(NBSCORE_BAD_CASES, [&](auto e) {
                  return nbscore_find_field(model.get(), "shoes", &position, e);
              }));
    EXPECT_EQ(SIZE_MAX, position);
}

/// A field of texts, for which the document has bins.
constexpr std::string_view textsInBins = R"(<PMML version="4.4"><DataDictionary>
<DataField name="f" optype="continuous" dataType="string"/>
<DataField name="t" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
</DataDictionary><NaiveBayesModel functionName="classification" threshold="0.001"><MiningSchema>
<MiningField name="f"/><MiningField name="t" usageType="predicted"/></MiningSchema><BayesInputs>
<BayesInput fieldName="f"><DerivedField name="b" optype="categorical" dataType="integer"><Discretize field="f">
<DiscretizeBin binValue="0"><Interval closure="openClosed" rightMargin="0.5"/></DiscretizeBin>
<DiscretizeBin binValue="1"><Interval closure="openClosed" leftMargin="0.5"/></DiscretizeBin></Discretize></DerivedField>
<PairCounts value="0"><TargetValueCounts><TargetValueCount value="no" count="5"/>
<TargetValueCount value="yes" count="1"/></TargetValueCounts></PairCounts>
<PairCounts value="1"><TargetValueCounts><TargetValueCount value="no" count="2"/>
<TargetValueCount value="yes" count="3"/></TargetValueCounts></PairCounts></BayesInput></BayesInputs>
<BayesOutput fieldName="t"><TargetValueCounts><TargetValueCount value="no" count="8"/>
<TargetValueCount value="yes" count="11"/></TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>)";

TEST(CRow, TakesANumberByItsDigits_WhereTextsAreInNoBin) {
    ErrorHandle error;
    const ModelHandle model = Give<ModelHandle>(error, nbscore_open_memory, textsInBins.data(), textsInBins.size(),
                                                "bins.pmml", static_cast<const nbscore_reading*>(nullptr));
    ASSERT_NE(nullptr, model) << error->message;
    const RowHandle row = MakeRow(model);
    Set(row, 0, "0");
    const double ofText = Score(row).confidence;
    EXPECT_EQ(NBSCORE_OK, nbscore_row_set_number(row.get(), 0, 0.0, nullptr));
    EXPECT_EQ(ofText, Score(row).confidence);

    ArrowTable table(2);
    table.Add<std::uint8_t, double>("f", "g", {}, {0.0, 1.0});
    ArrowArray scores;
    ASSERT_EQ(NBSCORE_OK, nbscore_score(model.get(), nullptr, &table.GetSchema(), &table.GetArray(), &scores, nullptr));
    const auto* const confidence = static_cast<const double*>(scores.children[1]->buffers[1]);
    EXPECT_EQ(ofText, confidence[0]);
    EXPECT_EQ(ofText, confidence[1]);
    scores.release(&scores);
}

TEST(CRow, HasNoValue_WhereTheMissingNumberIsSetAmongTexts) {
    const ModelHandle model = OpenFile(titanic);
    const RowHandle row = MakeRow(model);
    const double ofNothing = Score(row).confidence;
    const std::size_t sex = Find(model, "sex");
    Set(row, sex, "male");
    EXPECT_NE(ofNothing, Score(row).confidence);
    EXPECT_EQ(NBSCORE_OK, nbscore_row_set_number(row.get(), sex, NBSCORE_MISSING, nullptr));
    EXPECT_EQ(ofNothing, Score(row).confidence);
}

TEST(CRow, KeepsWhatWasSet_UntilItIsSetAgain) {
    const ModelHandle model = OpenFile(titanic);
    const RowHandle row = MakeRow(model);
    const double ofNothing = Score(row).confidence;
    Set(row, Find(model, "class"), "first");
    Set(row, Find(model, "age"), "adult");
    Set(row, Find(model, "sex"), "female");
    const nbscore_answer woman = Score(row);
    EXPECT_EQ(1, woman.predicted);
    EXPECT_EQ(2U, woman.count);
    EXPECT_EQ(woman.confidence, woman.numbers[1]);
    const double confidence = woman.confidence;
    Set(row, Find(model, "sex"), "male");
    EXPECT_EQ(0, Score(row).predicted);
    Set(row, Find(model, "sex"), "female");
    EXPECT_EQ(confidence, Score(row).confidence);
    for (std::size_t field = 0; field < 3; ++field)
        EXPECT_EQ(NBSCORE_OK, nbscore_row_set_missing(row.get(), field, nullptr));
    EXPECT_EQ(ofNothing, Score(row).confidence);
}

TEST(CRow, GoesOn_WhenItsModelWasClosed) {
    ModelHandle model = OpenFile(titanic);
    const RowHandle row = MakeRow(model);
    const double before = Score(row).confidence;
    model.reset();
    EXPECT_EQ(before, Score(row).confidence);
}

TEST(CRow, TellsTheBestOfASet_AsManyAsThereAre) {
    const ModelHandle model = OpenFile(offers);
    const RowHandle row = MakeRow(model);
    const nbscore_answer all = Score(row);
    EXPECT_EQ(-1, all.predicted);
    EXPECT_EQ(NBSCORE_MISSING, all.confidence);
    ASSERT_GT(all.count, 2U);
    const std::vector<double> scores(all.numbers, all.numbers + all.count);
    std::vector<nbscore_ranked> best(all.count + 5, {77, 77});
    std::size_t given = 0;
    ASSERT_EQ(NBSCORE_OK, nbscore_row_best(row.get(), best.data(), best.size(), &given, nullptr));
    ASSERT_EQ(scores.size(), given);
    EXPECT_EQ(77U, best[given].position);
    for (std::size_t i = 0; i < given; ++i) {
        EXPECT_EQ(scores[best[i].position], best[i].score);
        EXPECT_LE(best[i].score, best[i == 0 ? 0 : i - 1].score);
    }
    ASSERT_EQ(NBSCORE_OK, nbscore_row_best(row.get(), best.data(), 1, &given, nullptr));
    EXPECT_EQ(1U, given);
    EXPECT_EQ(NBSCORE_OK, nbscore_row_best(row.get(), nullptr, 0, &given, nullptr));
    EXPECT_EQ(0U, given);
}

TEST(CRow, HasNoBest_OfASingleClassifier) {
    const RowHandle row = MakeRow(OpenFile(titanic));
    nbscore_ranked best;
    std::size_t given = 7;
    EXPECT_THAT(
        MessageOf(NBSCORE_BAD_ARGUMENT, [&](auto e) { return nbscore_row_best(row.get(), &best, 1, &given, e); }),
        HasSubstr("single classifier"));
    EXPECT_EQ(0U, given);
}

TEST(CRow, TakesNumbersOfEveryKind_AndRefusesTextsAmongThem) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    reading.rule = NBSCORE_RULE_STANDARD;
    const ModelHandle model = OpenFile(iris, &reading);
    const RowHandle row = MakeRow(model);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (std::size_t field = 0; nbscore_field_name(model.get(), field) != nullptr; ++field) {
        for (const double number : {0.0, -infinity, infinity, std::nan(""), NBSCORE_MISSING, 5e-324, 1.5}) {
            EXPECT_EQ(NBSCORE_OK, nbscore_row_set_number(row.get(), field, number, nullptr));
            Score(row);
        }
    }
    // By the standard's rule a text is the number that it holds, or invalid.
    const std::size_t first = 0;
    nbscore_row_set_number(row.get(), first, 6.25, nullptr);
    const double confidence = Score(row).confidence;
    nbscore_row_set_missing(row.get(), first, nullptr);
    Set(row, first, "6.25");
    EXPECT_EQ(confidence, Score(row).confidence);
    Set(row, first, "six");
    EXPECT_EQ(-1, Score(row).predicted);
    EXPECT_EQ(NBSCORE_MISSING, Score(row).confidence);

    const ModelHandle ofBins = OpenFile(NBSCORE_CASES_DIR "/bins-are-closed-on-the-right/document.pmml");
    const RowHandle bins = MakeRow(ofBins);
    std::size_t refused = 0;
    for (std::size_t field = 0; const char* const name = nbscore_field_name(ofBins.get(), field); ++field) {
        const double before = Score(bins).confidence;
        nbscore_error* failure = nullptr;
        if (nbscore_row_set_text(bins.get(), field, "x", 1, &failure) == NBSCORE_OK) continue;
        const ErrorHandle error(failure);
        EXPECT_EQ(NBSCORE_BAD_CASES, error->kind);
        EXPECT_EQ("The field \"" + std::string(name) + "\" holds numbers, and is given a text.", error->message);
        EXPECT_EQ(before, Score(bins).confidence);
        ++refused;
    }
    EXPECT_GT(refused, 0U);
}

TEST(CRow, RefusesNullArgumentsByName_AndFieldsThatThereAreNot) {
    const ModelHandle model = OpenFile(titanic);
    const RowHandle held = MakeRow(model);
    nbscore_row* const row = held.get();
    nbscore_row* made = row;
    nbscore_answer answer;
    nbscore_ranked best;
    std::size_t number = 0;
    const auto messageOf = [](const auto& call) { return MessageOf(NBSCORE_BAD_ARGUMENT, call); };
    EXPECT_EQ("model is null.", messageOf([&](auto e) { return nbscore_row_make(nullptr, &made, e); }));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ("row is null.", messageOf([&](auto e) { return nbscore_row_make(model.get(), nullptr, e); }));
    EXPECT_EQ("model is null.", messageOf([&](auto e) { return nbscore_find_field(nullptr, "sex", &number, e); }));
    EXPECT_EQ("name is null.", messageOf([&](auto e) { return nbscore_find_field(model.get(), nullptr, &number, e); }));
    EXPECT_EQ("position is null.",
              messageOf([&](auto e) { return nbscore_find_field(model.get(), "sex", nullptr, e); }));
    EXPECT_EQ("row is null.", messageOf([&](auto e) { return nbscore_row_set_text(nullptr, 0, "x", 1, e); }));
    EXPECT_EQ("text is null.", messageOf([&](auto e) { return nbscore_row_set_text(row, 0, nullptr, 1, e); }));
    EXPECT_EQ("row is null.", messageOf([&](auto e) { return nbscore_row_set_number(nullptr, 0, 1, e); }));
    EXPECT_EQ("row is null.", messageOf([&](auto e) { return nbscore_row_set_missing(nullptr, 0, e); }));
    EXPECT_EQ("row is null.", messageOf([&](auto e) { return nbscore_row_score(nullptr, &answer, e); }));
    EXPECT_EQ(nullptr, answer.numbers);
    EXPECT_EQ(0U, answer.count);
    EXPECT_EQ("answer is null.", messageOf([&](auto e) { return nbscore_row_score(row, nullptr, e); }));
    EXPECT_EQ("row is null.", messageOf([&](auto e) { return nbscore_row_best(nullptr, &best, 1, &number, e); }));
    EXPECT_EQ("best is null.", messageOf([&](auto e) { return nbscore_row_best(row, nullptr, 1, &number, e); }));
    EXPECT_EQ("given is null.", messageOf([&](auto e) { return nbscore_row_best(row, &best, 1, nullptr, e); }));
    for (const std::size_t field : {std::size_t{3}, SIZE_MAX}) {
        EXPECT_THAT(messageOf([&](auto e) { return nbscore_row_set_text(row, field, "x", 1, e); }),
                    HasSubstr("no field"));
        EXPECT_THAT(messageOf([&](auto e) { return nbscore_row_set_number(row, field, 1, e); }), HasSubstr("no field"));
        EXPECT_THAT(messageOf([&](auto e) { return nbscore_row_set_missing(row, field, e); }), HasSubstr("no field"));
    }
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_row_score(row, nullptr, nullptr));
    EXPECT_EQ(NBSCORE_OK, nbscore_row_set_text(row, 0, nullptr, 0, nullptr));
    nbscore_row_free(nullptr);
}

TEST(CRow, ScoresAlike_OnManyThreads_EachWithARowOfItsOwn) {
    const ModelHandle model = OpenFile(offers);
    const nbscore_answer alone = Score(MakeRow(model));
    const std::size_t count = alone.count;
    InThreads(
        [&](int) {
            const RowHandle row = MakeRow(model);
            std::vector<double> first;
            for (int round = 0; round < 20; ++round) {
                for (std::size_t field = 0; nbscore_field_name(model.get(), field) != nullptr; ++field)
                    nbscore_row_set_number(row.get(), field, round % 2, nullptr);
                const nbscore_answer answer = Score(row);
                EXPECT_EQ(count, answer.count);
                if (round == 0) first.assign(answer.numbers, answer.numbers + answer.count);
                if (round % 2 != 0) continue;
                EXPECT_EQ(first, std::vector<double>(answer.numbers, answer.numbers + answer.count));
            }
            return 0;
        },
        8);
}

}  // namespace
}  // namespace nbscore::test
