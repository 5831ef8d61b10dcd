// Random documents whose inputs are derived fields, read by the plug-in and scored case by case and by the command:
// every answer must be that of the brute-force evaluator and scorer, to the last bit.

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cases/CaseTable.h"
#include "cases/ExpectScores.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "framework/TransformationDictionary.h"
#include "host/PluginLibrary.h"
#include "support/documents/RandomDerivedDocument.h"

namespace nbscore::test {
namespace {

constexpr int documentCount = 3000;
constexpr int casesPerDocument = 12;
constexpr int documentsThroughCommand = 30;
constexpr int casesThroughCommand = 40;

/// What the random documents contained.
struct Seen {
    std::map<BruteForceExpression::Kind, int> kinds;
    std::map<std::string, int> functions;
    std::set<std::string> details;
    int values = 0;
    int missingValues = 0;
    int truthValues = 0;
    int forbiddenValues = 0;
    int standIns = 0;
    int codes = 0;
    int unknownCodes = 0;

    void Note(const BruteForceExpression& expression) {
        ++kinds[expression.kind];
        if (expression.kind == BruteForceExpression::Kind::Apply) {
            ++functions[expression.name.starts_with("f") && expression.name != "floor" ? "defined" : expression.name];
            details.insert("treatment " + expression.invalidValueTreatment);
            standIns += expression.mapMissingTo || expression.defaultValue ? 1 : 0;
        }
        if (expression.kind == BruteForceExpression::Kind::NormContinuous)
            details.insert("outliers " + expression.outliers);
        if (expression.kind == BruteForceExpression::Kind::MapValues)
            details.insert("keys " + std::to_string(expression.keyFields.size()));
        for (const BruteForceBin& bin : expression.bins)
            details.insert("closure " + bin.closure);
        for (const BruteForceExpression& argument : expression.arguments)
            Note(argument);
    }

    void Note(const RandomDerivedFields& derived) {
        for (const auto& [name, function] : derived.functions)
            Note(function.body);
        for (const RandomDerivedField& field : derived.fields)
            Note(field.expression);
    }

