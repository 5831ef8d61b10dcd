/// How processor time grows with documents and tables that hold more and more of one kind of part: from one size to
/// the double it should double. Where it grows by a higher power than 1.2 of the size, over the last doublings
/// and in the very last one, the instructions are counted too: what no longer fits into the processor's caches takes
/// more time for the same work. Fails where these grow by such a power.
///
/// `growth_benchmark [WORD...]` measures those whose names hold one of the words; without words all.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <map>
#include <sstream>
#include <stdexcept>

#include "common/ProcessRun.h"
#include "growth/GrowingDocuments.h"
#include "growth/Verbs.h"
#include "support/TemporaryFolder.h"

namespace nbscore::bench {
namespace {

constexpr double greatestExponent = 1.2;
/// Shorter times say more about the clock and about work that is done once.
constexpr double leastSeconds = 0.02;
/// A size that takes longer than this in total is the last one.
constexpr double enoughSeconds = 8;
/// Repeated, because what grows too fast only by chance does not do so each time.
constexpr int attempts = 3;
/// The last sizes that the power is fitted to.
constexpr std::size_t fittedSizes = 4;
constexpr int doublings = 6;

/// The least time of a verb by size.
using Curve = std::map<std::size_t, double>;
using Curves = std::map<std::string, Curve>;

/// The files of the size that is measured.
class GrowingFiles {
public:
    std::filesystem::path GetDocument() const { return folder / "model.pmml"; }
    std::filesystem::path GetTable() const { return folder / "cases.csv"; }

private:
    test::TemporaryFolder folder;
};

/// Each size runs in a process of its own, so that what one leaves behind does not affect the next.
std::vector<VerbTime> TimeInProcess(const GrowingFiles& files) {
    std::istringstream output(
        RunProcess({GetOwnProgram(), "--time", files.GetDocument().string(), files.GetTable().string()}).output);
    std::vector<VerbTime> times;
    for (VerbTime time; output >> time.seconds && std::getline(output >> std::ws, time.verb);)
        times.push_back(time);
    return times;
}

/// @param sizes from the smallest on.
void Measure(const GrowingDocument& growing, const GrowingFiles& files, const std::vector<std::size_t>& sizes,
             Curves& curves) {
    for (const std::size_t size : sizes) {
        growing.write(size, files.GetDocument(), files.GetTable());
        double all = 0;
        for (const auto& [verb, seconds] : TimeInProcess(files)) {
            const auto [least, isNew] = curves[verb].try_emplace(size, seconds);
            least->second = std::min(least->second, seconds);
            all += seconds;
        }
        if (all > enoughSeconds) return;
    }
}

/// The power of the size with which the times of the last sizes grow, by least squares of their logarithms; 0 when they
/// are too short or too few.
double ExponentOf(const Curve& curve, std::size_t lastSizes) {
    std::vector<std::pair<double, double>> points;
    for (auto point = curve.rbegin(); point != curve.rend() && points.size() < lastSizes; ++point) {
        if (point->second < leastSeconds) break;
        points.emplace_back(std::log(static_cast<double>(point->first)), std::log(point->second));
    }
    if (points.size() < 2) return 0;
    double meanX = 0;
    double meanY = 0;
    for (const auto& [x, y] : points) {
        meanX += x / static_cast<double>(points.size());
        meanY += y / static_cast<double>(points.size());
    }
    double covariance = 0;
    double variance = 0;
    for (const auto& [x, y] : points) {
        covariance += (x - meanX) * (y - meanY);
        variance += (x - meanX) * (x - meanX);
    }
    return covariance / variance;
}

bool GrowsTooFast(const Curve& curve) {
    return ExponentOf(curve, fittedSizes) > greatestExponent && ExponentOf(curve, 2) > greatestExponent;
}

bool AnyGrowsTooFast(const Curves& curves) {
    return std::ranges::any_of(curves, [](const auto& curve) { return GrowsTooFast(curve.second); });
}

/// The sizes to measure, or those that were measured last.
std::vector<std::size_t> SizesOf(const GrowingDocument& growing, const Curves& measured) {
    std::vector<std::size_t> sizes;
    if (measured.empty()) {
        for (int halvings = doublings; halvings >= 0; --halvings)
            sizes.push_back(growing.most >> halvings);
        return sizes;
    }
    for (const auto& [size, seconds] : measured.begin()->second)
        sizes.push_back(size);
    sizes.erase(sizes.begin(), sizes.end() - static_cast<std::ptrdiff_t>(std::min(sizes.size(), fittedSizes)));
    return sizes;
}

/// The instructions of a process that does one verb and what it needs first, counted by valgrind.
double CountInstructions(const GrowingFiles& files, const std::string& verb) {
    const std::string output =
        RunProcess({"/usr/bin/valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", "--log-fd=1",
                    GetOwnProgram(), "--time", files.GetDocument().string(), files.GetTable().string(), verb})
            .output;
    const std::string label = "Collected : ";
    const std::size_t found = output.find(label);
    if (found == std::string::npos) throw std::runtime_error("valgrind counted nothing");
    return std::stod(output.substr(found + label.size()));
}

/// The power of the size with which the work of a verb grows, from the last size but one to the last.
double WorkExponentOf(const GrowingDocument& growing, const GrowingFiles& files, const std::string& verb,
                      const Curve& curve) {
    Curve work;
    for (auto point = curve.rbegin(); point != curve.rend() && work.size() < 2; ++point) {
        growing.write(point->first, files.GetDocument(), files.GetTable());
        work[point->first] = CountInstructions(files, verb);
    }
    return ExponentOf(work, work.size());
}

/// Whether nothing grew too fast.
bool MeasureAndPrint(const GrowingDocument& growing, const GrowingFiles& files) {
    Curves curves;
    for (int attempt = 0; attempt < attempts && (attempt == 0 || AnyGrowsTooFast(curves)); ++attempt)
        Measure(growing, files, SizesOf(growing, curves), curves);
    bool isFine = true;
    for (const auto& [verb, curve] : curves) {
        const double exponent = ExponentOf(curve, fittedSizes);
        if (exponent == 0) continue;
        const auto& [size, seconds] = *curve.rbegin();
        std::printf("%-42s %-12s %9zu %8.2f s %6.2f", growing.name.c_str(), verb.c_str(), size, seconds, exponent);
        if (GrowsTooFast(curve)) {
            const double workExponent = WorkExponentOf(growing, files, verb, curve);
            const bool isTooMuch = workExponent > greatestExponent;
            std::printf("  instructions %.2f%s", workExponent, isTooMuch ? ": too fast" : "");
            isFine = isFine && !isTooMuch;
        }
        std::printf("\n");
        std::fflush(stdout);
    }
    return isFine;
}

int RunAll(const std::vector<std::string>& words) {
    const GrowingFiles files;
    bool isFine = true;
    std::printf("%-42s %-12s %9s %10s %6s\n", "what there is more and more of", "what takes", "at most", "time",
                "power");
    for (const GrowingDocument& growing : GetGrowingDocuments()) {
        const bool isWanted = words.empty() || std::ranges::any_of(words, [&growing](const std::string& word) {
                                  return growing.name.find(word) != std::string::npos;
                              });
        if (!isWanted) continue;
        try {
            isFine = MeasureAndPrint(growing, files) && isFine;
        } catch (const std::exception& fault) {
            std::printf("%-42s %s\n", growing.name.c_str(), fault.what());
            isFine = false;
        }
    }
    return isFine ? 0 : 1;
}

int Run(const std::vector<std::string>& arguments) {
    if (arguments.size() >= 3 && arguments.front() == "--time") {
        for (const auto& [verb, seconds] :
             TimeVerbs(arguments[1], arguments[2], arguments.size() > 3 ? arguments[3] : ""))
            std::printf("%.6f %s\n", seconds, verb.c_str());
        return 0;
    }
    return RunAll(arguments);
}

}  // namespace
}  // namespace nbscore::bench

int main(int count, char** arguments) {
    try {
        return nbscore::bench::Run({arguments + 1, arguments + count});
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "growth_benchmark: %s\n", fault.what());
        return 1;
    }
}
