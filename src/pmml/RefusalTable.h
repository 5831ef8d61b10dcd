#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "framework/Export.h"
#include "framework/ModelSelfCheck.h"
#include "framework/VeskException.h"

/// @file
/// Every refusal of a document, once. The code that refuses names the id, and gives what the message says about the
/// document at hand (Refusal.h).

namespace nbscore {

/// By where they come from, in the table's order. Where one message has several ids, they differ in the advice.
enum class Refusal {
    // Opening and parsing a document.
    FileUnreadable,
    StreamBroken,
    XmlLibraryCannotStart,
    XmlLibraryFailed,
    DocumentIsEmpty,
    BytesOfOtherEncoding,
    NotWellFormed,
    DoctypeFound,
    DeclaredEncodingDiffers,
    DocumentEncodingUnknown,
    EncodingUnknown,
    EncodingLacksText,

    // What a document may take.
    NestedTooDeep,
    TagTooLong,
    TooManyAttributes,
    TextTooLong,
    NameTooLong,
    TooManyNames,
    NamesTooLong,
    NamesCollide,
    DocumentTooLong,
    DocumentOverMemoryLimit,
    TablesOverMemoryLimit,
    OutOfMemory,

    // Elements, attributes and numbers anywhere.
    ChildMissing,
    AttributeMissing,
    NoNumber,
    NoNumberWithComma,
    NoWholeNumber,
    NoWholeNumberWithComma,

    // Declarations of fields.
    NoValueProperty,
    NoOptype,
    NoClosure,

    // A whole document.
    RootMissing,
    ModelMissing,
    ModelOfNoKnownKind,
    DataDictionaryMissing,
    DataDictionaryMissingInOtherRoot,
    NoDataDictionaryGiven,
    NoDataDictionaryToMark,
    NoTransformationDictionaryGiven,
    DataFieldExpected,
    DataFieldNameMissing,

    // A model element and its schema.
    ThresholdMissing,
    ThresholdZero,
    InputsOrOutputMissing,
    FieldUndefined,
    FieldRedefined,
    DerivedFieldsUnlisted,
    SecondTarget,
    TargetOfSetNotTwofold,
    TargetOfSetDiffers,

    // Its output.
    OutputFieldMissing,
    OutputNotOfTarget,
    OutputNotTwofold,
    OutputCountsNotOneOrTwo,
    TargetValueCountsExpected,
    TargetValueCountExpected,
    TargetIndexTooHigh,

    // Its inputs.
    BayesInputExpected,
    InputUnlisted,
    InputWithoutVariable,
    PairCountsExpected,
    PairCountsExpectedForStats,
    PairCountsExpectedForBins,
    InputValueUnknown,
    InputWithoutValues,
    NoBinNumber,
    BinNumberTooHigh,
    BinningExpected,
    DiscretizeExpected,
    DiscretizeBinExpected,
    IntervalExpected,
    MarginsDiffer,
    FewerThanTwoBins,

    // Derived fields and the functions that a document defines.
    ChildUnexpected,
    PartMissing,
    DerivedFieldWithoutExpression,
    DerivedFieldNamedAsDataField,
    DerivedFieldTwice,
    DerivedFieldInCycle,
    FunctionWithoutParameters,
    FunctionWithoutExpression,
    FunctionNamedAsBuiltIn,
    FunctionTwice,
    FunctionInCycle,
    ParameterTwice,
    ExpressionsTooDeep,
    CallsTooDeep,
    EvaluationsTooMany,
    EvaluationsTooManyTogether,

    // Expressions.
    ExpressionUnsupported,
    FieldUnknown,
    ParameterUnknown,
    NoListedWord,
    NoTruthValue,
    FunctionUnknown,
    ArgumentsMiscounted,
    PatternUnusable,
    ReplacementUnusable,
    PatternsTooLong,
    PatternsTooLarge,
    OrigsNotAscending,
    FewerThanTwoPoints,
    MethodUnsupported,
    IntervalEmpty,
    BinsOverlap,
    TableNotInline,
    CellTwice,
    CellMissing,
    OutputColumnMissing,
    ColumnTwice,
    KeysTwice,
    TermMissing,
    WordsNeeded,
    DistanceNegative,
    RegularExpressionUnusable,
    NothingToLookFor,

    // Adapting, where a change would change what the document means.
    BlanksTellApart,
    OutputWithoutTarget,
    OutputWithSeveralTargets,
    LocalFieldNamedAsDataField,
    LocalFieldNamedAsDerivedField,
    LocalFieldTwice,
    LocalFieldDiffers,
    LocalFieldHoldsModel,
    LocalFieldOutOfSight,

    // Test cases.
    ChildTwice,
    VerificationPartMissing,
    VerificationTableNotInline,
    VerificationFieldsMissing,
    VerificationFieldNameMissing,
    VerificationFieldTwice,
    VerificationColumnTwice,
    ToleranceNegative,
    TestCasesMiscounted,
    TestCellTwice,
    TestCellHoldsElements,
    TestRowHoldsText,
    OutputFieldTwice,
    OutputFieldOfOtherTarget,
    OutputFieldOfOtherValue,
    OutputFieldUnsupported,
    VerificationFieldUnknown,
    TestRowUnusable,

    // What only the standard's rule meets: the document around the model,
    SetUnderStandardRule,
    OtherModelFound,
    SecondModel,
    ContentNotUnderstood,
    AttributeNotUnderstood,
    NotScorable,
    SegmentsNotSingle,
    PredicateNotTrue,
    ThresholdNegative,
    // its fields and their treatment,
    MiningFieldUndeclared,
    FieldTreatedTwice,
    DerivedFieldTreated,
    OutliersOfTexts,
    FieldUnknownAnywhere,
    // the target,
    TargetValueUndeclared,
    ValueTwice,
    CountNegative,
    TargetOfOtherField,
    PriorNoProbability,
    PriorsIncomplete,
    // the inputs,
    InputUndeclared,
    InputIsTarget,
    InputTwice,
    InputWithoutFactors,
    InputWithTwoKinds,
    DensitiesOfTexts,
    DistributionMissing,
    ParameterNegative,
    UniformWithoutWidth,
    // and the output.
    OutputFeatureUnsupported,

    // Adding to what a document counts.
    NotWrittenByCounting,
    CountsDiffer,

    // Remarks that are made beside a refusal.
    BinningExpectedNotice,
};

struct RefusalEntry {
    Refusal id;
    VeskException::ExceptionCode code;
    /// Fixed but for its gaps, `{}`, which are filled in order.
    std::string_view message;
    /// What to do about it, as a sentence or two.
    std::string_view advice;
};

/// The code of a notice that comes with a refusal.
inline constexpr auto noRefusal = static_cast<VeskException::ExceptionCode>(0);

SCOREFRAMEWORK_API std::span<const RefusalEntry> GetRefusals();
SCOREFRAMEWORK_API const RefusalEntry& GetRefusal(Refusal id);

/// What to do about a model that was read and would stop the process when it scores.
SCOREFRAMEWORK_API std::string_view AdviceAgainst(ScoringObstacle::Kind obstacle);

/// A message with something in each of its gaps.
SCOREFRAMEWORK_API std::string FillIn(std::string_view message, std::initializer_list<std::string_view> arguments);

/// The exception for a refusal, without a place (Refusal.h has those with one).
/// @param arguments what stands in the gaps of its message.
SCOREFRAMEWORK_API VeskException MakeRefusal(Refusal id, std::initializer_list<std::string_view> arguments = {});

}  // namespace nbscore
