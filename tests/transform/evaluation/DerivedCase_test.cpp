#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "transform/DerivedDocument.h"

namespace {

const std::string twoFields =
    "<DerivedField name='d' optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField>"
    "<DerivedField name='e' optype='categorical' dataType='string'><FieldRef field='d'/></DerivedField>";

/// A record that counts how often each variable is read.
class CountingRecord : public ScoreCaseRecord {
public:
    const ScoreValue* GetValueByIndex(int) const override { return nullptr; }
    const ScoreValue* GetValueByName(const std::string& name) const override {
        ++questions[name];
        return &value;
    }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string&) const override { return -1; }

    mutable std::map<std::string, int> questions;
    NumericValue value{2.0};
};

TEST(DerivedCase, ComputesOncePerCaseAndOnlyWhatIsUsed) {
    const DerivedDocument document(caseFields, twoFields);
    const CountingRecord record;
    const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&record, document.data.get());
    EXPECT_EQ(record.questions.size(), 0u);
    const ScoreValue* text = values->GetValueByName("e");
    EXPECT_EQ(text->GetString(), "2");
    EXPECT_EQ(values->GetValueByName("d")->GetDouble(), 2);
    EXPECT_EQ(values->GetValueByName("e"), text);
    EXPECT_EQ(record.questions, (std::map<std::string, int>{{"x", 1}}));
    document.derived->GetValuesForDeriedVars(&record, document.data.get())->GetValueByName("d");
    EXPECT_EQ(record.questions["x"], 2);
}

TEST(DerivedCase, ComputesOncePerCase_WhenSeveralFieldsReadOne) {
    const auto sum = [](const std::string& name, const std::string& left, const std::string& right) {
        return "<DerivedField name='" + name + "' dataType='double'><Apply function='+'><FieldRef field='" + left +
               "'/><FieldRef field='" + right + "'/></Apply></DerivedField>";
    };
    const DerivedDocument document(
        caseFields, sum("top", "d", "middle") + sum("middle", "d", "d") + sum("other", "middle", "d") + twoFields);
    const CountingRecord record;
    const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&record, document.data.get());
    EXPECT_EQ(values->GetValueByName("top")->GetDouble(), 6);
    EXPECT_EQ(values->GetValueByName("other")->GetDouble(), 6);
    EXPECT_EQ(record.questions, (std::map<std::string, int>{{"x", 1}}));
}

TEST(DerivedCase, DoesNotCompute_WhatOnlyUnchosenBranchesRead) {
    const auto field = [](const std::string& name, const std::string& expression) {
        return "<DerivedField name='" + name + "' dataType='string'>" + expression + "</DerivedField>";
    };
    const auto read = [](const std::string& name) { return "<FieldRef field='" + name + "'/>"; };
    const DerivedDocument document(
        caseFields, field("chosen", "<Apply function='if'><Apply function='equal'>" + read("number") +
                                        "<Constant>2</Constant></Apply>" + read("then") + read("else") + "</Apply>") +
                        field("both", "<Apply function='concat'>" + read("then") +
                                          "<Apply function='if'><Constant dataType='boolean'>true</Constant>" +
                                          read("then") + read("else") + "</Apply></Apply>") +
                        field("number", read("x")) + field("then", read("s")) + field("else", read("far")) +
                        field("far", "<Apply function='concat'>" + read("x") + read("x") + "</Apply>"));
    const CountingRecord record;
    const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&record, document.data.get());
    EXPECT_EQ(values->GetValueByName("chosen")->GetString(), "2");
    EXPECT_EQ(values->GetValueByName("both")->GetString(), "22");
    EXPECT_EQ(record.questions, (std::map<std::string, int>{{"x", 1}, {"s", 1}}));
    EXPECT_EQ(values->GetValueByName("else")->GetString(), "22");
    EXPECT_EQ(record.questions, (std::map<std::string, int>{{"x", 3}, {"s", 1}}));
}

TEST(DerivedCase, TakesNoStack_WhenBranchesReadFieldsInALongChain) {
    std::string fields = "<DerivedField name='d0' dataType='double'><FieldRef field='x'/></DerivedField>";
    for (int i = 1; i <= 100000; ++i) {
        fields += "<DerivedField name='d" + std::to_string(i) +
                  "' dataType='double'><Apply function='if'><Constant dataType='boolean'>true</Constant>"
                  "<Apply function='+'><FieldRef field='d" +
                  std::to_string(i - 1) + "'/><Constant>1</Constant></Apply></Apply></DerivedField>";
    }
    const DerivedDocument document(caseFields, fields);
    const Case record(1, "a");
    EXPECT_EQ(document.ValueOf("d100000", &record), "number 100001");
}

TEST(DerivedCase, IsReadByNameOnly) {
    const DerivedDocument document(caseFields, twoFields);
    const Case record(1, "a");
    const ScoreCaseRecord* values = document.derived->GetValuesForDeriedVars(&record, document.data.get());
    EXPECT_FALSE(values->IsIndexed());
    EXPECT_EQ(values->GetVarIndex("d"), -1);
    EXPECT_EQ(values->GetValueByIndex(0), nullptr);
    EXPECT_EQ(values->GetValueByName("x"), nullptr);  // a data field, not a derived one
    EXPECT_EQ(values->GetValueByName("unknown"), nullptr);
}

