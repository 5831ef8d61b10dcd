#include "batch/ColumnEncoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "batch/InputDictionary.h"
#include "naivebayes/ModelParts.h"

namespace nbscore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

/// Rows of the colours red (2) and blue (3).
class ColumnEncoder : public testing::Test {
protected:
    ColumnEncoder() {
        tables.var = var.get();
        tables.kind = PredictorTables::Texts;
        tables.texts = {&red, &blue};
        const PredictorTables* const only = &tables;
        rows.emplace(std::span<const PredictorTables* const>(&only, 1));
    }

    /// The rows of the cases from `first` on; the same in bytes and in words.
    std::vector<RowNumber> Encode(const Column& column, std::size_t first, std::size_t count,
                                  std::size_t reader = 0) const {
        std::vector<RowNumber> words(count, 99);
        std::vector<std::uint8_t> bytes(count, 99);
        EncodeColumn(*rows, reader, column, first, count, words.data());
        EncodeColumn(*rows, reader, column, first, count, bytes.data());
        EXPECT_EQ(std::vector<RowNumber>(bytes.begin(), bytes.end()), words);
        return words;
    }

    std::string red = "red";
    std::string blue = "blue";
    std::unique_ptr<BaseDictVar> var = test::TextVariable("colour", {});
    PredictorTables tables;
    std::optional<ValueRows> rows;
    const std::vector<BatchInput> inputs = {{"colour", PredictorTables::Texts}};
    const ScorerIdentity scorer;
    const InputDictionary dictionary{scorer, 0, 3, {{missingRow, 3, 2, unknownRow}, {missingRow, 2, 2, 2}}};
};

TEST_F(ColumnEncoder, ReadsNumbersByTheirDigits) {
    red = "1.5";
    const PredictorTables* const only = &tables;
    rows.emplace(std::span<const PredictorTables* const>(&only, 1));
    const std::vector<double> numbers = {1.5, 2.0, 1.5};
    EXPECT_THAT(Encode(NumberColumn{numbers, {}}, 0, 3), ElementsAre(2, unknownRow, 2));
}

TEST_F(ColumnEncoder, ReadsTextsBetweenOffsets_FromAnyCaseOn) {
    const std::vector<std::int32_t> offsets = {2, 5, 9, 9, 12};
    const std::vector<std::int64_t> wide(offsets.begin(), offsets.end());
    const char* bytes = "..redbluered..";
    EXPECT_THAT(Encode(TextColumn<std::int32_t>{bytes, offsets, {}}, 0, 4), ElementsAre(2, 3, unknownRow, 2));
    EXPECT_THAT(Encode(TextColumn<std::int64_t>{bytes, wide, {}}, 1, 2), ElementsAre(3, unknownRow));
}

TEST_F(ColumnEncoder, ReadsTextsThatLieAnywhere) {
    const std::vector<std::string_view> views = {"blue", "green", "red"};
    EXPECT_THAT(Encode(TextViewColumn{views, {}}, 0, 3), ElementsAre(3, unknownRow, 2));
}

TEST_F(ColumnEncoder, FindsNothing_InAnAbsentColumn) {
    EXPECT_THAT(Encode(AbsentColumn{}, 7, 2), ElementsAre(missingRow, missingRow));
}

TEST_F(ColumnEncoder, CountsValidityFromItsOffset) {
    const std::vector<std::string_view> views(10, "red");
    const std::vector<std::uint8_t> bits = {0b01000000, 0b10000011};
    const TextViewColumn column{views, {bits.data(), 6}};
    const RowNumber no = missingRow;
    EXPECT_THAT(Encode(column, 0, 10), ElementsAre(2, no, 2, 2, no, no, no, no, no, 2));
    EXPECT_THAT(Encode(column, 8, 2), ElementsAre(no, 2));
}

TEST_F(ColumnEncoder, LooksCodesUp_InTheListOfTheReader) {
    const std::vector<std::int8_t> codes = {0, 1, -1, 2};
    const std::vector<std::int16_t> codes16(codes.begin(), codes.end());
    const std::vector<std::int32_t> codes32(codes.begin(), codes.end());
    for (const Column& column : {Column(CodeColumn<std::int8_t>{codes, &dictionary, {}}),
                                 Column(CodeColumn<std::int16_t>{codes16, &dictionary, {}}),
                                 Column(CodeColumn<std::int32_t>{codes32, &dictionary, {}})}) {
        EXPECT_THAT(Encode(column, 0, 4), ElementsAre(3, 2, missingRow, unknownRow));
        EXPECT_THAT(Encode(column, 1, 3, 1), ElementsAre(2, missingRow, 2));
    }
}

template <typename Code>
void ExpectRefused(const std::function<void(const Column&)>& encode, const InputDictionary& dictionary, Code code) {
    const std::vector<Code> codes = {0, 0, code, 0};
    EXPECT_THAT(
        [&] {
            encode(CodeColumn<Code>{codes, &dictionary, {}});
        },
        ThrowsMessage<std::out_of_range>(
            HasSubstr("case 2 has the code " + std::to_string(code) + ", but the dictionary has 3 values")));
}

