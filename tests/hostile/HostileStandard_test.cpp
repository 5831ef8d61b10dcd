// Documents for the standard's rule with numbers, names and sizes that could crash, hang or exhaust it.

#include <charconv>

#include "hostile/HostileTest.h"
#include "support/CollidingKeys.h"
#include "support/documents/StandardElements.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

class HostileStandard : public HostileTest {
protected:
    CommandResult ScoreAsStandard(const std::string& document, const std::string& cases) const {
        folder.Write("model.pmml", document);
        folder.Write("cases.csv", cases);
        return RunLimited({"score", "--rule", "standard", "--allow-missing-fields", "--only-scores", "--columns",
                           "usual", "model.pmml", "cases.csv"});
    }

    /// Each case gets its row, and each probability is one, or absent where the case has no result.
    void ExpectProbabilities(const std::string& document, const std::string& cases) const {
        const CommandResult result = ScoreAsStandard(document, cases);
        ASSERT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
        const std::vector<std::string> lines = Lines(result.out);
        ASSERT_EQ(lines.size(), Lines(cases).size());
        for (std::size_t line = 1; line < lines.size(); ++line) {
            SCOPED_TRACE(lines[line].substr(0, 200));
            std::size_t start = lines[line].find(',');
            while (start != std::string::npos) {
                const std::size_t end = lines[line].find(',', start + 1);
                const std::string cell = lines[line].substr(start + 1, end - start - 1);
                double number = -1;
                if (!cell.empty()) std::from_chars(cell.data(), cell.data() + cell.size(), number);
                ASSERT_TRUE(cell.empty() || (number >= 0 && number <= 1)) << cell;
                start = end;
            }
        }
    }

    void ExpectRefusal(const std::string& document, const std::string& words) const {
        const CommandResult result = ScoreAsStandard(document, "weight\n1\n");
        EXPECT_EQ(result.exitStatus, 3) << result.err.substr(0, 1000);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(words));
        EXPECT_LT(result.err.size(), 3000U);
    }
};

StandardDocument WithDensities(const std::string& apple, const std::string& pear) {
    StandardDocument document;
    document.inputs = DensityInput("weight", TargetValueStat("apple", apple) + TargetValueStat("pear", pear));
    return document;
}

const std::string extremeCases =
    "weight\n0\n1\n-1\n1e308\n-1e308\n1.7976931348623157e308\n1e-308\n5e-324\n9007199254740993\n0.5\n\n";

/// Each mean with each variance, as the density of a target category of its own.
StandardDocument WithExtremeDensities(const std::string& threshold) {
    StandardDocument document;
    std::string values;
    std::string statistics;
    document.threshold = threshold;
    document.targetCounts.clear();
    for (const std::string mean : {"0", "1", "1e308", "-1e308", "5e-324"}) {
        for (const std::string variance : {"1e308", "1.7976931348623157e308", "1e-308", "5e-324", "1", "0"}) {
            const std::string category = mean + " " + variance;
            values += ValueElement(category);
            statistics += TargetValueStat(category, Gaussian(mean, variance));
            document.targetCounts += TargetValueCount(category, "1");
        }
    }
    document.target = DataField("fruit", FieldType::Texts, values);
    document.inputs = DensityInput("weight", statistics);
    return document;
}

TEST_F(HostileStandard, GivesProbabilities_WhenDensitiesAreExtreme) {
    for (const std::string threshold : {"0", "5e-324", "0.001", "1e308"}) {
        SCOPED_TRACE(threshold);
        ExpectProbabilities(WithExtremeDensities(threshold).Text(), extremeCases);
    }
}

TEST_F(HostileStandard, GivesProbabilities_WhenRatesAndBoundsAreExtreme) {
    for (const std::string mean : {"1e308", "5e-324", "1e15", "0"}) {
        SCOPED_TRACE(mean);
        ExpectProbabilities(WithDensities(Poisson(mean), Poisson("3")).Text(), extremeCases);
    }
    const auto uniform = [](const std::string& lower, const std::string& upper) {
        return XmlElement("UniformDistribution", Attribute("lower", lower) + Attribute("upper", upper));
    };
    ExpectProbabilities(WithDensities(uniform("-1e308", "1e308"), uniform("0", "5e-324")).Text(), extremeCases);
}

TEST_F(HostileStandard, GivesProbabilities_WhenCountsAreExtreme) {
    for (const std::string count : {"1e308", "1.7976931348623157e308", "5e-324"}) {
        SCOPED_TRACE(count);
        StandardDocument document;
        document.targetCounts = TargetValueCount("apple", count) + TargetValueCount("pear", "1e308");
        const std::string counts = TargetValueCounts(document.targetCounts);
        document.inputs = BayesInput("weight", PairCounts("0", counts) + PairCounts("1", counts));
        ExpectProbabilities(document.Text(), extremeCases);
    }
}

TEST_F(HostileStandard, IsRefused_WhenANumberIsNone) {
    for (const std::string number : {"INF", "-INF", "1e999", "0x10", "1,5", ""}) {
        SCOPED_TRACE(number);
        ExpectRefusal(WithDensities(Gaussian(number, "1"), Gaussian("1", "1")).Text(), "error 9");
        ExpectRefusal(WithDensities(Gaussian("1", number), Gaussian("1", "1")).Text(), "error 9");
        ExpectRefusal(WithDensities(Poisson(number), Poisson("1")).Text(), "error 9");
    }
}

