#include "host/CheckAdvice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "cli/FruitDocument.h"
#include "host/AdviceTable.h"
#include "host/DocumentCheck.h"
#include "host/FunctionSuggestion.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string Fruit(std::string_view piece, std::string_view replacement) {
    return Replace(fruitDocument, piece, replacement);
}

/// The document of fruits with this in its TransformationDictionary.
std::string Transforming(const std::string& transformations) {
    return Fruit("<NaiveBayesModel",
                 "<TransformationDictionary>" + transformations + "</TransformationDictionary><NaiveBayesModel");
}

std::string Field(const std::string& name, const std::string& expression) {
    return "<DerivedField name=\"" + name + "\" optype=\"continuous\" dataType=\"double\">" + expression +
           "</DerivedField>";
}

std::string Text(const std::string& expression) {
    return "<DerivedField name=\"d\" optype=\"categorical\" dataType=\"string\">" + expression + "</DerivedField>";
}

/// A document with a field of this expression.
std::string Computing(const std::string& expression) {
    return Transforming(Field("d", expression));
}

const std::string weight = "<FieldRef field=\"weight\"/>";

std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function=\"" + function + "\">" + arguments + "</Apply>";
}

std::string Function(const std::string& name, const std::string& body) {
    return "<DefineFunction name=\"" + name + "\" optype=\"continuous\"><ParameterField name=\"p\"/>" + body +
           "</DefineFunction>";
}

const std::string parameter = "<FieldRef field=\"p\"/>";

/// Functions f0, f1 and so on, each of which uses the one before in this body at every `@`.
std::string ChainOfFunctions(int count, const std::string& body) {
    std::string functions = Function("f0", parameter);
    for (int i = 1; i < count; ++i) {
        std::string text = body;
        for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos;)
            text.replace(at, 1, "f" + std::to_string(i - 1));
        functions += Function("f" + std::to_string(i), text);
    }
    return functions;
}

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string Nested(const std::string& begin, const std::string& inside, const std::string& end, int levels) {
    return Repeated(begin, levels) + inside + Repeated(end, levels);
}

std::string ManyNames() {
    std::string elements;
    for (int i = 0; i < 10001; ++i)
        elements += "<e" + std::to_string(i) + "/>";
    return "<PMML>" + elements + "</PMML>";
}

std::string WithManyCells() {
    std::string values;
    for (int i = 0; i < 60; ++i)
        values += "<Value value=\"v" + std::to_string(i) + "\"/>";
    return Replace(Fruit("<Value value=\"apple\"/>", values + "<Value value=\"apple\"/>"), "<PairCounts value=\"0\">",
                   "<PairCounts value=\"1000000\">");
}

/// The document as a set of sub-models.
std::string Set(std::string_view piece, std::string_view replacement) {
    return Replace(Fruit("threshold=", "algorithmName=\"SelfLearning\" modelName=\"m\" threshold="), piece,
                   replacement);
}

const std::string mapTable =
    "<MapValues outputColumn=\"o\"><FieldColumnPair field=\"weight\" "
    "column=\"i\"/>%<InlineTable>@</InlineTable></MapValues>";

std::string Mapping(const std::string& pairs, const std::string& rows) {
    return Computing(Replace(Replace(mapTable, "%", pairs), "@", rows));
}

std::string Searching(const std::string& attributes, const std::string& content) {
    return Computing("<TextIndex textField=\"colour\" " + attributes + ">" + content + "</TextIndex>");
}

std::string Normalizing(const std::string& rows) {
    return Searching("", "<TextIndexNormalization><InlineTable>" + rows +
                             "</InlineTable></TextIndexNormalization><Constant>red</Constant>");
}

std::string Binning(const std::string& bins) {
    return Computing("<Discretize field=\"weight\">" + bins + "</Discretize>");
}

std::string Bin(const std::string& interval) {
    return "<DiscretizeBin binValue=\"1\"><Interval " + interval + "/></DiscretizeBin>";
}

struct Sample {
    std::string document;
    /// How what to do about it begins.
    std::string advice;
    bool adapt = false;
};

const std::string pattern = "<Constant dataType=\"string\">%</Constant>";

