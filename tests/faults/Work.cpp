#include "faults/Work.h"

#include <cerrno>
#include <fstream>
#include <new>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "c/ArrowRows.h"
#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "check/DocumentCheck.h"
#include "framework/NumberText.h"
#include "framework/ScoreClsResult.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "output/OutputSink.h"
#include "selflearning/SelfLearningResult.h"
#include "selflearning/VectorValue.h"
#include "standardtranslator/GiveMyStandardTranslator.h"
#include "support/TextSink.h"
#include "support/WholeFile.h"
#include "table/CaseBinder.h"
#include "table/CsvReader.h"
#include "table/TableScorer.h"
#include "translator/GiveMyTranslator.h"
#include "verify/ModelVerifier.h"

namespace nbscore::test {
namespace {

/// A stream hides an exception thrown while it grows, unless it is told not to.
class HonestStream : public std::ostringstream {
public:
    HonestStream() { exceptions(std::ios::badbit); }
};

std::shared_ptr<PluginLibrary> GetPlugin() {
    static const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    return plugin;
}

/// The translator that is part of this program.
std::unique_ptr<ScoreTranslator> MakeTranslator(ScoringRule rule) {
    return std::unique_ptr<ScoreTranslator>(rule == ScoringRule::Standard ? GiveMyStandardTranslator()
                                                                          : GiveMyTranslator());
}

std::unique_ptr<ScoreModel> ReadInProcess(const DocumentAndRows& about) {
    const std::unique_ptr<ScoreTranslator> translator = MakeTranslator(about.rule);
    SourceDocument source = SourceDocument::Read(about.document.string());
    source.Adapt();
    return source.Translate(*translator);
}

class Reading : public Work {
public:
    explicit Reading(const DocumentAndRows& about) : document(about.document.string()), rule(about.rule) {}

    std::string Do() override {
        const std::unique_ptr<ScoreTranslator> translator = MakeTranslator(rule);
        const std::unique_ptr<ScoreModel> model(translator->ParseFromTree(document, "UTF-8"));
        HonestStream text;
        model->Display(text);
        return text.str();
    }

private:
    std::string document;
    ScoringRule rule;
};

class Verifying : public Work {
public:
    explicit Verifying(const DocumentAndRows& about) : document(about.document.string()), rule(about.rule) {}

    std::string Do() override {
        SourceDocument source = SourceDocument::Read(document);
        HonestStream text;
        for (const Adaptation& adaptation : source.Adapt())
            text << adaptation.place.line << ' ' << adaptation.change << '\n';
        const LoadedModel loaded = LoadedModel::Read(GetPlugin(), source, rule);
        loaded.RequireScorable();
        for (const IgnoredConstruct& ignored : source.FindIgnored())
            text << ignored.place.line << ' ' << ignored.message << '\n';
        const VerificationSummary summary = VerifyModel(
            loaded.Get(), source.ReadVerification(rule), [](const CellDifference&) {}, [] {});
        text << summary.rows << ' ' << summary.cells << ' ' << summary.differences;
        return text.str();
    }

private:
    std::string document;
    ScoringRule rule;
};

class Checking : public Work {
public:
    explicit Checking(const DocumentAndRows& about) : document(about.document), rule(about.rule) {}

    std::string Do() override {
        const std::vector<DocumentCheck> checks = {CheckDocument(GetPlugin(), document, true, {}, rule)};
        if (!checks.front().IsReadable()) throw std::runtime_error(checks.front().problems.front().message);
        return WriteCheckAsText(checks.front()) + WriteChecksAsJson(checks);
    }

private:
    std::filesystem::path document;
    ScoringRule rule;
};

using Descriptors = VectorValue<SelfLearningResult::ModelDescriptor>;

std::string Describe(const ScoreResult& result) {
    std::string text;
    if (const auto* list = dynamic_cast<const Descriptors*>(result.GetPrediction())) {
        for (const auto& descriptor : list->GetVectorValue())
            text += FormatNumber(descriptor.score) + ' ';
        return text;
    }
    text = result.GetPrediction()->GetString();
    for (const auto& [value, probability] : dynamic_cast<const ScoreClsResult&>(result).GetAllValuePercent())
        text += ' ' + FormatNumber(probability);
    return text;
}

class ScoringRecords : public Work {
public:
    ScoringRecords(const DocumentAndRows& about, bool reuse) : model(ReadInProcess(about)), isReused(reuse) {
        std::ifstream rows(about.rows, std::ios::binary);
        CsvReader reader(rows, "rows", ',');
        std::vector<std::string_view> cells;
        reader.ReadRow(cells);
        const std::vector<std::string> header(cells.begin(), cells.end());
        while (reader.ReadRow(cells)) {
            // A binder has one record, so each record that is kept needs its own binder.
            binders.push_back(std::make_unique<CaseBinder>(*model, header, "rows", CaseBinderOptions{}));
            records.push_back(&binders.back()->Bind(cells, 0));
        }
    }
    ~ScoringRecords() override { delete result; }

