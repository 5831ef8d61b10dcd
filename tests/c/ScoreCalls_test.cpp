// Columns of cases through the C interface: types, offsets, what is refused, streams, and who releases what.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
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

using Texts = std::vector<std::optional<std::string>>;

void AddPeople(ArrowTable& table) {
    table.AddTexts<std::int32_t>("age", {"adult", "child", std::nullopt});
    table.AddTexts<std::int64_t>("name of no field", {"a", "b", "c"});
    table.AddTexts<std::int32_t>("class", {"first", "third", "third"});
    table.AddTexts<std::int32_t>("sex", {"female", "female", std::nullopt});
}

std::int32_t Score(const ModelHandle& model, ArrowTable& table, ArrowScores& scores, std::string* message = nullptr,
                   const nbscore_scoring* scoring = nullptr) {
    nbscore_error* failure = nullptr;
    const std::int32_t kind =
        nbscore_score(model.get(), scoring, &table.GetSchema(), &table.GetArray(), &scores.array, &failure);
    const ErrorHandle error(failure);
    if (error && message != nullptr) *message = error->message;
    if (kind == NBSCORE_OK) {
        EXPECT_EQ(NBSCORE_OK, nbscore_score_schema(model.get(), scoring, &scores.schema, nullptr));
    }
    return kind;
}

class PeopleTest : public testing::Test {
protected:
    const ModelHandle model = OpenFile(titanic);
    ArrowTable people{3};
    ArrowScores scores;
    std::string message;
};

TEST_F(PeopleTest, HaveTheCommandsColumns) {
    AddPeople(people);
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores));
    EXPECT_THAT(scores.GetNames(),
                ElementsAre("predicted_survived", "confidence", "probability_no", "probability_yes"));
    EXPECT_EQ(3, scores.array.length);
    EXPECT_EQ("yes", scores.GetRow(0)[0]);
    EXPECT_EQ("yes", scores.GetRow(1)[0]);
    EXPECT_EQ("no", scores.GetRow(2)[0]);
    EXPECT_EQ(scores.GetRow(2)[1], scores.GetRow(2)[2]);
}

TEST_F(PeopleTest, HaveThePredictionAlone_WhereItIsAskedFor) {
    AddPeople(people);
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.prediction_only = 1;
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores, nullptr, &scoring));
    EXPECT_THAT(scores.GetNames(), ElementsAre("predicted_survived"));
    EXPECT_THAT(scores.GetRow(0), ElementsAre("yes"));
}

TEST_F(PeopleTest, AreScoredFromTheirOffsetsOn) {
    AddPeople(people);
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores));
    const std::vector<std::string> second = scores.GetRow(1);
    const std::vector<std::string> third = scores.GetRow(2);
    ArrowArray sliced = people.GetArray();
    sliced.offset = 1;
    sliced.length = 2;
    ArrowScores ofSlice;
    ASSERT_EQ(NBSCORE_OK, nbscore_score_schema(model.get(), nullptr, &ofSlice.schema, nullptr));
    ASSERT_EQ(NBSCORE_OK, nbscore_score(model.get(), nullptr, &people.GetSchema(), &sliced, &ofSlice.array, nullptr));
    EXPECT_EQ(2, ofSlice.array.length);
    EXPECT_EQ(second, ofSlice.GetRow(0));
    EXPECT_EQ(third, ofSlice.GetRow(1));
}

TEST_F(PeopleTest, AreNotLookedAt_WhereAColumnIsOfNoField) {
    AddPeople(people);
    people.GetColumnSchema(1).format = "w:7";
    people.GetColumn(1).n_buffers = -5;
    EXPECT_EQ(NBSCORE_OK, Score(model, people, scores));
}

