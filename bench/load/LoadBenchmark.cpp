/// What loading a document costs beside the XML library's own parses of it, which only report it to nobody or make a
/// tree of it: time, the translator's share of it, memory; for documents of 1, 10 and 100 MB with many parts of one
/// kind. Every load runs in a process of its own.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Loads.h"
#include "common/ProcessRun.h"
#include "common/Spread.h"
#include "growth/GrowingDocuments.h"
#include "support/TemporaryFolder.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::bench {
namespace {

/// What one run of a load in a process of its own took.
struct ChildRun {
    LoadCost cost;
    /// The most memory that the process held, its own program and libraries included.
    double peakMegabytes = 0;
};

/// Runs this program again, so that what one load leaves behind does not affect the next.
/// @param arguments for the child, which prints what it took. Throws std::runtime_error when it fails.
ChildRun RunChild(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {GetOwnProgram()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessRun process = RunProcess(words);
    std::istringstream printed(process.output);
    ChildRun run;
    LoadCost& cost = run.cost;
    printed >> cost.seconds >> cost.translatorSeconds >> cost.megabytesBefore >> cost.modelMegabytes;
    if (printed.fail()) throw std::runtime_error("the load \"" + arguments.front() + "\" printed no costs");
    run.peakMegabytes = process.peakMegabytes;
    return run;
}

/// How long the XML library alone takes.
double ParseBare(const char* kind, const std::filesystem::path& file) {
    return std::stod(RunProcess({GetOwnProgram().parent_path() / "bare_parse", kind, file}).output);
}

/// A kind of document that may have any size.
struct Kind {
    std::string name;
    /// The most parts that limits allow.
    std::size_t mostParts;
    std::function<void(std::size_t parts, const std::filesystem::path& file)> write;
    /// What the document is then, where the model can be held to it.
    std::function<std::optional<test::DocumentShape>(std::size_t parts)> shapeOf;
};

constexpr std::size_t anyNumber = 10'000'000;

Kind KindOf(const std::string& name, const std::function<test::DocumentShape(std::size_t parts)>& shapeOf) {
    return {name, anyNumber,
            [shapeOf](std::size_t parts, const std::filesystem::path& file) { WriteDocument(shapeOf(parts), file); },
            shapeOf};
}

std::vector<Kind> GetKinds() {
    std::vector<Kind> kinds = {KindOf("categories of ten fields",
                                      [](std::size_t n) {
                                          return test::DocumentShape{0, 10, n, 2};
                                      }),
                               KindOf("categories and target categories",
                                      [](std::size_t n) {
                                          return test::DocumentShape{0, 20, n, 20};
                                      }),
                               KindOf("fields",
                                      [](std::size_t n) {
                                          return test::DocumentShape{0, n, 12, 2};
                                      }),
                               KindOf("sub-models", [](std::size_t n) {
                                   return test::DocumentShape{n, 8, 12, 2};
                               })};
    for (const GrowingDocument& growing : GetGrowingDocuments()) {
        if (growing.name != "derived fields") continue;
        const auto write = [growing](std::size_t parts, const std::filesystem::path& file) {
            growing.write(parts, file, file.parent_path() / "table.csv");
        };
        kinds.push_back({growing.name, growing.most, write, [](std::size_t) { return std::nullopt; }});
    }
    return kinds;
}

double MegabytesOf(const std::filesystem::path& file) {
    return static_cast<double>(std::filesystem::file_size(file)) / 1e6;
}

void PrintSpread(const char* what, const std::vector<double>& values) {
    const Spread spread = SpreadOf(values);
    std::printf("  %-46s %5.2f  (%.2f to %.2f)\n", what, spread.median, spread.least, spread.greatest);
}

/// Each load of the model is between two bare parses, so that a machine that gets slower slows down both.
void Compare(const Kind& kind, double megabytes, int rounds) {
    const test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "model.pmml";
    constexpr std::size_t triedParts = 100;
    kind.write(triedParts, file);
    const double partsWanted = static_cast<double>(triedParts) * megabytes / MegabytesOf(file);
    if (partsWanted > static_cast<double>(kind.mostParts)) return;
    const auto parts = std::max<std::size_t>(static_cast<std::size_t>(partsWanted), 1);
    kind.write(parts, file);
    const double size = MegabytesOf(file);
    std::printf("%s: %zu, %.1f MB, %d rounds\n", kind.name.c_str(), parts, size, rounds);

    std::vector<std::string> model = {"model", file.string()};
    if (const auto shape = kind.shapeOf(parts)) {
        for (const std::size_t number : {shape->subModels, shape->inputs, shape->categories, shape->targetCategories})
            model.push_back(std::to_string(number));
    }
    std::vector<double> byEvents;
    std::vector<double> translatorByEvents;
    std::vector<double> byTree;
    std::vector<double> memory;
    double before = ParseBare("events", file);
    for (int round = 0; round < rounds; ++round) {
        const ChildRun loaded = RunChild(model);
        const double after = ParseBare("events", file);
        const double events = (before + after) / 2;
        byEvents.push_back(loaded.cost.seconds / events);
        translatorByEvents.push_back(loaded.cost.translatorSeconds / events);
        byTree.push_back(loaded.cost.seconds / ParseBare("tree", file));
        const double held = loaded.peakMegabytes - loaded.cost.megabytesBefore - loaded.cost.modelMegabytes;
        memory.push_back(held / size);
        before = after;
    }
    PrintSpread("time : parse that reports events", byEvents);
    PrintSpread("the translator's time : the same", translatorByEvents);
    PrintSpread("time : parse that makes a tree", byTree);
    PrintSpread("peak memory beside the model : document", memory);
}

int RunParent(int rounds) {
    for (const Kind& kind : GetKinds()) {
        for (const double megabytes : {1.0, 10.0, 100.0})
            Compare(kind, megabytes, rounds);
    }
    return 0;
}

std::size_t NumberAt(char** arguments, int position) {
    return std::strtoull(arguments[position], nullptr, 10);
}

LoadCost RunLoad(int count, char** arguments) {
    if (count != 7) return LoadModel(arguments[2], std::nullopt);
    return LoadModel(arguments[2], test::DocumentShape{NumberAt(arguments, 3), NumberAt(arguments, 4),
                                                       NumberAt(arguments, 5), NumberAt(arguments, 6)});
}

int Run(int count, char** arguments) {
    const std::string first = count > 1 ? arguments[1] : "";
    if (count > 2 && first == "model") {
        const LoadCost cost = RunLoad(count, arguments);
        std::printf("%.6f %.6f %.3f %.3f\n", cost.seconds, cost.translatorSeconds, cost.megabytesBefore,
                    cost.modelMegabytes);
        return 0;
    }
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 5;
    return RunParent(std::max(rounds, 1));
}

}  // namespace
}  // namespace nbscore::bench

int main(int count, char** arguments) {
    try {
        return nbscore::bench::Run(count, arguments);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "load_benchmark: %s\n", fault.what());
        return 1;
    }
}
