#include "cli/system/Progress.h"

#include <algorithm>

namespace nbscore {
namespace {

using namespace std::chrono_literals;

/// Such as "1,234,567".
std::string WriteCount(std::uint64_t count) {
    std::string text = std::to_string(count);
    for (std::size_t place = text.size(); place > 3; place -= 3)
        text.insert(place - 3, ",");
    return text;
}

/// Such as "45 s", "3 min 20 s" or "2 h 5 min".
std::string WriteDuration(double seconds) {
    const auto whole = static_cast<std::uint64_t>(std::clamp(seconds, 0.0, 1e9));
    if (whole < 60) return std::to_string(whole) + " s";
    if (whole < 3600) return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
    return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
}

}  // namespace

Progress::Progress(std::ostream& terminal, std::optional<std::uint64_t> totalBytes, Console::Clock clock)
    : out(terminal), total(totalBytes), now(std::move(clock)), start(now()), next(start + 1s) {}

Progress::~Progress() {
    if (shownLength == 0) return;
    Show("");
    out << '\r' << std::flush;
}

void Progress::Update(const ScoringProgress& progress) {
    const Time time = now();
    if (time < next) return;
    next = time + 250ms;
    Show(MakeLine(progress, time - start));
}

std::string Progress::MakeLine(const ScoringProgress& progress, std::chrono::duration<double> elapsed) const {
    const double seconds = elapsed.count();
    std::string line = WriteCount(progress.rows) + " rows, " +
                       WriteCount(static_cast<std::uint64_t>(static_cast<double>(progress.rows) / seconds)) + " rows/s";
    if (!total || *total == 0 || progress.inputBytes == 0) return line;
    // A file that grows while it is read has no more than all of it done.
    const double done = std::min(1.0, static_cast<double>(progress.inputBytes) / static_cast<double>(*total));
    line += ", " + std::to_string(static_cast<int>(done * 100)) + " %";
    return line + ", " + WriteDuration(seconds * (1 - done) / done) + " left";
}

void Progress::Show(const std::string& line) {
    const std::size_t surplus = shownLength > line.size() ? shownLength - line.size() : 0;
    out << '\r' << line << std::string(surplus, ' ') << std::flush;
    shownLength = line.size();
}

}  // namespace nbscore