TEST_F(PeopleTest, MayHaveCodesOfEveryWidth_AndTextsThatAreNone) {
    const Texts classes = {"first", std::nullopt, "third"};
    AddPeople(people);
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores));
    const auto rowWith = [&](const auto& addClass) {
        ArrowTable coded(3);
        addClass(coded);
        coded.AddTexts<std::int32_t>("age", {"adult", "child", std::nullopt});
        coded.AddTexts<std::int32_t>("sex", {"female", "female", std::nullopt});
        ArrowScores ofCodes;
        EXPECT_EQ(NBSCORE_OK, Score(model, coded, ofCodes));
        return std::vector<std::vector<std::string>>{ofCodes.GetRow(0), ofCodes.GetRow(1), ofCodes.GetRow(2)};
    };
    const auto expected = rowWith([&](ArrowTable& table) {
        table.AddTexts<std::int32_t>("class", {"first", std::nullopt, "third"});
    });
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::int8_t>("class", "c", {0, 1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::uint8_t>("class", "C", {0, 1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::int16_t>("class", "s", {0, -1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::uint16_t>("class", "S", {0, -1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::int32_t>("class", "i", {0, -1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::uint32_t>("class", "I", {0, -1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::int64_t>("class", "l", {0, -1, 2}, classes); }));
    EXPECT_EQ(expected, rowWith([&](ArrowTable& t) { t.AddCodes<std::uint64_t>("class", "L", {0, -1, 2}, classes); }));
}

TEST_F(PeopleTest, MayLackAllValuesOfAColumn) {
    people.Add("age", "n");
    people.Add("class", "n");
    people.Add("sex", "n");
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores));
    EXPECT_EQ("no", scores.GetRow(0)[0]);
}

TEST_F(PeopleTest, AreRefusedByTheNamesOfTheColumnsThatTheyLack_UnlessThatIsAllowed) {
    people.AddTexts<std::int32_t>("sex", {"female", "male", "male"});
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_EQ("The cases lack the columns \"class\", \"age\", which the model needs.", message);
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.lacking_as_absent = 1;
    EXPECT_EQ(NBSCORE_OK, Score(model, people, scores, &message, &scoring));
}

TEST_F(PeopleTest, AreRefusedByTheColumnsName_WhenItDoesNotFit) {
    const std::vector<std::uint8_t> noBits;
    const auto complaintAbout = [&](const auto& change) {
        ArrowTable table(3);
        AddPeople(table);
        change(table.GetColumn(2), table.GetColumnSchema(2));
        ArrowScores none;
        std::string complaint;
        EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, table, none, &complaint));
        EXPECT_EQ(nullptr, none.array.release);
        return complaint;
    };
    const auto change = [&](auto... fields) { return complaintAbout(fields...); };
    EXPECT_THAT(change([](ArrowArray&, ArrowSchema& schema) { schema.format = "z"; }),
                HasSubstr("The column \"class\" has the type \"z\""));
    EXPECT_THAT(change([](ArrowArray&, ArrowSchema& schema) { schema.format = nullptr; }), HasSubstr("\"class\""));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.length = 2; }),
                HasSubstr("\"class\" has 2 values for 3 cases"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.length = -1; }), HasSubstr("impossible length"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.offset = -1; }), HasSubstr("impossible length"));
    EXPECT_THAT(
        change([](ArrowArray& array, ArrowSchema&) { array.offset = std::numeric_limits<std::int64_t>::max(); }),
        HasSubstr("impossible length"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.n_buffers = 2; }),
                HasSubstr("has 2 buffers instead of 3"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.buffers = nullptr; }), HasSubstr("buffers"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.buffers[1] = nullptr; }),
                HasSubstr("has no buffer of values"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) { array.buffers[2] = nullptr; }),
                HasSubstr("has texts and no bytes"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) {
                    array.buffers[0] = nullptr;
                    array.null_count = 1;
                }),
                HasSubstr("has absent values and no bits"));
    EXPECT_THAT(change([](ArrowArray& array, ArrowSchema&) {
                    array.buffers[1] = static_cast<const char*>(array.buffers[1]) + 1;
                }),
                HasSubstr("at an address that its type does not allow"));
}

