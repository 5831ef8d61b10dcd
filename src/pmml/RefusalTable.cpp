#include "pmml/RefusalTable.h"

#include <cassert>
#include <cstddef>
#include <iterator>

namespace nbscore {
namespace {

using enum VeskException::ExceptionCode;

// Advice that several refusals share.
constexpr std::string_view general = adviceForAnyRefusal;
constexpr std::string_view tryTheFile = "Look whether the file is there and may be read.";
constexpr std::string_view fewNames = "Check that the document is PMML, where names of elements are few.";
constexpr std::string_view shortNames = "Check that the document is PMML, where names of elements are short.";
constexpr std::string_view nameAnEncoding =
    "Save the document in an encoding that XML tools know, such as UTF-8, and let its XML declaration say so.";
constexpr std::string_view allowMoreMemory =
    "Allow more (--max-memory, or Limits::maxMemory in C++) if the machine has it; else take out inputs or values that "
    "say little.";
constexpr std::string_view writeAListedWord = "Write one of the words that the message lists, exactly so.";
constexpr std::string_view writeADecimalPoint =
    "Write the number with a decimal point, and without a mark between thousands.";
constexpr std::string_view onlyTargetValueCounts =
    "Give each PairCounts and BayesOutput one TargetValueCounts, with nothing but TargetValueCount in it.";
constexpr std::string_view discretizeAndBins =
    "Put a Discretize into the DerivedField of the input, and a DiscretizeBin with one Interval for each bin.";
constexpr std::string_view numberBinsFrom0 = "Number bins from 0 on, as they stand.";
constexpr std::string_view addTheExpression = "Add the one expression that gives the value, such as FieldRef or Apply.";
constexpr std::string_view addTheCell = "Add the cell, or correct the name of the column.";
constexpr std::string_view nameOfItsOwn = "Give it a name of its own.";
constexpr std::string_view oneDeclaration = "Leave one declaration, or give each a name of its own.";
constexpr std::string_view useFunctionsLess = "Let functions use their parameters and other functions less often.";
constexpr std::string_view oneCell = "Leave one cell of each column in the row.";
constexpr std::string_view shorterPatterns =
    "Write plain words or shorter patterns instead, or the same pattern where several do the same.";
constexpr std::string_view writeAnInlineTable = "Write the table into the document, as an InlineTable.";
constexpr std::string_view leaveTokenizeOut = "Take tokenize=\"false\" out, or the attribute that needs words.";
constexpr std::string_view nameTheOneTarget = "Let fieldName of the BayesOutput name the one field that is predicted.";
constexpr std::string_view tellTheTwoApart =
    "Give the derived field a name of its own, or leave out the one that is not meant.";

constexpr std::string_view write0OrMore = "Write 0 or a number above it.";
constexpr std::string_view declareTheField =
    "Correct the name, or declare the field in DataDictionary or as a derived field.";

constexpr RefusalEntry table[] = {
    // Opening and parsing a document.
    {Refusal::FileUnreadable, UnreadableSource, R"(The file "{}" cannot be read: {}.)", tryTheFile},
    {Refusal::StreamBroken, UnreadableSource, "The document cannot be read: the stream failed.", tryTheFile},
    {Refusal::XmlLibraryCannotStart, MalformedDocument, "The XML library cannot start: {}", general},
    {Refusal::XmlLibraryFailed, MalformedDocument, "The document cannot be read: {}", general},
    {Refusal::DocumentIsEmpty, MalformedDocument,
     "The document is no well-formed XML: it is empty, does not begin with an element, or is not in the encoding that "
     "it declares.",
     "Check that the file is the PMML document, and whole."},
    {Refusal::BytesOfOtherEncoding, MalformedDocument, "The document is no well-formed XML: {}.",
     "Save the document in the encoding that its XML declaration names, or in UTF-8 where it names none."},
    {Refusal::NotWellFormed, MalformedDocument, "The document is no well-formed XML: {}.",
     "Mend the XML at this place. If the document ends there, get it again: it was cut off."},
    {Refusal::DoctypeFound, MalformedDocument, "A document type declaration is not accepted.",
     "Take the document type declaration out, and write what its entities stand for in their places."},
    {Refusal::DeclaredEncodingDiffers, MalformedDocument, "The document declares the encoding {}, but is in {}.",
     "Let the XML declaration name the encoding that the file is saved in."},
    {Refusal::DocumentEncodingUnknown, UnsupportedEncoding, "The document's encoding is not supported: {}.",
     nameAnEncoding},
    {Refusal::EncodingUnknown, UnsupportedEncoding, R"(The encoding "{}" is not supported.)", nameAnEncoding},
    {Refusal::EncodingLacksText, UnsupportedEncoding, R"(The encoding "{}" cannot hold the text "{}".)",
     nameAnEncoding},

    // What a document may take.
    {Refusal::NestedTooDeep, MalformedDocument, "Elements nest deeper than {} levels.",
     "Check that end tags are not missing: no model needs elements so deep."},
    {Refusal::TagTooLong, MalformedDocument, "A tag, comment or section is longer than {} bytes.",
     "Check that quotation marks, brackets and comments are closed: no model needs a tag so long."},
    {Refusal::TooManyAttributes, MalformedDocument, "A tag has more than {} attributes.",
     "Check that the document is PMML, where elements have a dozen attributes at most."},
    {Refusal::TextTooLong, MalformedDocument, "A text is longer than {} characters.",
     "Check that the document is PMML: no model needs a text so long in one element."},
    {Refusal::NameTooLong, MalformedDocument, R"(The name "{}" is longer than {} characters.)", shortNames},
    {Refusal::TooManyNames, MalformedDocument,
     "The document uses more than {} different names for elements and attributes.", fewNames},
    {Refusal::NamesTooLong, MalformedDocument,
     "The document's different names for elements and attributes have more than {} characters together.", shortNames},
    {Refusal::NamesCollide, MalformedDocument,
     "The names of elements collide: more than {} of them fall on one place of the XML parser's table.",
     "Give the elements other names: these ones meet in a table as chance never has it."},
    {Refusal::DocumentTooLong, InconsistentDocument, "The document is longer than max-document-bytes allows: {} bytes.",
     "Allow more (--max-document-bytes, or Limits::maxDocumentBytes in C++) if the document is as long as it should "
     "be."},
    {Refusal::DocumentOverMemoryLimit, InconsistentDocument,
     "The document needs more memory than max-memory allows: {} bytes.", allowMoreMemory},
    {Refusal::TablesOverMemoryLimit, InconsistentDocument,
     "The document's count tables and categories need more memory than max-memory allows: {} bytes.", allowMoreMemory},
    {Refusal::OutOfMemory, InconsistentDocument, "The document takes more memory than there is.",
     "Read the document on a machine with more memory, or let the process have more."},

    // Elements, attributes and numbers anywhere.
    {Refusal::ChildMissing, UnexpectedElement, "{} has no child <{}>.", general},
    {Refusal::AttributeMissing, MissingAttribute, R"({} has no attribute "{}".)",
     "Add the attribute, and look whether elements of the same kind lack it too."},
    {Refusal::NoNumber, InvalidNumber, R"("{}" is no number.)", "Write a finite decimal number."},
    {Refusal::NoNumberWithComma, InvalidNumber, R"("{}" is no number.)", writeADecimalPoint},
    {Refusal::NoWholeNumber, InvalidNumber, R"("{}" is no whole number of 32 bits.)", "Write a whole number."},
    {Refusal::NoWholeNumberWithComma, InvalidNumber, R"("{}" is no whole number of 32 bits.)", writeADecimalPoint},

    // Declarations of fields.
    {Refusal::NoValueProperty, InconsistentDocument, R"("{}" is no property of a value: valid, invalid or missing.)",
     writeAListedWord},
    {Refusal::NoOptype, InconsistentDocument, R"("{}" is no optype: continuous, ordinal or categorical.)",
     writeAListedWord},
    {Refusal::NoClosure, InconsistentDocument,
     R"("{}" is no closure: openOpen, openClosed, closedOpen or closedClosed.)", writeAListedWord},

    // A whole document.
    {Refusal::RootMissing, UnexpectedElement, "A document with a root element is required.", general},
    {Refusal::ModelMissing, UnexpectedElement, "<NaiveBayesModel> is required!",
     "Check that the document holds a Naive Bayes model: models of other kinds are not read."},
    {Refusal::ModelOfNoKnownKind, UnexpectedElement, "The document holds no model of a kind that is known here.",
     general},
    {Refusal::DataDictionaryMissing, UnexpectedElement, "{} has no child <DataDictionary>.",
     "Add a DataDictionary with a DataField for the target and for each input."},
    {Refusal::DataDictionaryMissingInOtherRoot, UnexpectedElement, "{} has no child <DataDictionary>.",
     "Check that the file is a PMML document: its first element is PMML, and a prefix of it must be bound to a PMML "
     "namespace, such as http://www.dmg.org/PMML-4_4."},
    {Refusal::NoDataDictionaryGiven, UnexpectedElement, "The document has no <DataDictionary>.", general},
    // Bracket and blank are deliberate.
    {Refusal::NoDataDictionaryToMark, UnexpectedElement, "<DataDictionary is required !!", general},
    {Refusal::NoTransformationDictionaryGiven, UnexpectedElement, "The document has no <TransformationDictionary>.",
     general},
    {Refusal::DataFieldExpected, UnexpectedElement, "<DataField> is required here!!",
     "Take everything but DataField out of DataDictionary."},
    {Refusal::DataFieldNameMissing, UnexpectedElement, "<DataField>'s name can't be null string !!",
     "Give the DataField a name."},

    // A model element and its schema.
    {Refusal::ThresholdMissing, MissingAttribute, R"({} has no attribute "{}".)",
     "Add a threshold: a small number above 0 that takes the place of counts of 0, such as 0.001."},
    {Refusal::ThresholdZero, InvalidContent, "Threshold can't be zero!",
     "Score the document by the standard's rule, which takes a threshold of 0 as it stands: --rule standard, or "
     "GiveMyStandardTranslator in C++. With another threshold its answers would be others."},
    // One element is named twice, deliberately.
    {Refusal::InputsOrOutputMissing, UnexpectedElement,
     "At least one <BayesInputs>, one <BayesOutput> and one <BayesOutput> element is required.",
     "Give the model a BayesOutput, and BayesInputs with at least one BayesInput."},
    {Refusal::FieldUndefined, InvalidContent, "{} is not defined!",
     "Declare the field in DataDictionary, or correct its name. A derived field is no MiningField: where a BayesInput "
     "uses it, leave it out of MiningSchema and read the document with --adapt."},
    {Refusal::FieldRedefined, UnexpectedElement, "{} is redefined!", "List each field once in MiningSchema."},
    {Refusal::DerivedFieldsUnlisted, InvalidContent, "<MiningField> is required!",
     "List the derived fields in the Extension, or take it out."},
    {Refusal::SecondTarget, InconsistentDocument, "Only one target is allowed.", "Leave one field predicted."},
    {Refusal::TargetOfSetNotTwofold, InvalidContent,
     "Only two-category target variable for all the models is supported for SelfLearning Model!",
     "Let the MiningSchema of the first sub-model predict a field that declares exactly two values."},
    {Refusal::TargetOfSetDiffers, InvalidContent, "Only one target variable is supported for SelfLearning Model!",
     "Let every sub-model's MiningSchema predict the same field."},

    // Its output.
    {Refusal::OutputFieldMissing, MissingAttribute, R"({} has no attribute "{}".)",
     "Let fieldName of the BayesOutput name the target."},
    {Refusal::OutputNotOfTarget, UnknownVariable, "{} does not match the target variable name.",
     "Let BayesOutput name the field whose usageType in MiningSchema is predicted."},
    {Refusal::OutputNotTwofold, InvalidContent, "Target variable has to have two categories.",
     "Put BayesOutput behind MiningSchema, and let it name and count the target."},
    // Names the outer element, deliberately.
    {Refusal::OutputCountsNotOneOrTwo, InvalidContent, "One or Two <TargetValueCounts> elements required!!",
     "Give the BayesOutput a TargetValueCount for each of the target's two values, and no more."},
    {Refusal::TargetValueCountsExpected, UnexpectedElement, "Element <TargetValueCounts> was expected here.",
     onlyTargetValueCounts},
    {Refusal::TargetValueCountExpected, UnexpectedElement, "Element <TargetValueCount> was expected here.",
     onlyTargetValueCounts},
    {Refusal::TargetIndexTooHigh, InconsistentDocument, "Target index {} is above {}.", numberBinsFrom0},

    // Its inputs.
    {Refusal::BayesInputExpected, InconsistentDocument, "Only BayesInput elements are allowed here.",
     "Take everything but BayesInput out of BayesInputs."},
    {Refusal::InputUnlisted, UnknownInput, "Input not found in MiningSchema.",
     "List the field in MiningSchema in front of BayesInputs, with the usageType active or none: no other word makes "
     "it an input. A derived field belongs into the first TransformationDictionary: --adapt lists it, and moves those "
     "of the model's own LocalTransformations there, but none of a model around it."},
    // No blank stands between, deliberately.
    {Refusal::InputWithoutVariable, UnknownVariable, "{}Variable name not found in dictionary.", general},
    {Refusal::PairCountsExpected, UnexpectedElement, "Only PairCounts elements are allowed here.",
     "Leave nothing but PairCounts in the input."},
    {Refusal::PairCountsExpectedForStats, UnexpectedElement, "Only PairCounts elements are allowed here.",
     "Score the document by the standard's rule, which reads distributions: --rule standard, or "
     "GiveMyStandardTranslator in C++. For this rule, bin the field with Discretize and count each bin."},
    {Refusal::PairCountsExpectedForBins, UnexpectedElement, "Only PairCounts elements are allowed here.",
     "Declare the field as continuous, if its values are to be put into bins; else take the DerivedField out."},
    {Refusal::InputValueUnknown, UnknownInput, "Input value not found in DataDictionary.",
     "Declare the value in the field's DataField, spelt the same, or take its PairCounts out."},
    {Refusal::InputWithoutValues, InconsistentDocument, "Input '{}' declares no values and has no PairCounts.",
     "Count the input's categories in PairCounts, or take it out of BayesInputs."},
    {Refusal::NoBinNumber, InvalidNumber, R"("{}" is no whole number of 32 bits.)",
     "Name the bin by its number: bins are numbered 0, 1, 2 and so on as they stand, whatever their binValue."},
    {Refusal::BinNumberTooHigh, InconsistentDocument, "Bin number of input '{}' {} is above {}.", numberBinsFrom0},
    {Refusal::BinningExpected, VeskException::DerivedFieldExpected, "Element DerivedField was expected here.",
     "Put a DerivedField with a Discretize first in the BayesInput of a continuous field."},
    {Refusal::DiscretizeExpected, UnexpectedElement, "Element Discretize was expected here.", discretizeAndBins},
    {Refusal::DiscretizeBinExpected, UnexpectedElement, "Element DiscretizeBin was expected here.", discretizeAndBins},
    {Refusal::IntervalExpected, UnexpectedElement, "Element Interval was expected here.", discretizeAndBins},
    {Refusal::MarginsDiffer, InconsistentDocument, "Error in Interval margins.",
     "Let the leftMargin of each bin be the rightMargin of the bin in front of it, the lowest bin first."},
    // Says the opposite of the cause, deliberately.
    {Refusal::FewerThanTwoBins, InvalidContent, "NaiveBayesTranslator::ParseDiscretize: cutpoints found",
     "Give the Discretize two bins at least: with fewer there is no margin between bins."},

    // Derived fields and the functions that a document defines.
    {Refusal::ChildUnexpected, UnexpectedElement, "{} is not expected in {}.",
     "Take the element out, or put it where it belongs; docs/expressions.md tells where."},
    {Refusal::PartMissing, UnexpectedElement, "{} has no <{}>.",
     "Add the element that is missing; docs/expressions.md says what it holds."},
    {Refusal::DerivedFieldWithoutExpression, UnexpectedElement, R"(The derived field "{}" has no expression.)",
     addTheExpression},
    {Refusal::DerivedFieldNamedAsDataField, InconsistentDocument,
     R"(The derived field "{}" has the name of a data field.)", nameOfItsOwn},
    {Refusal::DerivedFieldTwice, InconsistentDocument, R"(The derived field "{}" is declared twice.)", oneDeclaration},
    {Refusal::DerivedFieldInCycle, InconsistentDocument, R"(The derived field "{}" depends on itself.)",
     "Follow the fields that its expression reads, and those that theirs read, to the one that reads this field, and "
     "let that one read something else."},
    {Refusal::FunctionWithoutParameters, UnexpectedElement, R"(The function "{}" has no <ParameterField>.)",
     "Add a ParameterField for each argument that the function takes."},
    {Refusal::FunctionWithoutExpression, UnexpectedElement, R"(The function "{}" has no expression.)",
     addTheExpression},
    {Refusal::FunctionNamedAsBuiltIn, InconsistentDocument, R"(The function "{}" has the name of a built-in function.)",
     nameOfItsOwn},
    {Refusal::FunctionTwice, InconsistentDocument, R"(The function "{}" is defined twice.)",
     "Leave one definition, or give each a name of its own."},
    {Refusal::FunctionInCycle, InconsistentDocument, R"(The function "{}" calls itself.)",
     "Follow the functions that it calls, and those that they call, to the one that calls this function, and let that "
     "one do without."},
    {Refusal::ParameterTwice, InconsistentDocument, R"(The function "{}" has two parameters "{}".)",
     "Give each parameter a name of its own."},
    {Refusal::ExpressionsTooDeep, InconsistentDocument, "Expressions nest deeper than {} levels.", general},
    {Refusal::CallsTooDeep, InconsistentDocument, R"(The derived field "{}" nests functions more than {} levels deep.)",
     "Let functions call fewer others, or give parts of the computation to further derived fields."},
    {Refusal::EvaluationsTooMany, InconsistentDocument,
     R"(The derived field "{}" takes more than {} evaluations, those in functions counted in.)", useFunctionsLess},
    {Refusal::EvaluationsTooManyTogether, InconsistentDocument,
     R"(The derived field "{}" and those before it take more than {} evaluations in functions.)", useFunctionsLess},

    // Expressions.
    {Refusal::ExpressionUnsupported, UnsupportedExpression, "The expression {} is not supported.",
     "Compute the field before scoring and pass it as a column; docs/expressions.md lists what is supported."},
    {Refusal::FieldUnknown, UnknownVariable, R"("{}" is no field.)",
     "Correct the name, in upper and lower case too, or declare the field. Fields of LocalTransformations and of a "
     "second TransformationDictionary are not known here: move them to the first TransformationDictionary."},
    {Refusal::ParameterUnknown, UnknownVariable, R"("{}" is no parameter of the function.)",
     "Pass the value to the function as an argument: its expression sees nothing but its parameters."},
    {Refusal::NoListedWord, InvalidContent, R"("{}" is no "{}" of {}: {}.)", writeAListedWord},
    {Refusal::NoTruthValue, InvalidContent, R"("{}" is no truth value: true, false, 1 or 0.)",
     "Write true or false, in lower case."},
    {Refusal::FunctionUnknown, UnsupportedExpression, R"(The function "{}" is not known.)",
     "Correct the name, define the function by a DefineFunction, or compute the field before scoring and pass it as a "
     "column; docs/functions.md lists the built-in functions."},
    {Refusal::ArgumentsMiscounted, InconsistentDocument, R"(The function "{}" takes {}, not {}.)",
     "Pass as many arguments as the function takes; docs/functions.md tells them."},
    {Refusal::PatternUnusable, InvalidContent, R"(The pattern "{}" of the function "{}" cannot be used: {}.)",
     "Mend the pattern; docs/functions.md says what the function takes."},
    {Refusal::ReplacementUnusable, InvalidContent, R"(The replacement "{}" of the function "{}" cannot be used: {}.)",
     "Refer to groups that the pattern has, by $1 and so on."},
    {Refusal::PatternsTooLong, InconsistentDocument,
     "The regular expressions of the document are together longer than 100,000 bytes.", shorterPatterns},
    {Refusal::PatternsTooLarge, InconsistentDocument,
     "The regular expressions of the document are together more than 256 megabytes of memory could hold.",
     shorterPatterns},
    {Refusal::OrigsNotAscending, InvalidContent, "The orig {} is not above the one before it, {}.",
     "Sort the LinearNorm elements by orig, and give each another orig."},
    {Refusal::FewerThanTwoPoints, InvalidContent, "<NormContinuous> needs two <LinearNorm> at least.",
     "Add LinearNorm elements: a line needs two points."},
    {Refusal::MethodUnsupported, UnsupportedExpression, R"(The method "{}" of <NormDiscrete> is not supported.)",
     "Write method=\"indicator\", or take the method out."},
    {Refusal::IntervalEmpty, InvalidContent, "No number lies in this interval.",
     "Let leftMargin lie below rightMargin, or close the interval of a single number on both sides."},
    {Refusal::BinsOverlap, InvalidContent, R"(The bins "{}" and "{}" overlap.)",
     "Let each bin begin where the one before it ends, and only one of the two hold the margin."},
    {Refusal::TableNotInline, UnsupportedExpression, "<TableLocator> is not supported.", writeAnInlineTable},
    {Refusal::CellTwice, InconsistentDocument, "The row has two cells {}.", oneCell},
    {Refusal::CellMissing, InvalidContent, R"(The row has no cell for the column "{}".)", addTheCell},
    {Refusal::OutputColumnMissing, InvalidContent, R"(No row has a cell for the output column "{}".)", addTheCell},
    {Refusal::ColumnTwice, InconsistentDocument, R"(The column "{}" is paired twice.)",
     "Pair each column with one field."},
    {Refusal::KeysTwice, InconsistentDocument, "An earlier row has the same keys as this one.",
     "Leave one row for each combination of keys."},
    {Refusal::TermMissing, UnexpectedElement, "<TextIndex> has no term.",
     "Add the expression that gives the term, behind the TextIndexNormalizations."},
    {Refusal::WordsNeeded, UnsupportedExpression, R"({} is not supported with tokenize="false".)", leaveTokenizeOut},
    {Refusal::DistanceNegative, InvalidContent, "maxLevenshteinDistance is below zero.",
     "Write 0 or a whole number above it."},
    {Refusal::RegularExpressionUnusable, InvalidContent, R"(The regular expression "{}" cannot be used: {}.)",
     "Mend the regular expression; its syntax is that of RE2."},
    {Refusal::NothingToLookFor, InvalidContent, "The row has nothing to look for.",
     "Write the text to look for into the row, or take the row out."},

    // Adapting, where a change would change what the document means.
    {Refusal::BlanksTellApart, InconsistentDocument, R"(Without the blanks around it, "{}" would be the same as "{}".)",
     "Make the two names or values differ in more than blanks, or read the document without --adapt."},
    {Refusal::OutputWithoutTarget, InconsistentDocument,
     "The output names no field, and its model's schema has no target.", nameTheOneTarget},
    {Refusal::OutputWithSeveralTargets, InconsistentDocument,
     "The output names no field, and its model's schema has several targets.", nameTheOneTarget},
    {Refusal::LocalFieldNamedAsDataField, InconsistentDocument,
     R"(The derived field "{}" of a model has the name of a data field: which of the two is meant is not clear.)",
     tellTheTwoApart},
    {Refusal::LocalFieldNamedAsDerivedField, InconsistentDocument,
     R"(The derived field "{}" of a model has the name of one in the TransformationDictionary: which of the two is )"
     "meant is not clear.",
     tellTheTwoApart},
    {Refusal::LocalFieldTwice, InconsistentDocument,
     R"(The derived field "{}" of a model is declared twice: which of the two is meant is not clear.)",
     tellTheTwoApart},
    {Refusal::LocalFieldDiffers, InconsistentDocument,
     R"(The derived field "{}" of a model is declared otherwise in another model: which of the two is meant is not )"
     "clear.",
     tellTheTwoApart},
    {Refusal::LocalFieldHoldsModel, InconsistentDocument,
     R"(The derived field "{}" of a model has a model in it, and cannot be moved.)",
     "Take the inner model out of the derived field."},
    {Refusal::LocalFieldOutOfSight, InconsistentDocument,
     R"("{}" is a derived field of a model, and cannot be seen from here.)",
     "Declare the field in TransformationDictionary, where all models and fields see it."},

    // Test cases.
    {Refusal::ChildTwice, InconsistentDocument, "There may be only one <{}> in a <{}>.",
     "Leave one of these elements in the model."},
    {Refusal::VerificationPartMissing, UnexpectedElement, "<{}> is required in <ModelVerification>.",
     "Give the ModelVerification its VerificationFields and an InlineTable, or take it out."},
    {Refusal::VerificationTableNotInline, UnsupportedExpression,
     "<TableLocator> is not supported: test cases stand in an <InlineTable>.", writeAnInlineTable},
    {Refusal::VerificationFieldsMissing, UnexpectedElement, "At least one <VerificationField> is required.",
     "Add a VerificationField for each column of the test cases, or take the ModelVerification out."},
    {Refusal::VerificationFieldNameMissing, MissingAttribute, "A <VerificationField> must say its field.",
     "Add the attribute field, which names an input or a result."},
    {Refusal::VerificationFieldTwice, InconsistentDocument, R"(The verification field "{}" is there twice.)",
     "Leave one VerificationField for each field."},
    {Refusal::VerificationColumnTwice, InconsistentDocument, R"(The column "{}" is given to two verification fields.)",
     "Give each VerificationField a column of its own."},
    {Refusal::ToleranceNegative, InvalidContent, "The {} may not be negative.", write0OrMore},
    {Refusal::TestCasesMiscounted, InconsistentDocument, "The {} is {}, and there {} {}.",
     "Correct the number, or look which test cases are missing."},
    {Refusal::TestCellTwice, InconsistentDocument, R"(The row has two cells of the column "{}".)", oneCell},
    {Refusal::TestCellHoldsElements, InvalidContent, "A cell of a test case holds text and no elements.",
     "Take the elements out of the cell."},
    {Refusal::TestRowHoldsText, InvalidContent, "A row of test cases holds cells and no text between them.",
     "Put the text into the cell of its column, or take it out."},
    {Refusal::OutputFieldTwice, InconsistentDocument, R"(The output field "{}" is declared twice.)", oneDeclaration},
    {Refusal::OutputFieldOfOtherTarget, InconsistentDocument,
     "The output field {} is of the target {}, which is not the model's target.",
     "Let targetField of the OutputField name the model's target, or take the output field out of the test cases."},
    {Refusal::OutputFieldOfOtherValue, InconsistentDocument,
     "The output field {} is of the value {}, which the target does not have. It has {}.",
     "Let value of the OutputField be one of the target's values."},
    {Refusal::OutputFieldUnsupported, UnsupportedExpression,
     "The output field {} cannot be verified: {} is not supported.", "Take the output field out of the test cases."},
    {Refusal::VerificationFieldUnknown, UnknownInput,
     "The verification field {} is neither an input nor a result here. {}; results are {}.",
     "Let the VerificationField name an input or a result that the message lists."},
    {Refusal::TestRowUnusable, InvalidNumber, "Row {} of the test cases: {}.", "Correct the row's cell."},

    // What only the standard's rule meets: the document around the model,
    {Refusal::SetUnderStandardRule, InvalidContent, "Sets of sub-models have the smoothed rule only.",
     "Score the document by the smoothed rule: --rule smoothed, or GiveMyTranslator in C++."},
    {Refusal::OtherModelFound, UnexpectedElement, "The document holds {}, and no Naive Bayes model.",
     "Check that the document holds a Naive Bayes model: models of other kinds are not read."},
    {Refusal::SecondModel, InconsistentDocument, "{} is a second model.",
     "Leave one model in the document: which of several is meant is not clear."},
    {Refusal::ContentNotUnderstood, UnexpectedElement, "{} is not understood in {}, and could change the answer.",
     "Take the element out, or correct its name; docs/standard.md lists what is read."},
    {Refusal::AttributeNotUnderstood, InvalidContent,
     R"(The attribute "{}" of {} is not understood, and could change the answer.)",
     "Take the attribute out, or correct it; docs/standard.md lists what is read."},
    {Refusal::NotScorable, InvalidContent, R"({} says isScorable="false".)",
     "Get a model that its producer means to be scored; or take the attribute out, if it is there by mistake."},
    {Refusal::SegmentsNotSingle, InconsistentDocument, "The <Segmentation> has {}: it is read where it has one.",
     "Score the Naive Bayes model by itself, or let the <Segmentation> have no other."},
    {Refusal::PredicateNotTrue, InconsistentDocument, "The <Segment> has no predicate <True>.",
     "Let the predicate of the only segment be True: any other leaves cases without an answer."},
    {Refusal::ThresholdNegative, InvalidContent, "The threshold {} is below zero.", write0OrMore},
    // its fields and their treatment,
    {Refusal::MiningFieldUndeclared, InvalidContent, R"(The mining field "{}" is not declared.)", declareTheField},
    {Refusal::FieldTreatedTwice, InconsistentDocument,
     R"(Of the field "{}", the schemas of the MiningModel and of the model in it say a different {}: "{}" and "{}".)",
     "Let one of the two schemas say it, or both the same."},
    {Refusal::DerivedFieldTreated, InvalidContent,
     R"(The mining field "{}" has the attribute {}, and is a derived field.)",
     "Treat the data fields that it is computed from instead, or write mapMissingTo into its expression."},
    {Refusal::OutliersOfTexts, InvalidContent, R"(The mining field "{}" has outliers, and holds texts.)",
     "Take the attribute outliers out, or let the DataField hold numbers."},
    {Refusal::FieldUnknownAnywhere, UnknownVariable, R"("{}" is no field.)",
     "Correct the name, in upper and lower case too, or declare the field in DataDictionary, TransformationDictionary "
     "or the model's LocalTransformations."},
    // the target,
    {Refusal::TargetValueUndeclared, UnknownInput, R"(The target has no value "{}".)",
     "Declare the value in the target's DataField, spelt the same, or take out what is said of it."},
    {Refusal::ValueTwice, InconsistentDocument, R"(The value "{}" is there twice.)",
     "Leave one element for each value."},
    {Refusal::CountNegative, InvalidContent, "The count {} is below zero.", write0OrMore},
    {Refusal::TargetOfOtherField, InconsistentDocument, R"(The <Target> is of the field "{}", which is not predicted.)",
     "Let field of the Target name the field that BayesOutput counts, or take the Target out."},
    {Refusal::PriorNoProbability, InvalidContent, "The priorProbability {} is no probability.",
     "Write a number from 0 to 1."},
    {Refusal::PriorsIncomplete, InconsistentDocument,
     R"(The target's value "{}" has no priorProbability, and others have one.)",
     "Give each value of the target a TargetValue with its priorProbability, or take all of these attributes out."},
    // the inputs,
    {Refusal::InputUndeclared, UnknownInput, R"(The input "{}" is no field.)", declareTheField},
    {Refusal::InputIsTarget, InconsistentDocument, R"(The input "{}" is the target.)",
     "Take the input out: what is predicted is not known beforehand."},
    {Refusal::InputTwice, InconsistentDocument, R"(The input "{}" is there twice.)",
     "Leave one BayesInput for each field."},
    {Refusal::InputWithoutFactors, UnexpectedElement, R"(The input "{}" has neither PairCounts nor TargetValueStats.)",
     "Give the input PairCounts, for categories and bins, or TargetValueStats, for numbers; or take it out."},
    {Refusal::InputWithTwoKinds, InconsistentDocument, R"(The input "{}" has both PairCounts and TargetValueStats.)",
     "Leave one of the two, or make two inputs of derived fields."},
    {Refusal::DensitiesOfTexts, InvalidContent, R"(The input "{}" has TargetValueStats, and its field holds texts.)",
     "Declare the field with a dataType of numbers, or count its values in PairCounts."},
    {Refusal::DistributionMissing, UnexpectedElement, "The <TargetValueStat> has no distribution.",
     "Add one: GaussianDistribution, PoissonDistribution, UniformDistribution or AnyDistribution."},
    {Refusal::ParameterNegative, InvalidContent, "The {} of {} is below zero: {}.", write0OrMore},
    {Refusal::UniformWithoutWidth, InvalidContent, "The <UniformDistribution> does not begin below its end.",
     "Let lower be less than upper."},
    // and the output.
    {Refusal::OutputFeatureUnsupported, UnsupportedExpression,
     R"(The output field "{}" has the feature "{}", which is not supported.)",
     "Take the output field out; docs/standard.md lists the features that are supported."},

    // Adding to what a document counts.
    {Refusal::NotWrittenByCounting, InconsistentDocument,
     "This is not what counting a table writes, and would be lost or counted wrongly.",
     "Take a document that was made by nbscore count, as it was written."},
    {Refusal::CountsDiffer, InconsistentDocument, "The document cannot be added: {}.",
     "Count the tables with the same inputs, cutpoints and threshold (--inputs, --categorical, --cutpoints, "
     "--threshold)."},

    // Notices that come with a refusal.
    {Refusal::BinningExpectedNotice, noRefusal, "The first element in the BayesInput of a continuous field is {}.",
     "Look at the error there, which says what should be."},
};

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < std::size(table); ++i) {
        if (table[i].id != static_cast<Refusal>(i)) return false;
    }
    return true;
}
static_assert(IsInOrder(), "the table's order is that of the ids");

}  // namespace