std::vector<Sample> Samples() {
    const std::size_t output = fruitDocument.find("<BayesOutput");
    return {
        // An element is missing, or another one was expected.
        {"<PMML><DataDictionary/><TreeModel/></PMML>", "Check that the document holds a Naive Bayes model"},
        {"<PMML/>", "Add a DataDictionary"},
        {"<html/>", "Check that the file is a PMML document"},
        {"<q:PMML xmlns:q=\"urn:other\"><q:DataDictionary/></q:PMML>", "Check that the file is a PMML document"},
        {Fruit("<DataDictionary>", "<DataDictionary><Field/>"), "Take everything but DataField"},
        {Fruit("<DataField name=\"weight\"", "<DataField"), "Give the DataField a name."},
        {Replace(Fruit("<BayesOutput", "<!--"), "</BayesOutput>", "-->"), "Give the model a BayesOutput"},
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\"/><MiningField name=\"weight\"/>"),
         "List each field once"},
        {Fruit("<PairCounts value=\"red\">", "<TargetValueStats/><PairCounts value=\"red\">"),
         "Give the input PairCounts alone"},
        {Fruit("optype=\"continuous\"", "optype=\"categorical\""), "Declare the field as continuous"},
        {Fruit("<PairCounts value=\"red\">", "<Other/><PairCounts value=\"red\">"), "Leave nothing but PairCounts"},
        {Fruit("<TargetValueCounts>", "<Other/><TargetValueCounts>"), "Give each PairCounts and BayesOutput"},
        {Fruit("<Interval", "<Gap"), "Put a Discretize into the DerivedField"},
        {Transforming("<Other/>"), "Take the element out, or put it where it belongs"},
        {Computing(""), "Add the one expression"},
        {Transforming("<DefineFunction name=\"f\" optype=\"continuous\"/>"), "Add a ParameterField"},
        {Searching("", ""), "Add the expression that gives the term"},
        {Computing("<MapValues outputColumn=\"o\"><InlineTable/></MapValues>"), "Add the element that is missing"},
        // An attribute is missing.
        {Fruit("threshold=", "limit="), "Add a threshold"},
        {Replace(Fruit("fieldName=\"fruit\"", ""), "usageType=\"predicted\"", "usageType=\"active\""),
         "Let fieldName of the BayesOutput name the target."},
        {Fruit("<PairCounts value=\"red\">", "<PairCounts>"), "Add the attribute"},
        // No well-formed XML, or XML that is not accepted.
        {Fruit("<PMML ", "<!DOCTYPE PMML><PMML "), "Take the document type declaration out"},
        {Nested("<a>", "", "</a>", 1001), "Check that end tags are not missing"},
        {ManyNames(), "Check that the document is PMML"},
        {Fruit("<Header/>", "<" + std::string(1001, 'h') + "/>"), "Check that the document is PMML"},
        {Fruit("<Header/>", "<!--" + std::string(9'000'000, '<') + "-->"), "Check that quotation marks"},
        {Fruit("<Header/>", std::string(16'000'001, ' ')), "Check that the document is PMML: no model needs a text"},
        {Fruit("UTF-8", "UTF-16"), "Let the XML declaration name the encoding"},
        {"weight,colour\n1,red\n", "Check that the file is the PMML document"},
        {Fruit("\"red\"",
               "\"r\xFC"
               "d\""),
         "Save the document in the encoding that its XML declaration names"},
        {fruitDocument.substr(0, 500), "Mend the XML at this place."},
        // Content that makes no model.
        {Fruit("0.001", "0"), "Write a small threshold"},
        {Set("<Value value=\"pear\"/>", "<Value value=\"pear\"/><Value value=\"plum\"/>"),
         "Let the MiningSchema of the first sub-model"},
        {Set("</PMML>", "<NaiveBayesModel modelName=\"n\" threshold=\"1\"><MiningSchema/></NaiveBayesModel></PMML>"),
         "Let every sub-model's MiningSchema"},
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"mass\"/>"),
         "Declare the field in DataDictionary"},
        {Set(R"(<TargetValueCount value="apple" count="100"/>
        <TargetValueCount value="pear" count="100"/>)",
             Repeated("<TargetValueCount value=\"apple\" count=\"1\"/>", 3)),
         "Give the BayesOutput a TargetValueCount"},
        {Set("<MiningSchema>",
             "<BayesOutput fieldName=\"\"><TargetValueCounts><TargetValueCount value=\"apple\" "
             "count=\"1\"/></TargetValueCounts></BayesOutput><MiningSchema>"),
         "Put BayesOutput behind MiningSchema"},
        {Replace(Computing(weight), "<MiningSchema>",
                 "<MiningSchema><Extension extender=\"scoring.nbscore\" name=\"DerivedFields\"/>"),
         "List the derived fields in the Extension"},
        {Fruit("<DiscretizeBin binValue=\"1\"><Interval closure=\"openClosed\" leftMargin=\"150\"/></DiscretizeBin>",
               ""),
         "Give the Discretize two bins"},
        {Computing("<Constant dataType=\"boolean\">yes</Constant>"), "Write true or false"},
        {Computing("<NormContinuous field=\"weight\" outliers=\"cut\"><LinearNorm orig=\"0\" norm=\"0\"/>"
                   "<LinearNorm orig=\"1\" norm=\"1\"/></NormContinuous>"),
         "Write one of the words"},
        {Searching("wordSeparatorCharacterRE=\"(\"", "<Constant>red</Constant>"), "Mend the regular expression"},
        {Transforming(Text(Apply("matches", "<FieldRef field=\"colour\"/>" + Replace(pattern, "%", "(")))),
         "Mend the pattern"},
        {Transforming(Text(Apply(
             "replace", "<FieldRef field=\"colour\"/>" + Replace(pattern, "%", "a") + Replace(pattern, "%", "$7")))),
         "Refer to groups"},
        {Computing("<NormContinuous field=\"weight\"><LinearNorm orig=\"1\" norm=\"0\"/><LinearNorm orig=\"1\" "
                   "norm=\"1\"/></NormContinuous>"),
         "Sort the LinearNorm elements"},
        {Computing("<NormContinuous field=\"weight\"><LinearNorm orig=\"1\" norm=\"0\"/></NormContinuous>"),
         "Add LinearNorm elements"},
        {Binning(Bin("closure=\"openOpen\" leftMargin=\"1\" rightMargin=\"1\"")), "Let leftMargin lie below"},
        {Binning(Repeated(Bin("closure=\"closedClosed\" leftMargin=\"1\" rightMargin=\"2\""), 2)),
         "Let each bin begin where"},
        {Mapping("", "<row><o>1</o></row>"), "Add the cell"},
        {Mapping("", "<row><i>1</i></row>"), "Add the cell"},
        {Normalizing("<row><string></string><stem>x</stem></row>"), "Write the text to look for"},
        {Searching("maxLevenshteinDistance=\"-1\"", "<Constant>red</Constant>"), "Write 0 or a whole number"},
        {Fruit("<DerivedField", "<Other/><DerivedField"), "Put a DerivedField"},
        // An input or value that the schema or dictionary does not know.
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\" usageType=\"Active\"/>"),
         "List the field in MiningSchema"},
        {Fruit("<PairCounts value=\"red\">", "<PairCounts value=\"Red\">"), "Declare the value"},
        // A variable that is not found or does not match.
        {Fruit("<BayesOutput fieldName=\"fruit\"", "<BayesOutput fieldName=\"colour\""), "Let BayesOutput name"},
        {Computing("<FieldRef field=\"mass\"/>"), "Correct the name"},
        {Transforming(Function("f", weight)), "Pass the value to the function"},
        // A text that is no number.
        {Fruit("0.001", "0,001"), "Write the number with a decimal point"},
        {Fruit("<PairCounts value=\"0\">", "<PairCounts value=\"light\">"), "Name the bin by its number"},
        {Searching("maxLevenshteinDistance=\"few\"", "<Constant>red</Constant>"), "Write a whole number."},
        {Computing(Apply("round", "<Constant dataType=\"double\">x</Constant>")), "Write a finite decimal number."},
        {Fruit("UTF-8", "latin-99"), "Save the document in an encoding"},
        // An expression or function that is not supported.
        {Computing(Apply("guess", weight)), "Correct the name, define the function"},
        {Computing("<Lag field=\"weight\"/>"), "Compute the field before scoring"},
        {Computing("<MapValues outputColumn=\"o\"><FieldColumnPair field=\"weight\" column=\"i\"/><TableLocator/>"
                   "</MapValues>"),
         "Write the table into the document"},
        {Searching("maxLevenshteinDistance=\"1\" tokenize=\"false\"", "<Constant>red</Constant>"),
         "Take tokenize=\"false\" out"},
        {Computing("<NormDiscrete field=\"colour\" value=\"red\" method=\"thermometer\"/>"),
         "Write method=\"indicator\""},
        // Parts of the document that contradict each other or exceed a limit.
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\" usageType=\"predicted\"/>"),
         "Leave one field predicted."},
        {Fruit("<BayesInputs>", "<BayesInputs><Other/>"), "Take everything but BayesInput out"},
        {Replace(Replace(Replace(Fruit("<Value value=\"red\"/>", ""), "<Value value=\"green\"/>", ""),
                         "<BayesInput fieldName=\"colour\">", "<BayesInput fieldName=\"colour\"></BayesInput><!--"),
                 "</BayesInput>\n      <BayesInput fieldName=\"weight\">", "--><BayesInput fieldName=\"weight\">"),
         "Count the input's categories"},
        {Fruit("<PairCounts value=\"0\">", "<PairCounts value=\"1000001\">"), "Number bins from 0"},
        {WithManyCells(), "Take out inputs or values"},
        {Fruit("leftMargin=\"150\"", "leftMargin=\"151\""), "Let the leftMargin of each bin"},
        {Fruit("optype=\"continuous\"", "optype=\"Continuous\""), "Write one of the words"},
        {Transforming(Field("weight", weight)), "Give it a name of its own."},
        {Transforming(Field("d", weight) + Field("d", weight)), "Leave one declaration"},
        {Transforming(Function("f", parameter) + Function("f", parameter)), "Leave one definition"},
        {Transforming(Field("a", "<FieldRef field=\"b\"/>") + Field("b", "<FieldRef field=\"a\"/>")),
         "Follow the fields that its expression reads"},
        {Transforming(Function("f", Apply("g", parameter)) + Function("g", Apply("f", parameter))),
         "Follow the functions that it calls"},
        {Transforming("<DefineFunction name=\"f\" optype=\"continuous\"><ParameterField name=\"p\"/><ParameterField "
                      "name=\"p\"/></DefineFunction>"),
         "Give each parameter a name"},
        {Computing(Apply("round", weight + weight)), "Pass as many arguments"},
        {Transforming(ChainOfFunctions(1002, Apply("@", parameter)) + Field("d", Apply("f1001", weight))),
         "Let functions call fewer others"},
        {Transforming(ChainOfFunctions(30, Apply("+", Apply("@", parameter) + Apply("@", parameter))) +
                      Field("d", Apply("f29", weight))),
         "Let functions use their parameters"},
        {Mapping("", "<row><i>1</i><i>2</i><o>1</o></row>"), "Leave one cell of each column"},
        {Mapping("<FieldColumnPair field=\"weight\" column=\"i\"/>", ""), "Pair each column"},
        {Mapping("", Repeated("<row><i>1</i><o>1</o></row>", 2)), "Leave one row"},
        {Normalizing("<row><string>" + std::string(100'001, 'a') + "</string><stem>x</stem><regex>true</regex></row>"),
         "Write plain words"},
        // Where a change that --adapt makes would change what the document means.
        {Fruit("<Value value=\"green\"/>", "<Value value=\" red\"/>"), "Make the two names or values differ", true},
        {Replace(Fruit("fieldName=\"fruit\"", ""), "usageType=\"predicted\"", "usageType=\"active\""),
         "Let fieldName of the BayesOutput name the one", true},
        // What is read and could still not be scored.
        {Replace(Fruit(" usageType=\"predicted\"", ""), "<BayesOutput fieldName=\"fruit\"",
                 "<BayesOutput fieldName=\"\""),
         "Let MiningSchema predict"},
        {Replace(Fruit("<Value value=\"apple\"/>", ""), "<Value value=\"pear\"/>", ""), "Declare each category"},
        {Replace(Fruit("</DataDictionary>", "<DataField name=\"spare\" dataType=\"string\"/></DataDictionary>"),
                 "<MiningSchema>",
                 "<MiningSchema><MiningField name=\"spare\" usageType=\"predicted\"/></MiningSchema><MiningSchema>"),
         "Let every MiningSchema predict the same field."},
        {Fruit("<Value value=\"pear\"/>", "<Value value=\"apple\"/>"), "Declare each value of the target once."},
        {Replace(Fruit("<Value value=\"apple\"/>", "<Value value=\"plum\"/>"), "<Value value=\"pear\"/>", ""),
         "Count the categories"},
        {Set("<BayesOutput",
             fruitDocument.substr(output, fruitDocument.find("</NaiveBayesModel>") - output) + "<BayesOutput"),
         "Give each sub-model one BayesOutput."},
    };
}