TEST_F(PeopleTest, AreRefused_WhenTextsBeginBehindTheirEnd) {
    people.AddTexts<std::int32_t>("age", {"adult", "child", std::nullopt});
    people.AddTexts<std::int32_t>("sex", {"female", "male", "male"});
    people.Add("class", "u", std::vector<std::uint8_t>(), std::vector<std::int32_t>{0, 3, 1, 2},
               std::vector<char>{'a', 'b', 'c'});
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_EQ("The column \"class\" has offsets that fall.", message);
}

TEST_F(PeopleTest, AreRefused_WhenTheirFirstTextBeginsBeforeTheBytes_OrLongOffsetsFall) {
    const auto messageOf = [&](const std::string& format, auto offsets) {
        ArrowTable table(3);
        table.AddTexts<std::int32_t>("age", {"adult", "child", std::nullopt});
        table.AddTexts<std::int32_t>("sex", {"female", "male", "male"});
        table.Add("class", format, std::vector<std::uint8_t>(), offsets, std::vector<char>{'a', 'b', 'c'});
        EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, table, scores, &message));
        return message;
    };
    const std::string fall = "The column \"class\" has offsets that fall.";
    EXPECT_EQ(fall, messageOf("u", std::vector<std::int32_t>{-1, 0, 1, 2}));
    EXPECT_EQ(fall, messageOf("u", std::vector<std::int32_t>{0, 1, 2, std::numeric_limits<std::int32_t>::min()}));
    EXPECT_EQ(fall, messageOf("U", std::vector<std::int64_t>{0, std::numeric_limits<std::int64_t>::max(), 2, 3}));
    EXPECT_EQ(fall, messageOf("U", std::vector<std::int64_t>{std::numeric_limits<std::int64_t>::min(), 1, 2, 3}));
}

TEST_F(PeopleTest, AreRefused_WhenACodeIsBeyondItsDictionary) {
    people.AddTexts<std::int32_t>("age", {"adult", "child", std::nullopt});
    people.AddTexts<std::int32_t>("sex", {"female", "male", "male"});
    people.AddCodes<std::uint64_t>("class", "L", {0, 2, 1}, {"first", "third"});
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_EQ("The column \"class\" cannot be read: case 1 has the code 2, but the dictionary has 2 values.", message);
}

TEST_F(PeopleTest, AreRefused_WhenADictionaryIsNone) {
    people.AddTexts<std::int32_t>("age", {"adult", "child", std::nullopt});
    people.AddTexts<std::int32_t>("sex", {"female", "male", "male"});
    people.AddCodes<std::int8_t>("class", "c", {0, 1, 1}, {"first", "third"});
    people.GetColumnSchema(2).dictionary->format = "b";
    people.GetColumn(2).dictionary->n_buffers = 2;
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_EQ("The column \"class\" has codes that stand for neither numbers nor texts.", message);
    people.GetColumn(2).dictionary = nullptr;
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_EQ("The column \"class\" has no dictionary.", message);
    people.GetColumnSchema(2).format = "u";
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_THAT(message, HasSubstr("whose indices have the type \"u\""));
}

TEST_F(PeopleTest, AreRefused_WhenAColumnIsThereTwice) {
    AddPeople(people);
    people.GetColumnSchema(1).name = "sex";
    EXPECT_EQ(NBSCORE_BAD_CASES, Score(model, people, scores, &message));
    EXPECT_EQ("The column \"sex\" is there twice.", message);
}

TEST_F(PeopleTest, MustBeAStructArray) {
    AddPeople(people);
    const auto kindOf = [&](const ArrowSchema& schema, const ArrowArray& array) {
        ArrowScores none;
        return nbscore_score(model.get(), nullptr, &schema, &array, &none.array, nullptr);
    };
    const ArrowSchema schema = people.GetSchema();
    const ArrowArray array = people.GetArray();
    EXPECT_EQ(NBSCORE_OK, kindOf(schema, array));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf({}, array));
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(schema, {}));
    ArrowSchema wrongSchema = schema;
    wrongSchema.format = "u";
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(wrongSchema, array));
    wrongSchema = schema;
    wrongSchema.children = nullptr;
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(wrongSchema, array));
    ArrowArray wrong = array;
    wrong.n_children = 1;
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(schema, wrong));
    wrong = array;
    wrong.length = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, kindOf(schema, wrong));
    const std::uint8_t bits = 0b101;
    const void* buffers[] = {&bits};
    wrong = array;
    wrong.buffers = buffers;
    wrong.null_count = 1;
    EXPECT_EQ(NBSCORE_BAD_CASES, kindOf(schema, wrong));
}