std::span<const RefusalEntry> GetRefusals() {
    return table;
}

const RefusalEntry& GetRefusal(Refusal id) {
    return table[static_cast<std::size_t>(id)];
}

std::string_view AdviceAgainst(ScoringObstacle::Kind obstacle) {
    switch (obstacle) {
        case ScoringObstacle::TargetMissing:
            return "Let MiningSchema predict the field that BayesOutput names.";
        case ScoringObstacle::SecondTarget:
            return "Let every MiningSchema predict the same field.";
        case ScoringObstacle::TargetValuesMissing:
            return "Declare each category of the target by a Value in its DataField.";
        case ScoringObstacle::TargetValueTwice:
            return "Declare each value of the target once.";
        case ScoringObstacle::CountsMissing:
            return "Count the categories, or take the element that counts nothing out.";
        case ScoringObstacle::TargetCountedTwice:
            return "Give each sub-model one BayesOutput.";
        case ScoringObstacle::None:
        case ScoringObstacle::Other:
            break;
    }
    return general;
}

std::string FillIn(std::string_view message, std::initializer_list<std::string_view> arguments) {
    constexpr std::string_view gap = "{}";
    std::string filled;
    for (const std::string_view argument : arguments) {
        const std::size_t at = message.find(gap);
        assert(at != std::string_view::npos);
        filled += message.substr(0, at);
        filled += argument;
        message.remove_prefix(at + gap.size());
    }
    assert(message.find(gap) == std::string_view::npos);
    return filled += message;
}

VeskException MakeRefusal(Refusal id, std::initializer_list<std::string_view> arguments) {
    const RefusalEntry& entry = GetRefusal(id);
    return {entry.code, FillIn(entry.message, arguments), entry.advice};
}

}  // namespace nbscore
