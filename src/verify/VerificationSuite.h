#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/DocumentPlace.h"
#include "framework/ScoringRule.h"

namespace nbscore {

class DocumentTree;

/// A VerificationField: what a column of the test cases stands for, and how closely numbers in it must agree.
struct VerificationField {
    static constexpr double defaultPrecision = 1e-6;
    static constexpr double defaultZeroThreshold = 1e-16;

    std::string name;
    double precision = defaultPrecision;
    double zeroThreshold = defaultZeroThreshold;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// An OutputField: the document's name for a result of scoring.
struct OutputDeclaration {
    std::string name{};
    std::string feature = "predictedValue";
    /// Empty when absent, like targetField and segment.
    std::string value{};
    std::string targetField{};
    std::string segment{};
    int rank = 1;
};

/// A cell of a row that is not blank.
struct VerificationCell {
    /// Which of the suite's fields it belongs to, counted from 0.
    std::size_t field = 0;
    std::string text;
};

/// One test case. An input without a cell is missing, a result without one is not checked.
struct VerificationRow {
    std::vector<VerificationCell> cells;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// A column name in the rows that belongs to no field, and the place of the first row that has it.
struct UnusedColumn {
    std::string name;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// The test cases of a model element, as the document has them: what the fields mean to the model is not known here.
struct VerificationSuite {
    /// The model element's number in the document, from 0.
    std::size_t modelIndex = 0;
    std::vector<VerificationField> fields;
    /// What the model element's Output declares.
    std::vector<OutputDeclaration> outputs;
    std::vector<VerificationRow> rows;
    std::vector<UnusedColumn> unusedColumns;

    /// The document's name, and the paths of the elements that fields and rows stand in.
    std::string source;
    std::string fieldsPath;
    std::string rowsPath;

    DocumentPlace GetPlaceOfField(std::size_t field) const;
    DocumentPlace GetPlaceOfRow(std::size_t row) const;
};

/// Reads the ModelVerification of each model element that the plug-in reads, in document order; by the standard's rule
/// also those of the models around it (MiningModel). Takes time proportional to the document.
///
/// Throws VeskException, with the place: 1 for a missing part, 2 for a VerificationField without `field`, 5 for a
/// negative precision or zero threshold, for a cell that holds elements and for text between cells, 9 for a text that
/// should be a number, 11 for a TableLocator, which points outside the document, 12 for contradictions: an element,
/// field, column or output field that may occur once and occurs twice, or a wrong recordCount or fieldCount.
std::vector<VerificationSuite> ReadVerificationSuites(const DocumentTree& document,
                                                      ScoringRule rule = ScoringRule::Smoothed);

}  // namespace nbscore
