/// What it takes to score a table of a million people from file to file, and from a file to probabilities in memory, as
/// ratios to a loop that asks the model row by row with the same readers and writers. Every run is a process of its
/// own; answers are compared byte by byte before anything is measured.
///
///     table_benchmark measure FOLDER ROUNDS RESULTS.json   everything, with files made in the folder
///     table_benchmark data FOLDER CASES                    makes the files
///     table_benchmark columns MODEL TABLE ROUNDS OUTPUT    prints the seconds of each round that scores columns
///     table_benchmark shapes FOLDER SEED SHAPES ROUNDS RESULTS.json   tables drawn at random (TableShapes.h)
///
/// and, for its own use, loop, memory_loop, memory and tight_loop, each with MODEL TABLE OUTPUT, and draw FOLDER CLASS
/// SEED.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "common/ProcessRun.h"
#include "common/SameFile.h"
#include "common/Spread.h"
#include "table/PeopleFiles.h"
#include "table/PlainRuns.h"
#include "table/TableLoop.h"
#include "table/TableShapes.h"

namespace nbscore::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t casesOfATable = 1'000'000;

void WriteNumbers(const std::vector<double>& numbers, const std::string& file) {
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    const auto bytes = std::as_bytes(std::span(numbers));
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
}

/// A way to score a table, and the way that its time is compared with.
struct Way {
    std::string name;
    std::vector<std::string> words;
    std::string measure;
    /// Whether a measured run leaves no output.
    bool inMemory = false;
    /// Whether it writes more than what it is measured by.
    bool writesMore = false;
};

Way CommandOnThreads(const std::string& threads, const fs::path& model, const fs::path& table,
                     const std::string& measure) {
    return {"command_threads_" + threads,
            {NBSCORE_COMMAND_FILE, "score", model, table, "--quiet", "--threads", threads, "-o"},
            measure};
}

std::vector<Way> AllWays(const fs::path& model, const fs::path& table) {
    const std::string own = GetOwnProgram();
    return {CommandOnThreads("1", model, table, "loop"), CommandOnThreads("2", model, table, "loop"),
            Way{"loop", {own, "loop", model, table}, "loop"},
            Way{"memory", {own, "memory", model, table}, "memory_loop", true},
            Way{"memory_loop", {own, "memory_loop", model, table}, "memory_loop", true}};
}

/// Scoring with reasons beside scoring alone.
std::vector<Way> WaysWithReasons(const fs::path& model, const fs::path& table) {
    const Way alone = CommandOnThreads("1", model, table, "command_threads_1");
    Way reasons = alone;
    reasons.name = "reasons";
    reasons.words.insert(reasons.words.end() - 1, {"--reasons", "3"});
    reasons.writesMore = true;
    return {alone, reasons};
}

std::vector<Way> WaysOnThreads(const fs::path& model, const fs::path& table) {
    return {CommandOnThreads("1", model, table, "command_threads_1"),
            CommandOnThreads("2", model, table, "command_threads_1")};
}

class TableMeasurement {
public:
    TableMeasurement(fs::path scoredTable, std::size_t cases, std::vector<Way> waysToScore, fs::path outputFolder)
        : table(std::move(scoredTable)),
          numCases(cases),
          ways(std::move(waysToScore)),
          folder(std::move(outputFolder)) {}

    /// Throws std::runtime_error when two ways give different results.
    void Check() const {
        for (const Way& way : ways)
            Run(way, OutputOf(way.name));
        for (const Way& way : ways) {
            if (!way.writesMore && !IsSameFile(OutputOf(way.name), OutputOf(way.measure)))
                throw std::runtime_error(way.name + " and " + way.measure + " differ");
        }
    }

    void MeasureRound() {
        for (const Way& way : ways)
            runs[way.name].push_back(Run(way, way.inMemory ? "/dev/null" : OutputOf(way.name)));
    }

    nlohmann::json Report() const {
        nlohmann::json report = {{"table", table.stem()}, {"cases", numCases}, {"bytes", fs::file_size(table)}};
        std::printf("%s: %zu cases, %ju bytes; cases per second, and their ratio to the measure's\n",
                    table.stem().c_str(), numCases, static_cast<std::uintmax_t>(fs::file_size(table)));
        for (const Way& way : ways)
            report["ways"][way.name] = ReportWay(way);
        return report;
    }

private:
    fs::path OutputOf(const std::string& way) const { return folder / (way + ".out"); }

    /// No file is replaced, so that the time to delete old ones is not measured.
    static ProcessRun Run(const Way& way, const fs::path& output) {
        if (fs::is_regular_file(output)) fs::remove(output);
        std::vector<std::string> words = way.words;
        words.push_back(output);
        return RunProcess(words);
    }