class CheckAdvice : public testing::Test {
protected:
    DocumentCheck Check(const std::string& document, bool adapt = false) const {
        return CheckDocument(plugin, folder.Write("document.pmml", document), adapt);
    }

    TemporaryFolder folder;
    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
};

TEST_F(CheckAdvice, IsTheTables_AndEveryFamilyOfTheTableIsReached) {
    std::set<const Advice*> reached;
    for (const Sample& sample : Samples()) {
        const DocumentCheck check = Check(sample.document, sample.adapt);
        ASSERT_FALSE(check.problems.empty()) << sample.advice;
        const DocumentProblem& problem = check.problems.front();
        EXPECT_THAT(problem.advice, StartsWith(sample.advice)) << problem.message;
        const Advice* const advice = FindAdvice(problem.code, problem.message, problem.place);
        ASSERT_NE(advice, nullptr) << problem.code << ' ' << problem.message;
        EXPECT_EQ(problem.advice, advice->text) << problem.message;
        reached.insert(advice);
    }
    reached.insert(
        FindAdvice(12, "The document takes more memory than there is.", {}));  // tests/hostile runs out of it
    const DocumentProblem unreadable = CheckDocument(plugin, "nowhere.pmml", false).problems.front();
    reached.insert(FindAdvice(unreadable.code, unreadable.message, unreadable.place));
    for (const Advice& advice : GetAdvices())
        EXPECT_TRUE(reached.contains(&advice)) << advice.code << ' ' << advice.message << ' ' << advice.element;
}

