// Bytes as a document: by either rule read, scored, displayed, checked, adapted, verified. What is refused is refused
// with a number, a message and a place, and by all ways of reading it alike; what is read scores the same whether or
// not a result is filled again, and in a batch. Where the parser of plain documents reads one, it makes the tree that
// the XML library's makes.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "MemoryFile.h"
#include "Require.h"
#include "batch/AnswerColumns.h"
#include "batch/BatchScorer.h"
#include "batch/Column.h"
#include "check/DocumentCheck.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ScoreModel.h"
#include "framework/ScoringRule.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "output/HostError.h"
#include "pmml/DocumentBytes.h"
#include "pmml/PlainParser.h"
#include "pmml/XmlServices.h"
#include "reading/BaseTranslator.h"
#include "reading/DocumentFaults.h"
#include "support/TreeText.h"
#include "table/ModelResults.h"
#include "table/ScoreWriter.h"
#include "verify/ModelVerifier.h"

namespace nbscore::fuzz {
namespace {

const std::shared_ptr<PluginLibrary>& Plugin() {
    static const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    return plugin;
}

/// Far below what the fuzzer counts as a fault: even a short document can use all of it.
Limits FuzzLimits() {
    Limits limits;
    limits.maxMemory = 300'000'000;
    return limits;
}

/// What came of reading a document.
struct Outcome {
    std::optional<LoadedModel> model;
    std::optional<VeskException> refusal;
};

template <typename Read>
Outcome OutcomeOf(const Read& read) {
    Outcome outcome;
    try {
        outcome.model.emplace(read());
    } catch (const VeskException& refusal) {
        outcome.refusal = refusal;
    } catch (VeskException* thrown) {
        const std::unique_ptr<VeskException> owner(thrown);
        outcome.refusal = *thrown;
    }
    return outcome;
}

LoadedModel ReadStream(const std::string& text, ScoringRule rule) {
    std::istringstream stream(text);
    const std::unique_ptr<ScoreTranslator> translator = Plugin()->MakeTranslator(rule);
    dynamic_cast<BaseTranslator&>(*translator).SetLimits(FuzzLimits());
    try {
        return {Plugin(), std::unique_ptr<ScoreModel>(translator->ParseFromTree(stream, "UTF-8"))};
    } catch (const VeskException& refusal) {
        const auto* const faults = dynamic_cast<const DocumentFaults*>(translator.get());
        const bool knowsMore = faults != nullptr && !faults->GetFaults().empty();
        Require(!knowsMore || faults->GetFaults().front().GetMessage() == refusal.GetMessage(),
                "a document is refused for its first fault");
        throw;
    }
}

void RequireFullRefusal(const VeskException& refusal) {
    const DocumentPlace& place = refusal.GetPlace();
    Require(refusal.GetCode() >= VeskException::UnexpectedElement &&
                refusal.GetCode() <= VeskException::InconsistentDocument &&
                refusal.GetCode() != VeskException::UnreadableSource,
            "a refusal has one of the codes for documents");
    Require(!refusal.GetMessage().empty(), "a refusal has a message");
    const bool isOfXml = refusal.GetCode() == VeskException::MalformedDocument ||
                         refusal.GetCode() == VeskException::UnsupportedEncoding;
    Require(isOfXml || (place.line > 0 && place.column > 0 && !place.elementPath.empty()),
            "a refusal of an element has its line, column and path");
}

void RequireSame(const Outcome& outcome, const Outcome& other, std::string_view reason) {
    Require(outcome.refusal.has_value() == other.refusal.has_value(), reason);
    if (!outcome.refusal) return;
    Require(outcome.refusal->GetCode() == other.refusal->GetCode() &&
                outcome.refusal->GetMessage() == other.refusal->GetMessage() &&
                outcome.refusal->GetPlace().line == other.refusal->GetPlace().line &&
                outcome.refusal->GetPlace().elementPath == other.refusal->GetPlace().elementPath,
            reason);
}

bool IsScorable(const LoadedModel& model) {
    try {
        model.RequireScorable();
        return true;
    } catch (const UnscorableModelError&) {
        return false;
    }
}

constexpr std::size_t numCases = 6;
constexpr std::size_t mostDeclaredValues = 3;

constexpr std::array numbers = {
    0.0, -1.0, 0.5, std::numeric_limits<double>::max(), std::numeric_limits<double>::infinity(), 1e-300, 1e9};
constexpr std::array<std::string_view, 5> texts = {"", "nobody declares this", "1", "\xFF\xFE", "true"};

void SetValue(BaseCaseRecord& record, int position, const ScoreValue& value) {
    if (value.GetType() == ScoreValue::Numeric) {
        record.SetNumber(position, value.GetDouble());
    } else {
        record.SetText(position, value.GetString());
    }
}

/// @param choice counts up; each field cycles through its own list of values.
void SetSomeValue(BaseCaseRecord& record, int position, const ScoreDictVar& field, std::size_t choice) {
    const ScoreValueLabelSet* const labels = field.GetValueLabelSet();
    const std::size_t declared = labels == nullptr ? 0 : std::min(labels->GetValueLabels().size(), mostDeclaredValues);
    const std::size_t step = choice % (declared + 3);
    if (step < declared) {
        SetValue(record, position, *labels->GetValueLabels()[step].GetValue());
    } else if (step == declared) {
        record.SetAbsent(position);
    } else if ((step == declared + 1) == (field.GetStorageType() == ScoreDictVar::NumericStorage)) {
        record.SetNumber(position, numbers[choice % numbers.size()]);
    } else {
        record.SetText(position, texts[choice % texts.size()]);
    }
}

std::vector<ScoreDictVar*> FieldsOf(const ScoreModel& model) {
    std::vector<ScoreDictVar*> fields;
    if (model.GetDictionary() != nullptr) model.GetDictionary()->GetAllVars(fields);
    return fields;
}

/// Some cases over all fields of a model's dictionary: values that the document declares, values that it does not,
/// texts where it has numbers and the other way round, numbers at the limits, missing ones.
std::vector<BaseCaseRecord> MakeCases(const ScoreModel& model) {
    const std::vector<ScoreDictVar*> fields = FieldsOf(model);
    std::vector<std::string> names;
    for (const ScoreDictVar* field : fields)
        names.push_back(field->GetName());
    std::vector<BaseCaseRecord> cases;
    for (std::size_t number = 0; number < numCases; ++number) {
        BaseCaseRecord& record = cases.emplace_back(names);
        for (std::size_t i = 0; i < fields.size(); ++i)
            SetSomeValue(record, static_cast<int>(i), *fields[i], number + i);
    }
    return cases;
}

void Score(ScoreModel& model) {
    const std::unique_ptr<ScoreWriter> writer =
        MakeScoreWriter(model, {}, "cases", {.format = ScoreFormat::JsonLines, .prefix = {}, .subModels = {}});
    ScoredCaseReader results(model, {});
    ReusedResult reused;
    for (const BaseCaseRecord& record : MakeCases(model)) {
        ReusedResult fresh;
        std::string again;
        std::string first;
        writer->AppendCase(first, {}, results.Read(record, fresh.Score(model, record)));
        writer->AppendCase(again, {}, results.Read(record, reused.Score(model, record)));
        Require(first == again, "a result that is filled again tells the same as a new one");
    }
}

/// The value of a case as a column of its own.
struct SingleValue {
    explicit SingleValue(const ScoreValue* value) {
        if (value == nullptr) return;
        if (value->GetType() == ScoreValue::Numeric) {
            number = value->GetDouble();
            column = NumberColumn{std::span(&number, 1), {}};
        } else {
            text = value->GetString();
            view = text;
            column = TextViewColumn{std::span(&view, 1), {}};
        }
    }
    SingleValue(const SingleValue&) = delete;
    SingleValue& operator=(const SingleValue&) = delete;