    std::string Do() override {
        std::string text;
        for (const ScoreCaseRecord* record : records) {
            if (!isReused) {
                delete result;
                result = nullptr;
            }
            model->GetScore(record, result, false);
            text += Describe(*result) + '\n';
        }
        return text;
    }

private:
    std::unique_ptr<ScoreModel> model;
    bool isReused;
    std::vector<std::unique_ptr<CaseBinder>> binders;
    std::vector<const ScoreCaseRecord*> records;
    ScoreResult* result = nullptr;
};

class ScoringTables : public Work {
public:
    explicit ScoringTables(const DocumentAndRows& about)
        : model(nullptr, ReadInProcess(about)), table(ReadWholeFile(about.rows)) {}

    std::string Do() override {
        TextSink sink;
        TableScorerOptions options;
        ScoreInto(sink, options);
        options.output.reasons.most = 2;
        ScoreInto(sink, options);
        options.output.format = ScoreFormat::JsonLines;
        ScoreInto(sink, options);
        options.output.format = ScoreFormat::Csv;
        options.output.subModels.longRows = true;
        ScoreInto(sink, options);
        options.output.subModels = {.longRows = false, .best = 2};
        ScoreInto(sink, options);
        return sink.text;
    }

private:
    void ScoreInto(OutputSink& sink, const TableScorerOptions& options) {
        std::istringstream rows(table);
        ScoreTable(model.Get(), rows, "rows", sink, options, nullptr);
    }

    LoadedModel model;
    std::string table;
};

/// Throws what a call of the C interface answers as the exception that it stands for.
void Require(nbscore_error* failure) {
    const ErrorHandle error(failure);
    if (error == nullptr) return;
    if (error->kind == NBSCORE_OUT_OF_MEMORY) throw std::bad_alloc();
    if (error->kind == NBSCORE_REFUSED || error->kind == NBSCORE_UNREADABLE)
        throw VeskException(static_cast<VeskException::ExceptionCode>(error->code), error->message);
    throw std::runtime_error(error->message);
}

class CallingC : public Work {
public:
    explicit CallingC(const DocumentAndRows& about)
        : document(about.document.string()),
          rows(ReadRows(ReadWholeFile(about.rows))),
          table(static_cast<std::int64_t>(rows.size() - 1)) {
        reading.rule = about.rule == ScoringRule::Standard ? NBSCORE_RULE_STANDARD : NBSCORE_RULE_SMOOTHED;
        reading.adapt = 1;
        const std::unique_ptr<ScoreModel> model = ReadInProcess(about);
        AddRows(table, rows, *model, about.rule, TextShape::Dictionary);
        for (const std::string& name : rows.front())
            holdsNumbers.push_back(IsNumeric(*model, name));
        table.GetSchema();
    }

    std::string Do() override {
        ErrorHandle error;
        const ModelHandle model = Give<ModelHandle>(error, nbscore_open_file, document.c_str(), &reading);
        Require(error.release());
        const TextHandle json = Give<TextHandle>(error, nbscore_describe, model.get());
        Require(error.release());
        ArrowScores scores;
        nbscore_error* failure = nullptr;
        nbscore_score_schema(model.get(), nullptr, &scores.schema, &failure);
        Require(failure);
        nbscore_score(model.get(), nullptr, &table.GetSchema(), &table.GetArray(), &scores.array, &failure);
        Require(failure);
        std::string text = json.get();
        for (std::int64_t entry = 0; entry < scores.array.length; ++entry) {
            for (const std::string& cell : scores.GetRow(entry))
                text += cell + ' ';
        }
        return text + ExplainTable(model.get()) + ScoreRows(model.get()) + std::to_string(CountStreamed(model.get()));
    }

private:
    /// A stream of the table, which is borrowed again and again.
    ArrowArrayStream MakeStream() {
        arraysLeft = 2;
        ArrowArrayStream stream = {};
        stream.get_schema = [](ArrowArrayStream* self, ArrowSchema* out) {
            *out = static_cast<CallingC*>(self->private_data)->table.GetSchema();
            return 0;
        };
        stream.get_next = [](ArrowArrayStream* self, ArrowArray* out) {
            auto& work = *static_cast<CallingC*>(self->private_data);
            *out = work.arraysLeft-- > 0 ? work.table.GetArray() : ArrowArray{};
            return 0;
        };
        stream.get_last_error = [](ArrowArrayStream*) -> const char* { return nullptr; };
        stream.release = [](ArrowArrayStream* self) { self->release = nullptr; };
        stream.private_data = this;
        return stream;
    }

