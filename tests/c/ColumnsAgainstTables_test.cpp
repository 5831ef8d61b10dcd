// Documents, most of them random, through the C interface: columns, and rows one by one, must have the scores that the
// table of the same cases has.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "c/ArrowRows.h"
#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "cases/CaseTable.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "support/TextSink.h"
#include "support/WholeFile.h"
#include "support/documents/RandomDerivedDocument.h"
#include "support/documents/RandomDocument.h"
#include "support/documents/RandomSet.h"
#include "table/TableScorer.h"

namespace nbscore::test {
namespace {

constexpr int documentsOfEachKind = 100;
constexpr int casesOfDocument = 30;

using Rows = std::vector<std::vector<std::string>>;

/// Cases of a document, and how they are scored.
struct Subject {
    std::string document;
    std::string csv;
    ScoringRule rule = ScoringRule::Smoothed;
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
};

Rows ScoreAsTable(LoadedModel& model, const Subject& subject) {
    std::istringstream stream(subject.csv);
    TextSink sink;
    TableScorerOptions options;
    options.output.onlyScores = true;
    if (subject.scoring.usual_columns != 0) options.output.columns = ResultColumns::Usual;
    options.output.predictionOnly = subject.scoring.prediction_only != 0;
    options.output.reasons.most = static_cast<std::size_t>(subject.scoring.reasons);
    if (subject.scoring.reasons_that_lift != 0) options.output.reasons.kind = ReasonKind::Lifted;
    if (subject.scoring.best != 0) options.output.subModels.best = subject.scoring.best;
    ScoreTable(model.Get(), stream, "rows.csv", sink, options, nullptr);
    return ReadRows(sink.text);
}

/// All numbers written in one way: a table tells a reason's value as its cell has it, columns tell the number.
Rows WithPlainNumbers(Rows rows) {
    for (std::vector<std::string>& row : rows) {
        for (std::string& cell : row) {
            if (const std::optional<double> number = ReadNumber(cell)) cell = FormatNumber(*number);
        }
    }
    return rows;
}

ModelHandle OpenDocument(const Subject& subject) {
    nbscore_reading reading = NBSCORE_READING_INIT;
    reading.rule = subject.rule == ScoringRule::Standard ? NBSCORE_RULE_STANDARD : NBSCORE_RULE_SMOOTHED;
    ErrorHandle error;
    ModelHandle opened = Give<ModelHandle>(error, nbscore_open_memory, subject.document.data(), subject.document.size(),
                                           "a document", &reading);
    if (error != nullptr) throw std::runtime_error(error->message);
    return opened;
}

Rows ScoreAsColumns(const ModelHandle& opened, const ScoreModel& model, const Subject& subject, TextShape shape) {
    const Rows rows = ReadRows(subject.csv);
    ArrowTable table(static_cast<std::int64_t>(rows.size() - 1));
    AddRows(table, rows, model, subject.rule, shape);
    ArrowScores scores;
    nbscore_error* failure = nullptr;
    nbscore_score(opened.get(), &subject.scoring, &table.GetSchema(), &table.GetArray(), &scores.array, &failure);
    const ErrorHandle error(failure);
    if (error != nullptr) return {{error->message}};
    nbscore_score_schema(opened.get(), &subject.scoring, &scores.schema, nullptr);
    Rows scored = {scores.GetNames()};
    for (std::int64_t entry = 0; entry < scores.array.length; ++entry)
        scored.push_back(scores.GetRow(entry));
    return scored;
}

/// Sets a row of the model to a row of a table.
void SetRow(nbscore_row* row, const ModelHandle& opened, const std::vector<std::string>& header,
            const std::vector<std::string>& cells, const ScoreModel& model, ScoringRule rule) {
    for (std::size_t column = 0; column < header.size(); ++column) {
        std::size_t field = 0;
        if (nbscore_find_field(opened.get(), header[column].c_str(), &field, nullptr) != NBSCORE_OK) continue;
        EXPECT_EQ(header[column], nbscore_field_name(opened.get(), field));
        const std::string& cell = cells[column];
        const bool isNumeric = IsNumeric(model, header[column]);
        const std::optional<double> number = isNumeric ? ReadNumber(cell) : std::nullopt;
        const bool isMissing = cell.empty() || (isNumeric && !number && rule == ScoringRule::Smoothed);
        EXPECT_EQ(NBSCORE_OK, number      ? nbscore_row_set_number(row, field, *number, nullptr)
                              : isMissing ? nbscore_row_set_missing(row, field, nullptr)
                                          : nbscore_row_set_text(row, field, cell.data(), cell.size(), nullptr));
    }
}

/// A row's answer as the cells of a table that has all the usual columns, or only the best of a set.
std::vector<std::string> AnswerOf(nbscore_row* row, const ModelHandle& opened, bool isSet, std::size_t best) {
    std::vector<std::string> cells;
    if (best != 0) {
        std::vector<nbscore_ranked> ranked(best);
        std::size_t given = 0;
        EXPECT_EQ(NBSCORE_OK, nbscore_row_best(row, ranked.data(), best, &given, nullptr));
        for (std::size_t i = 0; i < given; ++i) {
            cells.emplace_back(nbscore_answer_name(opened.get(), ranked[i].position));
            cells.push_back(FormatNumber(ranked[i].score));
        }
        return cells;
    }
    nbscore_answer answer;
    EXPECT_EQ(NBSCORE_OK, nbscore_row_score(row, &answer, nullptr));
    const auto add = [&](double number) {
        cells.push_back(number == NBSCORE_MISSING ? std::string() : FormatNumber(number));
    };
    if (!isSet) {
        const auto predicted = static_cast<std::size_t>(answer.predicted);
        cells.emplace_back(answer.predicted < 0 ? "" : nbscore_answer_name(opened.get(), predicted));
        add(answer.confidence);
    }
    std::for_each_n(answer.numbers, answer.count, add);
    return cells;
}

/// @param scores of the cases, below a line of names.
void ExpectRowsScoredAlike(const ModelHandle& opened, const ScoreModel& model, const Subject& subject,
                           const Rows& scores) {
    const Rows rows = ReadRows(subject.csv);
    nbscore_row* made = nullptr;
    ASSERT_EQ(NBSCORE_OK, nbscore_row_make(opened.get(), &made, nullptr));
    const RowHandle row(made);
    const bool isSet = !scores.front().front().starts_with("predicted_");
    for (std::size_t i = 1; i < rows.size(); ++i) {
        SetRow(made, opened, rows.front(), rows[i], model, subject.rule);
        std::vector<std::string> cells = AnswerOf(made, opened, isSet, subject.scoring.best);
        // A category that was never counted, of a model that no case says anything to, has no number.
        cells.resize(scores.front().size());
        ASSERT_EQ(scores[i], cells) << "case " << i;
    }
}

void ExpectScoredAlike(const Subject& subject, int number) {
    SCOPED_TRACE("document " + std::to_string(number) + ":\n" + subject.document + "\n" + subject.csv);
    const auto plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
    std::istringstream source(subject.document);
    LoadedModel model(
        plugin, std::unique_ptr<ScoreModel>(plugin->MakeTranslator(subject.rule)->ParseFromTree(source, "UTF-8")));
    const ModelHandle opened = OpenDocument(subject);
    const Rows columns = ScoreAsColumns(opened, model.Get(), subject, static_cast<TextShape>(number % 3));
    if (subject.scoring.reasons == 0) {
        ASSERT_EQ(ScoreAsTable(model, subject), columns);
    } else {
        ASSERT_EQ(WithPlainNumbers(ScoreAsTable(model, subject)), WithPlainNumbers(columns));
    }
    const bool areAll = subject.scoring.prediction_only == 0 && subject.scoring.reasons == 0;
    const bool areUsual = subject.rule == ScoringRule::Smoothed || subject.scoring.usual_columns != 0;
    if (areAll && areUsual) ExpectRowsScoredAlike(opened, model.Get(), subject, columns);
}

TEST(CRandomColumns, AreScoredAsTheirTableIs_BySingleClassifiers) {
    Randomness random(1);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomDocument made = MakeRandomDocument(random);
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomCase(made, random); });
        ExpectScoredAlike({made.text, CsvTableText(made.inputs, cases)}, number);
    }
}

