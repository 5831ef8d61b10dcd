#include "verify/VerificationSuite.h"

#include <string>
#include <string_view>
#include <utility>

#include "framework/Blanks.h"
#include "framework/CountedNoun.h"
#include "framework/SeededHash.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// The VerificationFields of test cases, one after the other, and the columns that they have in the rows.
class FieldReader {
public:
    void Read(Element fieldsElement) {
        for (const Element element : fieldsElement.GetChildren(Name::VerificationField))
            ReadField(element);
        if (!fields.empty()) return;
        throw RefusalAt(fieldsElement, Refusal::VerificationFieldsMissing);
    }

    const std::vector<VerificationField>& GetFields() const { return fields; }
    /// The field whose column this is, by its number; the column's name without a prefix.
    const SeededMap<std::string, std::size_t>& GetColumns() const { return columns; }

private:
    static double ReadTolerance(Element element, Name name, double absent) {
        const auto text = element.GetAttribute(name);
        const double tolerance = text ? DoubleAt(element, *text) : absent;
        if (tolerance >= 0.0) return tolerance;
        throw RefusalAt(element, Refusal::ToleranceNegative, {SpellingOf(name)});
    }

    void ReadField(Element element) {
        const std::string_view name = element.GetAttributeOr(Name::field, {});
        if (name.empty()) throw RefusalAt(element, Refusal::VerificationFieldNameMissing);
        VerificationField field;
        field.name = name;
        field.precision = ReadTolerance(element, Name::precision, field.precision);
        field.zeroThreshold = ReadTolerance(element, Name::zeroThreshold, field.zeroThreshold);
        field.line = element.GetLine();
        field.column = element.GetColumn();
        if (!names.insert(field.name).second) {
            throw RefusalAt(element, Refusal::VerificationFieldTwice, {ExcerptOf(name)});
        }
        const std::string_view column = WithoutPrefix(element.GetAttributeOr(Name::column, name));
        if (!columns.emplace(column, fields.size()).second) {
            throw RefusalAt(element, Refusal::VerificationColumnTwice, {ExcerptOf(column)});
        }
        fields.push_back(std::move(field));
    }

    std::vector<VerificationField> fields;
    SeededMap<std::string, std::size_t> columns;
    SeededSet<std::string> names;
};

/// Reads the rows of test cases. A child of a row is a cell; its name without the prefix is the column. Only cells that
/// are not blank are kept, so that memory is bounded by the document's size however many fields there are.
class RowReader {
public:
    /// @param fieldsByColumn borrowed.
    explicit RowReader(const SeededMap<std::string, std::size_t>& fieldsByColumn)
        : columns(fieldsByColumn), lastRowOfField(fieldsByColumn.size(), 0) {}

    VerificationRow Read(Element rowElement) {
        VerificationRow row;
        row.line = rowElement.GetLine();
        row.column = rowElement.GetColumn();
        ++rowNumber;
        for (const Element node : rowElement.GetChildNodes()) {
            if (!node.IsText()) {
                ReadCell(node, row);
            } else if (!WithoutBlanks(node.GetText()).empty()) {
                throw RefusalAt(rowElement, Refusal::TestRowHoldsText);
            }
        }
        return row;
    }

    /// The names of cells so far that belong to no field.
    std::vector<UnusedColumn> TakeUnusedColumns() { return std::move(unused); }

private:
    void ReadCell(Element cell, VerificationRow& row) {
        std::string name(WithoutPrefix(cell.GetSpelling()));
        const auto column = columns.find(name);
        if (column == columns.end()) {
            if (unusedNames.insert(name).second) unused.push_back({std::move(name), row.line, row.column});
            return;
        }
        if (std::exchange(lastRowOfField[column->second], rowNumber) == rowNumber) {
            throw RefusalAt(cell, Refusal::TestCellTwice, {name});
        }
        if (const Element inner = cell.GetFirstChild()) throw RefusalAt(inner, Refusal::TestCellHoldsElements);
        std::string text = cell.GetTextInside();
        if (!WithoutBlanks(text).empty()) row.cells.push_back({column->second, std::move(text)});
    }

    const SeededMap<std::string, std::size_t>& columns;
    std::vector<UnusedColumn> unused;
    SeededSet<std::string> unusedNames;
    /// The number, from 1, of the last row that had a cell of each field.
    std::vector<std::size_t> lastRowOfField;
    std::size_t rowNumber = 0;
};

OutputDeclaration ReadOutputField(Element element) {
    OutputDeclaration output;
    output.name = element.GetAttributeOr(Name::name, {});
    output.feature = element.GetAttributeOr(Name::feature, output.feature);
    output.value = element.GetAttributeOr(Name::value, {});
    output.targetField = element.GetAttributeOr(Name::targetField, {});
    output.segment = element.GetAttributeOr(Name::segmentId, {});
    if (const auto rank = element.GetAttribute(Name::rank)) output.rank = IntAt(element, *rank);
    return output;
}

