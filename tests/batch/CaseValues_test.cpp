#include "batch/CaseValues.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "naivebayes/ModelParts.h"

namespace nbscore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

InputDictionary Dictionary(const ScorerIdentity& scorer, std::size_t input, std::size_t size,
                           std::vector<std::vector<FactorRow>> rows) {
    return InputDictionary(
        std::make_shared<InputDictionary::Lookup>(InputDictionary::Lookup{scorer, input, size, std::move(rows)}));
}

/// Rows of the colours red (2) and blue (3).
class CaseValuesTest : public testing::Test {
protected:
    CaseValuesTest() {
        tables.var = var.get();
        tables.kind = PredictorTables::Texts;
        tables.texts = {&red, &blue};
        const PredictorTables* const only = &tables;
        rows.emplace(std::span<const PredictorTables* const>(&only, 1));
    }

    template <typename Row>
    void EncodeInto(Row* out, const Column& column, std::size_t first, std::size_t count, std::size_t list = 0) const {
        const Reader reader{*rows, 0, list};
        const CaseValues values{.readers = {&reader, 1}, .columns = {&column, 1}, .rows = {}, .cases = first + count};
        values.Encode(0, first, count, out);
    }

    /// The rows of the cases from `first` on; the same in bytes and in words.
    std::vector<FactorRow> Encode(const Column& column, std::size_t first, std::size_t count,
                                  std::size_t list = 0) const {
        std::vector<FactorRow> words(count, 99);
        std::vector<std::uint8_t> bytes(count, 99);
        EncodeInto(words.data(), column, first, count, list);
        EncodeInto(bytes.data(), column, first, count, list);
        EXPECT_EQ(std::vector<FactorRow>(bytes.begin(), bytes.end()), words);
        return words;
    }

    std::string red = "red";
    std::string blue = "blue";
    std::unique_ptr<BaseDictVar> var = test::TextVariable("colour", {});
    PredictorTables tables;
    std::optional<ValueRows> rows;
    const std::vector<BatchInput> inputs = {{"colour", PredictorTables::Texts}};
    const ScorerIdentity scorer;
    const InputDictionary dictionary =
        Dictionary(scorer, 0, 3, {{missingRow, 3, 2, unknownRow}, {missingRow, 2, 2, 2}});
};

TEST_F(CaseValuesTest, ReadsNumbersByTheirDigits) {
    red = "1.5";
    const PredictorTables* const only = &tables;
    rows.emplace(std::span<const PredictorTables* const>(&only, 1));
    const std::vector<double> numbers = {1.5, 2.0, 1.5};
    EXPECT_THAT(Encode(NumberColumn{numbers, {}}, 0, 3), ElementsAre(2, unknownRow, 2));
}

TEST_F(CaseValuesTest, ReadsTextsBetweenOffsets_FromAnyCaseOn) {
    const std::vector<std::int32_t> offsets = {2, 5, 9, 9, 12};
    const std::vector<std::int64_t> wide(offsets.begin(), offsets.end());
    const char* bytes = "..redbluered..";
    EXPECT_THAT(Encode(TextColumn<std::int32_t>{bytes, offsets, {}}, 0, 4), ElementsAre(2, 3, unknownRow, 2));
    EXPECT_THAT(Encode(TextColumn<std::int64_t>{bytes, wide, {}}, 1, 2), ElementsAre(3, unknownRow));
}

TEST_F(CaseValuesTest, ReadsTextsThatLieAnywhere) {
    const std::vector<std::string_view> views = {"blue", "green", "red"};
    EXPECT_THAT(Encode(TextViewColumn{views, {}}, 0, 3), ElementsAre(3, unknownRow, 2));
}

TEST_F(CaseValuesTest, FindsNothing_InAnAbsentColumn) {
    EXPECT_THAT(Encode(AbsentColumn{}, 7, 2), ElementsAre(missingRow, missingRow));
}