TEST_F(HostileStandard, GivesProbabilities_WhenTenThousandFieldsAreTreated) {
    StandardDocument document;
    for (int number = 0; number < 10'000; ++number) {
        const std::string name = "x" + std::to_string(number);
        document.dataFields += DataField(name, FieldType::Bins);
        document.miningFields +=
            TreatedField(name, Attribute("missingValueReplacement", std::to_string(number % 7)) +
                                   Attribute("outliers", "asExtremeValues") + Attribute("lowValue", "-3") +
                                   Attribute("highValue", "3") + Attribute("invalidValueTreatment", "asMissing"));
        document.inputs += DensityInput(
            name, TargetValueStat("apple", Gaussian("1", "2")) + TargetValueStat("pear", Gaussian("0.9", "2")));
    }
    ExpectProbabilities(document.Text(), "weight,x1,x9999\n170,1,2\n,,9\n170,-1e308,\n");
}

TEST_F(HostileStandard, GivesProbabilities_WhenManyCategoriesShareOneHash) {
    StandardDocument document;
    std::string values;
    std::string statistics;
    document.targetCounts.clear();
    for (const std::string& category : CollidingTexts(60'000)) {
        values += ValueElement(category);
        statistics += TargetValueStat(category, Gaussian("1", "2"));
        document.targetCounts += TargetValueCount(category, "1");
    }
    document.target = DataField("fruit", FieldType::Texts, values);
    document.inputs = DensityInput("weight", statistics);
    ExpectProbabilities(document.Text(), "weight\n1\n\n");
}

TEST_F(HostileStandard, GivesProbabilities_WhenValuesShareOneHash) {
    StandardDocument document;
    document.dataFields += DataField("colour", FieldType::Texts);
    document.miningFields += MiningField("colour");
    const std::string counts = TargetValueCounts(document.targetCounts);
    const std::vector<std::string> texts = CollidingTexts(60'000);
    document.inputs +=
        BayesInput("colour", Each(texts, [&](const std::string& text) { return PairCounts(text, counts); }));
    ExpectProbabilities(document.Text(), "weight,colour\n170," + texts.back() + "\n170,none\n");
}

TEST_F(HostileStandard, GivesItsOutput_WhenTenThousandOutputsReadOneAnother) {
    StandardDocument document;
    document.output = OutputField("o0", "predictedValue");
    for (int number = 1; number < 10'000; ++number)
        document.output +=
            OutputField("o" + std::to_string(number), "transformedValue", FieldRef("o" + std::to_string(number - 1)));
    folder.Write("model.pmml", document.Text());
    folder.Write("cases.csv", "weight\n200\n");
    const CommandResult result =
        RunLimited({"score", "--rule", "standard", "--only-scores", "model.pmml", "cases.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
    EXPECT_THAT(result.out, HasSubstr(",apple\n"));
}

TEST_F(HostileStandard, LeavesItsOutputEmpty_WhenTextsKeepDoubling) {
    StandardDocument document;
    document.output = OutputField("o0", "predictedValue");
    for (int number = 1; number < 100; ++number) {
        const std::string before = FieldRef("o" + std::to_string(number - 1));
        document.output +=
            OutputField("o" + std::to_string(number), "transformedValue", Apply("concat", before + before));
    }
    document.output += OutputField("length", "transformedValue", Apply("stringLength", FieldRef("o99")));
    folder.Write("model.pmml", document.Text());
    folder.Write("cases.csv", "weight\n200\n");
    const CommandResult result =
        RunLimited({"score", "--rule", "standard", "--only-scores", "model.pmml", "cases.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
    EXPECT_LT(result.out.size(), 200'000'000U);
    EXPECT_TRUE(result.out.ends_with(",\n"));
}

/// The content in a hundred thousand elements of one name, each in the other.
std::string DeepIn(const std::string& name, const std::string& attributes, const std::string& content) {
    const auto repeated = [](const std::string& tag) { return Each(100'000, [&](const std::string&) { return tag; }); };
    return repeated("<" + name + attributes + ">") + content + repeated("</" + name + ">");
}

TEST_F(HostileStandard, IsRefused_WhenItIsNestedTooDeeply) {
    const StandardDocument sound;
    StandardDocument inputs;
    inputs.inputs = DeepIn("Extension", "", sound.inputs);
    ExpectRefusal(inputs.Text(), "model.pmml:");
    ExpectRefusal(sound.TextWith(DeepIn("MiningModel", "", sound.Model())), "model.pmml:");
    StandardDocument output;
    output.output = OutputField("p", "predictedValue") +
                    OutputField("o", "transformedValue", DeepIn("Apply", Attribute("function", "-"), FieldRef("p")));
    ExpectRefusal(output.Text(), "model.pmml:");
}

/// All faults are told at once, but they are not kept without end.
TEST_F(HostileStandard, IsRefused_WhenItHasAHundredThousandFaults) {
    StandardDocument document;
    document.miningFields += Each(100'000, [](const std::string& number) {
        return TreatedField("none" + number, Attribute("invalidValueTreatment", "perhaps"));
    });
    folder.Write("model.pmml", document.Text());
    for (const char* rule : {"standard", "smoothed"}) {
        const CommandResult result = RunLimited({"check", "--rule", rule, "model.pmml"});
        EXPECT_EQ(result.exitStatus, 3) << result.err.substr(0, 1000);
        EXPECT_LT(result.out.size() + result.err.size(), 100'000'000U);
    }
}

}  // namespace
}  // namespace nbscore::test
