#include "host/RefusedSamples.h"

#include <string_view>

#include "cli/FruitFields.h"
#include "support/CollidingName.h"

namespace nbscore::test {
namespace {

std::string Fruit(std::string_view piece, std::string_view replacement) {
    return Replace(fruitDocument, piece, replacement);
}

std::string Text(const std::string& expression) {
    return DerivedText("d", expression);
}

/// A document with a field of this expression.
std::string Computing(const std::string& expression) {
    return Transforming(DerivedNumber("d", expression));
}

const std::string weight = FieldRef("weight");

const std::string parameter = FieldRef("p");

/// Functions f0, f1 and so on, each of which uses the one before in this body at every `@`.
std::string ChainOfFunctions(int count, const std::string& body) {
    std::string functions = DefineFunction("f0", parameter);
    for (int i = 1; i < count; ++i) {
        std::string text = body;
        for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos;)
            text.replace(at, 1, "f" + std::to_string(i - 1));
        functions += DefineFunction("f" + std::to_string(i), text);
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
    for (int i = 0; i < 200'001; ++i)
        elements += "<e" + std::to_string(i) + "/>";
    return "<PMML>" + elements + "</PMML>";
}

/// Names of a thousand characters, which begin with numbers.
std::string LongNames() {
    std::string elements;
    for (int i = 10'000; i < 26'000; ++i)
        elements += "<n" + std::to_string(i) + std::string(994, '-') + "/>";
    return "<PMML>" + elements + "</PMML>";
}

std::string CollidingNames() {
    std::string elements;
    for (int i = 0; i < 101; ++i)
        elements += "<" + CollidingName(i) + "/>\n";
    return Fruit("<Header/>", "<Header>" + elements + "</Header>");
}

std::string ManyAttributes() {
    std::string attributes;
    for (int i = 0; i < 1001; ++i)
        attributes += " a" + std::to_string(i) + "=\"\"";
    return Fruit("<Header/>", "<Header" + attributes + "/>");
}

Limits MaxMemory(std::uint64_t bytes) {
    Limits limits;
    limits.maxMemory = bytes;
    return limits;
}

Limits MaxDocumentBytes(std::uint64_t bytes) {
    Limits limits;
    limits.maxDocumentBytes = bytes;
    return limits;
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

/// Fields that each take as much as the last of 16 functions, which double.
std::string ManyFields(int count) {
    std::string fields;
    for (int i = 0; i < count; ++i)
        fields += DerivedNumber("d" + std::to_string(i), Apply("f15", weight)) + "\n";
    return fields;
}

std::string ManyPatterns(int count) {
    std::string fields;
    for (int i = 0; i < count; ++i) {
        const std::string pattern = TextConstant("[b-y]{1,900}x" + std::to_string(i));
        fields += DerivedText("d" + std::to_string(i), Apply("matches", FieldRef("colour") + pattern)) + "\n";
    }
    return fields;
}

/// The document with a field in its model's LocalTransformations, and an input over a field.
std::string Local(const std::string& name, const std::string& expression, const std::string& input) {
    const std::string fields = "<LocalTransformations>" + DerivedNumber(name, expression) + "</LocalTransformations>";
    return Replace(Replace(fruitDocument, "<BayesInputs>", fields + "<BayesInputs>"),
                   "<BayesInput fieldName=\"weight\">", "<BayesInput fieldName=\"" + input + "\">");
}

/// Two sub-models, each with a field d of its own.
std::string TwoModelsWithLocalFields() {
    const std::string document =
        Replace(Local("d", weight, "d"), "threshold=", "algorithmName=\"SelfLearning\" modelName=\"m\" threshold=");
    const std::size_t begin = document.find("<NaiveBayesModel");
    const std::string first = document.substr(begin, document.find("</PMML>") - begin);
    return Replace(document, "</PMML>", Replace(first, weight, "<Constant>1</Constant>") + "</PMML>");
}

/// Paths that many others begin with.
const std::string model = "/PMML/NaiveBayesModel[1]";
const std::string field = "/PMML/TransformationDictionary[1]/DerivedField[1]";

std::vector<RefusedSample> MakeSamples() {
    const std::size_t output = fruitDocument.find("<BayesOutput");
    return {
        // An element is missing, or another one was expected.
        {"<PMML><DataDictionary/><TreeModel/></PMML>", "/PMML", "Check that the document holds a Naive Bayes model"},
        {"<PMML/>", "/PMML", "Add a DataDictionary"},
        {"<html/>", "/html", "Check that the file is a PMML document"},
        {"<q:PMML xmlns:q=\"urn:other\"><q:DataDictionary/></q:PMML>", "/q:PMML",
         "Check that the file is a PMML document"},
        {Fruit("<DataDictionary>", "<DataDictionary><Field/>"), "/PMML/DataDictionary[1]/Field[1]",
         "Take everything but DataField"},
        {Fruit("<DataField name=\"weight\"", "<DataField"), "/PMML/DataDictionary[1]/DataField[2]",
         "Give the DataField a name."},
        {Replace(Fruit("<BayesOutput", "<!--"), "</BayesOutput>", "-->"), model, "Give the model a BayesOutput"},
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\"/><MiningField name=\"weight\"/>"),
         model + "/MiningSchema[1]/MiningField[3]", "List each field once"},
        {Fruit("<PairCounts value=\"red\">", "<TargetValueStats/><PairCounts value=\"red\">"),
         model + "/BayesInputs[1]/BayesInput[1]/TargetValueStats[1]",
         "Score the document by the standard's rule, which reads distributions"},
        {Fruit("optype=\"continuous\"", "optype=\"categorical\""),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]", "Declare the field as continuous"},
        {Fruit("<PairCounts value=\"red\">", "<Other/><PairCounts value=\"red\">"),
         model + "/BayesInputs[1]/BayesInput[1]/Other[1]", "Leave nothing but PairCounts"},
        {Fruit("<TargetValueCounts>", "<Other/><TargetValueCounts>"),
         model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/Other[1]", "Give each PairCounts and BayesOutput"},
        {Fruit("<Interval", "<Gap"),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]/Discretize[1]/DiscretizeBin[1]/Gap[1]",
         "Put a Discretize into the DerivedField"},
        {Transforming("<Other/>"), "/PMML/TransformationDictionary[1]/Other[1]",
         "Take the element out, or put it where it belongs"},
        {Computing(""), field, "Add the one expression"},
        {Transforming("<DefineFunction name=\"f\" optype=\"continuous\"/>"),
         "/PMML/TransformationDictionary[1]/DefineFunction[1]", "Add a ParameterField"},
        {Searching("", ""), field + "/TextIndex[1]", "Add the expression that gives the term"},
        {Computing("<MapValues outputColumn=\"o\"><InlineTable/></MapValues>"), field + "/MapValues[1]",
         "Add the element that is missing"},
        // An attribute is missing.
        {Fruit("threshold=", "limit="), model, "Add a threshold"},
        {Replace(Fruit("fieldName=\"fruit\"", ""), "usageType=\"predicted\"", "usageType=\"active\""),
         model + "/BayesOutput[1]", "Let fieldName of the BayesOutput name the target."},
        {Fruit("<PairCounts value=\"red\">", "<PairCounts>"), model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]",
         "Add the attribute"},
        // No well-formed XML, or XML that is not accepted.
        {Fruit("<PMML ", "<!DOCTYPE PMML><PMML "), "2:1", "Take the document type declaration out"},
        {Nested("<a>", "", "</a>", 1001), "1:3001", "Check that end tags are not missing"},
        {ManyNames(), "1:1888887", "Check that the document is PMML"},
        {Fruit("<Header/>", "<" + std::string(1001, 'h') + "/>"), "3:3", "Check that the document is PMML"},
        {LongNames(), "1:16047004", "Check that the document is PMML, where names of elements are short"},
        {CollidingNames(), "103:1", "Give the elements other names"},
        {ManyAttributes(), "3:3", "Check that the document is PMML, where elements have a dozen attributes"},
        {Fruit("<Header/>", "<!--" + std::string(9'000'000, '<') + "-->"), "3:3", "Check that quotation marks"},
        {Fruit("<Header/>", std::string(16'000'001, ' ')), "2:57",
         "Check that the document is PMML: no model needs a text"},
        {Fruit("UTF-8", "UTF-16"), "1:40", "Let the XML declaration name the encoding"},
        {"weight,colour\n1,red\n", "1:1", "Check that the file is the PMML document"},
        {Fruit("\"red\"",
               "\"r\xFC"
               "d\""),
         "1:39", "Save the document in the encoding that its XML declaration names"},
        {fruitDocument.substr(0, 500), "15:1", "Mend the XML at this place."},
        // Content that makes no model.
        {Fruit("0.001", "0"), model, "Score the document by the standard's rule, which takes a threshold of 0"},
        {Set("<Value value=\"pear\"/>", "<Value value=\"pear\"/><Value value=\"plum\"/>"), model + "/MiningSchema[1]",
         "Let the MiningSchema of the first sub-model"},
        {Set("</PMML>", "<NaiveBayesModel modelName=\"n\" threshold=\"1\"><MiningSchema/></NaiveBayesModel></PMML>"),
         "/PMML/NaiveBayesModel[2]/MiningSchema[1]", "Let every sub-model's MiningSchema"},
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"mass\"/>"),
         model + "/MiningSchema[1]/MiningField[2]", "Declare the field in DataDictionary"},
        {Set(R"(<TargetValueCount value="apple" count="100"/>
        <TargetValueCount value="pear" count="100"/>)",
             Repeated("<TargetValueCount value=\"apple\" count=\"1\"/>", 3)),
         model + "/BayesOutput[1]/TargetValueCounts[1]", "Give the BayesOutput a TargetValueCount"},
        {Set("<MiningSchema>",
             "<BayesOutput fieldName=\"\"><TargetValueCounts><TargetValueCount value=\"apple\" "
             "count=\"1\"/></TargetValueCounts></BayesOutput><MiningSchema>"),
         model + "/BayesOutput[1]", "Put BayesOutput behind MiningSchema"},
        {Replace(Computing(weight), "<MiningSchema>",
                 "<MiningSchema><Extension extender=\"scoring.nbscore\" name=\"DerivedFields\"/>"),
         model + "/MiningSchema[1]/Extension[1]", "List the derived fields in the Extension"},
        {Fruit("<DiscretizeBin binValue=\"1\"><Interval closure=\"openClosed\" leftMargin=\"150\"/></DiscretizeBin>",
               ""),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]/Discretize[1]", "Give the Discretize two bins"},
        {Computing("<Constant dataType=\"boolean\">yes</Constant>"), field + "/Constant[1]", "Write true or false"},
        {Computing("<NormContinuous field=\"weight\" outliers=\"cut\"><LinearNorm orig=\"0\" norm=\"0\"/>"
                   "<LinearNorm orig=\"1\" norm=\"1\"/></NormContinuous>"),
         field + "/NormContinuous[1]", "Write one of the words"},
        {Searching("wordSeparatorCharacterRE=\"(\"", "<Constant>red</Constant>"), field + "/TextIndex[1]",
         "Mend the regular expression"},
        {Transforming(Text(Apply("matches", "<FieldRef field=\"colour\"/>" + TextConstant("(")))),
         field + "/Apply[1]/Constant[1]", "Mend the pattern"},
        {Transforming(Text(Apply("replace", "<FieldRef field=\"colour\"/>" + TextConstant("a") + TextConstant("$7")))),
         field + "/Apply[1]/Constant[2]", "Refer to groups"},
        {Computing("<NormContinuous field=\"weight\"><LinearNorm orig=\"1\" norm=\"0\"/><LinearNorm orig=\"1\" "
                   "norm=\"1\"/></NormContinuous>"),
         field + "/NormContinuous[1]/LinearNorm[2]", "Sort the LinearNorm elements"},
        {Computing("<NormContinuous field=\"weight\"><LinearNorm orig=\"1\" norm=\"0\"/></NormContinuous>"),
         field + "/NormContinuous[1]", "Add LinearNorm elements"},
        {Binning(Bin("closure=\"openOpen\" leftMargin=\"1\" rightMargin=\"1\"")),
         field + "/Discretize[1]/DiscretizeBin[1]/Interval[1]", "Let leftMargin lie below"},
        {Binning(Repeated(Bin("closure=\"closedClosed\" leftMargin=\"1\" rightMargin=\"2\""), 2)),
         field + "/Discretize[1]/DiscretizeBin[2]", "Let each bin begin where"},
        {Mapping("", "<row><o>1</o></row>"), field + "/MapValues[1]/InlineTable[1]/row[1]", "Add the cell"},
        {Mapping("", "<row><i>1</i></row>"), field + "/MapValues[1]", "Add the cell"},
        {Normalizing("<row><string></string><stem>x</stem></row>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/InlineTable[1]/row[1]/string[1]",
         "Write the text to look for"},
        {Searching("maxLevenshteinDistance=\"-1\"", "<Constant>red</Constant>"), field + "/TextIndex[1]",
         "Write 0 or a whole number"},
        {Fruit("<DerivedField", "<Other/><DerivedField"), model + "/BayesInputs[1]/BayesInput[2]/Other[1]",
         "Put a DerivedField"},
        // An input or value that the schema or dictionary does not know.
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\" usageType=\"Active\"/>"),
         model + "/BayesInputs[1]/BayesInput[2]", "List the field in MiningSchema"},
        {Fruit("<PairCounts value=\"red\">", "<PairCounts value=\"Red\">"),
         model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]", "Declare the value"},
        // A variable that is not found or does not match.
        {Fruit("<BayesOutput fieldName=\"fruit\"", "<BayesOutput fieldName=\"colour\""), model + "/BayesOutput[1]",
         "Let BayesOutput name"},
        {Computing("<FieldRef field=\"mass\"/>"), field + "/FieldRef[1]", "Correct the name"},
        {Transforming(DefineFunction("f", weight)), "/PMML/TransformationDictionary[1]/DefineFunction[1]/FieldRef[1]",
         "Pass the value to the function"},
        // A text that is no number.
        {Fruit("0.001", "0,001"), model, "Write the number with a decimal point"},
        {Fruit("<PairCounts value=\"0\">", "<PairCounts value=\"light\">"),
         model + "/BayesInputs[1]/BayesInput[2]/PairCounts[1]", "Name the bin by its number"},
        {Fruit("<PairCounts value=\"0\">", "<PairCounts value=\"0,5\">"),
         model + "/BayesInputs[1]/BayesInput[2]/PairCounts[1]", "Write the number with a decimal point"},
        {Searching("maxLevenshteinDistance=\"few\"", "<Constant>red</Constant>"), field + "/TextIndex[1]",
         "Write a whole number."},
        {Computing(Apply("round", "<Constant dataType=\"double\">x</Constant>")), field + "/Apply[1]/Constant[1]",
         "Write a finite decimal number."},
        {Fruit("UTF-8", "latin-99"), "1:42", "Save the document in an encoding"},
        // An expression or function that is not supported.
        {Computing(Apply("guess", weight)), field + "/Apply[1]", "Correct the name, define the function"},
        {Computing("<Lag field=\"weight\"/>"), field + "/Lag[1]", "Compute the field before scoring"},
        {Computing("<MapValues outputColumn=\"o\"><FieldColumnPair field=\"weight\" column=\"i\"/><TableLocator/>"
                   "</MapValues>"),
         field + "/MapValues[1]/TableLocator[1]", "Write the table into the document"},
        {Searching("maxLevenshteinDistance=\"1\" tokenize=\"false\"", "<Constant>red</Constant>"),
         field + "/TextIndex[1]", "Take tokenize=\"false\" out"},
        {Computing("<NormDiscrete field=\"colour\" value=\"red\" method=\"thermometer\"/>"), field + "/NormDiscrete[1]",
         "Write method=\"indicator\""},
        // Parts of the document that contradict each other or exceed a limit.
        {Fruit("<MiningField name=\"weight\"/>", "<MiningField name=\"weight\" usageType=\"predicted\"/>"),
         model + "/MiningSchema[1]/MiningField[3]", "Leave one field predicted."},
        {Fruit("<BayesInputs>", "<BayesInputs><Other/>"), model + "/BayesInputs[1]/Other[1]",
         "Take everything but BayesInput out"},
        {Replace(Replace(Replace(Fruit("<Value value=\"red\"/>", ""), "<Value value=\"green\"/>", ""),
                         "<BayesInput fieldName=\"colour\">", "<BayesInput fieldName=\"colour\"></BayesInput><!--"),
                 "</BayesInput>\n      <BayesInput fieldName=\"weight\">", "--><BayesInput fieldName=\"weight\">"),
         model + "/BayesInputs[1]/BayesInput[1]", "Count the input's categories"},
        {Fruit("<PairCounts value=\"0\">", "<PairCounts value=\"1000001\">"),
         model + "/BayesInputs[1]/BayesInput[2]/PairCounts[1]", "Number bins from 0"},
        {Fruit("<PairCounts value=\"0\">", "<PairCounts value=\"1000000\">"),
         model + "/BayesInputs[1]/BayesInput[2]/PairCounts[1]", "Allow more (--max-memory", false,
         MaxMemory(50'000'000)},
        {fruitDocument, "1:1", "", false, MaxMemory(1000)},
        {fruitDocument, "1:1", "Allow more (--max-document-bytes", false, MaxDocumentBytes(1000)},
        {Fruit("leftMargin=\"150\"", "leftMargin=\"151\""),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]/Discretize[1]/DiscretizeBin[2]/Interval[1]",
         "Let the leftMargin of each bin"},
        {Fruit("optype=\"continuous\"", "optype=\"Continuous\""), "/PMML/DataDictionary[1]/DataField[2]",
         "Write one of the words"},
        {Transforming(DerivedNumber("weight", weight)), field, "Give it a name of its own."},
        {Transforming(DerivedNumber("d", weight) + DerivedNumber("d", weight)),
         "/PMML/TransformationDictionary[1]/DerivedField[2]", "Leave one declaration"},
        {Transforming(DefineFunction("f", parameter) + DefineFunction("f", parameter)),
         "/PMML/TransformationDictionary[1]/DefineFunction[2]", "Leave one definition"},
        {Transforming(DerivedNumber("a", "<FieldRef field=\"b\"/>") + DerivedNumber("b", "<FieldRef field=\"a\"/>")),
         field, "Follow the fields that its expression reads"},
        {Transforming(DefineFunction("f", Apply("g", parameter)) + DefineFunction("g", Apply("f", parameter))),
         "/PMML/TransformationDictionary[1]/DefineFunction[1]", "Follow the functions that it calls"},
        {Transforming("<DefineFunction name=\"f\" optype=\"continuous\"><ParameterField name=\"p\"/><ParameterField "
                      "name=\"p\"/></DefineFunction>"),
         "/PMML/TransformationDictionary[1]/DefineFunction[1]/ParameterField[2]", "Give each parameter a name"},
        {Computing(Apply("round", weight + weight)), field + "/Apply[1]", "Pass as many arguments"},
        {Computing(Apply("pow", weight)), field + "/Apply[1]", ""},
        {Transforming(ChainOfFunctions(1002, Apply("@", parameter)) + DerivedNumber("d", Apply("f1001", weight))),
         field, "Let functions call fewer others"},
        {Transforming(ChainOfFunctions(30, Apply("+", Apply("@", parameter) + Apply("@", parameter))) +
                      DerivedNumber("d", Apply("f29", weight))),
         field, "Let functions use their parameters"},
        {Mapping("", "<row><i>1</i><i>2</i><o>1</o></row>"), field + "/MapValues[1]/InlineTable[1]/row[1]/i[2]",
         "Leave one cell of each column"},
        {Mapping("<FieldColumnPair field=\"weight\" column=\"i\"/>", ""), field + "/MapValues[1]/FieldColumnPair[2]",
         "Pair each column"},
        {Mapping("", Repeated("<row><i>1</i><o>1</o></row>", 2)), field + "/MapValues[1]/InlineTable[1]/row[2]",
         "Leave one row"},
        {Normalizing("<row><string>" + std::string(100'001, 'a') + "</string><stem>x</stem><regex>true</regex></row>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/InlineTable[1]/row[1]/string[1]", "Write plain words"},
        // Where a change that --adapt makes would change what the document means.
        {Fruit("<Value value=\"green\"/>", "<Value value=\" red\"/>"), "/PMML/DataDictionary[1]/DataField[1]/Value[2]",
         "Make the two names or values differ", true},
        {Replace(Fruit("fieldName=\"fruit\"", ""), "usageType=\"predicted\"", "usageType=\"active\""),
         model + "/BayesOutput[1]", "Let fieldName of the BayesOutput name the one", true},
        // What is read and could still not be scored.
        {Replace(Fruit(" usageType=\"predicted\"", ""), "<BayesOutput fieldName=\"fruit\"",
                 "<BayesOutput fieldName=\"\""),
         "", "Let MiningSchema predict"},
        {Replace(Fruit("<Value value=\"apple\"/>", ""), "<Value value=\"pear\"/>", ""), "", "Declare each category"},
        {Replace(Fruit("</DataDictionary>", "<DataField name=\"spare\" dataType=\"string\"/></DataDictionary>"),
                 "<MiningSchema>",
                 "<MiningSchema><MiningField name=\"spare\" usageType=\"predicted\"/></MiningSchema><MiningSchema>"),
         "", "Let every MiningSchema predict the same field."},
        {Fruit("<Value value=\"pear\"/>", "<Value value=\"apple\"/>"), "", "Declare each value of the target once."},
        {Replace(Fruit("<Value value=\"apple\"/>", "<Value value=\"plum\"/>"), "<Value value=\"pear\"/>", ""), "",
         "Count the categories"},
        {Set("<BayesOutput",
             fruitDocument.substr(output, fruitDocument.find("</NaiveBayesModel>") - output) + "<BayesOutput"),
         "", "Give each sub-model one BayesOutput."},
        // More messages of the kinds above.
        {Transforming("<DefineFunction name=\"f\" optype=\"continuous\"><ParameterField name=\"p\"/></DefineFunction>"),
         "/PMML/TransformationDictionary[1]/DefineFunction[1]", ""},
        {Computing(weight + weight), field + "/FieldRef[2]", ""},
        {Transforming(DefineFunction("f", parameter + parameter)),
         "/PMML/TransformationDictionary[1]/DefineFunction[1]/FieldRef[2]", ""},
        {Searching("", "<Constant>red</Constant><Constant>green</Constant>"), field + "/TextIndex[1]/Constant[2]", ""},
        {Binning("<Bin/>"), field + "/Discretize[1]/Bin[1]", ""},
        {Binning(""), field + "/Discretize[1]", ""},
        {Binning("<DiscretizeBin binValue=\"1\"/>"), field + "/Discretize[1]/DiscretizeBin[1]", ""},
        {Binning("<DiscretizeBin binValue=\"1\"><Gap/></DiscretizeBin>"),
         field + "/Discretize[1]/DiscretizeBin[1]/Gap[1]", ""},
        {Computing("<MapValues outputColumn=\"o\"><FieldColumnPair field=\"weight\" column=\"i\"/></MapValues>"),
         field + "/MapValues[1]", ""},
        {Mapping("<Other/>", ""), field + "/MapValues[1]/Other[1]", ""},
        {Mapping("", "<column/>"), field + "/MapValues[1]/InlineTable[1]/column[1]", ""},
        {Mapping("", "<row><i>1<b/></i><o>1</o></row>"), field + "/MapValues[1]/InlineTable[1]/row[1]/i[1]/b[1]", ""},
        {Normalizing("<row><string>red</string></row>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/InlineTable[1]/row[1]", ""},
        {Searching("", "<TextIndexNormalization><InlineTable/><Other/></TextIndexNormalization>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/Other[1]", ""},
        {Computing("<NormContinuous field=\"weight\"><Other/></NormContinuous>"), field + "/NormContinuous[1]/Other[1]",
         ""},
        {Computing("<NormDiscrete field=\"colour\" value=\"red\"><Other/></NormDiscrete>"),
         field + "/NormDiscrete[1]/Other[1]", ""},
        {Fruit("<DiscretizeBin", "<Bin/><DiscretizeBin"),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]/Discretize[1]/Bin[1]", ""},
        {Fruit("<Discretize ", "<Other/><Discretize "),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]/Other[1]", ""},
        {Fruit("<TargetValueCount ", "<Other/><TargetValueCount "),
         model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/Other[1]", ""},
        {Fruit("<TargetValueCounts>", "<TargetValueCounts><Other/>"),
         model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/Other[1]", ""},
        {Fruit(" name=\"weight\"/>", "/>"), model + "/MiningSchema[1]/MiningField[2]", ""},
        {Fruit("value=\"apple\" count=\"90\"", "count=\"90\""),
         model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/TargetValueCount[1]", ""},
        {Set("threshold=", "limit="), model, ""},
        {Replace(Set("", ""), "modelName=\"m\"", ""), model, ""},
        {Set("<MiningSchema>", "<Extension/><MiningSchema>"), model + "/Extension[1]", ""},
        {Set("<MiningSchema>", "<Extension value=\"good\"/><MiningSchema>"), model + "/Extension[1]", ""},
        {Transforming("<DerivedField optype=\"continuous\" dataType=\"double\">" + weight + "</DerivedField>"), field,
         ""},
        {Computing("<Apply/>"), field + "/Apply[1]", ""},
        {Computing("<FieldRef/>"), field + "/FieldRef[1]", ""},
        {"<?xml version=\"1.0\"" + std::string(100'000, ' ') + "?><PMML/>", "1:1", ""},
        {"<PMML>\n  <a b='1' b='2'/></PMML>", "2:14", ""},
        {"<PMML>\n  <a></b></PMML>", "2:8", ""},
        {"<PMML/><PMML/>", "1:8", ""},
        {"<PMML>\n  <a>&none;</a></PMML>", "2:12", ""},
        {"<PMML>\n  <a>\x01</a></PMML>", "2:7", ""},
        {Mapping("", "<row><i>1</i><i2>1</i2></row>"), field + "/MapValues[1]", ""},
        {Binning(Bin("closure=\"closedClosed\" leftMargin=\"3\" rightMargin=\"4\"") +
                 Bin("closure=\"closedClosed\" leftMargin=\"1\" rightMargin=\"5\"")),
         field + "/Discretize[1]/DiscretizeBin[1]", ""},
        {Normalizing("<row><string>r</string><stem>x</stem><regex>yes</regex></row>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/InlineTable[1]/row[1]/regex[1]", ""},
        {Normalizing("<row><string>r(</string><stem>x</stem><regex>true</regex></row>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/InlineTable[1]/row[1]/string[1]", ""},
        {Normalizing("<row><string>r</string><stem>$3</stem><regex>true</regex></row>"),
         field + "/TextIndex[1]/TextIndexNormalization[1]/InlineTable[1]/row[1]/string[1]", ""},
        {Transforming(Text(Apply("formatNumber", weight + TextConstant("none")))), field + "/Apply[1]/Constant[1]", ""},
        {Transforming(Text(Apply("formatNumber", weight + TextConstant("%d%d")))), field + "/Apply[1]/Constant[1]", ""},
        {Transforming(Text(Apply("formatNumber", weight + TextConstant("%2000d")))), field + "/Apply[1]/Constant[1]",
         ""},
        {Transforming(Text(Apply("formatNumber", weight + TextConstant("%5")))), field + "/Apply[1]/Constant[1]", ""},
        {Transforming(Text(Apply("formatNumber", weight + TextConstant("%c")))), field + "/Apply[1]/Constant[1]", ""},
        {Transforming(Text(Apply("formatNumber", weight + TextConstant("%.2s")))), field + "/Apply[1]/Constant[1]", ""},
        {Transforming(Text(Apply("formatDatetime", FieldRef("colour") + TextConstant("%Y%")))),
         field + "/Apply[1]/Constant[1]", ""},
        {Transforming(Text(Apply("formatDatetime", FieldRef("colour") + TextConstant("%Z")))),
         field + "/Apply[1]/Constant[1]", ""},
        {Fruit("<Value value=\"red\"/>", "<Value value=\"red\" property=\"good\"/>"),
         "/PMML/DataDictionary[1]/DataField[1]/Value[1]", ""},
        {Fruit("<Value value=\"red\"/>", "<Value/>"), "/PMML/DataDictionary[1]/DataField[1]/Value[1]", ""},
        {Fruit("dataType=\"double\"/>",
               "dataType=\"double\"><Interval closure=\"open\" leftMargin=\"1\"/></DataField>"),
         "/PMML/DataDictionary[1]/DataField[2]/Interval[1]", ""},
        {Fruit("dataType=\"double\"/>",
               "dataType=\"double\"><Interval closure=\"openOpen\" leftMargin=\"low\"/></DataField>"),
         "/PMML/DataDictionary[1]/DataField[2]/Interval[1]", ""},
        {Fruit("count=\"10\"", "count=\"ten\""),
         model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/TargetValueCount[2]", ""},
        {Fruit("rightMargin=\"150\"", "rightMargin=\"heavy\""),
         model + "/BayesInputs[1]/BayesInput[2]/DerivedField[1]/Discretize[1]/DiscretizeBin[1]/Interval[1]", ""},
        {Computing(Apply("min", "")), field + "/Apply[1]", ""},
        {Transforming(DefineFunction("round", parameter)), "/PMML/TransformationDictionary[1]/DefineFunction[1]", ""},
        {Transforming(ChainOfFunctions(16, Apply("+", Apply("@", parameter) + Apply("@", parameter))) +
                      ManyFields(400)),
         "/PMML/TransformationDictionary[1]/DerivedField[51]", ""},
        {Transforming(ManyPatterns(300)), "/PMML/TransformationDictionary[1]/DerivedField[257]/Apply[1]/Constant[1]",
         ""},
        {Searching("localTermWeights=\"augmentedNormalizedTermFrequency\" tokenize=\"false\"",
                   "<Constant>red</Constant>"),
         field + "/TextIndex[1]", ""},
        {Computing("<Aggregate field=\"weight\" function=\"sum\"/>"), field + "/Aggregate[1]", ""},
        {Replace(Computing(weight), "<MiningField name=\"weight\"/>",
                 "<MiningField name=\"weight\"/><Extension extender=\"scoring.nbscore\" "
                 "name=\"DerivedFields\"><MiningField name=\"e\"/></Extension>"),
         model + "/MiningSchema[1]/Extension[1]/MiningField[1]", ""},
        {Replace(Fruit("fieldName=\"fruit\"", ""), "<MiningField name=\"weight\"/>",
                 "<MiningField name=\"weight\" usageType=\"target\"/>"),
         model + "/BayesOutput[1]", "", true},
        {Local("weight", "<Constant>1</Constant>", "weight"), model + "/LocalTransformations[1]/DerivedField[1]", "",
         true},
        {Replace(
             Local("d", weight, "d"), "<NaiveBayesModel",
             "<TransformationDictionary>" + DerivedNumber("d", weight) + "</TransformationDictionary><NaiveBayesModel"),
         model + "/LocalTransformations[1]/DerivedField[1]", "", true},
        {Local("d",
               weight + "</DerivedField><DerivedField name=\"d\" optype=\"continuous\" dataType=\"double\">" + weight,
               "d"),
         model + "/LocalTransformations[1]/DerivedField[2]", "", true},
        {Local("d", "<Extension><NaiveBayesModel/></Extension>" + weight, "d"),
         model + "/LocalTransformations[1]/DerivedField[1]", "", true},
        {Replace(Local("d", weight, "d"), "<NaiveBayesModel",
                 "<TransformationDictionary>" + DerivedNumber("e", FieldRef("d")) +
                     "</TransformationDictionary><NaiveBayesModel"),
         field + "/FieldRef[1]", "", true},
        {TwoModelsWithLocalFields(), "/PMML/NaiveBayesModel[2]/LocalTransformations[1]/DerivedField[1]", "", true},
    };
}

/// The document with test cases.
std::string Verifying(const std::string& fields, const std::string& rows, const std::string& attributes = "") {
    return Fruit("</NaiveBayesModel>", "<ModelVerification " + attributes + ">\n<VerificationFields>\n" + fields +
                                           "</VerificationFields>\n<InlineTable>\n" + rows +
                                           "</InlineTable></ModelVerification></NaiveBayesModel>");
}

const std::string verifiedWeight = "<VerificationField field=\"weight\"/>\n";
const std::string verifiedRow = "<row><weight>1</weight></row>\n";

/// The document with test cases of an output field.
std::string VerifyingOutput(const std::string& attributes) {
    return Replace(Verifying("<VerificationField field=\"o\"/>", ""), "<MiningSchema>",
                   "<Output><OutputField name=\"o\" " + attributes + "/></Output><MiningSchema>");
}

std::vector<RefusedTestCases> MakeTestCases() {
    const std::string firstField = model + "/ModelVerification[1]/VerificationFields[1]/VerificationField[1]";
    return {
        {Fruit("</NaiveBayesModel>", "<ModelVerification/></NaiveBayesModel>"), model + "/ModelVerification[1]"},
        {Fruit("</NaiveBayesModel>", "<ModelVerification/><ModelVerification/></NaiveBayesModel>"),
         model + "/ModelVerification[2]"},
        {Fruit("</NaiveBayesModel>",
               "<ModelVerification><VerificationFields/><TableLocator/></ModelVerification></NaiveBayesModel>"),
         model + "/ModelVerification[1]/TableLocator[1]"},
        {Verifying("", ""), model + "/ModelVerification[1]/VerificationFields[1]"},
        {Verifying(verifiedWeight + "<VerificationField/>", ""),
         model + "/ModelVerification[1]/VerificationFields[1]/VerificationField[2]"},
        {Verifying(verifiedWeight + verifiedWeight, ""),
         model + "/ModelVerification[1]/VerificationFields[1]/VerificationField[2]"},
        {Verifying(verifiedWeight + "<VerificationField field=\"colour\" column=\"weight\"/>", ""),
         model + "/ModelVerification[1]/VerificationFields[1]/VerificationField[2]"},
        {Verifying(verifiedWeight + "<VerificationField field=\"colour\" precision=\"-1\"/>", ""),
         model + "/ModelVerification[1]/VerificationFields[1]/VerificationField[2]"},
        {Verifying(verifiedWeight + "<VerificationField field=\"colour\" zeroThreshold=\"x\"/>", ""),
         model + "/ModelVerification[1]/VerificationFields[1]/VerificationField[2]"},
        {Verifying(verifiedWeight, verifiedRow + "<row><weight>1</weight><weight>1</weight></row>"),
         model + "/ModelVerification[1]/InlineTable[1]/row[2]/weight[2]"},
        {Verifying(verifiedWeight, verifiedRow + "<row><weight>1<b/></weight></row>"),
         model + "/ModelVerification[1]/InlineTable[1]/row[2]/weight[1]/b[1]"},
        {Verifying(verifiedWeight, verifiedRow + "<row>1<weight>1</weight></row>"),
         model + "/ModelVerification[1]/InlineTable[1]/row[2]"},
        {Verifying(verifiedWeight, verifiedRow, "recordCount=\"2\""), model + "/ModelVerification[1]"},
        {Verifying(verifiedWeight, verifiedRow, "recordCount=\"two\""), model + "/ModelVerification[1]"},
        {Replace(Verifying(verifiedWeight, verifiedRow), "<MiningSchema>",
                 "<Output><OutputField name=\"a\"/><OutputField name=\"a\"/></Output><MiningSchema>"),
         model + "/Output[1]/OutputField[2]"},
        {Replace(Verifying(verifiedWeight, verifiedRow), "<MiningSchema>",
                 "<Output><OutputField name=\"a\" rank=\"x\"/></Output><MiningSchema>"),
         model + "/Output[1]/OutputField[1]"},
        {Verifying("<VerificationField field=\"wait\"/>", ""), firstField},
        {VerifyingOutput("targetField=\"weight\""), firstField},
        {VerifyingOutput("feature=\"probability\" value=\"plum\""), firstField},
        {VerifyingOutput("rank=\"2\""), firstField},
        {Verifying(verifiedWeight, verifiedRow + "<row><weight>heavy</weight></row>"),
         model + "/ModelVerification[1]/InlineTable[1]/row[2]"},
    };
}

}  // namespace

const std::vector<RefusedSample>& RefusedSamples() {
    static const std::vector<RefusedSample> samples = [] {
        std::vector<RefusedSample> all = MakeSamples();
        for (RefusedSample& sample : MakeStandardSamples())
            all.push_back(std::move(sample));
        return all;
    }();
    return samples;
}

const std::vector<RefusedTestCases>& RefusedTestCaseSamples() {
    static const std::vector<RefusedTestCases> samples = MakeTestCases();
    return samples;
}

}  // namespace nbscore::test
