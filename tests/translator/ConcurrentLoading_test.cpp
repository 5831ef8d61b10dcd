// Documents that several threads read at once: what each gives is what it gives alone.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/InThreads.h"
#include "translator/TestDocument.h"

namespace nbscore::test {
namespace {

struct Source {
    std::string text;
    std::string encoding = "UTF-8";
};

/// Every kind of document, one of which is refused, and every kind of encoder for what they say.
std::vector<Source> Sources() {
    TestDocument derived;
    derived.transformations =
        "<TransformationDictionary>"
        "<DefineFunction name='double'><ParameterField name='a'/><Apply function='*'><FieldRef field='a'/>"
        "<Constant>2</Constant></Apply></DefineFunction>"
        "<DerivedField name='d' optype='continuous' dataType='double'><Apply function='double'>"
        "<FieldRef field='temperature'/></Apply></DerivedField>"
        "<DerivedField name='e' optype='categorical' dataType='string'><Apply function='replace'>"
        "<FieldRef field='outlook'/><Constant>s+</Constant><Constant>z</Constant></Apply></DerivedField>"
        "<DerivedField name='f' optype='continuous' dataType='double'><TextIndex textField='outlook'>"
        "<Constant>rain</Constant></TextIndex></DerivedField></TransformationDictionary>";
    TestDocument refused;
    refused.modelAttributes = "threshold='none'";
    TestDocument umlaut;
    umlaut.head = "<Header><Application name='w' version='\xC3\xA4'/></Header>";
    return {{TestDocument().Text()},
            {SelfLearningText({Named("a"), Named("b", "2"), WithoutInputs()})},
            {derived.Text()},
            {umlaut.Text()},
            {umlaut.Text(), "ISO-8859-1"},
            {umlaut.Text(), "IBM1047"},
            {refused.Text()},
            {"<PMML", "UTF-8"},
            {TestDocument().Text(), "no such encoding"}};
}

/// What became of a document, with all that a dump, a score or a refusal tells.
std::string Read(const Source& source) {
    const ParseOutcome outcome = Parse(source.text, source.encoding);
    if (outcome.refusal) {
        const DocumentPlace& place = outcome.refusal->GetPlace();
        return outcome.refusal->GetMessage() + " at " + std::to_string(place.line) + place.elementPath;
    }
    BaseCaseRecord record({"outlook", "temperature"});
    record.SetText(0, "sunny");
    record.SetNumber(1, 20);
    ScoreResult* result = nullptr;
    outcome.model->GetScore(&record, result, false);
    const std::unique_ptr<ScoreResult> owner(result);
    std::string told = DumpOf(*outcome.model) + outcome.model->GetVersionInfo()->GetVersionInfo();
    if (TransformationDictionary* derived = outcome.model->GetTransformationDictionary()) {
        const ScoreCaseRecord& values = *derived->GetValuesForDeriedVars(&record, outcome.model->GetDictionary());
        for (const char* name : {"d", "e", "f"})
            told += " " + values.GetValueByName(name)->GetString();
    }
    return told;
}

std::vector<std::string> ReadAll() {
    std::vector<std::string> told;
    for (const Source& source : Sources())
        told.push_back(Read(source));
    return told;
}

TEST(ConcurrentLoading, GivesEveryThreadWhatItReads) {
    // First together, so that whatever is made once for all documents is made by all of them at once.
    std::vector<std::vector<std::string>> told(4);
    InThreads([&told](int thread) {
        std::vector<std::string>& own = told[static_cast<std::size_t>(thread)];
        for (int round = 0; round < 5; ++round) {
            for (const std::string& text : ReadAll())
                own.push_back(text);
        }
        return 0;
    });
    const std::vector<std::string> alone = ReadAll();
    for (const std::vector<std::string>& own : told) {
        for (std::size_t i = 0; i < own.size(); ++i)
            EXPECT_EQ(own[i], alone[i % alone.size()]);
    }
    EXPECT_NE(alone[2].find(" 40 zunny 0"), std::string::npos) << alone[2];
    EXPECT_NE(alone[6].find("/PMML/NaiveBayesModel"), std::string::npos) << alone[6];
}

}  // namespace
}  // namespace nbscore::test
