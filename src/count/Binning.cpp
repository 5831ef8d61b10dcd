#include "count/Binning.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>
#include <span>

namespace nbscore {
namespace {

/// The number that is nearest by so many significant digits.
double RoundToDigits(double number, int digits) {
    std::array<char, 40> text{};
    char* const end = text.data() + text.size();
    const auto written = std::to_chars(text.data(), end, number, std::chars_format::scientific, digits - 1);
    double rounded = number;
    std::from_chars(text.data(), written.ptr, rounded);
    return rounded;
}

/// The number of the fewest digits that is not below the first and below the second.
double FindShortCut(double below, double above) {
    if (below <= 0.0 && 0.0 < above) return 0.0;
    constexpr int mostDigits = 17;
    const double middle = below / 2.0 + above / 2.0;
    for (int digits = 1; digits < mostDigits; ++digits) {
        for (const double number : {below, middle}) {
            const double rounded = RoundToDigits(number, digits);
            if (below <= rounded && rounded < above) return rounded;
        }
    }
    return below;
}

/// @param last of the numbers that stay on the left; not the last of all.
double CutBehind(const CountedNumbers& counted, std::size_t last) {
    return counted.areExact ? FindShortCut(counted.numbers[last], counted.numbers[last + 1]) : counted.numbers[last];
}

/// Sums of counts of numbers that stand side by side, for each category.
using Sums = std::vector<std::uint64_t>;

void AddTo(Sums& sums, const std::vector<std::uint64_t>& counts) {
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] += counts[i];
}

struct Purity {
    double total = 0.0;
    /// In bits.
    double entropy = 0.0;
    double categories = 0.0;
};

Purity PurityOf(const Sums& sums) {
    Purity purity;
    purity.total = static_cast<double>(std::accumulate(sums.begin(), sums.end(), std::uint64_t{0}));
    for (const std::uint64_t sum : sums) {
        if (sum == 0) continue;
        const double share = static_cast<double>(sum) / purity.total;
        purity.entropy -= share * std::log2(share);
        purity.categories += 1.0;
    }
    return purity;
}

/// Cuts a stretch of numbers, and the parts, where it is worth it.
class EntropyCuts {
public:
    explicit EntropyCuts(const CountedNumbers& countedNumbers) : counted(countedNumbers) {}

    std::vector<double> Find() {
        // A list of stretches, not calls of calls: cuts may follow one another as often as there are numbers.
        std::vector<Stretch> waiting = {{0, counted.numbers.size()}};
        while (!waiting.empty()) {
            const Stretch stretch = waiting.back();
            waiting.pop_back();
            const std::optional<std::size_t> last = FindCut(stretch);
            if (!last) continue;
            cuts.push_back(CutBehind(counted, *last));
            waiting.push_back({stretch.begin, *last + 1});
            waiting.push_back({*last + 1, stretch.end});
        }
        std::ranges::sort(cuts);
        return cuts;
    }

private:
    struct Stretch {
        std::size_t begin;
        std::size_t end;
    };

    std::optional<std::size_t> FindCut(Stretch stretch) const {
        if (stretch.end - stretch.begin < 2) return std::nullopt;
        Sums all(counted.counts.front().size());
        for (std::size_t i = stretch.begin; i < stretch.end; ++i)
            AddTo(all, counted.counts[i]);
        const Purity whole = PurityOf(all);
        Sums left(all.size());
        Sums right = all;
        std::optional<std::size_t> best;
        double lowest = 0.0;
        double threshold = 0.0;
        for (std::size_t i = stretch.begin; i + 1 < stretch.end; ++i) {
            AddTo(left, counted.counts[i]);
            for (std::size_t category = 0; category < right.size(); ++category)
                right[category] -= counted.counts[i][category];
            const Purity before = PurityOf(left);
            const Purity behind = PurityOf(right);
            const double entropy = (before.total * before.entropy + behind.total * behind.entropy) / whole.total;
            if (best && !(entropy < lowest)) continue;
            best = i;
            lowest = entropy;
            threshold = LeastGain(whole, before, behind);
        }
        return best && whole.entropy - lowest > threshold ? best : std::nullopt;
    }

    /// The gain of which the description of the cut takes all away.
    static double LeastGain(const Purity& whole, const Purity& before, const Purity& behind) {
        const double delta = std::log2(std::pow(3.0, whole.categories) - 2.0) -
                             (whole.categories * whole.entropy - before.categories * before.entropy -
                              behind.categories * behind.entropy);
        return (std::log2(whole.total - 1.0) + delta) / whole.total;
    }

    const CountedNumbers& counted;
    std::vector<double> cuts;
};

}  // namespace

std::vector<double> CutIntoEqualCounts(const CountedNumbers& counted, std::size_t bins) {
    std::vector<std::uint64_t> upTo;
    std::uint64_t total = 0;
    for (const std::vector<std::uint64_t>& counts : counted.counts)
        upTo.push_back(total = std::accumulate(counts.begin(), counts.end(), total));
    std::vector<double> cuts;
    std::optional<std::size_t> previous;
    std::size_t last = 0;
    for (std::uint64_t bin = 1; bin < bins; ++bin) {
        const std::uint64_t wanted = bin * total;  // times the number of bins, as all that is compared with it
        while (upTo[last] * bins < wanted)
            ++last;
        const bool isFormerNearer = last > 0 && wanted - upTo[last - 1] * bins < upTo[last] * bins - wanted;
        const std::size_t nearest = isFormerNearer ? last - 1 : last;
        if ((previous && nearest <= *previous) || nearest + 1 >= counted.numbers.size()) continue;
        previous = nearest;
        cuts.push_back(CutBehind(counted, nearest));
    }
    return cuts;
}

std::vector<double> CutByEntropy(const CountedNumbers& counted) {
    return EntropyCuts(counted).Find();
}

}  // namespace nbscore
