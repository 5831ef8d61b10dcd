// The evidence of the examples' cases, worked by hand from the counts in their documents. A factor is (count +
// threshold) / (counts of the category + threshold for each value of the predictor), a weight the logarithm of the
// quotient of two.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "cli/CommandTest.h"

namespace nbscore::test {
namespace {

class ExplainedExamples : public CommandTest {
protected:
    /// What `nbscore explain` writes of one row of an example.
    std::vector<std::string> Explain(const std::string& document, const std::string& table, const std::string& row,
                                     std::vector<std::string> options) const {
        const std::string examples = std::string(NBSCORE_EXAMPLES) + "/";
        options.insert(options.begin(),
                       {"explain", examples + document, examples + table, "--format", "csv", "--row", row});
        const CommandResult result = Run(std::move(options));
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return Lines(result.out);
    }

    static std::vector<std::string> CellsOf(const std::string& line) {
        std::vector<std::string> cells = {""};
        for (const char character : line) {
            if (character == ',') {
                cells.emplace_back();
            } else {
                cells.back() += character;
            }
        }
        return cells;
    }

    /// By the names of the columns; no cell of the examples has quotes.
    static std::map<std::string, std::string> ReadTerm(const std::vector<std::string>& lines, std::size_t line) {
        const std::vector<std::string> names = CellsOf(lines.at(0));
        const std::vector<std::string> cells = CellsOf(lines.at(line));
        std::map<std::string, std::string> term;
        for (std::size_t i = 0; i < names.size(); ++i)
            term[names[i]] = cells.at(i);
        return term;
    }

    static void ExpectTerm(const std::vector<std::string>& lines, std::size_t line, const std::string& predictor,
                           const std::string& value, double weight, double average, double lowest, double highest) {
        SCOPED_TRACE(predictor);
        std::map<std::string, std::string> term = ReadTerm(lines, line);
        EXPECT_EQ(term["predictor"], predictor);
        EXPECT_EQ(term["value"], value);
        EXPECT_NEAR(std::stod(term["weight"]), weight, 1e-12);
        EXPECT_NEAR(std::stod(term["average"]), average, 1e-12);
        EXPECT_NEAR(std::stod(term["against_average"]), weight - average, 1e-12);
        EXPECT_NEAR(std::stod(term["lowest"]), lowest, 1e-12);
        EXPECT_NEAR(std::stod(term["highest"]), highest, 1e-12);
    }
};

// 50 flowers of each kind. Petals of 4.7 by 1.4 cm fall into the second bins, of 44 versicolor and 1 virginica, and of
// 49 and 5. The most probable kind is weighed against the next.
TEST_F(ExplainedExamples, HoldForAFlower) {
    const std::vector<std::string> lines = Explain("iris/iris.pmml", "iris/flowers.csv", "2", {});
    ASSERT_EQ(lines.size(), 5U);
    std::map<std::string, std::string> prior = ReadTerm(lines, 1);
    EXPECT_EQ(prior["category"], "versicolor");
    EXPECT_EQ(prior["against"], "virginica");
    EXPECT_EQ(prior["weight"], "0");

    const double longPetal = std::log(6.001 / 49.001);
    const double middlePetal = std::log(44.001 / 1.001);
    // The first bin holds no flower of either kind, and 50 of 150 flowers.
    ExpectTerm(lines, 2, "petal_length", "4.7", middlePetal, 45.0 / 150 * middlePetal + 55.0 / 150 * longPetal,
               longPetal, middlePetal);
    const double broadPetal = std::log(1.001 / 45.001);
    const double averagePetal = std::log(49.001 / 5.001);
    ExpectTerm(lines, 3, "petal_width", "1.4", averagePetal, 54.0 / 150 * averagePetal + 46.0 / 150 * broadPetal,
               broadPetal, averagePetal);
    EXPECT_NEAR(std::stod(ReadTerm(lines, 4)["weight"]), middlePetal + averagePetal, 1e-12);
}

// Against setosa, of which no petal is that long or broad.
TEST_F(ExplainedExamples, HoldForAFlowerAgainstAnotherKind) {
    const std::vector<std::string> lines = Explain("iris/iris.pmml", "iris/flowers.csv", "2", {"--against", "setosa"});
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_NEAR(std::stod(ReadTerm(lines, 2)["weight"]), std::log(44.001 / 0.001), 1e-12);
    EXPECT_NEAR(std::stod(ReadTerm(lines, 3)["weight"]), std::log(49.001 / 0.001), 1e-12);
    EXPECT_NEAR(std::stod(ReadTerm(lines, 2)["lowest"]), std::log(0.001 / 50.001), 1e-12);
}

// Of 20,000 customers 1,300 took the card. The document counts them by age (up to 30: 390 of 4,504) and by region (on
// the coast: 559 of 4,673).
TEST_F(ExplainedExamples, HoldForAnOffer) {
    const std::vector<std::string> lines =
        Explain("offers/offers.pmml", "offers/customers.csv", "1", {"--model", "travel_card"});
    ASSERT_EQ(lines.size(), 5U);
    constexpr double t = 0.00005;
    const auto weigh = [](double yes, double no, int values) {
        return std::log(((yes + t) / (1300 + values * t)) / ((no + t) / (18700 + values * t)));
    };
    const double base = std::log((1300 + t) / (18700 + t));
    std::map<std::string, std::string> prior = ReadTerm(lines, 1);
    EXPECT_EQ(prior["model"], "travel_card");
    EXPECT_EQ(prior["category"], "yes");
    EXPECT_NEAR(std::stod(prior["weight"]), base, 1e-12);
    const double young = weigh(390, 4114, 4);
    const double middle = weigh(533, 5797, 4);
    const double older = weigh(273, 5236, 4);
    const double old = weigh(104, 3553, 4);
    ExpectTerm(lines, 2, "age", "24", young, (4504 * young + 6330 * middle + 5509 * older + 3657 * old) / 20000, old,
               std::max(young, middle));
    const double north = weigh(312, 7106, 3);
    const double south = weigh(429, 7480, 3);
    const double coast = weigh(559, 4114, 3);
    ExpectTerm(lines, 3, "region", "coast", coast, (7418 * north + 7909 * south + 4673 * coast) / 20000, north, coast);
    EXPECT_NEAR(std::stod(ReadTerm(lines, 4)["weight"]), base + young + coast, 1e-12);
}

// A woman of the first class, as docs/explain.md works her out.
TEST_F(ExplainedExamples, HoldForAPassenger) {
    const std::vector<std::string> lines = Explain("titanic/titanic.pmml", "titanic/people.csv", "1", {});
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_NEAR(std::stod(ReadTerm(lines, 1)["weight"]), std::log(711.001 / 1490.001), 1e-12);
    const double woman = std::log((344.001 / 711.002) / (126.001 / 1490.002));
    const double man = std::log((367.001 / 711.002) / (1364.001 / 1490.002));
    ExpectTerm(lines, 3, "sex", "female", woman, (470 * woman + 1731 * man) / 2201, man, woman);
}

}  // namespace
}  // namespace nbscore::test