TEST_F(CheckAdvice, NamesTheRightFunction_WhereOnlyUpperAndLowerCaseDiffer) {
    const std::string document = Transforming(Text(Apply("Uppercase", "<FieldRef field=\"colour\"/>")));
    EXPECT_EQ(Check(document).problems.front().advice,
              "Write \"uppercase\": names of functions are told apart by upper and lower case.");
}

TEST(FunctionSuggestion, LooksBehindThePrefixOfProducers) {
    EXPECT_THAT(SuggestFunction("The function \"x-Round\" is not known."), HasSubstr("built-in function \"round\""));
    EXPECT_THAT(SuggestFunction("The function \"x-guess\" is not known."), StartsWith("Define the function"));
    EXPECT_EQ(SuggestFunction("The function \"guess\" is not known."), "");
    EXPECT_EQ(SuggestFunction("The function \"x-\" is not known."), "");
    EXPECT_EQ(SuggestFunction("none"), "");
}

TEST_F(CheckAdvice, IsTheLastResort_WhereNothingIsKnown) {
    EXPECT_THAT(AdviceFor(5, "Something else.", {}), StartsWith("Mend the document at this place"));
    EXPECT_THAT(AdviceFor(99, "", {}), StartsWith("Mend the document at this place"));
}

TEST_F(CheckAdvice, IsToAdapt_WhereThatHelps) {
    const std::string newer = Fruit("<DataDictionary>", "<DataDictionary><Extension/>");
    EXPECT_EQ(Check(newer).problems.front().advice,
              "Read it with --adapt: the document is fine but for what that rewrites.");
    EXPECT_EQ(Check(Replace(newer, "0.001", "0")).problems.front().advice,
              "Read it with --adapt, which rewrites this. What is wrong then: Threshold can't be zero!");
    const std::string twice = "<Value value=\"apple\"/><Value value=\"apple\"/>";
    EXPECT_EQ(
        Check(Replace(newer, "<Value value=\"apple\"/>", twice)).problems.front().advice,
        "Read it with --adapt, which rewrites this. What is wrong then: The target variable \"fruit\" declares the "
        "value \"apple\" twice.");
}

TEST_F(CheckAdvice, IsNotToAdapt_WhereThatLeavesTheFault) {
    const std::string both = Replace(Fruit("<BayesInputs>", "<BayesInputs><Other/>"), "<PairCounts", "<PairCounts");
    EXPECT_THAT(
        Check(Replace(both, "<BayesInput fieldName=\"colour\">", "<BayesInput fieldName=\"colour\"><Extension/>"))
            .problems.front()
            .advice,
        StartsWith("Take everything but BayesInput"));
}

}  // namespace
}  // namespace nbscore::test