TEST_F(PeopleTest, AreRefused_WhenAColumnIsNull_OrWasReleased) {
    AddPeople(people);
    ArrowSchema schema = people.GetSchema();
    ArrowArray array = people.GetArray();
    const auto complaint = [&] {
        nbscore_error* failure = nullptr;
        ArrowScores none;
        EXPECT_NE(NBSCORE_OK, nbscore_score(model.get(), nullptr, &schema, &array, &none.array, &failure));
        const ErrorHandle error(failure);
        EXPECT_EQ(nullptr, none.array.release);
        return std::string(error == nullptr ? "" : error->message);
    };
    std::vector<ArrowArray*> columns(array.children, array.children + array.n_children);
    array.children = columns.data();
    columns[2] = nullptr;
    EXPECT_EQ("A column is null.", complaint());
    columns[2] = people.GetArray().children[2];
    std::vector<ArrowSchema*> schemas(schema.children, schema.children + schema.n_children);
    schema.children = schemas.data();
    schemas[0] = nullptr;
    EXPECT_EQ("A column is null.", complaint());
    schemas[0] = people.GetSchema().children[0];
    ArrowArray taken = *columns[2];
    taken.release = nullptr;
    columns[2] = &taken;
    EXPECT_EQ("The column \"class\" was released.", complaint());
    schema.n_children = array.n_children = -1;
    EXPECT_EQ("The schema and the array have different numbers of columns.", complaint());
    schema.n_children = array.n_children = 4;
    array.children = nullptr;
    EXPECT_EQ("The columns are null.", complaint());
}

TEST_F(PeopleTest, MayBeNone) {
    ArrowTable none(0);
    none.AddTexts<std::int32_t>("age", {});
    none.AddCodes<std::int8_t>("class", "c", {}, {});
    none.Add("sex", "u", std::vector<std::uint8_t>(), std::vector<std::int32_t>(), std::vector<char>());
    ASSERT_EQ(NBSCORE_OK, Score(model, none, scores));
    EXPECT_EQ(0, scores.array.length);
}

TEST_F(PeopleTest, ScoreAlike_OnManyThreads) {
    AddPeople(people);
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores));
    people.GetSchema();
    InThreads(
        [&](int) {
            ArrowScores ofThread;
            EXPECT_EQ(NBSCORE_OK, Score(model, people, ofThread));
            for (std::int64_t entry = 0; entry < 3; ++entry)
                EXPECT_EQ(scores.GetRow(entry), ofThread.GetRow(entry));
            return 0;
        },
        8);
}

TEST_F(PeopleTest, KeepAColumnThatSomebodyTook_WhenTheRestIsReleased) {
    AddPeople(people);
    ASSERT_EQ(NBSCORE_OK, Score(model, people, scores));
    ArrowArray taken = std::exchange(*scores.array.children[1], ArrowArray{});
    const std::string confidence = scores.GetNames()[1];
    scores.array.release(&scores.array);
    EXPECT_EQ(nullptr, scores.array.release);
    EXPECT_GT(static_cast<const double*>(taken.buffers[1])[0], 0.5);
    taken.release(&taken);
    EXPECT_EQ(nullptr, taken.release);
}

