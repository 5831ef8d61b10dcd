#include "cases/RandomDocument.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

namespace nbscore::test {

namespace {

int Between(int lowest, int highest, Randomness& random) {
    return std::uniform_int_distribution<int>(lowest, highest)(random);
}

bool OneIn(int chances, Randomness& random) {
    return Between(1, chances, random) == 1;
}

template <typename Choices>
const auto& OneOf(const Choices& choices, Randomness& random) {
    return choices[static_cast<std::size_t>(Between(0, static_cast<int>(std::size(choices)) - 1, random))];
}

/// All digits of a double; the test's own way of writing numbers.
std::string Digits(double number) {
    std::array<char, 40> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.17g", number);
    return buffer.data();
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

double RandomThreshold(Randomness& random) {
    static constexpr std::array<double, 8> thresholds = {0.001, 1e-6, 1e-12, 0.5, 1.0, 2.0, 1e6, 0.0375};
    return OneOf(thresholds, random);
}

/// Names that need care in XML, in CSV, in both, or nowhere.
std::string RandomText(int number, Randomness& random) {
    static const std::array<std::string, 7> stems = {"v", "ä ö", "<&>", "a,b", "say \"x\"", " pad ", "0"};
    return OneOf(stems, random) + std::to_string(number);
}

std::string RandomNumber(int number, Randomness& random) {
    const double value = number * (OneIn(2, random) ? 1.0 : 0.1);
    return Digits(OneIn(4, random) ? -value - 0.5 : value);
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<')
            escaped += "&lt;";
        else if (c == '&')
            escaped += "&amp;";
        else if (c == '"')
            escaped += "&quot;";
        else
            escaped += c;
    }
    return escaped;
}

std::string Attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + Escaped(value) + "\"";
}

std::string FieldText(const std::string& name, bool numeric, bool continuous, const std::vector<std::string>& values) {
    std::string text = "<DataField" + Attribute("name", name) +
                       Attribute("optype", continuous ? "continuous" : "categorical") +
                       Attribute("dataType", numeric ? "double" : "string") + ">";
    for (const std::string& value : values)
        text += "<Value" + Attribute("value", value) + "/>";
    return text + "</DataField>\n";
}

/// The counts of one row; a target value now and then has no entry at all, which counts as zero, and now and then
/// an entry of a value that nobody declared stands between, which counts for nothing.
std::string CountsText(const RandomDocument& document, const std::vector<double>& counts, Randomness& random) {
    std::string text = "<TargetValueCounts>";
    for (std::size_t k = 0; k < counts.size(); ++k) {
        if (OneIn(15, random)) text += "<TargetValueCount value=\"98765\" count=\"5\"/>";
        const bool canBeLeftOut = counts[k] == 0.0 && counts.size() > 1;
        if (canBeLeftOut && OneIn(2, random)) continue;
        text += "<TargetValueCount" + Attribute("value", document.targetCategories[k]) +
                Attribute("count", Digits(counts[k])) + "/>";
    }
    return text + "</TargetValueCounts>";
}

std::string DiscretizeText(const RandomInput& input) {
    std::string text = "<DerivedField name=\"bin\" optype=\"categorical\" dataType=\"integer\"><Discretize" +
                       Attribute("field", input.name) + ">";
    for (std::size_t bin = 0; bin <= input.cutpoints.size(); ++bin) {
        text += "<DiscretizeBin binValue=\"b\"><Interval closure=\"openClosed\"";
        if (bin > 0) text += Attribute("leftMargin", Digits(input.cutpoints[bin - 1]));
        if (bin < input.cutpoints.size()) text += Attribute("rightMargin", Digits(input.cutpoints[bin]));
        text += "/></DiscretizeBin>";
    }
    return text + "</Discretize></DerivedField>\n";
}

RandomInput MakeInput(int number, Randomness& random) {
    static constexpr std::array<RandomInput::Kind, 5> kinds = {RandomInput::DeclaredTexts, RandomInput::DeclaredNumbers,
                                                               RandomInput::LearnedTexts, RandomInput::LearnedNumbers,
                                                               RandomInput::Binned};
    RandomInput input{"input " + std::to_string(number), OneOf(kinds, random), {}, {}};
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

/// Every row of a learned input must be counted, or its category would not exist.
bool MustBeCounted(const RandomInput& input, std::size_t row) {
    return row == 0 || input.kind == RandomInput::LearnedTexts || input.kind == RandomInput::LearnedNumbers;
}

std::string InputText(RandomDocument& document, const RandomInput& input, Randomness& random) {
    const std::size_t rows = input.kind == RandomInput::Binned ? input.cutpoints.size() + 1 : input.categories.size();
    std::vector<std::vector<double>> matrix(rows, std::vector<double>(document.targetCategories.size(), 0.0));
    std::string text = "<BayesInput" + Attribute("fieldName", input.name) + ">\n";
    if (input.kind == RandomInput::Binned) text += DiscretizeText(input);
    for (std::size_t row = 0; row < rows; ++row) {
        if (!MustBeCounted(input, row) && OneIn(8, random)) continue;
        for (double& count : matrix[row])
            count = RandomCount(random);
        const std::string value = input.kind == RandomInput::Binned ? std::to_string(row) : input.categories[row];
        text += "<PairCounts" + Attribute("value", value) + ">" + CountsText(document, matrix[row], random) +
                "</PairCounts>\n";
    }
    document.model.counts.push_back(std::move(matrix));
    return text + "</BayesInput>\n";
}

std::string DictionaryText(const RandomDocument& document) {
    std::string text =
        "<DataDictionary>\n" + FieldText(document.targetName, document.numericTarget, false, document.targetCategories);
    for (const RandomInput& input : document.inputs) {
        const bool declared = input.kind == RandomInput::DeclaredTexts || input.kind == RandomInput::DeclaredNumbers;
        text += FieldText(input.name, input.IsNumeric(), input.kind == RandomInput::Binned,
                          declared ? input.categories : std::vector<std::string>{});
    }
    return text + "</DataDictionary>\n";
}

std::string ModelText(RandomDocument& document, Randomness& random) {
    std::string text = "<NaiveBayesModel" + Attribute("threshold", Digits(document.model.threshold)) +
                       ">\n<MiningSchema>\n<MiningField" + Attribute("name", document.targetName) +
                       " usageType=\"predicted\"/>\n";
    for (const RandomInput& input : document.inputs)
        text += "<MiningField" + Attribute("name", input.name) + "/>\n";
    text += "</MiningSchema>\n<BayesInputs>\n";
    for (const RandomInput& input : document.inputs)
        text += InputText(document, input, random);
    return text + "</BayesInputs>\n<BayesOutput" + Attribute("fieldName", document.targetName) + ">" +
           CountsText(document, document.model.targetCounts, random) + "</BayesOutput>\n</NaiveBayesModel>\n";
}

double RandomBinnedValue(const RandomInput& input, Randomness& random) {
    const double cutpoint = OneOf(input.cutpoints, random);
    return OneIn(3, random) ? cutpoint : cutpoint + Between(-20, 20, random) / 16.0;
}

}  // namespace

RandomDocument MakeRandomDocument(Randomness& random) {
    RandomDocument document;
    document.targetName = "target";
    document.numericTarget = OneIn(3, random);
    const int targets = OneIn(20, random) ? 1 : Between(2, 6, random);
    for (int k = 0; k < targets; ++k) {
        document.targetCategories.push_back(document.numericTarget ? std::to_string(k * 3 - 4) : RandomText(k, random));
        document.model.targetCounts.push_back(RandomCount(random));
    }
    // Equal counts now and then, so that categories tie.
    if (OneIn(4, random)) std::ranges::fill(document.model.targetCounts, 7.0);
    document.model.threshold = RandomThreshold(random);
    const int inputs = Between(1, 6, random);
    for (int i = 0; i < inputs; ++i)
        document.inputs.push_back(MakeInput(i, random));
    document.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.4\">\n" + DictionaryText(document) +
                    ModelText(document, random) + "</PMML>\n";
    return document;
}

RandomCase MakeRandomCase(const RandomDocument& document, Randomness& random) {
    RandomCase made;
    for (const RandomInput& input : document.inputs) {
        std::string cell;
        int code = -1;
        if (OneIn(6, random)) {
            // absent
        } else if (OneIn(8, random) && input.kind != RandomInput::Binned) {
            cell = input.IsNumeric() ? "77777" : "nobody knows this";
        } else if (input.kind == RandomInput::Binned) {
            const double value = RandomBinnedValue(input, random);
            cell = Digits(value);
            code = static_cast<int>(std::ranges::count_if(input.cutpoints, [&](double c) { return value > c; }));
        } else {
            code = Between(0, static_cast<int>(input.categories.size()) - 1, random);
            cell = input.categories[static_cast<std::size_t>(code)];
        }
        made.cells.push_back(cell);
        made.codes.push_back(code);
    }
    return made;
}

}  // namespace nbscore::test
