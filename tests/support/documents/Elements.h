#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/documents/Markup.h"

/// @file
/// The elements of PMML documents that tests, fuzzers and benchmarks make up, as text. Names and values are escaped,
/// content is not. Each element stands on one line, without a line break at its end.

namespace nbscore::test {

/// What a field holds: texts or numbers that are categories, or numbers that are put in bins.
enum class FieldType { Texts, Numbers, Bins };

/// A whole document.
/// @param content what stands in its root.
std::string PmmlDocument(std::string_view content);

/// The attributes that declare a field.
std::string Declaration(std::string_view name, FieldType type);
std::string Declaration(std::string_view name, std::string_view optype, std::string_view dataType);

std::string DataField(std::string_view name, FieldType type);
std::string DataField(std::string_view name, FieldType type, std::string_view content);
std::string ValueElement(std::string_view value);
/// @param property `valid`, `missing` or `invalid`.
std::string ValueElement(std::string_view value, std::string_view property);
std::string ValueElements(const std::vector<std::string>& values);

/// Derived fields of numbers that are put in bins, and of texts.
std::string DerivedNumber(std::string_view name, std::string_view expression);
std::string DerivedText(std::string_view name, std::string_view expression);
/// A function of one parameter, `p`.
std::string DefineFunction(std::string_view name, std::string_view body);

std::string FieldRef(std::string_view field);
std::string Constant(std::string_view text);
std::string TextConstant(std::string_view text);
std::string Apply(std::string_view function, std::string_view arguments);
/// @param pairs FieldColumnPair elements, with the column of each key.
/// @param rows each with a cell for the column "out", which holds the result.
std::string MapValues(std::string_view pairs, std::string_view rows);
std::string FieldColumnPair(std::string_view field, std::string_view column);
/// A row of a table.
std::string Row(std::string_view cells);
/// A cell, named after its column.
std::string Cell(std::string_view column, std::string_view text);
/// A bin of numbers; one without a margin on a side is open there.
std::string DiscretizeBin(std::string_view value, std::string_view closure, const std::optional<std::string>& left,
                          const std::optional<std::string>& right);

std::string MiningField(std::string_view name);
std::string MiningField(std::string_view name, std::string_view usageType);
/// The extension by which a schema lists the derived fields that inputs read.
/// @param fields MiningField elements.
std::string DerivedFieldsExtension(std::string_view fields);

std::string TargetValueCount(std::string_view value, std::string_view count);
std::string TargetValueCounts(std::string_view entries);
/// The counts of two target categories, no and yes.
std::string NoYesCounts(int no, int yes);
/// @param counts a TargetValueCounts element.
std::string PairCounts(std::string_view value, std::string_view counts);
/// @param content PairCounts elements, behind a BinsOfInput element where the field's numbers are put in bins.
std::string BayesInput(std::string_view field, std::string_view content);
/// @param bins DiscretizeBin elements.
std::string BinsOfInput(std::string_view name, std::string_view field, std::string_view bins);
/// @param counts a TargetValueCounts element.
std::string BayesOutput(std::string_view field, std::string_view counts);
/// A result that is the probability of a target category.
std::string ProbabilityField(std::string_view name, std::string_view category);
std::string VerifiedField(std::string_view field);
/// Test cases.
/// @param fields VerifiedField elements.
std::string ModelVerification(std::string_view fields, std::string_view rows);

}  // namespace nbscore::test