TEST(CScores, AreNullArgumentsRefusedByName) {
    const ModelHandle model = OpenFile(titanic);
    ArrowTable people(3);
    AddPeople(people);
    const auto messageOf = [](const auto& call) {
        nbscore_error* failure = nullptr;
        EXPECT_EQ(NBSCORE_BAD_ARGUMENT, call(&failure));
        const ErrorHandle error(failure);
        return error == nullptr ? std::string() : std::string(error->message);
    };
    const ArrowSchema& schema = people.GetSchema();
    const ArrowArray& cases = people.GetArray();
    ArrowArray scores;
    ArrowSchema made;
    ArrowArrayStream stream = {};
    ArrowArrayStream given;
    const nbscore_model* const open = model.get();
    EXPECT_EQ("model is null.",
              messageOf([&](auto e) { return nbscore_score(nullptr, nullptr, &schema, &cases, &scores, e); }));
    EXPECT_EQ(nullptr, scores.release);
    EXPECT_EQ("schema is null.",
              messageOf([&](auto e) { return nbscore_score(open, nullptr, nullptr, &cases, &scores, e); }));
    EXPECT_EQ("cases is null.",
              messageOf([&](auto e) { return nbscore_score(open, nullptr, &schema, nullptr, &scores, e); }));
    EXPECT_EQ("scores is null.",
              messageOf([&](auto e) { return nbscore_score(open, nullptr, &schema, &cases, nullptr, e); }));
    EXPECT_EQ("model is null.", messageOf([&](auto e) { return nbscore_score_schema(nullptr, nullptr, &made, e); }));
    EXPECT_EQ(nullptr, made.release);
    EXPECT_EQ("schema is null.", messageOf([&](auto e) { return nbscore_score_schema(open, nullptr, nullptr, e); }));
    EXPECT_EQ("cases is null.",
              messageOf([&](auto e) { return nbscore_score_stream(open, nullptr, nullptr, &given, e); }));
    EXPECT_EQ("The stream of cases was released.",
              messageOf([&](auto e) { return nbscore_score_stream(open, nullptr, &stream, &given, e); }));
    EXPECT_EQ(nullptr, given.release);
    EXPECT_EQ("scores is null.",
              messageOf([&](auto e) { return nbscore_score_stream(open, nullptr, &stream, nullptr, e); }));
}

TEST(CScores, AreOfTheBestSubModels_WhereTheyAreAskedFor) {
    const ModelHandle set = OpenFile(offers);
    ArrowTable customers(1);
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.lacking_as_absent = 1;
    ArrowScores all;
    ASSERT_EQ(NBSCORE_OK, Score(set, customers, all, nullptr, &scoring));
    scoring.best = 2;
    ArrowScores best;
    ASSERT_EQ(NBSCORE_OK, Score(set, customers, best, nullptr, &scoring));
    EXPECT_THAT(best.GetNames(), ElementsAre("best_1_model", "best_1_score", "best_2_model", "best_2_score"));
    const std::vector<std::string> row = best.GetRow(0);
    for (const std::size_t place : {0U, 2U}) {
        const std::vector<std::string> names = all.GetNames();
        const auto found = std::ranges::find(names, "score_" + row[place]);
        ASSERT_NE(names.end(), found);
        EXPECT_EQ(all.GetRow(0)[static_cast<std::size_t>(found - names.begin())], row[place + 1]);
    }
    EXPECT_GE(std::stod(row[1]), std::stod(row[3]));
}

TEST(CScores, AreRefusedOptions_ThatAreNotForTheModelOrThatThereAreNot) {
    const ModelHandle model = OpenFile(titanic);
    ArrowSchema schema;
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.best = 1;
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_score_schema(model.get(), &scoring, &schema, nullptr));
    for (std::int32_t nbscore_scoring::*choice :
         {&nbscore_scoring::usual_columns, &nbscore_scoring::prediction_only, &nbscore_scoring::lacking_as_absent,
          &nbscore_scoring::reserved, &nbscore_scoring::reasons_that_lift}) {
        scoring = NBSCORE_SCORING_INIT;
        scoring.*choice = 2;
        EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_score_schema(model.get(), &scoring, &schema, nullptr));
    }
}

