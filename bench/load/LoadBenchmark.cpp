/// What loading a document costs beside the XML library's own parse of it: time, the translator's share of it, memory;
/// and how these grow with the document. Every load runs in a process of its own.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Loads.h"
#include "common/ProcessRun.h"
#include "common/Spread.h"
#include "support/TemporaryFolder.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::bench {
namespace {

/// What one run of a load in a process of its own took.
struct ChildRun {
    double seconds = 0;
    /// Of these, in the translator.
    double translatorSeconds = 0;
    /// The most memory that the process held, its own program and libraries included.
    double peakMegabytes = 0;
};

/// Runs this program again, so that what one load leaves behind does not affect the next.
/// @param arguments for the child, which prints the two times. Throws std::runtime_error when it fails.
ChildRun RunChild(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {GetOwnProgram()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessRun process = RunProcess(words);
    std::istringstream times(process.output);
    ChildRun run;
    times >> run.seconds >> run.translatorSeconds;
    if (times.fail()) throw std::runtime_error("the load \"" + arguments.front() + "\" printed no times");
    run.peakMegabytes = process.peakMegabytes;
    return run;
}

void PrintRatio(const char* what, const std::vector<double>& ratios) {
    const Spread spread = SpreadOf(ratios);
    std::printf("  %-44s %5.2f  (%.2f to %.2f)\n", what, spread.median, spread.least, spread.greatest);
}

/// A document of a shape, in a file.
class DocumentOnDisk {
public:
    explicit DocumentOnDisk(const test::DocumentShape& documentShape)
        : shape(documentShape), file(folder / "model.pmml"), elements(WriteDocument(documentShape, file)) {}

    ChildRun Bare() const { return RunChild({"bare", file.string()}); }
    ChildRun Model() const {
        return RunChild({"model", file.string(), std::to_string(shape.subModels), std::to_string(shape.inputs),
                         std::to_string(shape.categories), std::to_string(shape.targetCategories)});
    }
    std::size_t CountElements() const { return elements; }
    double Megabytes() const { return static_cast<double>(std::filesystem::file_size(file)) / 1e6; }

private:
    test::DocumentShape shape;
    test::TemporaryFolder folder;
    std::filesystem::path file;
    std::size_t elements;
};

/// Each load of the model is between two bare parses, so that a machine that gets slower slows down both.
void CompareWithBareParse(const char* name, const test::DocumentShape& shape, int rounds) {
    const DocumentOnDisk document(shape);
    std::printf("%s: %.0f MB, %zu elements, %d rounds; load of the model : bare parse\n", name, document.Megabytes(),
                document.CountElements(), rounds);
    std::vector<double> times;
    std::vector<double> shares;
    std::vector<double> memory;
    ChildRun before = document.Bare();
    for (int round = 0; round < rounds; ++round) {
        const ChildRun model = document.Model();
        const ChildRun after = document.Bare();
        const double bareSeconds = (before.seconds + after.seconds) / 2;
        times.push_back(model.seconds / bareSeconds);
        shares.push_back(model.translatorSeconds / bareSeconds);
        memory.push_back(model.peakMegabytes / after.peakMegabytes);
        before = after;
    }
    PrintRatio("time, whole load", times);
    PrintRatio("time, the translator alone", shares);
    PrintRatio("peak memory", memory);
}

/// The best of three loads for each size, per element, as a ratio to the smallest size.
void ShowCurve(const char* name, const std::vector<test::DocumentShape>& shapes) {
    std::printf("%s; time and memory for each element, the first being 1\n", name);
    double firstTime = 0;
    double firstMemory = 0;
    for (const test::DocumentShape& shape : shapes) {
        const DocumentOnDisk document(shape);
        ChildRun best = document.Model();
        for (int round = 1; round < 3; ++round) {
            const ChildRun next = document.Model();
            if (next.seconds < best.seconds) best = next;
        }
        const auto elements = static_cast<double>(document.CountElements());
        const double time = best.seconds / elements;
        const double memory = best.peakMegabytes / elements;
        if (firstTime == 0) {
            firstTime = time;
            firstMemory = memory;
        }
        std::printf("  %9zu elements (%4zu sub-models, %6zu categories): time %.2f, memory %.2f\n",
                    document.CountElements(), shape.subModels, shape.categories, time / firstTime,
                    memory / firstMemory);
    }
}

int RunParent(int rounds) {
    CompareWithBareParse("many categories", {0, 200, 480, 20}, rounds);
    CompareWithBareParse("two target categories", {0, 200, 2500, 2}, rounds);
    CompareWithBareParse("sub-models", {5000, 8, 12, 2}, rounds);
    ShowCurve("sub-models", {{625, 8, 12, 2}, {1250, 8, 12, 2}, {2500, 8, 12, 2}, {5000, 8, 12, 2}});
    ShowCurve("categories of one input", {{0, 1, 12500, 2}, {0, 1, 25000, 2}, {0, 1, 50000, 2}, {0, 1, 100000, 2}});
    return 0;
}

std::size_t NumberAt(char** arguments, int position) {
    return std::strtoull(arguments[position], nullptr, 10);
}

int RunLoad(const std::string& kind, char** arguments) {
    const LoadTime time = kind == "bare" ? LoadBare(arguments[2])
                                         : LoadModel(arguments[2], {NumberAt(arguments, 3), NumberAt(arguments, 4),
                                                                    NumberAt(arguments, 5), NumberAt(arguments, 6)});
    std::printf("%.6f %.6f\n", time.whole, time.translator);
    return 0;
}

int Run(int count, char** arguments) {
    const std::string first = count > 1 ? arguments[1] : "";
    if ((first == "bare" && count == 3) || (first == "model" && count == 7)) return RunLoad(first, arguments);
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
