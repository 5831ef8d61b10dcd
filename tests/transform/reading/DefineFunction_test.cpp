#include <gtest/gtest.h>

#include <string>

#include "transform/ExpressionProbe.h"

namespace {

std::string Ref(const std::string& field) {
    return "<FieldRef field='" + field + "'/>";
}

std::string Apply(const std::string& function, const std::string& arguments, const std::string& attributes = "") {
    return "<Apply function='" + function + "' " + attributes + ">" + arguments + "</Apply>";
}

std::string Parameter(const std::string& name, const std::string& dataType = "") {
    return "<ParameterField name='" + name + "' " + (dataType.empty() ? "" : "dataType='" + dataType + "'") + "/>";
}

std::string Define(const std::string& name, const std::string& content, const std::string& attributes = "") {
    return "<DefineFunction name='" + name + "' optype='continuous' " + attributes + ">" + content +
           "</DefineFunction>";
}

std::string Called(const std::string& call, const std::string& functions, const Case& record = Case(2, "a")) {
    return Given(call, record, "string", functions);
}

TEST(DefineFunction, BindsArgumentsByPosition) {
    const std::string minus =
        Define("f", Parameter("p") + "<Extension/>" + Parameter("q") + Apply("-", Ref("q") + Ref("p")));
    EXPECT_EQ(Called(Apply("f", Ref("x") + "<Constant>9</Constant>"), minus), "text 7");
}

TEST(DefineFunction, MayCallOthers_WhereverTheyStand) {
    const std::string functions = Define("twice", Parameter("p") + Apply("double", Ref("p"))) +
                                  Define("double", Parameter("p") + Apply("+", Ref("p") + Apply("same", Ref("p")))) +
                                  Define("same", Parameter("p") + Ref("p"));
    EXPECT_EQ(Called(Apply("twice", Apply("twice", Ref("x"))), functions), "text 8");
}

TEST(DefineFunction, ConvertsArgumentsAndResult_AsDataTypesSay) {
    const std::string isSeven = Parameter("p", "integer") + Apply("equal", Ref("p") + "<Constant>7</Constant>");
    const std::string seven = "<Constant dataType='string'>007</Constant>";
    EXPECT_EQ(Called(Apply("f", seven), Define("f", isSeven)), "text true");
    EXPECT_EQ(Called(Apply("f", seven), Define("f", isSeven, "dataType='double'")), "text 1");
    EXPECT_EQ(Called(Apply("f", seven), Define("f", Parameter("p") + Ref("p"), "dataType='integer'")), "text 7");
    EXPECT_EQ(Called(Apply("f", seven), Define("f", Parameter("p") + Ref("p"))), "text 007");
    EXPECT_EQ(Called(Apply("f", Ref("s")), Define("f", Parameter("p", "double") + Apply("isMissing", Ref("p")))),
              "text true");
    EXPECT_EQ(Called(Apply("f", Ref("x")),
                     Define("f", Parameter("p", "string") +
                                     Apply("lessThan", Ref("p") + "<Constant dataType='string'>10</Constant>"))),
              "text false");  // texts
    EXPECT_EQ(Called(Apply("f", "<Constant>1</Constant>"), Define("f", Parameter("p", "boolean") + Ref("p"))),
              "text true");
    EXPECT_EQ(Called(Apply("f", "<Constant>2</Constant>"), Define("f", Parameter("p", "boolean") + Ref("p"))),
              "absent");
}

TEST(DefineFunction, SeesMissingArguments_UnlessTheCallMapsThem) {
    const Case missing(-9, "a");
    const std::string function = Define("f", Parameter("p") + Apply("isMissing", Ref("p")));
    EXPECT_EQ(Called(Apply("f", Ref("x")), function, missing), "text true");
    EXPECT_EQ(Called(Apply("f", Ref("x"), "mapMissingTo='m'"), function, missing), "text m");
    const std::string same = Define("f", Parameter("p") + Ref("p"));
    EXPECT_EQ(Called(Apply("f", Ref("x"), "defaultValue='d'"), same, missing), "text d");
    const std::string mapped = Define("f", Parameter("p") + "<FieldRef field='p' mapMissingTo='7'/>");
    EXPECT_EQ(Called(Apply("f", Ref("x")), mapped, missing), "text 7");
}

TEST(DefineFunction, SeesWhetherAFieldIsValid_WhenTheArgumentIsJustTheField) {
    const std::string valid =
        Define("g", Parameter("q") + Apply("f", Ref("q"))) + Define("f", Parameter("p") + Apply("isValid", Ref("p"))) +
        "<DerivedField name='e' dataType='string'>" + Ref("s") + "<Value value='b'/></DerivedField>";
    for (const std::string function : {"f", "g"}) {
        EXPECT_EQ(Called(Apply(function, Ref("e")), valid, Case(1, "b")), "text true");
        EXPECT_EQ(Called(Apply(function, Ref("e")), valid, Case(1, "a")), "text false");
        EXPECT_EQ(Called(Apply(function, Ref("e")), valid, Case(1, "NA")), "text false");
        EXPECT_EQ(Called(Apply(function, Apply("concat", Ref("e") + Ref("e"))), valid, Case(1, "a")), "text true");
    }
}

TEST(DefineFunction, MayUseEveryKindOfExpressionOnItsParameters) {
    const std::string functions =
        Define("norm", Parameter("p") +
                           "<NormContinuous field='p'><LinearNorm orig='0' norm='0'/><LinearNorm orig='1' "
                           "norm='10'/></NormContinuous>") +
        Define("is", Parameter("p") + "<NormDiscrete field='p' value='2'/>") +
        Define("bin", Parameter("p") +
                          "<Discretize field='p'><DiscretizeBin binValue='all'><Interval "
                          "closure='openOpen'/></DiscretizeBin></Discretize>") +
        Define("map", Parameter("p") +
                          "<MapValues outputColumn='o'><FieldColumnPair field='p' column='k'/><InlineTable>"
                          "<row><k>2.0</k><o>two</o></row><row><k>true</k><o>yes</o></row>"
                          "</InlineTable></MapValues>") +
        Define("count", Parameter("p") + "<TextIndex textField='p'><Constant>a</Constant></TextIndex>");
    EXPECT_EQ(Called(Apply("norm", Ref("x")), functions), "text 20");
    EXPECT_EQ(Called(Apply("is", Ref("x")), functions), "text 1");
    EXPECT_EQ(Called(Apply("bin", Ref("x")), functions), "text all");
    EXPECT_EQ(Called(Apply("map", Ref("x")), functions), "text two");
    EXPECT_EQ(Called(Apply("map", Apply("isNotMissing", Ref("x"))), functions), "text yes");
    EXPECT_EQ(Called(Apply("count", Ref("s")), functions), "text 1");
}

TEST(DefineFunction, IsRefused_WhenItReadsMoreThanItsParameters) {
    for (const std::string field : {"x", "d", "unknown", "q"}) {
        EXPECT_EQ(RefusalText(Define("f", Parameter("p") + "\n" + Ref(field)) + Define("g", Parameter("q") + Ref("q")) +
                              "<DerivedField name='d'><Constant/></DerivedField>"),
                  "8 4:1 DefineFunction[1]/FieldRef[1]: \"" + field + "\" is no parameter of the function.");
    }
}

TEST(DefineFunction, IsRefused_WhenItsNameIsTaken) {
    const std::string content = Parameter("p") + Ref("p");
    EXPECT_EQ(RefusalText(Define("f", content) + "\n" + Define("f", content)),
              "12 4:1 DefineFunction[2]: The function \"f\" is defined twice.");
    EXPECT_EQ(RefusalText(Define("concat", content)),
              "12 3:1 DefineFunction[1]: The function \"concat\" has the name of a built-in function.");
    EXPECT_EQ(RefusalText(Define("f", Parameter("p") + "\n" + Parameter("p") + Ref("p"))),
              "12 4:1 DefineFunction[1]/ParameterField[2]: The function \"f\" has two parameters \"p\".");
}

TEST(DefineFunction, IsRefused_WhenAPartIsMissingOrTooMany) {
    EXPECT_EQ(RefusalText("<DefineFunction>" + Parameter("p") + Ref("p") + "</DefineFunction>"),
              "2 3:1 DefineFunction[1]: <DefineFunction> has no attribute \"name\".");
    EXPECT_EQ(RefusalText(Define("f", "\n<ParameterField/>")),
              "2 4:1 DefineFunction[1]/ParameterField[1]: <ParameterField> has no attribute \"name\".");
    EXPECT_EQ(RefusalText(Define("f", "<Constant/>")),
              "1 3:1 DefineFunction[1]: The function \"f\" has no <ParameterField>.");
    EXPECT_EQ(RefusalText(Define("f", Parameter("p"))),
              "1 3:1 DefineFunction[1]: The function \"f\" has no expression.");
    EXPECT_EQ(RefusalText(Define("f", Parameter("p") + Ref("p") + "\n" + Ref("p"))),
              "1 4:1 DefineFunction[1]/FieldRef[2]: <FieldRef> is not expected in <DefineFunction> behind its "
              "expression.");
}

TEST(DefineFunction, IsRefused_WhenItIsCalledWithTheWrongNumberOfArguments) {
    EXPECT_EQ(RefusalText("<DerivedField name='d'>\n" + Apply("f", Ref("x") + Ref("x")) + "</DerivedField>" +
                          Define("f", Parameter("p") + Ref("p"))),
              "12 4:1 DerivedField[1]/Apply[1]: The function \"f\" takes 1 argument, not 2.");
}

TEST(DefineFunction, IsRefused_WhenItCallsItself) {
    EXPECT_EQ(RefusalText(Define("f", Parameter("p") + Apply("f", Ref("p")))),
              "12 3:1 DefineFunction[1]: The function \"f\" calls itself.");
    EXPECT_EQ(RefusalText(Define("start", Parameter("p") + Apply("f", Ref("p"))) + "\n" +
                          Define("f", Parameter("p") + Apply("+", Ref("p") + Apply("g", Ref("p")))) +
                          Define("g", Parameter("p") + Apply("f", Ref("p")))),
              "12 4:1 DefineFunction[2]: The function \"f\" calls itself.");
}

/// f0 returns its argument; each other function calls the one before it so many times, each call with the result of the
/// last one.
std::string ChainOfFunctions(int length, const std::string& body) {
    std::string functions = Define("f0", Parameter("p") + Ref("p"));
    for (int i = 1; i < length; ++i) {
        std::string text = body;
        for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos;)
            text.replace(at, 1, "f" + std::to_string(i - 1));
        functions += Define("f" + std::to_string(i), Parameter("p") + text);
    }
    return functions;
}