TEST(CScores, HaveNoReasons_WhereTheModelIsASetOrTheyAreTooMany) {
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.reasons = 1;
    ArrowSchema schema;
    nbscore_error* failure = nullptr;
    const ModelHandle set = OpenFile(offers);
    EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_score_schema(set.get(), &scoring, &schema, &failure));
    EXPECT_THAT(ErrorHandle(failure)->message, HasSubstr("nbscore_explain"));
    const ModelHandle model = OpenFile(titanic);
    for (const std::int32_t number : {-1, 1001}) {
        scoring.reasons = number;
        EXPECT_EQ(NBSCORE_BAD_ARGUMENT, nbscore_score_schema(model.get(), &scoring, &schema, nullptr));
    }
}

TEST(CScores, TakeNumbersOfEveryType_AndRefuseTexts_InAFieldOfNumbers) {
    const ModelHandle model = OpenFile(iris);
    const auto rowWith = [&](const auto& add) {
        ArrowTable flowers(1);
        add(flowers);
        nbscore_scoring scoring = NBSCORE_SCORING_INIT;
        scoring.lacking_as_absent = 1;
        ArrowScores scores;
        std::string message;
        const std::int32_t kind = Score(model, flowers, scores, &message, &scoring);
        return kind == NBSCORE_OK ? scores.GetRow(0) : std::vector<std::string>{message};
    };
    const std::vector<std::uint8_t> none;
    const std::string field = "petal_length";
    const auto expected = rowWith([&](ArrowTable& t) { t.Add(field, "g", none, std::vector<double>{5}); });
    EXPECT_EQ(5U, expected.size()) << expected.front();
    const auto whole = [&]<typename Number>(const char* format, Number number) {
        return rowWith([&](ArrowTable& t) { t.Add(field, format, none, std::vector<Number>{number}); });
    };
    EXPECT_EQ(expected, whole("f", 5.0F));
    EXPECT_EQ(expected, whole("c", std::int8_t{5}));
    EXPECT_EQ(expected, whole("C", std::uint8_t{5}));
    EXPECT_EQ(expected, whole("s", std::int16_t{5}));
    EXPECT_EQ(expected, whole("S", std::uint16_t{5}));
    EXPECT_EQ(expected, whole("i", std::int32_t{5}));
    EXPECT_EQ(expected, whole("I", std::uint32_t{5}));
    EXPECT_EQ(expected, whole("l", std::int64_t{5}));
    EXPECT_EQ(expected, whole("L", std::uint64_t{5}));
    const auto one = rowWith([&](ArrowTable& t) { t.Add(field, "g", none, std::vector<double>{1}); });
    EXPECT_NE(expected, one);
    EXPECT_EQ(one, rowWith([&](ArrowTable& t) { t.Add(field, "b", none, std::vector<std::uint8_t>{0b1}); }));
    EXPECT_THAT(
        whole("l", std::numeric_limits<std::int64_t>::max()),
        ElementsAre("The column \"petal_length\" has the number 9223372036854775807 in case 0, which is beyond 53 "
                    "bits."));
    EXPECT_THAT(rowWith([&](ArrowTable& t) { t.AddTexts<std::int32_t>(field, {"5"}); }),
                ElementsAre("The column \"petal_length\" holds texts, and its field holds numbers."));
}

/// A stream of so many equal arrays, whose releases are counted.
class PeopleStream {
public:
    explicit PeopleStream(int arrays) : left(arrays) {
        AddPeople(people);
        stream.get_schema = [](ArrowArrayStream* self, ArrowSchema* out) {
            *out = Of(self).people.GetSchema();
            return Of(self).schemaFault;
        };
        stream.get_next = [](ArrowArrayStream* self, ArrowArray* out) { return Of(self).GetNext(out); };
        stream.get_last_error = [](ArrowArrayStream*) { return "the disk is gone"; };
        stream.release = [](ArrowArrayStream* self) {
            Of(self).isReleased = true;
            self->release = nullptr;
        };
        stream.private_data = this;
    }

