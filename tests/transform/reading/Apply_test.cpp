#include <gtest/gtest.h>

#include <string>

#include "transform/ExpressionProbe.h"

namespace {

std::string Apply(const std::string& function, const std::string& arguments, const std::string& attributes = "") {
    return "<Apply function='" + function + "' " + attributes + ">" + arguments + "</Apply>";
}

const std::string x = "<FieldRef field='x'/>";
const std::string s = "<FieldRef field='s'/>";
const std::string one = "<Constant>1</Constant>";
const std::string zero = "<Constant>0</Constant>";

TEST(Apply, CallsTheFunctionWithItsArgumentsInOrder) {
    EXPECT_EQ(Given(Apply("-", x + "<Extension/>" + one)), "text 1");
    EXPECT_EQ(Given(Apply("concat", s + Apply("+", x + one))), "text a3");
}

TEST(Apply, IsNotCalled_WhenAnArgumentIsMissingAndMapMissingToIsGiven) {
    const Case missing(-9, "a");
    EXPECT_EQ(Given(Apply("+", x + one), missing), "absent");
    EXPECT_EQ(Given(Apply("+", x + one, "mapMissingTo='m' defaultValue='d'"), missing), "text m");
    EXPECT_EQ(Given(Apply("sum", x + one, "mapMissingTo='m'"), missing), "text m");
    EXPECT_EQ(Given(Apply("isMissing", x, "mapMissingTo='m'"), missing), "text m");
}

TEST(Apply, GivesItsDefault_WhenTheResultIsMissing) {
    EXPECT_EQ(Given(Apply("+", x + one, "defaultValue='d'"), Case(-9, "a")), "text d");
    EXPECT_EQ(Given(Apply("/", x + zero, "defaultValue='d'")), "text d");
    EXPECT_EQ(Given(Apply("+", s + one, "defaultValue='d'")), "text d");
}

/// Whether the replacement of the result of the call equals the constant.
std::string ReplacementEquals(const std::string& call, const std::string& constant, const std::string& functions = "") {
    return Given(Apply("equal", call + constant), Case(-9, "a"), "string", functions);
}

std::string Text(const std::string& text) {
    return "<Constant dataType='string'>" + text + "</Constant>";
}

TEST(Apply, ReadsAReplacementAsANumber_WhenTheFunctionGivesNumbers) {
    for (const std::string attribute : {"mapMissingTo", "defaultValue"}) {
        EXPECT_EQ(ReplacementEquals(Apply("+", x + one, attribute + "='1.0'"), Text("1")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("sum", x, attribute + "=' 1e0 '"), Text("1")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("stringLength", x, attribute + "='1.0'"), Text("1")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("+", x + one, attribute + "='1 or so'"), Text("1 or so")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("+", x + one, attribute + "='true'"), Text("true")), "text true");
    }
}

TEST(Apply, ReadsAReplacementAsATruthValue_WhenTheFunctionGivesTruthValues) {
    for (const std::string attribute : {"mapMissingTo", "defaultValue"}) {
        EXPECT_EQ(ReplacementEquals(Apply("equal", x + one, attribute + "='1'"), Text("true")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("not", x, attribute + "='false'"), Text("0")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("not", x, attribute + "='unknown'"), Text("unknown")), "text true");
        EXPECT_EQ(Given(Apply("not", x, attribute + "='1'"), Case(-9, "a")), "text true");
        EXPECT_EQ(Given(Apply("not", x, attribute + "='1.0'"), Case(-9, "a")), "text 1.0");
    }
    EXPECT_EQ(Given(Apply("isValid", x, "mapMissingTo='0'"), Case(-9, "a")), "text false");
}

TEST(Apply, LeavesAReplacementUnchanged_WhenTheFunctionGivesTexts) {
    for (const std::string attribute : {"mapMissingTo", "defaultValue"}) {
        EXPECT_EQ(ReplacementEquals(Apply("uppercase", x, attribute + "='1.0'"), Text("1")), "text false");
        EXPECT_EQ(ReplacementEquals(Apply("concat", x + x, attribute + "='1.0'"), Text("1.0")), "text true");
        EXPECT_EQ(Given(Apply("concat", x + x, attribute + "='007'"), Case(-9, "a")), "text 007");
    }
}

TEST(Apply, ReadsAReplacementLikeAConstantWithoutType_WhenTheFunctionIsIf) {
    for (const std::string attribute : {"mapMissingTo", "defaultValue"}) {
        EXPECT_EQ(ReplacementEquals(Apply("if", x + one, attribute + "='1.0'"), Text("1")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("if", x + one, attribute + "='a'"), Text("a")), "text true");
        EXPECT_EQ(ReplacementEquals(Apply("if", x + one, attribute + "='true'"), one), "text false");
    }
}

TEST(Apply, ReadsAReplacementByTheDataType_WhenTheDocumentDefinesTheFunction) {
    const auto defined = [](const std::string& dataType) {
        return "<DefineFunction name='f' optype='continuous' " + dataType +
               "><ParameterField name='p'/><FieldRef field='p'/></DefineFunction>";
    };
    for (const std::string attribute : {"mapMissingTo", "defaultValue"}) {
        const std::string number = Apply("f", x, attribute + "='1.0'");
        EXPECT_EQ(ReplacementEquals(number, Text("1"), defined("")), "text true");
        EXPECT_EQ(ReplacementEquals(number, Text("1"), defined("dataType='double'")), "text true");
        EXPECT_EQ(ReplacementEquals(number, Text("1"), defined("dataType='string'")), "text false");
        const std::string truth = Apply("f", x, attribute + "='1'");
        EXPECT_EQ(ReplacementEquals(truth, Text("true"), defined("dataType='boolean'")), "text true");
        EXPECT_EQ(ReplacementEquals(truth, Text("true"), defined("")), "text false");
    }
}

TEST(Apply, GivesUndefinedResults_WhenTheyStayAsTheyAre) {
    EXPECT_EQ(Given(Apply("/", x + zero)), "absent");
    EXPECT_EQ(Given(Apply("/", x + zero, "invalidValueTreatment='returnInvalid'")), "absent");
    EXPECT_EQ(Given(Apply("/", x + zero, "invalidValueTreatment='asMissing'")), "absent");
    EXPECT_EQ(Given(Apply("/", x + zero, "invalidValueTreatment='asIs' defaultValue='d'")), "text inf");
}

TEST(Apply, GivesTruthValuesAsTheFieldHoldsThem) {
    const std::string greater = Apply("greaterThan", x + one);
    EXPECT_EQ(Given(greater), "text true");
    EXPECT_EQ(Given(greater, Case(1, "a")), "text false");
    EXPECT_EQ(Given(greater, Case(2, "a"), "double"), "number 1");
    EXPECT_EQ(Given(greater, Case(1, "a"), "integer"), "number 0");
}

TEST(Apply, EvaluatesOnlyTheChosenBranch) {
    const std::string undefined = Apply("/", one + zero, "invalidValueTreatment='asIs'");
    EXPECT_EQ(Given(Apply("if", Apply("equal", x + one) + undefined + s)), "text a");
}

TEST(Apply, IsRefused_WhenTheFunctionIsUnknown) {
    for (const std::string name : {"nope", "x-concat", "org.example.Function", "Concat", "", "x-atan2"}) {
        EXPECT_EQ(RefusalOfExpression(Apply(name, x + one)),
                  "11 4:1 DerivedField[1]/Apply[1]: The function \"" + name + "\" is not known.");
    }
    EXPECT_EQ(RefusalOfExpression("<Apply>" + x + "</Apply>"),
              "2 4:1 DerivedField[1]/Apply[1]: <Apply> has no attribute \"function\".");
}

TEST(Apply, IsRefused_WhenTheNumberOfArgumentsIsWrong) {
    const std::string place = "12 4:1 DerivedField[1]/Apply[1]: ";
    EXPECT_EQ(RefusalOfExpression(Apply("sqrt", "")), place + "The function \"sqrt\" takes 1 argument, not 0.");
    EXPECT_EQ(RefusalOfExpression(Apply("substring", x + x)),
              place + "The function \"substring\" takes 3 arguments, not 2.");
    EXPECT_EQ(RefusalOfExpression(Apply("if", x + x + x + x)),
              place + "The function \"if\" takes 2 or 3 arguments, not 4.");
    EXPECT_EQ(RefusalOfExpression(Apply("and", x)), place + "The function \"and\" takes at least 2 arguments, not 1.");
    EXPECT_EQ(RefusalOfExpression(Apply("min", "<Extension/>")),
              place + "The function \"min\" takes at least 1 argument, not 0.");
}

TEST(Apply, IsRefused_WhenAnArgumentOrAttributeIs) {
    EXPECT_EQ(RefusalOfExpression(Apply("sqrt", "\n<FieldRef field='y'/>")),
              "8 5:1 DerivedField[1]/Apply[1]/FieldRef[1]: \"y\" is no field.");
    EXPECT_EQ(RefusalOfExpression(Apply("sqrt", "\n<Value/>")),
              "11 5:1 DerivedField[1]/Apply[1]/Value[1]: The expression <Value> is not supported.");
    EXPECT_EQ(RefusalOfExpression(Apply("sqrt", x, "invalidValueTreatment='asValue'")),
              "5 4:1 DerivedField[1]/Apply[1]: \"asValue\" is no \"invalidValueTreatment\" of <Apply>: returnInvalid, "
              "asMissing or asIs.");
}

TEST(Apply, MayNestAsDeepAsADocumentMay) {
    std::string nested = x;
    for (int i = 0; i < 990; ++i)
        nested = Apply("+", nested + one);
    EXPECT_EQ(Given(nested), "text 992");
}

std::string AdviceForFunction(const std::string& name) {
    const std::string field = "<DerivedField name='d' dataType='string'>" + Apply(name, one) + "</DerivedField>";
    return RefusalOf([&] { DerivedDocument(caseFields, field); })->GetAdvice();
}

TEST(Apply, AdvisesOnAnUnknownFunction_WhenItsNameTells) {
    EXPECT_EQ(AdviceForFunction("Round"),
              "Write \"round\": names of functions are told apart by upper and lower case.");
    EXPECT_EQ(
        AdviceForFunction("x-Round"),
        "If the built-in function \"round\" is meant, write it so; else define the function by a DefineFunction.");
    EXPECT_EQ(AdviceForFunction("X-guess"),
              "Define the function by a DefineFunction: names with \"x-\" are functions of the document's producer, "
              "which are known there only.");
    for (const std::string name : {"guess", "x-", "rounds"}) {
        EXPECT_EQ(AdviceForFunction(name).substr(0, 17), "Correct the name,") << name;
    }
}

}  // namespace