std::string FieldCalling(const std::string& function) {
    return "<DerivedField name='d'>" + Apply(function, Ref("x")) + "</DerivedField>\n";
}

TEST(DefineFunction, IsRefusedAtTheField_WhenCallsWouldTakeForEver) {
    const std::string twice = ChainOfFunctions(61, Apply("+", Apply("@", Ref("p")) + Apply("@", Ref("p"))));
    const std::string message =
        "12 3:1 DerivedField[1]: The derived field \"d\" takes more than 1000000 evaluations, those in functions "
        "counted "
        "in.";
    EXPECT_EQ(RefusalText(FieldCalling("f60") + twice), message);
    EXPECT_EQ(RefusalText(FieldCalling("f20") + twice), message);
    EXPECT_EQ(RefusalText(twice), "none");  // they are not called
    EXPECT_EQ(Called(Apply("f16", Ref("x")), twice), "text 131072");
}

TEST(DefineFunction, IsRefusedAtTheField_WhenManyFieldsTogetherWouldTakeForEver) {
    const std::string twice = ChainOfFunctions(17, Apply("+", Apply("@", Ref("p")) + Apply("@", Ref("p"))));
    std::string fields;
    for (int i = 0; i < 100; ++i)
        fields += "<DerivedField name='d" + std::to_string(i) + "'>" + Apply("f16", Ref("x")) + "</DerivedField>";
    EXPECT_NE(
        RefusalText(fields + twice).find(" and those before it take more than 10000000 evaluations in functions."),
        std::string::npos);
}

