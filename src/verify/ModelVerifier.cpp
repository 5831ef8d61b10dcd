#include "verify/ModelVerifier.h"

#include <string_view>
#include <utility>

#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "pmml/RefusalTable.h"
#include "table/CaseBinder.h"
#include "table/ModelResults.h"
#include "verify/VerifiedValue.h"

namespace nbscore {
namespace {

/// Turns the inputs of test cases into case records, by the rules of tables of cases.
///
/// All test cases of a document share one table, and so one kind of record: a model remembers where in records its
/// inputs stand.
class VerificationInputs {
public:
    /// The column of an input, by its number.
    std::size_t AddColumn(const std::string& name) {
        const auto [column, isNew] = columns.emplace(name, header.size());
        if (isNew) header.push_back(name);
        return column->second;
    }

    /// To be called when all columns are there, before any cell is set.
    /// @param model borrowed.
    void Bind(const ScoreModel& model) {
        // Fields that the test cases leave out are missing in all of them. Errors are reported by row, not by source.
        const CaseBinderOptions options{.badValues = {}, .allowMissingFields = true};
        binder.emplace(model, header, "", options);
    }

    /// Sets a cell of the next case; those that are not set are missing. The text is borrowed until TakeRecord.
    void SetCell(std::size_t column, std::string_view text) { cells.push_back({column, text}); }

    /// The next case's record, valid until the one after it. Throws CaseDataError for a number that is none.
    const ScoreCaseRecord& TakeRecord() {
        const ScoreCaseRecord& record = binder->BindSparse(cells, 0);
        cells.clear();
        return record;
    }

private:
    std::vector<std::string> header;
    SeededMap<std::string, std::size_t> columns;
    /// Those of the next case that are set: a wide table costs nothing where rows are sparse.
    std::vector<PlacedCell> cells;
    std::optional<CaseBinder> binder;
};

/// What one field of a suite is, and, of an input, where in the table of inputs it stands.
struct BoundField {
    VerifiedValue value;
    std::size_t column = 0;

    bool IsInput() const { return value.kind == VerifiedValue::Kind::Input; }
};

/// A row of a suite, and its fields.
struct BoundRow {
    const VerificationSuite& suite;
    const std::vector<BoundField>& fields;
    std::size_t number;

    const VerificationRow& Get() const { return suite.rows[number]; }

    /// What is wrong with a row is a fault of the document.
    VeskException RefusalFor(const std::string& problem) const {
        VeskException refusal = MakeRefusal(Refusal::TestRowUnusable, {std::to_string(number + 1), problem});
        refusal.SetPlace(suite.GetPlaceOfRow(number));
        return refusal;
    }
};

class Verification {
public:
    Verification(ScoreModel& verifiedModel, const std::vector<VerificationSuite>& verificationSuites,
                 const std::function<void(const CellDifference&)>& differenceListener)
        : model(verifiedModel), suites(verificationSuites), onDifference(differenceListener) {
        if (const auto names = FindSubModelNames(model)) subModelLabels = LabelSubModels(*names);
        for (const VerificationSuite& suite : suites) {
            BindFields(suite);
        }
    }

    VerificationSummary Run(const std::function<void()>& onRow) {
        if (suites.empty()) return summary;
        inputs.Bind(model);
        std::optional<std::size_t> numSubModels;
        if (subModelLabels) numSubModels = subModelLabels->size();
        scores.emplace(model, numSubModels);
        for (std::size_t suite = 0; suite < suites.size(); ++suite) {
            for (std::size_t row = 0; row < suites[suite].rows.size(); ++row) {
                onRow();
                VerifyRow({suites[suite], fieldsOfSuites[suite], row});
            }
        }
        return summary;
    }

private:
    std::optional<std::string> LabelOf(const VerificationSuite& suite) const {
        if (!subModelLabels) return std::nullopt;
        if (suite.modelIndex < subModelLabels->size()) return subModelLabels->at(suite.modelIndex);
        throw UnscorableModelError("The model has fewer sub-models than its document has model elements.");
    }

    void BindFields(const VerificationSuite& suite) {
        const VerifiedValueFinder finder(model, suite, LabelOf(suite));
        std::vector<BoundField>& bound = fieldsOfSuites.emplace_back();
        for (std::size_t field = 0; field < suite.fields.size(); ++field) {
            BoundField& added = bound.emplace_back(BoundField{finder.Find(field)});
            if (added.IsInput()) added.column = inputs.AddColumn(suite.fields[field].name);
        }
    }

    void VerifyRow(const BoundRow& row) {
        std::vector<const VerificationCell*> expectations;
        for (const VerificationCell& cell : row.Get().cells) {
            const BoundField& field = row.fields[cell.field];
            if (field.IsInput()) {
                inputs.SetCell(field.column, cell.text);
            } else {
                expectations.push_back(&cell);
            }
        }
        ++summary.rows;
        const ScoreCaseRecord& record = TakeRecord(row);
        if (expectations.empty()) return;
        scores->Score(record, row.suite.modelIndex);
        for (const VerificationCell* cell : expectations) {
            Compare(row, *cell);
        }
    }

    const ScoreCaseRecord& TakeRecord(const BoundRow& row) {
        try {
            return inputs.TakeRecord();
        } catch (const CaseDataError& error) {
            throw row.RefusalFor(error.GetProblem());
        }
    }

    void Compare(const BoundRow& row, const VerificationCell& cell) {
        const VerificationField& field = row.suite.fields[cell.field];
        const VerifiedValue& value = row.fields[cell.field].value;
        VerifiedCell expected = VerifiedCell::OfText(cell.text);
        if (scores->IsNumber(value)) {
            expected.number = ReadNumber(cell.text);
            if (!expected.number) {
                throw row.RefusalFor("field " + QuoteForMessage(field.name) + ": " + QuoteForMessage(cell.text) +
                                     " is no number");
            }
        }
        ++summary.cells;
        std::optional<NumericTolerance> tolerance;
        const bool isPrediction = value.kind == VerifiedValue::Kind::Prediction;
        if (!isPrediction && expected.number) tolerance = {field.precision, field.zeroThreshold};
        VerifiedCell actual = scores->Get(value);
        if (Agree(expected, actual, tolerance)) return;
        ++summary.differences;
        onDifference({LabelOf(row.suite), row.number + 1, row.suite.GetPlaceOfRow(row.number), field.name,
                      std::move(expected), std::move(actual), tolerance});
    }

    ScoreModel& model;
    const std::vector<VerificationSuite>& suites;
    const std::function<void(const CellDifference&)>& onDifference;
    std::optional<std::vector<std::string>> subModelLabels;
    std::vector<std::vector<BoundField>> fieldsOfSuites;
    VerificationInputs inputs;
    std::optional<VerifiedScores> scores;
    VerificationSummary summary;
};

}  // namespace

VerificationSummary VerifyModel(ScoreModel& model, const std::vector<VerificationSuite>& suites,
                                const std::function<void(const CellDifference&)>& onDifference,
                                const std::function<void()>& onRow) {
    return Verification(model, suites, onDifference).Run(onRow);
}

}  // namespace nbscore
