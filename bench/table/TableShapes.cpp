#include "table/TableShapes.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <stdexcept>
#include <vector>

#include "common/ProcessRun.h"
#include "common/SameFile.h"
#include "common/Spread.h"
#include "table/DrawnTable.h"

namespace nbscore::bench {
namespace {

namespace fs = std::filesystem;

struct NamedClass {
    TableClass tableClass;
    const char* name;
};
constexpr NamedClass classes[] = {{TableClass::Plain, "a dozen columns, 2 to 4 target categories"},
                                  {TableClass::Wide, "dozens of columns, 10 to 30 target categories"},
                                  {TableClass::Set, "100 to 300 sub-models of 4 to 12 columns"}};

/// A form of output beside the usual one.
struct Form {
    const char* name;
    std::vector<std::string> words;
    bool isOfSets = false;
};
const std::vector<Form>& GetForms() {
    static const std::vector<Form> forms = {{"JSON lines", {"--format", "jsonl"}},
                                            {"the prediction alone", {"--prediction-only"}},
                                            {"the best 5", {"--best", "5"}, true},
                                            {"a row for each sub-model", {"--long"}, true}};
    return forms;
}

DrawnTable WriteFiles(const fs::path& folder, TableClass tableClass, unsigned long seed) {
    std::mt19937_64 random(seed);
    const DrawnTable drawn = DrawTable(tableClass, random);
    drawn.WriteModel(folder / "model.pmml", random);
    drawn.WriteCases(folder / "cases.csv", random);
    std::ifstream cases(folder / "cases.csv", std::ios::binary);
    std::ofstream start(folder / "start.csv", std::ios::binary);
    std::string line;
    for (int i = 0; i < 2 && std::getline(cases, line); ++i)
        start << line << '\n';
    return drawn;
}

/// Of one drawn table.
struct Measured {
    std::string shape;
    /// The loop's processor time by that of the command on one thread.
    double toLoop = 0.0;
    /// The command's time on one thread by that on two, in all and without what it takes to score a single row: to
    /// start and to load the model. What share of the time on one thread that is.
    double ofTwoThreads = 0.0;
    double ofTwoThreadsOnceStarted = 0.0;
    double start = 0.0;
    /// Of the command on one thread.
    double rowsPerSecond = 0.0;
};

class TableShapeRun {
public:
    TableShapeRun(const fs::path& filesFolder, const DrawnTable& drawnTable, int numRounds)
        : folder(filesFolder), drawn(drawnTable), rounds(numRounds) {}

    Measured Measure() const {
        RunCommand({"--threads", "1"}, "command.out");
        RunLoop();
        if (!IsSameFile(folder / "command.out", folder / "loop.out"))
            throw std::runtime_error("the command and the loop differ: " + drawn.Describe());
        RunCommand({"--threads", "2"}, "threads.out");
        if (!IsSameFile(folder / "command.out", folder / "threads.out"))
            throw std::runtime_error("one thread and two differ: " + drawn.Describe());

        std::vector<double> toLoop;
        std::vector<double> ofThreads;
        std::vector<double> onceStarted;
        std::vector<double> starts;
        std::vector<double> seconds;
        for (int round = 0; round < rounds; ++round) {
            const ProcessRun command = RunCommand({"--threads", "1"}, "command.out");
            toLoop.push_back(RunLoop().processorSeconds / command.processorSeconds);
            const double onThreads = RunCommand({"--threads", "2"}, "threads.out").seconds;
            const double start = RunCommand({"--threads", "2"}, "start.out", "start.csv").seconds;
            ofThreads.push_back(command.seconds / onThreads);
            onceStarted.push_back((command.seconds - start) / (onThreads - start));
            starts.push_back(start / command.seconds);
            seconds.push_back(command.processorSeconds);
        }
        Measured measured{.shape = drawn.Describe()};
        measured.toLoop = SpreadOf(toLoop).median;
        measured.ofTwoThreads = SpreadOf(ofThreads).median;
        measured.ofTwoThreadsOnceStarted = SpreadOf(onceStarted).median;
        measured.start = SpreadOf(starts).median;
        measured.rowsPerSecond = static_cast<double>(drawn.cases) / SpreadOf(seconds).median;
        return measured;
    }