    nlohmann::json ReportWay(const Way& way) const {
        const std::vector<ProcessRun>& own = runs.at(way.name);
        const std::vector<ProcessRun>& measure = runs.at(way.measure);
        nlohmann::json report = {{"measure", way.measure}};
        std::vector<double> rates;
        std::vector<double> ratios;
        std::vector<double> memory;
        for (std::size_t round = 0; round < own.size(); ++round) {
            rates.push_back(static_cast<double>(numCases) / own[round].seconds);
            ratios.push_back(measure[round].seconds / own[round].seconds);
            memory.push_back(own[round].peakMegabytes);
            report["seconds"].push_back(own[round].seconds);
            report["peak_megabytes"].push_back(own[round].peakMegabytes);
        }
        const Spread ratio = SpreadOf(ratios);
        std::printf("  %-18s %9.0f  ratio %5.2f (%.2f to %.2f)  peak %6.1f MB\n", way.name.c_str(),
                    SpreadOf(rates).median, ratio.median, ratio.least, ratio.greatest, SpreadOf(memory).median);
        return report;
    }

    fs::path table;
    std::size_t numCases;
    std::vector<Way> ways;
    fs::path folder;
    std::map<std::string, std::vector<ProcessRun>> runs;
};

void Measure(const fs::path& folder, int rounds, const std::string& results) {
    // By another process, so that this one stays small.
    RunProcess({GetOwnProgram(), "data", folder, std::to_string(casesOfATable)});
    const PeopleFiles files(folder);
    std::vector<TableMeasurement> measurements;
    for (const fs::path& table : {files.differing, files.repeating})
        measurements.emplace_back(table, casesOfATable, AllWays(files.model, table), folder);
    for (const fs::path& table : {files.differing, files.repeating})
        measurements.emplace_back(table, casesOfATable, WaysWithReasons(files.model, table), folder);
    measurements.emplace_back(files.repeatingLong, timesAsLong * casesOfATable,
                              WaysOnThreads(files.model, files.repeatingLong), folder);
    nlohmann::json report = nlohmann::json::array();
    for (TableMeasurement& measurement : measurements) {
        measurement.Check();
        for (int round = 0; round < rounds; ++round)
            measurement.MeasureRound();
        report.push_back(measurement.Report());
    }
    std::ofstream(results) << report.dump(1) << '\n';
}

void PrintColumns(const std::vector<std::string>& words) {
    const ColumnRun run = ScoreColumns(words[1], words[2], std::stoul(words[3]));
    for (const double seconds : run.seconds)
        std::printf("%.6f\n", seconds);
    WriteNumbers(run.probabilities, words[4]);
}

/// False when the words are not understood.
bool Do(const std::vector<std::string>& words) {
    const std::string verb = words.empty() ? "" : words.front();
    if (verb == "measure" && words.size() == 4) {
        Measure(words[1], std::max(std::stoi(words[2]), 1), words[3]);
    } else if (verb == "data" && words.size() == 3) {
        WritePeopleFiles(PeopleFiles(words[1]), std::stoul(words[2]));
    } else if (verb == "columns" && words.size() == 5) {
        PrintColumns(words);
    } else if (verb == "loop" && words.size() == 4) {
        ScoreFileInLoop(words[1], words[2], words[3]);
    } else if (verb == "shapes" && words.size() == 6) {
        MeasureTableShapes({.folder = words[1],
                            .seed = std::stoul(words[2]),
                            .shapes = std::stoul(words[3]),
                            .rounds = std::max(std::stoi(words[4]), 1),
                            .results = words[5]});
    } else if (verb == "draw" && words.size() == 4) {
        DrawTableFiles(words[1], std::stoul(words[2]), std::stoul(words[3]));
    } else if (verb == "tight_loop" && words.size() == 4) {
        ScoreFileTightly(words[1], words[2], words[3]);
    } else if (verb == "memory" && words.size() == 4) {
        WriteNumbers(ComputeProbabilitiesInBatches(words[1], words[2]), words[3]);
    } else if (verb == "memory_loop" && words.size() == 4) {
        WriteNumbers(ComputeProbabilitiesInLoop(words[1], words[2]), words[3]);
    } else {
        return false;
    }
    return true;
}

}  // namespace
}  // namespace nbscore::bench

int main(int count, char** arguments) {
    try {
        if (nbscore::bench::Do({arguments + 1, arguments + count})) return 0;
        std::fprintf(stderr, "usage: table_benchmark measure FOLDER ROUNDS RESULTS.json\n");
        return 2;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "table_benchmark: %s\n", fault.what());
        return 1;
    }
}
