// Derived fields and functions that could take far more time, memory or stack than their size suggests.

#include "cli/FruitFields.h"
#include "hostile/HostileTest.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

constexpr int manyFields = 100'000;

std::string Name(int number) {
    return "d" + std::to_string(number);
}

/// Fields d0, d1 and so on, each on a line of its own: the first of the weight, the others with each the one before at
/// every `@`.
std::string Chain(int count, const std::string& expression) {
    std::string fields = DerivedNumber(Name(0), FieldRef("weight")) + "\n";
    for (int i = 1; i < count; ++i) {
        std::string text = expression;
        for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos;)
            text.replace(at, 1, FieldRef(Name(i - 1)));
        fields += DerivedNumber(Name(i), text) + "\n";
    }
    return fields;
}

class HostileFields : public HostileTest {
protected:
    void ExpectAllRefuse(const std::string& document, const std::string& pattern) const {
        folder.Write("model.pmml", document);
        ExpectRefusedByAll("model.pmml", pattern);
    }
};

TEST_F(HostileFields, AreRefusedAtTheFirst_WhenTheyReadEachOther) {
    ExpectAllRefuse(Transforming(DerivedNumber("a", FieldRef("b")) + "\n" + DerivedNumber("b", FieldRef("a"))),
                    "15:29: error 12: The derived field \"a\" depends on itself.");
    const std::string circle = Replace(Chain(manyFields, "@"), FieldRef("weight"), FieldRef(Name(manyFields - 1)));
    ExpectAllRefuse(Transforming(circle), "15:29: error 12: The derived field \"d0\" depends on itself.");
}

TEST_F(HostileFields, AreScored_WhenAHundredThousandReadOneAnother) {
    const std::string last = Name(manyFields - 1);
    const std::string document = WithInput(Transforming(Chain(manyFields, "@")), last);
    ExpectScoresOfFruits(Score(document));
    const CommandResult check = RunLimited({"check", "model.pmml"});
    EXPECT_EQ(check.exitStatus, 0) << check.err;
    EXPECT_THAT(check.out, HasSubstr(last));
}

TEST_F(HostileFields, AreScored_WhenAHundredThousandReadOneAnotherInBranches) {
    const std::string branch =
        Apply("if", Apply("greaterThan", FieldRef("weight") + Constant("1")) + "@" + Constant("7"));
    ExpectScoresOfFruits(Score(WithInput(Transforming(Chain(manyFields, branch)), Name(manyFields - 1))));
}

TEST_F(HostileFields, AreScored_WhenEachIsTwiceTheOneBefore) {
    const CommandResult result = Score(WithInput(Transforming(Chain(10'000, Apply("+", "@@"))), Name(9'999)));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(Lines(result.out).size(), 3U);
}

TEST_F(HostileFields, AreMissing_WhenTextsKeepDoubling) {
    std::string fields = DerivedText("t0", FieldRef("colour"));
    for (int i = 1; i < 100; ++i) {
        const std::string before = FieldRef("t" + std::to_string(i - 1));
        fields += DerivedText("t" + std::to_string(i), Apply("concat", before + before));
    }
    fields += DerivedNumber("length", Apply("stringLength", FieldRef("t99")));
    const CommandResult result = Score(WithInput(Transforming(fields), "length"));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    const std::string missing = "colour,weight\nred,\ngreen,\n";
    folder.Write("fruits.pmml", fruitDocument);
    EXPECT_EQ(result.out, Run({"score", "fruits.pmml", "--only-scores"}, missing).out);
}

TEST_F(HostileFields, AreRefused_WhenEachFunctionDoublesTheWork) {
    std::string functions = DefineFunction("f0", FieldRef("p"));
    for (int i = 1; i < 60; ++i) {
        const std::string before = Apply("f" + std::to_string(i - 1), FieldRef("p"));
        functions += DefineFunction("f" + std::to_string(i), Apply("+", before + before));
    }
    ExpectAllRefuse(Transforming(functions + "\n" + DerivedNumber("d", Apply("f59", FieldRef("weight")))),
                    "16:1: error 12: The derived field \"d\" takes more than 1000000 evaluations, those in functions "
                    "counted in.");
}

/// Memory for every cell that the rows could have would be eighty gigabytes.
TEST_F(HostileFields, AreRefusedAtTheFirstRow_WhenATableHasManyColumnsAndManyEmptyRows) {
    const std::string pairs = Each(manyFields, [](const std::string& i) { return FieldColumnPair("colour", "d" + i); });
    const std::string table = MapValues(pairs, Each(manyFields, [](const std::string&) { return Row(""); }));
    ExpectAllRefuse(Transforming(DerivedNumber("d", table)),
                    "15:[0-9]+: error 5: The row has no cell for the column \"d0\".");
}

std::string Matching(const std::string& text, const std::string& pattern) {
    return Apply("if", Apply("matches", text + pattern) + Constant("1") + Constant("200"));
}

TEST_F(HostileFields, AreRefused_WhenAConstantPatternBlowsUp) {
    for (const char* pattern :
         {"((a{1,1000}){1,1000}){1,1000}", "(((a{1,100}){1,100}){1,100}){1,100}", "(((((a{1,30}){1,30})*)*)*){1,30}"}) {
        ExpectAllRefuse(Transforming(DerivedNumber("d", Matching(FieldRef("colour"), TextConstant(pattern)))),
                        "15:[0-9]+: error 5: The pattern .* cannot be used: .*");
    }
}

TEST_F(HostileFields, AreScored_WhenAConstantPatternWouldBacktrack) {
    const std::string pattern = TextConstant("^((a+)+)+(a|aa)*(.*.*)*=$");
    const std::string document =
        WithInput(Transforming(DerivedNumber("d", Matching(TextConstant(std::string(100'000, 'a')), pattern))), "d");
    const CommandResult result = Score(document);
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(Lines(result.out).size(), 3U);
}

TEST_F(HostileFields, AreRefused_WhenThereAreTooManyPatterns) {
    std::string fields;
    for (int i = 0; i < 5'000; ++i) {
        const std::string pattern = TextConstant("[b-y]{1,900}x" + std::to_string(i) + "(a|b|ab)*");
        fields += DerivedNumber(Name(i), Matching(FieldRef("colour"), pattern)) + "\n";
    }
    ExpectAllRefuse(Transforming(fields),
                    "[0-9]+:[0-9]+: error 12: The regular expressions of the document are together .*");
}

TEST_F(HostileFields, AreScored_WhenCellsArePatternsThatBlowUp) {
    const std::string text = TextConstant(std::string(5'000, 'a'));
    std::string cases = "colour,weight\n";
    for (const char* pattern :
         {"((a+)+)+b", "((a{1,1000}){1,1000}){1,1000}", "(a{0,900})(a|aa)*b?(x+x+)+y", "((((", ""})
        cases += std::string("\"") + pattern + "\",1\n";
    for (int i = 0; i < 20; ++i)
        cases += "\"(a{0,900}){1}(a|aa)*" + std::to_string(i) + "\",1\n";
    folder.Write("cases.csv", cases);
    const CommandResult result =
        Score(WithInput(Transforming(DerivedNumber("d", Matching(text, FieldRef("colour")))), "d"));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(Lines(result.out).size(), Lines(cases).size());
}

}  // namespace
}  // namespace nbscore::test