TEST(DefineFunction, IsRefusedAtTheField_WhenCallsNestTooDeep) {
    const std::string chain = ChainOfFunctions(100000, Apply("@", Ref("p")));
    EXPECT_EQ(Called(Apply("f996", Ref("x")), chain), "text 2");
    for (const std::string function : {"f1001", "f99999"}) {
        EXPECT_EQ(RefusalText(FieldCalling(function) + chain),
                  "12 3:1 DerivedField[1]: The derived field \"d\" nests functions more than 1000 levels deep.");
    }
    // Bodies count too: each of these is eleven levels deep.
    std::string deep = Apply("@", Ref("p"));
    for (int i = 0; i < 10; ++i)
        deep = Apply("+", deep + "<Constant>1</Constant>");
    const std::string deepChain = ChainOfFunctions(200, deep);
    EXPECT_EQ(Called(Apply("f90", Ref("x")), deepChain), "text 902");
    EXPECT_NE(RefusalText(FieldCalling("f91") + deepChain), "none");
}

TEST(DefineFunction, IsRefused_WhenALongChainIsACycle) {
    EXPECT_EQ(
        RefusalText(ChainOfFunctions(100000, Apply("@", Ref("p"))) +
                    Define("last", Parameter("p") + Apply("tail", Ref("p"))) + "\n" +
                    Define("tail", Parameter("p") + Apply("+", Apply("f99999", Ref("p")) + Apply("last", Ref("p"))))),
        "12 3:" + std::to_string(ChainOfFunctions(100000, Apply("@", Ref("p"))).size() + 1) +
            " DefineFunction[100001]: The function \"last\" calls itself.");
}

}  // namespace