    ArrowTable people{3};
    ArrowArrayStream stream = {};
    bool isReleased = false;
    int released = 0;
    int left;
    int fault = 0;
    int schemaFault = 0;

private:
    static PeopleStream& Of(ArrowArrayStream* self) { return *static_cast<PeopleStream*>(self->private_data); }

    int GetNext(ArrowArray* out) {
        *out = {};
        if (fault != 0) return fault;
        if (left-- == 0) return 0;
        *out = people.GetArray();
        out->private_data = this;
        out->release = [](ArrowArray* array) {
            ++static_cast<PeopleStream*>(array->private_data)->released;
            array->release = nullptr;
        };
        return 0;
    }
};

TEST(CScoreStream, ScoresEachArray_AndReleasesWhatItTook) {
    PeopleStream people(2);
    ArrowArrayStream scores;
    {
        // The stream outlives the handle.
        const ModelHandle model = OpenFile(titanic);
        ASSERT_EQ(NBSCORE_OK, nbscore_score_stream(model.get(), nullptr, &people.stream, &scores, nullptr));
    }
    EXPECT_EQ(nullptr, people.stream.release);
    EXPECT_EQ(nullptr, scores.get_last_error(&scores));
    for (int number = 1; number <= 2; ++number) {
        ArrowScores ofArray;
        ASSERT_EQ(0, scores.get_schema(&scores, &ofArray.schema));
        ASSERT_EQ(0, scores.get_next(&scores, &ofArray.array));
        ASSERT_NE(nullptr, ofArray.array.release);
        EXPECT_EQ(number, people.released);
        EXPECT_EQ("yes", ofArray.GetRow(1)[0]);
    }
    ArrowArray end;
    EXPECT_EQ(0, scores.get_next(&scores, &end));
    EXPECT_EQ(nullptr, end.release);
    EXPECT_FALSE(people.isReleased);
    scores.release(&scores);
    EXPECT_EQ(nullptr, scores.release);
    EXPECT_TRUE(people.isReleased);
}

TEST(CScoreStream, TellsWhatTheCasesAnswer_AndWhatDoesNotFit) {
    const ModelHandle model = OpenFile(titanic);
    PeopleStream people(3);
    ArrowArrayStream scores;
    ASSERT_EQ(NBSCORE_OK, nbscore_score_stream(model.get(), nullptr, &people.stream, &scores, nullptr));
    ArrowArray array;
    people.fault = ENOTCONN;
    EXPECT_EQ(ENOTCONN, scores.get_next(&scores, &array));
    EXPECT_EQ(nullptr, array.release);
    EXPECT_STREQ("the disk is gone", scores.get_last_error(&scores));
    people.fault = 0;
    people.people.GetColumn(0).length = 1;
    EXPECT_EQ(EINVAL, scores.get_next(&scores, &array));
    EXPECT_EQ(nullptr, array.release);
    EXPECT_THAT(scores.get_last_error(&scores), HasSubstr("\"age\" has 1 values for 3 cases"));
    EXPECT_EQ(1, people.released);
    people.people.GetColumn(0).length = 3;
    EXPECT_EQ(0, scores.get_next(&scores, &array));
    EXPECT_EQ(nullptr, scores.get_last_error(&scores));
    array.release(&array);
    scores.release(&scores);
}

TEST(CScoreStream, LeavesTheCasesToTheCaller_WhenItCannotBeMade) {
    const ModelHandle model = OpenFile(titanic);
    PeopleStream people(1);
    people.schemaFault = EIO;
    ArrowArrayStream scores;
    nbscore_error* failure = nullptr;
    EXPECT_EQ(NBSCORE_UNREADABLE, nbscore_score_stream(model.get(), nullptr, &people.stream, &scores, &failure));
    const ErrorHandle error(failure);
    EXPECT_THAT(error->message, HasSubstr("the disk is gone"));
    EXPECT_NE(nullptr, people.stream.release);
    EXPECT_EQ(nullptr, scores.release);
}

}  // namespace
}  // namespace nbscore::test