    double number = 0.0;
    std::string text;
    std::string_view view;
    Column column = AbsentColumn{};
};

bool AreSame(double number, double other) {
    return number == other || (std::isnan(number) && std::isnan(other));
}

void RequireSameScores(const BatchScorer& scorer, const std::vector<Column>& columns, const ScoreResult& result) {
    if (scorer.IsSet()) {
        const std::vector<SubModelScore>& expected = RequireSubModelScores(result, scorer.GetSubModels().size());
        std::vector<double> scores(expected.size());
        AnswerColumns answers;
        answers.probabilities = scores;
        scorer.Score(columns, 1, answers);
        for (std::size_t m = 0; m < scores.size(); ++m)
            Require(AreSame(scores[m], expected[m].score), "a sub-model scores in a batch what it scores by itself");
        return;
    }
    std::int32_t predicted = 0;
    double confidence = 0.0;
    AnswerColumns answers;
    answers.predicted = std::span(&predicted, 1);
    answers.confidence = std::span(&confidence, 1);
    scorer.Score(columns, 1, answers);
    const ScoreValue* const prediction = result.GetPrediction();
    Require((predicted < 0) == (prediction == nullptr), "a case has a result in a batch where it has one by itself");
    if (prediction == nullptr) return;
    Require(scorer.GetCategories().at(static_cast<std::size_t>(predicted)) == prediction->GetString() &&
                AreSame(confidence, result.GetConfidence()),
            "a case scores in a batch as by itself");
}

/// Models with derived inputs are left out: a batch takes their values as they are given.
void ScoreInBatches(ScoreModel& model) {
    const BatchScorer scorer(model);
    if (scorer.ReadsDerivedFields()) return;
    for (const BaseCaseRecord& record : MakeCases(model)) {
        std::vector<std::unique_ptr<const SingleValue>> values;
        std::vector<Column> columns;
        for (const BatchInput& input : scorer.GetInputs()) {
            values.push_back(std::make_unique<const SingleValue>(record.GetValueByName(input.name)));
            columns.push_back(values.back()->column);
        }
        ReusedResult result;
        RequireSameScores(scorer, columns, result.Score(model, record));
    }
}

void Display(const ScoreModel& model) {
    std::ostringstream stream;
    model.Display(stream);
    Require(stream.good() && !stream.str().empty(), "a model can be displayed");
}

void RequireSoundIf(bool scorable, const DocumentCheck& check) {
    Require(check.CanBeScored() == scorable, "a check finds that a document can be scored when it can");
    Require(check.IsReadable(), "a check can read what is there");
    Require(!WriteCheckAsText(check).empty() && !WriteChecksAsJson({check}).empty(), "a check has reports");
}

void Verify(ScoreModel& model, const SourceDocument& source, ScoringRule rule) {
    try {
        VerifyModel(
            model, source.ReadVerification(rule), [](const CellDifference&) {}, [] {});
    } catch (const VeskException& refusal) {
        RequireFullRefusal(refusal);
    }
}

Outcome ReadAdapted(SourceDocument& source, ScoringRule rule) {
    return OutcomeOf([&source, rule] {
        source.Adapt();
        return LoadedModel::Read(Plugin(), source, rule);
    });
}

void Adapt(SourceDocument& source, ScoringRule rule) {
    const Outcome adapted = ReadAdapted(source, rule);
    if (adapted.refusal) RequireFullRefusal(*adapted.refusal);
    if (adapted.model && IsScorable(*adapted.model)) {
        Score(adapted.model->Get());
        source.FindIgnored();
    }
    RequireSame(adapted, ReadAdapted(source, rule), "a document that is adapted again stays the same");
}

void TryDocument(const std::string& text, ScoringRule rule) {
    const Outcome read = OutcomeOf([&text, rule] { return ReadStream(text, rule); });
    if (read.refusal) RequireFullRefusal(*read.refusal);
    const bool scorable = read.model && IsScorable(*read.model);
    if (read.model) Display(read.model->Get());
    if (scorable) {
        Score(read.model->Get());
        ScoreInBatches(read.model->Get());
    }

    const MemoryFile file(text);
    std::optional<SourceDocument> source;
    RequireSame(read, OutcomeOf([&file, &source, rule] {
                    source.emplace(SourceDocument::Read(file.GetPath(), FuzzLimits()));
                    return LoadedModel::Read(Plugin(), *source, rule);
                }),
                "a document is refused for the same reason however it is read");
    RequireSoundIf(scorable, CheckDocument(Plugin(), file.GetPath(), false, FuzzLimits(), rule));
    if (scorable) Verify(read.model->Get(), *source, rule);
    if (source) Adapt(*source, rule);
}

void RequireParsersAgree(const std::string& text) {
    const Limits limits = FuzzLimits();
    std::istringstream stream(text);
    DocumentBytes bytes(stream, limits);
    const ParsedDocument plain = ParsePlain(bytes, limits);
    if (plain == nullptr) return;
    std::istringstream sameStream(text);
    DocumentBytes sameBytes(sameStream, limits);
    const ParsedDocument same = GetXmlServices().Parse(sameBytes, limits);
    Require(test::TreeText(*plain) == test::TreeText(*same), "both parsers make the same tree of a document");
}

}  // namespace
}  // namespace nbscore::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    nbscore::fuzz::RequireParsersAgree(text);
    nbscore::fuzz::TryDocument(text, nbscore::ScoringRule::Smoothed);
    nbscore::fuzz::TryDocument(text, nbscore::ScoringRule::Standard);
    return 0;
}