    std::string ExplainTable(const nbscore_model* model) {
        ArrowScores evidence;
        nbscore_explaining explaining = NBSCORE_EXPLAINING_INIT;
        explaining.factors = 1;
        nbscore_error* failure = nullptr;
        nbscore_explain_schema(model, &explaining, &evidence.schema, &failure);
        Require(failure);
        nbscore_explain(model, &explaining, &table.GetSchema(), &table.GetArray(), &evidence.array, &failure);
        Require(failure);
        std::string text;
        for (std::int64_t entry = 0; entry < evidence.array.length; ++entry) {
            for (const std::string& cell : evidence.GetRow(entry))
                text += cell + ' ';
        }
        return text;
    }

    std::string ScoreRows(const nbscore_model* model) {
        ErrorHandle error;
        const RowHandle row = Give<RowHandle>(error, nbscore_row_make, model);
        Require(error.release());
        std::string text;
        for (std::size_t i = 1; i < rows.size(); ++i) {
            for (std::size_t column = 0; column < holdsNumbers.size(); ++column)
                SetField(model, row.get(), column, rows[i][column]);
            nbscore_answer answer;
            nbscore_error* failure = nullptr;
            nbscore_row_score(row.get(), &answer, &failure);
            Require(failure);
            for (std::size_t position = 0; position < answer.count; ++position)
                text += FormatNumber(answer.numbers[position]) + ' ';
        }
        return text;
    }

    void SetField(const nbscore_model* model, nbscore_row* row, std::size_t column, const std::string& cell) {
        std::size_t field = 0;
        nbscore_error* failure = nullptr;
        const std::int32_t found = nbscore_find_field(model, rows.front()[column].c_str(), &field, &failure);
        if (found == NBSCORE_BAD_CASES) return nbscore_error_free(failure);  // a column of no field
        Require(failure);
        const std::optional<double> number = holdsNumbers[column] ? ReadNumber(cell) : std::nullopt;
        if (number) {
            nbscore_row_set_number(row, field, *number, &failure);
        } else if (cell.empty() || holdsNumbers[column]) {
            nbscore_row_set_missing(row, field, &failure);
        } else {
            nbscore_row_set_text(row, field, cell.data(), cell.size(), &failure);
        }
        Require(failure);
    }

    std::int64_t CountStreamed(const nbscore_model* model) {
        ArrowArrayStream cases = MakeStream();
        ArrowArrayStream scores;
        nbscore_error* failure = nullptr;
        nbscore_score_stream(model, nullptr, &cases, &scores, &failure);
        Require(failure);
        std::int64_t count = 0;
        int fault = 0;
        for (bool isAtEnd = false; !isAtEnd && fault == 0;) {
            ArrowScores next;
            fault = scores.get_next(&scores, &next.array);
            isAtEnd = next.array.release == nullptr;
            count += next.array.length;
        }
        scores.release(&scores);
        if (fault == ENOMEM) throw std::bad_alloc();
        if (fault != 0) throw std::runtime_error("the stream answers " + std::to_string(fault));
        return count;
    }

    std::string document;
    nbscore_reading reading = NBSCORE_READING_INIT;
    std::vector<std::vector<std::string>> rows;
    /// By the columns of the rows.
    std::vector<bool> holdsNumbers;
    ArrowTable table;
    int arraysLeft = 0;
};

}  // namespace

std::vector<DocumentAndRows> AllDocuments() {
    const std::filesystem::path examples = NBSCORE_EXAMPLES;
    const std::filesystem::path documents = NBSCORE_FAULT_DOCUMENTS;
    return {{"Titanic", examples / "titanic/titanic.pmml", examples / "titanic/people.csv"},
            {"Iris", examples / "iris/iris.pmml", examples / "iris/flowers.csv"},
            {"Offers", examples / "offers/offers.pmml", examples / "offers/customers.csv"},
            {"DerivedFields", documents / "derived-fields.pmml", documents / "derived-fields.csv"},
            {"NewerProducer", documents / "newer-producer.pmml", documents / "newer-producer.csv"},
            {"Standard", documents / "standard.pmml", documents / "standard.csv", ScoringRule::Standard}};
}

std::unique_ptr<Work> MakeReading(const DocumentAndRows& about) {
    return std::make_unique<Reading>(about);
}
std::unique_ptr<Work> MakeVerifying(const DocumentAndRows& about) {
    return std::make_unique<Verifying>(about);
}
std::unique_ptr<Work> MakeChecking(const DocumentAndRows& about) {
    return std::make_unique<Checking>(about);
}
std::unique_ptr<Work> MakeScoringWithOneResult(const DocumentAndRows& about) {
    return std::make_unique<ScoringRecords>(about, true);
}
std::unique_ptr<Work> MakeScoringWithNewResults(const DocumentAndRows& about) {
    return std::make_unique<ScoringRecords>(about, false);
}
std::unique_ptr<Work> MakeScoringTables(const DocumentAndRows& about) {
    return std::make_unique<ScoringTables>(about);
}

std::unique_ptr<Work> MakeCallingC(const DocumentAndRows& about) {
    return std::make_unique<CallingC>(about);
}

}  // namespace nbscore::test