    void Note(const RandomDerivedDocument& made, const RandomDerivedCase& drawn) {
        for (const RandomDerivedField& field : made.derived.fields) {
            const BruteForceField& drawnField = drawn.values.at(field.input.name);
            const bool isMissing = IsMissing(drawnField.value);
            ++values;
            missingValues += isMissing ? 1 : 0;
            truthValues += drawnField.kind == BruteForceKind::Truth && AsTruth(drawnField.value) ? 1 : 0;
            forbiddenValues += !isMissing && !drawnField.isAllowed ? 1 : 0;
        }
        for (const int code : drawn.codes) {
            ++codes;
            unknownCodes += code < 0 ? 1 : 0;
        }
    }
};

std::string CaseText(const RandomDerivedDocument& made, const RandomDerivedCase& drawn) {
    std::string text = "case:";
    for (std::size_t i = 0; i < drawn.cells.size(); ++i)
        text += " " + made.columns[i].name + " = [" + drawn.cells[i] + "]";
    for (const RandomDerivedField& field : made.derived.fields) {
        const BruteForceValue& value = drawn.values.at(field.input.name).value;
        text += "\n  " + field.input.name + (IsMissing(value) ? " is missing" : " = [" + AsText(value) + "]");
    }
    return text;
}

std::string TextOrMissing(const ScoreValue* value) {
    return value == nullptr ? "missing" : "[" + value->GetString() + "]";
}

/// Compares every derived value, even if no input reads it.
void ExpectSameValues(const ScoreCaseRecord& computed, const RandomDerivedDocument& made,
                      const RandomDerivedCase& drawn) {
    for (const RandomDerivedField& field : made.derived.fields) {
        const BruteForceValue& expected = drawn.values.at(field.input.name).value;
        const ScoreValue* value = computed.GetValueByName(field.input.name);
        ASSERT_EQ(TextOrMissing(value), IsMissing(expected) ? "missing" : "[" + AsText(expected) + "]")
            << field.input.name;
        const auto* number = std::get_if<double>(&expected);
        if (number == nullptr || std::isnan(*number)) continue;
        // A zero's sign shows in the text.
        ASSERT_EQ(value->GetDouble(), *number) << field.input.name;
    }
}

void ExpectCasesScored(ScoreModel& model, const RandomDerivedDocument& made, Randomness& random, Seen& seen) {
    BaseCaseRecord record(NamesOf(made.columns));
    ScoreResult* scored = nullptr;
    for (int i = 0; i < casesPerDocument && !testing::Test::HasFatalFailure(); ++i) {
        const RandomDerivedCase drawn = MakeRandomDerivedCase(made, random);
        SCOPED_TRACE(CaseText(made, drawn));
        seen.Note(made, drawn);
        FillRecord(record, made.columns, drawn.cells);
        model.GetScore(&record, scored, false);
        ExpectSameBits(dynamic_cast<const ScoreClsResult&>(*scored), made.document,
                       ScoreByBruteForce(made.document.model, drawn.codes));
        ExpectSameValues(*model.GetTransformationDictionary()->GetValuesForDeriedVars(&record, model.GetDictionary()),
                         made, drawn);
    }
    delete scored;
}

/// Everything that the test claims to cover did occur.
void ExpectAllCameUp(const Seen& seen) {
    EXPECT_EQ(seen.kinds.size(), 7u);
    for (const auto& [kind, count] : seen.kinds)
        EXPECT_GT(count, documentCount / 5) << "kind " << static_cast<int>(kind);
    for (const char* function : {"+",
                                 "-",
                                 "*",
                                 "/",
                                 "min",
                                 "max",
                                 "sum",
                                 "avg",
                                 "product",
                                 "abs",
                                 "floor",
                                 "ceil",
                                 "round",
                                 "if",
                                 "equal",
                                 "notEqual",
                                 "lessThan",
                                 "lessOrEqual",
                                 "and",
                                 "or",
                                 "not",
                                 "greaterThan",
                                 "greaterOrEqual",
                                 "isMissing",
                                 "isNotMissing",
                                 "isValid",
                                 "isNotValid",
                                 "isIn",
                                 "isNotIn",
                                 "concat",
                                 "uppercase",
                                 "substring",
                                 "defined",
                                 "stringLength"}) {
        EXPECT_GT(seen.functions.contains(function) ? seen.functions.at(function) : 0, documentCount / 30) << function;
    }
    // Four treatments and four kinds of outliers, none given included; four closures; one key and two.
    EXPECT_EQ(seen.details.size(), 4u + 4u + 4u + 2u);
    EXPECT_LT(seen.missingValues, seen.values / 2);
    EXPECT_GT(seen.missingValues, seen.values / 20);
    EXPECT_GT(seen.truthValues, seen.values / 50);
    EXPECT_GT(seen.forbiddenValues, seen.values / 50);
    EXPECT_GT(seen.standIns, documentCount);
    EXPECT_LT(seen.unknownCodes, seen.codes / 2);
}

std::string ReplaceAll(std::string text, const std::string& that, const std::string& with) {
    for (std::size_t at = text.find(that); at != std::string::npos; at = text.find(that, at + with.size()))
        text.replace(at, that.size(), with);
    return text;
}

/// Removes from a text what two marks enclose, and the marks.
std::string TakeOut(std::string& text, const std::string& begin, const std::string& end) {
    const std::size_t from = text.find(begin);
    if (from == std::string::npos) return {};
    const std::size_t length = text.find(end, from) + end.size() - from;
    std::string taken = text.substr(from, length);
    text.erase(from, length);
    return taken;
}

/// The same document as newer producers write it: the derived fields stand in the model, and its schema does not list
/// them.
std::string WithLocalFields(std::string text) {
    std::string globals = TakeOut(text, "<TransformationDictionary>", "</TransformationDictionary>");
    TakeOut(text, "<Extension extender=\"scoring.nbscore\"", "</Extension>");
    std::string locals;
    for (std::string field = TakeOut(globals, "<DerivedField", "</DerivedField>"); !field.empty();
         field = TakeOut(globals, "<DerivedField", "</DerivedField>")) {
        locals += field;
    }
    text.insert(text.find("<BayesInputs>"), "<LocalTransformations>" + locals + "</LocalTransformations>");
    // Without functions there is no global dictionary at all.
    if (globals.find("<DefineFunction") != std::string::npos) text.insert(text.find("<NaiveBayesModel"), globals);
    return text;
}

TEST(RandomDerivedFields, ScoreLikeTheBruteForceScorer_CaseByCase) {
    const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    Randomness random(20240302);
    Seen seen;
    for (int number = 0; number < documentCount; ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        seen.Note(made.derived);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + made.document.text);
        std::istringstream source(made.document.text);
        std::unique_ptr<ScoreModel> model;
        ASSERT_NO_THROW(model.reset(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8")));
        ExpectCasesScored(*model, made, random, seen);
        if (HasFatalFailure()) return;
    }
    ExpectAllCameUp(seen);
}

TEST(RandomDerivedFields, ScoreLikeTheBruteForceScorer_ThroughTheCommand) {
    const TemporaryFolder folder;
    Randomness random(19120417);
    for (int number = 0; number < documentsThroughCommand; ++number) {
        const RandomDerivedDocument made = MakeRandomDerivedDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + made.document.text);
        const std::vector<RandomCase> cases = DrawEach(casesThroughCommand, [&] {
            const RandomDerivedCase drawn = MakeRandomDerivedCase(made, random);
            return RandomCase{drawn.cells, drawn.codes};
        });
        const std::string table = CsvTableText(made.columns, cases);
        const CommandResult result = ScoreThroughCommand(folder, made.document.text, table);
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        ExpectScoreTable(result.out, made.document, cases);
        // Adapting removes blanks around values that no expression reads, but only in the document: none here.
        const std::string unpadded = ReplaceAll(made.document.text, " pad ", "(pad)");
        const std::string unpaddedTable = ReplaceAll(table, " pad ", "(pad)");
        const std::string expected = ScoreThroughCommand(folder, unpadded, unpaddedTable).out;
        const std::string local = WithLocalFields(unpadded);
        EXPECT_EQ(ScoreThroughCommand(folder, local, unpaddedTable, {"--adapt"}).out, expected);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace nbscore::test