    nlohmann::json MeasureForms() const {
        nlohmann::json ratios = nlohmann::json::object();
        for (const Form& form : GetForms()) {
            if (form.isOfSets && drawn.subModels == 0) continue;
            std::vector<double> ofForm;
            for (int round = 0; round < rounds; ++round) {
                std::vector<std::string> words = {"--threads", "1"};
                const ProcessRun usual = RunCommand(words, "command.out");
                words.insert(words.end(), form.words.begin(), form.words.end());
                ofForm.push_back(usual.processorSeconds / RunCommand(words, "form.out").processorSeconds);
            }
            ratios[form.name] = SpreadOf(ofForm).median;
        }
        return ratios;
    }

private:
    /// No file is replaced, so that the time to delete old ones is not measured.
    ProcessRun RunCommand(const std::vector<std::string>& options, const char* output,
                          const char* table = "cases.csv") const {
        fs::remove(folder / output);
        std::vector<std::string> words = {NBSCORE_COMMAND_FILE, "score", folder / "model.pmml", folder / table,
                                          "--quiet"};
        words.insert(words.end(), options.begin(), options.end());
        words.insert(words.end(), {"-o", folder / output});
        return RunProcess(words);
    }
    ProcessRun RunLoop() const {
        fs::remove(folder / "loop.out");
        return RunProcess(
            {GetOwnProgram(), "tight_loop", folder / "model.pmml", folder / "cases.csv", folder / "loop.out"});
    }

    fs::path folder;
    const DrawnTable& drawn;
    int rounds;
};

double MedianOf(const std::vector<Measured>& all, double Measured::*number) {
    std::vector<double> numbers;
    for (const Measured& measured : all)
        numbers.push_back(measured.*number);
    return SpreadOf(numbers).median;
}

nlohmann::json Report(const char* name, std::vector<Measured> all, const nlohmann::json& forms) {
    std::ranges::sort(all, {}, &Measured::toLoop);
    const double median = all[all.size() / 2].toLoop;
    const double ofTwoThreads = MedianOf(all, &Measured::ofTwoThreads);
    const double onceStarted = MedianOf(all, &Measured::ofTwoThreadsOnceStarted);
    const double start = MedianOf(all, &Measured::start);
    std::printf("%s: command : loop median %.2f, worst %.2f; two threads : one median %.2f, once started %.2f\n", name,
                median, all.front().toLoop, ofTwoThreads, onceStarted);
    std::printf("  (to start and to load the model takes %.0f %% of the time on one thread, and is not shared)\n",
                100.0 * start);
    for (const Measured& measured : all) {
        std::printf("  %.2f, two threads %.2f, once started %.2f, start %2.0f %%, %9.0f rows a second: %s\n",
                    measured.toLoop, measured.ofTwoThreads, measured.ofTwoThreadsOnceStarted, 100.0 * measured.start,
                    measured.rowsPerSecond, measured.shape.c_str());
    }
    for (const auto& [form, ratio] : forms.items())
        std::printf("  %s: %.2f times as fast as the usual form\n", form.c_str(), ratio.get<double>());
    return {{"name", name},
            {"median", median},
            {"worst", all.front().toLoop},
            {"worst_shape", all.front().shape},
            {"two_threads", ofTwoThreads},
            {"two_threads_once_started", onceStarted},
            {"start", start},
            {"forms", forms}};
}

}  // namespace

void MeasureTableShapes(const TableShapesRun& run) {
    if (run.shapes == 0) throw std::invalid_argument("no shapes");
    fs::create_directories(run.folder);
    nlohmann::json results = {{"seed", run.seed}, {"shapes", run.shapes}, {"classes", nlohmann::json::array()}};
    for (const NamedClass& named : classes) {
        std::vector<Measured> all;
        nlohmann::json forms;
        for (unsigned long i = 0; i < run.shapes; ++i) {
            const DrawnTable drawn = WriteFiles(run.folder, named.tableClass, 1000 * run.seed + i);
            const TableShapeRun shapeRun(run.folder, drawn, run.rounds);
            all.push_back(shapeRun.Measure());
            if (i == 0) forms = shapeRun.MeasureForms();
        }
        results["classes"].push_back(Report(named.name, std::move(all), forms));
    }
    std::ofstream(run.results) << results.dump(1) << '\n';
}

void DrawTableFiles(const fs::path& folder, unsigned long tableClass, unsigned long seed) {
    if (tableClass >= std::size(classes)) throw std::invalid_argument("there is no such class of tables");
    std::puts(WriteFiles(folder, classes[tableClass].tableClass, seed).Describe().c_str());
}

}  // namespace nbscore::bench
