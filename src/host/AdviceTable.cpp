#include "host/AdviceTable.h"

#include <algorithm>

#include "host/MessagePattern.h"

namespace nbscore {
namespace {

constexpr Advice advices[] = {
    // What is said beside a refusal.
    {0, "Element DerivedField not found in ParseDiscretize. *",
     "Look at the error: the element is the first one in the BayesInput of a continuous field."},

    // An element is missing, or another one was expected.
    {1, "<NaiveBayesModel> is required!",
     "Check that the document holds a Naive Bayes model: models of other kinds are not read."},
    {1, "<PMML> has no child <DataDictionary>.",
     "Add a DataDictionary with a DataField for the target and for each input."},
    {1, "<*> has no child <DataDictionary>.",
     "Check that the file is a PMML document: its first element is PMML, and a prefix of it must be bound to a PMML "
     "namespace, such as http://www.dmg.org/PMML-4_4."},
    {1, "<DataField> is required here!!", "Take everything but DataField out of DataDictionary."},
    {1, "<DataField>'s name can't be null string !!", "Give the DataField a name."},
    {1, "At least one <BayesInputs>, *", "Give the model a BayesOutput, and BayesInputs with at least one BayesInput."},
    {1, "* is redefined!", "List each field once in MiningSchema."},
    {1, "Only PairCounts elements are allowed here.",
     "Give the input PairCounts alone: distributions cannot be read. Bin the field with Discretize and count each bin.",
     "TargetValueStats"},
    {1, "Only PairCounts elements are allowed here.",
     "Declare the field as continuous, if its values are to be put into bins; else take the DerivedField out.",
     "DerivedField"},
    {1, "Only PairCounts elements are allowed here.", "Leave nothing but PairCounts in the input."},
    {1, "Element <*> was expected here.",
     "Give each PairCounts and BayesOutput one TargetValueCounts, with nothing but TargetValueCount in it."},
    {1, "Element * was expected here.",
     "Put a Discretize into the DerivedField of the input, and a DiscretizeBin with one Interval for each bin."},
    {1, "<*> is not expected in *",
     "Take the element out, or put it where it belongs; docs/expressions.md tells where."},
    {1, "The * has no expression.", "Add the one expression that gives the value, such as FieldRef or Apply."},
    {1, "The function * has no <ParameterField>.", "Add a ParameterField for each argument that the function takes."},
    {1, "<TextIndex> has no term.", "Add the expression that gives the term, behind the TextIndexNormalizations."},
    {1, "<*> has no <*>.", "Add the element that is missing; docs/expressions.md says what it holds."},

    // An attribute is missing.
    {2, "<NaiveBayesModel> has no attribute \"threshold\".",
     "Add a threshold: a small number above 0 that takes the place of counts of 0, such as 0.001."},
    {2, "<BayesOutput> has no attribute \"fieldName\".", "Let fieldName of the BayesOutput name the target."},
    {2, "<*> has no attribute *", "Add the attribute, and look whether elements of the same kind lack it too."},

    // No well-formed XML, or XML that is not accepted.
    {3, "A document type declaration is not accepted.",
     "Take the document type declaration out, and write what its entities stand for in their places."},
    {3, "Elements nest deeper than *", "Check that end tags are not missing: no model needs elements so deep."},
    {3, "The document uses more than *", "Check that the document is PMML, where names of elements are few."},
    {3, "The document's different names *", "Check that the document is PMML, where names of elements are short."},
    {3, "The names of elements collide: *",
     "Give the elements other names: these ones meet in a table as chance never has it."},
    {3, "The name * is longer than *", "Check that the document is PMML, where names of elements are short."},
    {3, "A tag, comment or section is longer than *",
     "Check that quotation marks, brackets and comments are closed: no model needs a tag so long."},
    {3, "A tag has more than *", "Check that the document is PMML, where elements have a dozen attributes at most."},
    {3, "A text is longer than *", "Check that the document is PMML: no model needs a text so long in one element."},
    {3, "The document declares the encoding *", "Let the XML declaration name the encoding that the file is saved in."},
    {3, "The document is no well-formed XML: it is empty, *", "Check that the file is the PMML document, and whole."},
    {3, "The document is no well-formed XML: *-byte sequence.",
     "Save the document in the encoding that its XML declaration names, or in UTF-8 where it names none."},
    {3, "The document is no well-formed XML: *",
     "Mend the XML at this place. If the document ends there, get it again: it was cut off."},

    {4, "*", "Look whether the file is there and may be read."},

    // Content that makes no model.
    {5, "Threshold can't be zero!", "Write a small threshold instead, such as one over the number of training cases."},
    {5, "Only two-category target *",
     "Let the MiningSchema of the first sub-model predict a field that declares exactly two values."},
    {5, "Only one target *", "Let every sub-model's MiningSchema predict the same field."},
    {5, "* is not defined!",
     "Declare the field in DataDictionary, or correct its name. A derived field is no MiningField: where a "
     "BayesInput uses it, leave it out of MiningSchema and read the document with --adapt."},
    {5, "Target variable has to have two categories.",
     "Put BayesOutput behind MiningSchema, and let it name and count the target."},
    {5, "One or Two <TargetValueCounts> elements required!!",
     "Give the BayesOutput a TargetValueCount for each of the target's two values, and no more."},
    {5, "<MiningField> is required!", "List the derived fields in the Extension, or take it out."},
    {5, "NaiveBayesTranslator::ParseDiscretize: cutpoints found",
     "Give the Discretize two bins at least: with fewer there is no margin between bins."},
    {5, "* is no truth value: *", "Write true or false, in lower case."},
    {5, R"("*" is no "*" of <*>: *)", "Write one of the words that the message lists, exactly so."},
    {5, "The regular expression * cannot be used: *", "Mend the regular expression; its syntax is that of RE2."},
    {5, "The pattern * cannot be used: *", "Mend the pattern; docs/functions.md says what the function takes."},
    {5, "The replacement * cannot be used: *", "Refer to groups that the pattern has, by $1 and so on."},
    {5, "The orig * is not above *", "Sort the LinearNorm elements by orig, and give each another orig."},
    {5, "<NormContinuous> needs *", "Add LinearNorm elements: a line needs two points."},
    {5, "No number lies in this interval.",
     "Let leftMargin lie below rightMargin, or close the interval of a single number on both sides."},
    {5, "The bins * overlap.",
     "Let each bin begin where the one before it ends, and only one of the two hold the margin."},
    {5, "*row has * cell for *", "Add the cell, or correct the name of the column."},
    {5, "The row has nothing to look for.", "Write the text to look for into the row, or take the row out."},
    {5, "maxLevenshteinDistance is below zero.", "Write 0 or a whole number above it."},

    {6, "*", "Put a DerivedField with a Discretize first in the BayesInput of a continuous field."},

    // An input or value that the schema or dictionary does not know.
    {7, "Input not found in MiningSchema.",
     "List the field in MiningSchema in front of BayesInputs, with the usageType active or none: no other word "
     "makes it an input. A derived field belongs into the first TransformationDictionary: --adapt lists it, and moves "
     "those of the model's own LocalTransformations there, but none of a model around it."},
    {7, "Input value not found in DataDictionary.",
     "Declare the value in the field's DataField, spelt the same, or take its PairCounts out."},

    // A variable that is not found or does not match.
    {8, "* does not match the target variable name.",
     "Let BayesOutput name the field whose usageType in MiningSchema is predicted."},
    {8, "* is no field.",
     "Correct the name, in upper and lower case too, or declare the field. Fields of LocalTransformations and of a "
     "second TransformationDictionary are not known here: move them to the first TransformationDictionary."},
    {8, "* is no parameter of the function.",
     "Pass the value to the function as an argument: its expression sees nothing but its parameters."},

    // A text that is no number.
    {9, "\"*,*\" is no *", "Write the number with a decimal point, and without a mark between thousands."},
    {9, "* is no whole number *",
     "Name the bin by its number: bins are numbered 0, 1, 2 and so on as they stand, whatever their binValue.",
     "PairCounts"},
    {9, "* is no whole number *", "Write a whole number."},
    {9, "* is no number.", "Write a finite decimal number."},

    {10, "*",
     "Save the document in an encoding that XML tools know, such as UTF-8, and let its XML declaration say so."},

    // An expression or function that is not supported.
    {11, "The function * is not known.",
     "Correct the name, define the function by a DefineFunction, or compute the field before scoring and pass it as "
     "a column; docs/functions.md lists the built-in functions."},
    {11, "The expression * is not supported.",
     "Compute the field before scoring and pass it as a column; docs/expressions.md lists what is supported."},
    {11, "<TableLocator> is not supported.", "Write the table into the document, as an InlineTable."},
    {11, "* is not supported with tokenize=\"false\".",
     "Take tokenize=\"false\" out, or the attribute that needs words."},
    {11, "The method * of <NormDiscrete> is not supported.", "Write method=\"indicator\", or take the method out."},

    // Parts of the document that contradict each other or exceed a limit.
    {12, "The document takes more memory than there is.",
     "Read the document on a machine with more memory, or let the process have more."},
    {12, "Only one target is allowed.", "Leave one field predicted."},
    {12, "Only BayesInput elements are allowed here.", "Take everything but BayesInput out of BayesInputs."},
    {12, "Input * declares no values and has no PairCounts.",
     "Count the input's categories in PairCounts, or take it out of BayesInputs."},
    {12, "* is above *", "Number bins from 0 on, as they stand."},
    {12, "* more memory than max-memory allows: *",
     "Allow more (--max-memory, or Limits::maxMemory in C++) if the machine has it; else take out inputs or values "
     "that "
     "say little."},
    {12, "The document is longer than max-document-bytes allows: *",
     "Allow more (--max-document-bytes, or Limits::maxDocumentBytes in C++) if the document is as long as it should "
     "be."},
    {12, "Error in Interval margins.",
     "Let the leftMargin of each bin be the rightMargin of the bin in front of it, the lowest bin first."},
    {12, "\"*\" is no *: *", "Write one of the words that the message lists, exactly so."},
    {12, "* which of the two is meant is not clear.",
     "Give the derived field a name of its own, or leave out the one that is not meant."},
    {12, "The derived field * of a model has a model in it, and cannot be moved.",
     "Take the inner model out of the derived field."},
    {12, "* is a derived field of a model, and cannot be seen from here.",
     "Declare the field in TransformationDictionary, where all models and fields see it."},
    {12, "The * has the name of a *", "Give it a name of its own."},
    {12, "The * is declared twice.", "Leave one declaration, or give each a name of its own."},
    {12, "The function * is defined twice.", "Leave one definition, or give each a name of its own."},
    {12, "The derived field * depends on itself.",
     "Follow the fields that its expression reads, and those that theirs read, to the one that reads this field, "
     "and let that one read something else."},
    {12, "The function * calls itself.",
     "Follow the functions that it calls, and those that they call, to the one that calls this function, and let "
     "that one do without."},
    {12, "The function * has two parameters *", "Give each parameter a name of its own."},
    {12, "The function * takes *", "Pass as many arguments as the function takes; docs/functions.md tells them."},
    {12, "* levels deep.",
     "Let functions call fewer others, or give parts of the computation to further derived fields."},
    {12, "* more than * evaluations*", "Let functions use their parameters and other functions less often."},
    {12, "The row has two cells *", "Leave one cell of each column in the row."},
    {12, "The column * is paired twice.", "Pair each column with one field."},
    {12, "An earlier row has the same keys as this one.", "Leave one row for each combination of keys."},
    {12, "The regular expressions of the document are together *",
     "Write plain words or shorter patterns instead, or the same pattern where several do the same."},

    // Where a change that --adapt makes would change what the document means.
    {12, "Without the blanks around it, *",
     "Make the two names or values differ in more than blanks, or read the document without --adapt."},
    {12, "The output names no field, *", "Let fieldName of the BayesOutput name the one field that is predicted."},

    // What is read and could still not be scored.
    {12, "The model has no target variable.", "Let MiningSchema predict the field that BayesOutput names."},
    {12, "The model has more than one target variable: *", "Let every MiningSchema predict the same field."},
    {12, "*declares no values.", "Declare each category of the target by a Value in its DataField."},
    {12, "*declares the value *", "Declare each value of the target once."},
    {12, "*has no counts.", "Count the categories, or take the element that counts nothing out."},
    {12, "The target was counted *", "Give each sub-model one BayesOutput."},
};

/// The last step of a path, without its position.
std::string_view ElementAt(const DocumentPlace& place) {
    std::string_view step = place.elementPath;
    step.remove_prefix(step.rfind('/') + 1);
    return step.substr(0, step.find('['));
}

}  // namespace

std::span<const Advice> GetAdvices() {
    return advices;
}

const Advice* FindAdvice(int code, std::string_view message, const DocumentPlace& place) {
    const auto* const found = std::ranges::find_if(advices, [&](const Advice& advice) {
        return advice.code == code && (advice.element.empty() || advice.element == ElementAt(place)) &&
               FitsPattern(message, advice.message);
    });
    return found == std::end(advices) ? nullptr : found;
}

}  // namespace nbscore