TEST(CRandomColumns, HaveTheReasonsOfTheirTable) {
    Randomness random(4);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomDocument made = MakeRandomDocument(random);
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomCase(made, random); });
        Subject subject{made.text, CsvTableText(made.inputs, cases)};
        subject.scoring.reasons = 2;
        subject.scoring.reasons_that_lift = number % 2;
        ExpectScoredAlike(subject, number);
    }
}

TEST(CRandomColumns, AreScoredAsTheirTableIs_WhereInputsAreDerived) {
    Randomness random(2);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomDerivedCase(made, random); });
        ExpectScoredAlike({made.document.text, CsvTableText(made.columns, cases)}, number);
    }
}

TEST(CRandomColumns, AreScoredAsTheirTableIs_BySetsOfSubModels) {
    Randomness random(3);
    for (int number = 0; number < documentsOfEachKind && !HasFatalFailure(); ++number) {
        const RandomSet made = MakeRandomSet(random);
        if (made.subModels.empty()) continue;  // a table has no lines without columns
        const auto cases = DrawEach(casesOfDocument, [&] { return MakeRandomSetCase(made, random); });
        Subject subject{made.text, CsvTableText(made.columns, cases)};
        ExpectScoredAlike(subject, number);
        subject.scoring.best = 3;
        ExpectScoredAlike(subject, number);
    }
}