TEST_F(ColumnEncoder, RefusesCodesThatTheDictionaryDoesNotHave) {
    const auto encode = [this](const Column& column) { Encode(column, 0, 4); };
    for (const int code : {3, -2, 127, -128}) {
        ExpectRefused<std::int8_t>(encode, dictionary, static_cast<std::int8_t>(code));
        ExpectRefused<std::int16_t>(encode, dictionary, static_cast<std::int16_t>(code));
        ExpectRefused<std::int32_t>(encode, dictionary, code);
    }
    ExpectRefused<std::int32_t>(encode, dictionary, std::numeric_limits<std::int32_t>::max());
    ExpectRefused<std::int32_t>(encode, dictionary, std::numeric_limits<std::int32_t>::min());
    std::vector<std::uint8_t> bytes(4);
    const auto encodeBytes = [&](const Column& column) { EncodeColumn(*rows, 0, column, 0, 4, bytes.data()); };
    ExpectRefused<std::int8_t>(encodeBytes, dictionary, 3);
    ExpectRefused<std::int8_t>(encodeBytes, dictionary, -2);
}

TEST_F(ColumnEncoder, LooksAtNoCodeThatIsNotValid) {
    const std::vector<std::int8_t> codes = {0, 100, -100};
    const std::uint8_t bits = 0b001;
    EXPECT_THAT(Encode(CodeColumn<std::int8_t>{codes, &dictionary, {&bits, 0}}, 0, 3),
                ElementsAre(3, missingRow, missingRow));
}

TEST_F(ColumnEncoder, TakesRowsAsTheyAre_AndRefusesOnesThatThereAreNot) {
    const std::vector<RowNumber> given = {0, 1, 2, 3, 4};
    EXPECT_THAT(Encode(RowColumn{given}, 0, 4), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT([&] { Encode(RowColumn{given}, 0, 5); },
                ThrowsMessage<std::out_of_range>(HasSubstr("case 4 has row 4, but there are 4")));
}

TEST_F(ColumnEncoder, RefusesColumnsThatCannotBeRead) {
    const auto problem = [this](const Column& column) {
        try {
            RequireReadable({&column, 1}, 2, scorer, inputs);
        } catch (const std::invalid_argument& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    const std::vector<double> three(3);
    const std::vector<std::string_view> one(1);
    const std::vector<std::int8_t> codes(2);
    const std::vector<std::int32_t> falling = {0, 2, 1};
    const std::vector<std::int32_t> negative = {-1, 0, 1};
    const std::vector<std::int32_t> fitting = {0, 1, 1};
    const std::vector<std::int64_t> tooFew = {0, 1};
    const InputDictionary ofAnotherInput(scorer, 1, 0, {});
    const InputDictionary ofAnotherScorer(ScorerIdentity(), 0, 0, {});
    const std::string named = "The column of the input \"colour\" ";
    EXPECT_EQ(problem(AbsentColumn{}), "");
    EXPECT_EQ(problem(TextColumn<std::int32_t>{"a", fitting, {}}), "");
    EXPECT_EQ(problem(CodeColumn<std::int8_t>{codes, &dictionary, {}}), "");
    EXPECT_EQ(problem(NumberColumn{three, {}}), named + "has 3 values for 2 cases.");
    EXPECT_EQ(problem(TextViewColumn{one, {}}), named + "has 1 values for 2 cases.");
    EXPECT_EQ(problem(TextColumn<std::int64_t>{"a", tooFew, {}}), named + "has 1 values for 2 cases.");
    EXPECT_EQ(problem(TextColumn<std::int32_t>{"ab", {}, {}}), named + "has no offsets.");
    EXPECT_EQ(problem(TextColumn<std::int32_t>{"ab", falling, {}}), named + "has offsets that fall.");
    EXPECT_EQ(problem(TextColumn<std::int32_t>{"ab", negative, {}}), named + "has offsets that fall.");
    EXPECT_EQ(problem(CodeColumn<std::int8_t>{codes, nullptr, {}}), named + "has codes and no dictionary.");
    EXPECT_EQ(problem(CodeColumn<std::int8_t>{codes, &ofAnotherInput, {}}),
              named + "has a dictionary of another scorer or input.");
    EXPECT_EQ(problem(CodeColumn<std::int8_t>{codes, &ofAnotherScorer, {}}),
              named + "has a dictionary of another scorer or input.");
    EXPECT_NE(problem(RowColumn{}), "");
}

TEST_F(ColumnEncoder, RefusesAnotherNumberOfColumns) {
    const std::vector<Column> two(2);
    EXPECT_THROW(RequireReadable(two, 0, scorer, inputs), std::invalid_argument);
    EXPECT_THROW(RequireReadable({}, 0, scorer, inputs), std::invalid_argument);
}

TEST_F(ColumnEncoder, RefusesListsOfRowsThatDoNotFit) {
    const std::vector<RowNumber> three(3);
    const std::vector<std::span<const RowNumber>> lists = {three, three};
    EXPECT_EQ(MakeRowColumns(lists, 3, 2).size(), 2u);
    EXPECT_THROW(MakeRowColumns(lists, 3, 1), std::invalid_argument);
    EXPECT_THROW(MakeRowColumns(lists, 2, 2), std::invalid_argument);
}

}  // namespace
}  // namespace nbscore
