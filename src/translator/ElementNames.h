#pragma once

#include "framework/xml/XmlName.h"

/// @file
/// The names that the translator looks for in a document, as the parser holds texts.

namespace nbscore::element {

inline constexpr XmlName application{"Application"};
inline constexpr XmlName bayesInput{"BayesInput"};
inline constexpr XmlName bayesInputs{"BayesInputs"};
inline constexpr XmlName bayesOutput{"BayesOutput"};
inline constexpr XmlName dataDictionary{"DataDictionary"};
inline constexpr XmlName dataField{"DataField"};
inline constexpr XmlName derivedField{"DerivedField"};
inline constexpr XmlName discretize{"Discretize"};
inline constexpr XmlName discretizeBin{"DiscretizeBin"};
inline constexpr XmlName extension{"Extension"};
inline constexpr XmlName interval{"Interval"};
inline constexpr XmlName miningField{"MiningField"};
inline constexpr XmlName miningSchema{"MiningSchema"};
inline constexpr XmlName naiveBayesModel{"NaiveBayesModel"};
inline constexpr XmlName pairCounts{"PairCounts"};
inline constexpr XmlName targetValueCount{"TargetValueCount"};
inline constexpr XmlName targetValueCounts{"TargetValueCounts"};
inline constexpr XmlName transformationDictionary{"TransformationDictionary"};

}  // namespace nbscore::element

namespace nbscore::attribute {

inline constexpr XmlName algorithmName{"algorithmName"};
inline constexpr XmlName binValue{"binValue"};
inline constexpr XmlName count{"count"};
inline constexpr XmlName extender{"extender"};
inline constexpr XmlName fieldName{"fieldName"};
inline constexpr XmlName leftMargin{"leftMargin"};
inline constexpr XmlName modelName{"modelName"};
inline constexpr XmlName name{"name"};
inline constexpr XmlName rightMargin{"rightMargin"};
inline constexpr XmlName threshold{"threshold"};
inline constexpr XmlName usageType{"usageType"};
inline constexpr XmlName value{"value"};
inline constexpr XmlName version{"version"};

}  // namespace nbscore::attribute