/// Treated values, inputs derived from them, cases without a result.
TEST(CStandardColumns, AreScoredAsTheirTableIs_WhicheverColumnsAreAskedFor) {
    const std::string cases = NBSCORE_CASES_DIR;
    for (const std::string& folder :
         {cases + "/standard-cases-without-a-result", cases + "/standard-densities-counts-and-an-output"}) {
        Subject subject{ReadWholeFile(folder + "/document.pmml"), ReadWholeFile(folder + "/rows.csv"),
                        ScoringRule::Standard};
        for (int number = 0; number < 12; ++number) {
            subject.scoring.usual_columns = number / 3 % 2;
            subject.scoring.prediction_only = number / 6;
            ExpectScoredAlike(subject, number);
        }
    }
}

TEST(CStandardColumns, HaveInputsDerivedFromTreatedValues) {
    Subject subject{R"(<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4"><Header/>
<DataDictionary numberOfFields="2">
  <DataField name="height" optype="continuous" dataType="double"/>
  <DataField name="answer" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
</DataDictionary>
<TransformationDictionary>
  <DerivedField name="is tall" optype="categorical" dataType="string">
    <Apply function="if"><Apply function="greaterThan"><FieldRef field="height"/><Constant>2</Constant></Apply>
      <Constant>tall</Constant><Constant>short</Constant></Apply>
  </DerivedField>
</TransformationDictionary>
<NaiveBayesModel functionName="classification" threshold="0.1">
  <MiningSchema>
    <MiningField name="height" missingValueReplacement="3" outliers="asExtremeValues" lowValue="0" highValue="1.5"/>
    <MiningField name="answer" usageType="target"/>
  </MiningSchema>
  <BayesInputs><BayesInput fieldName="is tall">
    <PairCounts value="tall"><TargetValueCounts><TargetValueCount value="no" count="1"/>
      <TargetValueCount value="yes" count="9"/></TargetValueCounts></PairCounts>
    <PairCounts value="short"><TargetValueCounts><TargetValueCount value="no" count="7"/>
      <TargetValueCount value="yes" count="2"/></TargetValueCounts></PairCounts>
  </BayesInput></BayesInputs>
  <BayesOutput fieldName="answer"><TargetValueCounts><TargetValueCount value="no" count="8"/>
    <TargetValueCount value="yes" count="11"/></TargetValueCounts></BayesOutput>
</NaiveBayesModel></PMML>)",
                    "height\n1\n5\n\"\"\n", ScoringRule::Standard};
    subject.scoring.usual_columns = 1;
    ExpectScoredAlike(subject, 0);
}

}  // namespace
}  // namespace nbscore::test
