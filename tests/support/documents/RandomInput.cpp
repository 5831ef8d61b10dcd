#include "support/documents/RandomInput.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <optional>

namespace nbscore::test {
namespace {

std::string RandomNumber(int number, Randomness& random) {
    const double value = number * (OneIn(2, random) ? 1.0 : 0.1);
    return Digits(OneIn(4, random) ? -value - 0.5 : value);
}

double RandomBinnedValue(const RandomInput& input, Randomness& random) {
    const double cutpoint = OneOf(input.cutpoints, random);
    return OneIn(3, random) ? cutpoint : cutpoint + Between(-20, 20, random) / 16.0;
}

/// Every row of a learned input must be counted, or its category would not exist.
bool MustBeCounted(const RandomInput& input, std::size_t row) {
    return row == 0 || input.kind == RandomInput::LearnedTexts || input.kind == RandomInput::LearnedNumbers;
}

std::string BinsText(const RandomInput& input) {
    std::string bins;
    std::optional<std::string> left;
    for (const double cutpoint : input.cutpoints) {
        const std::string right = Digits(cutpoint);
        bins += DiscretizeBin("b", "openClosed", left, right);
        left = right;
    }
    bins += DiscretizeBin("b", "openClosed", left, {});
    return BinsOfInput("bin", input.name, bins) + "\n";
}

}  // namespace

int RandomInput::CodeOf(const std::string& cell) const {
    if (cell.empty()) return -1;
    if (kind == Binned) {
        const double value = std::strtod(cell.c_str(), nullptr);
        return static_cast<int>(std::ranges::count_if(cutpoints, [&](double c) { return value > c; }));
    }
    const auto found = std::ranges::find(categories, cell);
    return found == categories.end() ? -1 : static_cast<int>(found - categories.begin());
}

RandomInput MakeRandomInput(const std::string& name, Randomness& random) {
    static constexpr std::array<RandomInput::Kind, 5> kinds = {RandomInput::DeclaredTexts, RandomInput::DeclaredNumbers,
                                                               RandomInput::LearnedTexts, RandomInput::LearnedNumbers,
                                                               RandomInput::Binned};
    RandomInput input{name, OneOf(kinds, random), {}, {}};
    const int size = Between(1, 6, random);
    double cutpoint = Between(-50, 50, random) / 4.0;
    for (int i = 0; i < size; ++i) {
        if (input.kind == RandomInput::Binned) {
            input.cutpoints.push_back(cutpoint += Between(1, 9, random) / 8.0);
        } else {
            input.categories.push_back(input.IsNumeric() ? RandomNumber(i + 1, random) : RandomText(i, random));
        }
    }
    // Numbers drawn twice would be one category.
    std::ranges::sort(input.categories);
    input.categories.erase(std::unique(input.categories.begin(), input.categories.end()), input.categories.end());
    std::ranges::shuffle(input.categories, random);
    return input;
}

std::string RandomText(int number, Randomness& random) {
    static const std::array<std::string, 7> stems = {"v", "ä ö", "<&>", "a,b", "say \"x\"", " pad ", "0"};
    return OneOf(stems, random) + std::to_string(number);
}

double RandomCount(Randomness& random) {
    switch (Between(0, 5, random)) {
        case 0:
            return 0.0;
        case 1:
            return std::uniform_real_distribution<double>(0.0, 100.0)(random);
        case 2:
            return Between(1, 3, random);
        default:
            return Between(0, 5000, random);
    }
}

std::string RandomCell(const RandomInput& input, Randomness& random) {
    if (OneIn(6, random)) return "";
    if (input.kind == RandomInput::Binned) return Digits(RandomBinnedValue(input, random));
    if (OneIn(8, random)) return input.IsNumeric() ? "77777" : "nobody knows this";
    return OneOf(input.categories, random);
}

std::string FieldText(const std::string& element, const RandomInput& input, const std::string& content) {
    const std::string values = input.IsDeclared() ? ValueElements(input.categories) : std::string();
    return XmlElement(element, Declaration(input.name, input.Type()), content + values) + "\n";
}

std::string CountsText(const std::vector<std::string>& targetCategories, const std::vector<double>& counts,
                       Randomness& random) {
    std::string entries;
    for (std::size_t k = 0; k < counts.size(); ++k) {
        if (OneIn(15, random)) entries += TargetValueCount("98765", "5");
        const bool canBeLeftOut = counts[k] == 0.0 && counts.size() > 1;
        if (canBeLeftOut && OneIn(2, random)) continue;
        entries += TargetValueCount(targetCategories[k], Digits(counts[k]));
    }
    return TargetValueCounts(entries);
}

std::string BayesInputText(const RandomInput& input, const std::vector<std::string>& targetCategories,
                           RandomCounts& counts, Randomness& random) {
    counts.assign(input.Size(), std::vector<double>(targetCategories.size(), 0.0));
    std::string content = "\n";
    if (input.kind == RandomInput::Binned) content += BinsText(input);
    for (std::size_t row = 0; row < counts.size(); ++row) {
        if (!MustBeCounted(input, row) && OneIn(8, random)) continue;
        for (double& count : counts[row])
            count = RandomCount(random);
        const std::string value = input.kind == RandomInput::Binned ? std::to_string(row) : input.categories[row];
        content += PairCounts(value, CountsText(targetCategories, counts[row], random)) + "\n";
    }
    return BayesInput(input.name, content) + "\n";
}

}  // namespace nbscore::test