TEST_F(CaseValuesTest, CountsValidityFromItsOffset) {
    const std::vector<std::string_view> views(10, "red");
    const std::vector<std::uint8_t> bits = {0b01000000, 0b10000011};
    const TextViewColumn column{views, {bits.data(), 6}};
    const FactorRow no = missingRow;
    EXPECT_THAT(Encode(column, 0, 10), ElementsAre(2, no, 2, 2, no, no, no, no, no, 2));
    EXPECT_THAT(Encode(column, 8, 2), ElementsAre(no, 2));
}

TEST_F(CaseValuesTest, LooksCodesUp_InTheListOfTheReader) {
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

template <typename Number>
class NumbersOfTest : public CaseValuesTest {};

using AllNumbers = testing::Types<double, float, std::int8_t, std::int16_t, std::int32_t, std::int64_t, std::uint8_t,
                                  std::uint16_t, std::uint32_t, std::uint64_t>;
TYPED_TEST_SUITE(NumbersOfTest, AllNumbers);

TYPED_TEST(NumbersOfTest, AreTheNumbersThatTheyAreEqualTo) {
    this->red = "7";
    this->blue = "100";
    const PredictorTables* const only = &this->tables;
    this->rows.emplace(std::span<const PredictorTables* const>(&only, 1));
    const std::vector<TypeParam> numbers = {7, 8, 100, 7};
    const std::uint8_t bits = 0b0111;
    EXPECT_THAT(this->Encode(NumbersOf<TypeParam>{numbers, {&bits, 0}}, 0, 4),
                ElementsAre(2, unknownRow, 3, missingRow));
}

template <typename Code>
class CodesOfTest : public CaseValuesTest {};

using AllCodes = testing::Types<std::int8_t, std::int16_t, std::int32_t, std::int64_t, std::uint8_t, std::uint16_t,
                                std::uint32_t, std::uint64_t>;
TYPED_TEST_SUITE(CodesOfTest, AllCodes);

TYPED_TEST(CodesOfTest, AreLookedUp_AndRefusedWhereTheDictionaryHasNone) {
    std::vector<TypeParam> codes = {0, 1, 2};
    const CodeColumn<TypeParam> column{codes, &this->dictionary, {}};
    EXPECT_THAT(this->Encode(column, 0, 3), ElementsAre(3, 2, unknownRow));
    for (const TypeParam wrong : {TypeParam{3}, std::numeric_limits<TypeParam>::max()}) {
        codes.back() = wrong;
        EXPECT_THAT([&] { this->Encode(column, 0, 3); },
                    ThrowsMessage<std::out_of_range>(HasSubstr("case 2 has the code " + std::to_string(wrong) + ",")));
    }
}

TEST_F(CaseValuesTest, LooksTruthValuesUpByTheirBits) {
    const std::uint8_t bits = 0b1010'0000;
    const std::uint8_t valid = 0b0111;
    EXPECT_THAT(Encode(TruthColumn{&bits, 4, 4, &dictionary, {&valid, 0}}, 0, 4), ElementsAre(3, 2, 3, missingRow));
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

TEST_F(CaseValuesTest, RefusesCodesThatTheDictionaryDoesNotHave) {
    const auto encode = [this](const Column& column) { Encode(column, 0, 4); };
    for (const int code : {3, -2, 127, -128}) {
        ExpectRefused<std::int8_t>(encode, dictionary, static_cast<std::int8_t>(code));
        ExpectRefused<std::int16_t>(encode, dictionary, static_cast<std::int16_t>(code));
        ExpectRefused<std::int32_t>(encode, dictionary, code);
    }
    ExpectRefused<std::int32_t>(encode, dictionary, std::numeric_limits<std::int32_t>::max());
    ExpectRefused<std::int32_t>(encode, dictionary, std::numeric_limits<std::int32_t>::min());
    std::vector<std::uint8_t> bytes(4);
    const auto encodeBytes = [&](const Column& column) { EncodeInto(bytes.data(), column, 0, 4); };
    ExpectRefused<std::int8_t>(encodeBytes, dictionary, 3);
    ExpectRefused<std::int8_t>(encodeBytes, dictionary, -2);
}

TEST_F(CaseValuesTest, LooksAtNoCodeThatIsNotValid) {
    const std::vector<std::int8_t> codes = {0, 100, -100};
    const std::uint8_t bits = 0b001;
    EXPECT_THAT(Encode(CodeColumn<std::int8_t>{codes, &dictionary, {&bits, 0}}, 0, 3),
                ElementsAre(3, missingRow, missingRow));
}

TEST_F(CaseValuesTest, TakesRowsAsTheyAre_AndRefusesOnesThatDoNotExist) {
    const std::vector<FactorRow> given = {0, 1, 2, 3, 4};
    const std::span<const FactorRow> list(given);
    const Reader reader{*rows, 0, 0};
    const CaseValues values{.readers = {&reader, 1}, .columns = {}, .rows = {&list, 1}, .cases = 5};
    std::vector<FactorRow> words(4);
    std::vector<std::uint8_t> bytes(3);
    values.Encode(0, 0, 4, words.data());
    values.Encode(0, 1, 3, bytes.data());
    EXPECT_THAT(words, ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3));
    EXPECT_THAT([&] { values.Encode(0, 2, 3, words.data()); },
                ThrowsMessage<std::out_of_range>(HasSubstr("case 4 has row 4, but there are 4")));
}

TEST_F(CaseValuesTest, RefusesColumnsThatCannotBeRead) {
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
    const InputDictionary ofAnotherInput = Dictionary(scorer, 1, 0, {});
    const InputDictionary ofAnotherScorer = Dictionary(ScorerIdentity(), 0, 0, {});
    const InputDictionary ofOneValue = Dictionary(scorer, 0, 1, {{missingRow, 2}});
    const std::uint8_t bits = 0;
    const std::vector<std::int64_t> wide = {0, (std::int64_t{1} << 53) + 1};
    const std::vector<std::int64_t> low = {0, -(std::int64_t{1} << 53) - 1};
    const std::vector<std::uint64_t> high = {0, std::numeric_limits<std::uint64_t>::max()};
    const std::vector<std::int64_t> widest = {std::int64_t{1} << 53, -(std::int64_t{1} << 53)};
    const std::uint8_t onlyFirst = 0b01;
    const std::string named = "The column of the input \"colour\" ";
    EXPECT_EQ(problem(NumbersOf<std::int64_t>{widest, {}}), "");
    EXPECT_EQ(problem(NumbersOf<std::int64_t>{wide, {&onlyFirst, 0}}), "");
    EXPECT_EQ(problem(NumbersOf<std::int64_t>{wide, {}}),
              named + "has the number 9007199254740993 in case 1, which is beyond 53 bits.");
    EXPECT_EQ(problem(NumbersOf<std::int64_t>{low, {}}),
              named + "has the number -9007199254740993 in case 1, which is beyond 53 bits.");
    EXPECT_EQ(problem(NumbersOf<std::uint64_t>{high, {}}),
              named + "has the number 18446744073709551615 in case 1, which is beyond 53 bits.");
    EXPECT_EQ(problem(TruthColumn{&bits, 0, 2, &dictionary, {}}), "");
    EXPECT_EQ(problem(TruthColumn{&bits, 0, 3, &dictionary, {}}), named + "has 3 values for 2 cases.");
    EXPECT_EQ(problem(TruthColumn{&bits, 0, 2, &ofOneValue, {}}),
              named + "has truth values, and a dictionary that lacks one of them.");
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
}

TEST_F(CaseValuesTest, RefusesAnotherNumberOfColumns) {
    const std::vector<Column> two(2);
    EXPECT_THROW(RequireReadable(two, 0, scorer, inputs), std::invalid_argument);
    EXPECT_THROW(RequireReadable({}, 0, scorer, inputs), std::invalid_argument);
}

}  // namespace
}  // namespace nbscore
