#include <benchmark/benchmark.h>

#include <fstream>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "nbscore.h"
#include "scoring/AllocationCount.h"
#include "scoring/Benchmarks.h"
#include "scoring/DrawnShape.h"
#include "support/TemporaryFolder.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::bench {
namespace {

constexpr std::size_t categories = 8;
constexpr std::size_t numCases = 256;
constexpr std::size_t numBest = 10;

void Require(std::int32_t kind) {
    if (kind != NBSCORE_OK) throw std::runtime_error("a call of the C interface failed");
}

/// A document that was read, a row of it, and cases that differ.
class CRow {
public:
    explicit CRow(const std::string& document) {
        const test::TemporaryFolder folder;
        const std::string path = (folder / "model.pmml").string();
        std::ofstream(path) << document;
        Open(path);
    }
    explicit CRow(const test::ModelDocument& document) {
        const test::TemporaryFolder folder;
        WriteDocument(document, folder / "model.pmml");
        Open((folder / "model.pmml").string());
    }
    CRow(const CRow&) = delete;
    CRow& operator=(const CRow&) = delete;
    ~CRow() {
        nbscore_row_free(row);
        nbscore_close(model);
    }

    void SetAll(std::size_t i) {
        for (std::size_t field = 0; field < numFields; ++field)
            Set(i, field);
    }
    void SetOne(std::size_t i) { Set(i, i % numFields); }
    void Score() {
        nbscore_answer answer;
        Require(nbscore_row_score(row, &answer, nullptr));
        benchmark::DoNotOptimize(answer.numbers);
    }
    void ScoreBest() {
        nbscore_ranked best[numBest];
        std::size_t given = 0;
        Require(nbscore_row_best(row, best, numBest, &given, nullptr));
        benchmark::DoNotOptimize(&best[0]);
        benchmark::ClobberMemory();
    }

private:
    void Open(const std::string& path) {
        Require(nbscore_open_file(path.c_str(), nullptr, &model, nullptr));
        Require(nbscore_row_make(model, &row, nullptr));
        while (nbscore_field_name(model, numFields) != nullptr)
            ++numFields;
        Random random{1};
        for (std::size_t i = 0; i < numCases * numFields; ++i)
            texts.push_back(test::ValueOf(test::FieldType::Texts, random() % categories));
    }
    void Set(std::size_t i, std::size_t field) {
        const std::string& text = texts[i * numFields + field];
        Require(nbscore_row_set_text(row, field, text.data(), text.size(), nullptr));
    }

    nbscore_model* model = nullptr;
    nbscore_row* row = nullptr;
    std::size_t numFields = 0;
    /// Of each field, case by case.
    std::vector<std::string> texts;
};

test::ModelDocument Document(std::size_t inputs) {
    test::ModelDocument document;
    for (std::size_t i = 0; i < inputs; ++i) {
        document.inputs.push_back({"field" + std::to_string(i), test::FieldType::Texts, categories,
                                   [](std::size_t category) { return ValueOf(test::FieldType::Texts, category); }});
    }
    document.targetCategories = {"no", "yes"};
    document.targetCountOf = [](std::size_t category) { return 900 + 100 * category; };
    document.countOf = [](std::size_t model, std::size_t input, std::size_t category, std::size_t target) {
        return 1 + (model * 7 + input * 5 + category * 3 + target * 11) % 97;
    };
    return document;
}

/// 200 sub-models, each of which reads 8 of 40 fields.
test::ModelDocument SetOfDifferent() {
    test::ModelDocument document = Document(40);
    document.subModels = 200;
    Random random(2);
    for (std::size_t m = 0; m < document.subModels; ++m) {
        std::vector<std::size_t>& inputs = document.inputsOfModels.emplace_back(40);
        std::iota(inputs.begin(), inputs.end(), std::size_t{0});
        std::ranges::shuffle(inputs, random);
        inputs.resize(8);
    }
    return document;
}

/// Ten inputs, each derived of a field by a function of texts.
std::string TenDerived() {
    std::string fields;
    std::string derived;
    std::string schema;
    std::string named;
    std::string inputs;
    for (int i = 0; i < 10; ++i) {
        const std::string field = "field" + std::to_string(i);
        const std::string name = "lower" + std::to_string(i);
        fields += test::DataField(field, test::FieldType::Texts);
        derived += test::DerivedText(name, test::Apply("lowercase", test::FieldRef(field)));
        schema += test::MiningField(field);
        named += test::MiningField(name);
        std::string counts;
        for (std::size_t category = 0; category < categories; ++category) {
            const int count = static_cast<int>(category) + i;
            counts += test::PairCounts(test::ValueOf(test::FieldType::Texts, category),
                                       test::NoYesCounts(1 + count % 7, 1 + count % 5));
        }
        inputs += test::BayesInput(name, counts);
    }
    fields += test::DataField("answer", test::FieldType::Texts, test::ValueElements({"no", "yes"}));
    schema += test::MiningField("answer", "predicted") + test::DerivedFieldsExtension(named);
    return test::PmmlDocument("<DataDictionary>" + fields + "</DataDictionary><TransformationDictionary>" + derived +
                              "</TransformationDictionary><NaiveBayesModel functionName=\"classification\" "
                              "threshold=\"0.01\"><MiningSchema>" +
                              schema + "</MiningSchema><BayesInputs>" + inputs + "</BayesInputs>" +
                              test::BayesOutput("answer", test::NoYesCounts(30, 40)) + "</NaiveBayesModel>");
}

template <typename ScoreCase>
void Register(const std::string& name, const Lazy<CRow>& made, const ScoreCase& scoreCase) {
    benchmark::RegisterBenchmark(("c_row/" + name).c_str(), [made, scoreCase](benchmark::State& state) {
        CRow& row = made.Get();
        std::size_t next = 0;
        // The first texts of their length may need room.
        for (std::size_t i = 0; i < numCases; ++i)
            scoreCase(row, i);
        const std::uint64_t before = CountAllocations();
        for ([[maybe_unused]] auto round : state) {
            scoreCase(row, next);
            next = (next + 1) % numCases;
        }
        state.counters["allocations"] =
            benchmark::Counter(static_cast<double>(CountAllocations() - before), benchmark::Counter::kAvgIterations);
        state.SetItemsProcessed(state.iterations());
    });
}

template <typename MakeDocument>
void Register(const std::string& name, bool isSet, const MakeDocument& makeDocument) {
    const Lazy<CRow> made([makeDocument] { return std::make_unique<CRow>(makeDocument()); });
    Register(name + "/all_set", made, [](CRow& row, std::size_t i) {
        row.SetAll(i);
        row.Score();
    });
    Register(name + "/one_set", made, [](CRow& row, std::size_t i) {
        row.SetOne(i);
        row.Score();
    });
    if (!isSet) return;
    Register(name + "/all_set_best_10", made, [](CRow& row, std::size_t i) {
        row.SetAll(i);
        row.ScoreBest();
    });
}

}  // namespace

void RegisterCRows() {
    Register("10_texts_2_targets", false, [] { return Document(10); });
    Register("10_derived_texts_2_targets", false, TenDerived);
    Register("200_sub_models_of_8_of_40_texts", true, SetOfDifferent);
}

}  // namespace nbscore::bench