TEST(DerivedCase, ForgetsTheLastCase_WhenANewOneBegins) {
    const DerivedDocument document(caseFields, twoFields);
    const Case first(1, "a"), absent, second(2, "a");
    EXPECT_EQ(document.ValueOf("e", &first), "text 1");
    EXPECT_EQ(document.ValueOf("e", &absent), "absent");
    EXPECT_EQ(document.ValueOf("e", &second), "text 2");
}

TEST(DerivedCase, StaysTheSameObject_WhenAThreadAsksAgain) {
    const DerivedDocument document(caseFields, twoFields);
    const Case record(1, "a");
    const auto* values = document.derived->GetValuesForDeriedVars(&record, document.data.get());
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(document.derived->GetValuesForDeriedVars(&record, document.data.get()), values);
    }
}

TEST(DerivedCase, NeedsNoDataDictionary_OnceTheDocumentIsRead) {
    DerivedDocument document(caseFields, twoFields);
    document.data.reset();
    const Case record(3, "a"), missing(-9, "a");
    EXPECT_EQ(document.ValueOf("d", &record), "number 3");
    EXPECT_EQ(document.ValueOf("d", &missing), "absent");
}

TEST(DerivedCase, KeepsDictionariesApart_WhenOneThreadUsesSeveral) {
    const DerivedDocument first(caseFields, twoFields);
    const DerivedDocument second(caseFields,
                                 "<DerivedField name='d' dataType='string'><FieldRef field='s'/></DerivedField>");
    const Case record(3, "text");
    const auto* values = first.derived->GetValuesForDeriedVars(&record, nullptr);
    EXPECT_EQ(second.ValueOf("d", &record), "text text");
    EXPECT_EQ(values->GetValueByName("d")->GetDouble(), 3);
}

TEST(DerivedCase, FreesEverything_WhenDictionariesComeAndGo) {
    const Case record(3, "text");
    for (int i = 0; i < 200; ++i) {
        const DerivedDocument numbers(caseFields, twoFields);
        ASSERT_EQ(numbers.ValueOf("e", &record), "text 3");
        const auto texts = std::make_unique<DerivedDocument>(
            caseFields, "<DerivedField name='e' dataType='string'><FieldRef field='s'/></DerivedField>");
        ASSERT_EQ(texts->ValueOf("e", &record), "text text");
    }
}

TEST(DerivedCase, IsEachThreadsOwn_WhenSeveralScoreAtOnce) {
    const DerivedDocument document(caseFields, twoFields);
    std::vector<int> wrong(4, 0);
    std::vector<std::thread> threads;
    for (std::size_t worker = 0; worker < wrong.size(); ++worker) {
        threads.emplace_back([&, worker] {
            Case record(0, "a");
            for (int i = 0; i < 5000; ++i) {
                const double number = static_cast<double>(worker) * 10000 + i;
                record.SetNumber(0, number);
                const auto* values = document.derived->GetValuesForDeriedVars(&record, document.data.get());
                if (values->GetValueByName("e")->GetDouble() != number) ++wrong[worker];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

TEST(DerivedCase, IsHandedOnToTheNextThread_WhenAThreadEnds) {
    const DerivedDocument document(caseFields, twoFields);
    const Case record(3, "text");
    std::vector<const ScoreCaseRecord*> seen;
    for (int i = 0; i < 50; ++i) {
        std::thread([&] { seen.push_back(document.derived->GetValuesForDeriedVars(&record, nullptr)); }).join();
    }
    EXPECT_EQ(seen, std::vector<const ScoreCaseRecord*>(50, seen.front()));
    // This thread has had its own record since the dictionary was set up.
    EXPECT_NE(document.derived->GetValuesForDeriedVars(&record, nullptr), seen.front());
}

TEST(DerivedCase, IsFreed_WhenTheDictionaryGoesBeforeItsThreads) {
    auto document = std::make_unique<DerivedDocument>(caseFields, twoFields);
    const Case record(3, "text");
    std::thread([&] {
        EXPECT_EQ(document->ValueOf("d", &record), "number 3");
        document.reset();
    }).join();
    EXPECT_EQ(document, nullptr);
}

TEST(DerivedFields, AreFoundByTheirNamesAlone_WhateverTheirNumber) {
    for (const int count : {0, 1, 2, 3, 4, 31, 32, 33, 2'000}) {
        std::string fields;
        for (int i = 0; i < count; ++i) {
            fields += "<DerivedField name='d" + std::to_string(i) +
                      "' dataType='double' optype='continuous'><Constant>" + std::to_string(i) +
                      "</Constant></DerivedField>";
        }
        const DerivedDocument document(caseFields, fields);
        const Case values;
        for (int i = 0; i < count; ++i) {
            const std::string name = "d" + std::to_string(i);
            const ScoreDictVar* const found = document.derived->GetVar(name);
            ASSERT_NE(found, nullptr) << name;
            EXPECT_EQ(found->GetName(), name);
            EXPECT_EQ(document.ValueOf(name, &values), "number " + std::to_string(i));
        }
        EXPECT_EQ(document.derived->GetVar("d" + std::to_string(count)), nullptr);
        EXPECT_EQ(document.derived->GetVar(""), nullptr);
        EXPECT_EQ(document.ValueOf("D0", &values), "absent");
    }
}

}  // namespace