/// What the Output of a model element declares; nothing when it has none. An OutputField without a name cannot be
/// referred to and is left out.
std::vector<OutputDeclaration> ReadOutput(Element modelElement) {
    std::vector<OutputDeclaration> outputs;
    SeededSet<std::string> names;
    for (const Element element : OnlyChild(modelElement, Name::Output).GetChildren(Name::OutputField)) {
        OutputDeclaration output = ReadOutputField(element);
        if (output.name.empty()) continue;
        if (!names.insert(output.name).second) {
            throw RefusalAt(element, Refusal::OutputFieldTwice, {ExcerptOf(output.name)});
        }
        outputs.push_back(std::move(output));
    }
    return outputs;
}

Element RequirePart(Element verification, Name name) {
    if (const Element part = OnlyChild(verification, name)) return part;
    throw RefusalAt(verification, Refusal::VerificationPartMissing, {SpellingOf(name)});
}

Element RequireTable(Element verification) {
    if (const Element locator = verification.GetChild(Name::TableLocator)) {
        throw RefusalAt(locator, Refusal::VerificationTableNotInline);
    }
    return RequirePart(verification, Name::InlineTable);
}

/// @param counted the noun of what is counted.
void RequireTrueCount(Element verification, Name attribute, std::size_t count, const std::string& counted) {
    const auto text = verification.GetAttribute(attribute);
    if (!text) return;
    const int declared = IntAt(verification, *text);
    if (declared >= 0 && static_cast<std::size_t>(declared) == count) return;
    throw RefusalAt(
        verification, Refusal::TestCasesMiscounted,
        {SpellingOf(attribute), std::to_string(declared), count == 1 ? "is" : "are", CountedNoun(count, counted)});
}

VerificationSuite ReadModelVerification(Element verification, ElementPaths& paths) {
    const Element fields = RequirePart(verification, Name::VerificationFields);
    const Element table = RequireTable(verification);
    FieldReader fieldReader;
    fieldReader.Read(fields);
    const std::vector<Element> rows = table.GetChildren(Name::row).List();
    RequireTrueCount(verification, Name::recordCount, rows.size(), "row");
    RequireTrueCount(verification, Name::fieldCount, fieldReader.GetFields().size(), "verification field");

    VerificationSuite suite;
    suite.fields = fieldReader.GetFields();
    suite.fieldsPath = paths.Find(fields);
    suite.rowsPath = paths.Find(table);
    RowReader rowReader(fieldReader.GetColumns());
    for (const Element row : rows)
        suite.rows.push_back(rowReader.Read(row));
    suite.unusedColumns = rowReader.TakeUnusedColumns();
    return suite;
}

/// The outermost first.
std::vector<Element> MiningModelsAround(Element model) {
    std::vector<Element> around;
    for (Element element = model.GetParent(); element; element = element.GetParent()) {
        if (element.Is(Name::MiningModel)) around.insert(around.begin(), element);
    }
    return around;
}

std::string ItemPath(const std::string& parentPath, Name name, std::size_t index) {
    return parentPath + "/" + std::string(SpellingOf(name)) + "[" + std::to_string(index + 1) + "]";
}

}  // namespace

DocumentPlace VerificationSuite::GetPlaceOfField(std::size_t field) const {
    return {source, fields[field].line, fields[field].column, ItemPath(fieldsPath, Name::VerificationField, field)};
}

DocumentPlace VerificationSuite::GetPlaceOfRow(std::size_t row) const {
    return {source, rows[row].line, rows[row].column, ItemPath(rowsPath, Name::row, row)};
}

std::vector<VerificationSuite> ReadVerificationSuites(const DocumentTree& document, ScoringRule rule) {
    const ModelsRead models = FindModelsRead(document.GetRoot());
    std::vector<VerificationSuite> suites;
    ElementPaths paths;
    const auto read = [&](Element model, std::size_t index) {
        const Element verification = OnlyChild(model, Name::ModelVerification);
        if (!verification) return;
        suites.push_back(ReadModelVerification(verification, paths));
        suites.back().outputs = ReadOutput(model);
        suites.back().modelIndex = index;
    };
    for (std::size_t i = 0; i < models.elements.size(); ++i) {
        if (rule == ScoringRule::Standard) {
            for (const Element around : MiningModelsAround(models.elements[i]))
                read(around, i);
        }
        read(models.elements[i], i);
    }
    return suites;
}

}  // namespace nbscore
