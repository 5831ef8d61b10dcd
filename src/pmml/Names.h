#pragma once

#include <cstdint>
#include <iterator>
#include <string_view>

/// @file
/// The names of elements and attributes as numbers, so that comparing two of them is comparing numbers.

// Every name that is looked for in documents, in the order of the alphabet. Attributes follow elements.
// clang-format off
#define NBSCORE_KNOWN_NAMES(KNOWN) \
    KNOWN(AnyDistribution) KNOWN(Application) KNOWN(Apply) KNOWN(BayesInput) KNOWN(BayesInputs) KNOWN(BayesOutput) \
    KNOWN(Constant) KNOWN(DataDictionary) KNOWN(DataField) KNOWN(Decisions) KNOWN(DefineFunction) KNOWN(DerivedField) \
    KNOWN(Discretize) KNOWN(DiscretizeBin) KNOWN(Extension) KNOWN(FieldColumnPair) KNOWN(FieldRef) \
    KNOWN(GaussianDistribution) KNOWN(Header) KNOWN(InlineTable) KNOWN(Interval) KNOWN(LinearNorm) \
    KNOWN(LocalTransformations) KNOWN(MapValues) KNOWN(MiningBuildTask) KNOWN(MiningField) KNOWN(MiningModel) \
    KNOWN(MiningSchema) KNOWN(ModelExplanation) KNOWN(ModelStats) KNOWN(ModelVerification) KNOWN(NaiveBayes) \
    KNOWN(NaiveBayesModel) KNOWN(NormContinuous) KNOWN(NormDiscrete) KNOWN(Output) KNOWN(OutputField) KNOWN(PMML) \
    KNOWN(PairCounts) KNOWN(ParameterField) KNOWN(PoissonDistribution) KNOWN(Segment) KNOWN(Segmentation) \
    KNOWN(TableLocator) KNOWN(Target) KNOWN(TargetValue) KNOWN(TargetValueCount) KNOWN(TargetValueCounts) \
    KNOWN(TargetValueStat) KNOWN(TargetValueStats) KNOWN(Targets) KNOWN(Taxonomy) KNOWN(TextIndex) \
    KNOWN(TextIndexNormalization) KNOWN(TransformationDictionary) KNOWN(True) KNOWN(UniformDistribution) KNOWN(Value) \
    KNOWN(VerificationField) KNOWN(VerificationFields) KNOWN(row) KNOWN(algorithm) KNOWN(algorithmName) \
    KNOWN(binValue) KNOWN(closure) KNOWN(column) KNOWN(count) KNOWN(countHits) KNOWN(dataType) KNOWN(defaultValue) \
    KNOWN(displayName) KNOWN(displayValue) KNOWN(extender) KNOWN(feature) KNOWN(field) KNOWN(fieldCount) \
    KNOWN(fieldName) KNOWN(function) KNOWN(functionName) KNOWN(highValue) KNOWN(id) KNOWN(importance) KNOWN(inField) \
    KNOWN(invalidValueReplacement) KNOWN(invalidValueTreatment) KNOWN(isCaseSensitive) KNOWN(isCyclic) \
    KNOWN(isFinalResult) KNOWN(isMultiValued) KNOWN(isScorable) KNOWN(leftMargin) KNOWN(localTermWeights) KNOWN(lower) \
    KNOWN(lowValue) KNOWN(mapMissingTo) KNOWN(maxLevenshteinDistance) KNOWN(mean) KNOWN(method) KNOWN(missing) \
    KNOWN(missingPredictionTreatment) KNOWN(missingThreshold) KNOWN(missingValueReplacement) \
    KNOWN(missingValueTreatment) KNOWN(modelName) KNOWN(multipleModelMethod) KNOWN(name) KNOWN(norm) \
    KNOWN(numberOfFields) KNOWN(optype) KNOWN(orig) KNOWN(outField) KNOWN(outliers) KNOWN(outputColumn) \
    KNOWN(precision) KNOWN(priorProbability) KNOWN(property) KNOWN(rank) KNOWN(rankBasis) KNOWN(rankOrder) \
    KNOWN(recordCount) KNOWN(recursive) KNOWN(regexField) KNOWN(rightMargin) KNOWN(ruleFeature) KNOWN(segmentId) \
    KNOWN(targetField) KNOWN(taxonomy) KNOWN(textField) KNOWN(threshold) KNOWN(tokenize) KNOWN(upper) KNOWN(usageType) \
    KNOWN(value) KNOWN(variance) KNOWN(version) KNOWN(weight) KNOWN(wordSeparatorCharacterRE) KNOWN(zeroThreshold)
// clang-format on

namespace nbscore {

/// The name of an element or attribute. Names that only one document uses are the numbers behind the known ones and
/// mean something in that document's tree alone.
enum class Name : std::uint32_t {
    /// Of no element at all.
    none,
    /// Of a piece of text between tags.
    text,
#define NBSCORE_ENUMERATOR(name) name,
    NBSCORE_KNOWN_NAMES(NBSCORE_ENUMERATOR)
#undef NBSCORE_ENUMERATOR
};

/// By number; `none` and `text` are spelt as nothing that a document could use.
inline constexpr std::string_view knownNames[] = {"", "#text",
#define NBSCORE_SPELLING(name) #name,
                                                  NBSCORE_KNOWN_NAMES(NBSCORE_SPELLING)
#undef NBSCORE_SPELLING
};
inline constexpr std::uint32_t knownNameCount = std::size(knownNames);

/// Of a known name.
constexpr std::string_view SpellingOf(Name name) {
    return knownNames[static_cast<std::uint32_t>(name)];
}

/// A name without its prefix. The prefix ends at the first colon: where names belong to namespaces there is no second.
constexpr std::string_view WithoutPrefix(std::string_view name) {
    return name.substr(name.find(':') + 1);  // of no colon, npos, this is the beginning
}

}  // namespace nbscore
