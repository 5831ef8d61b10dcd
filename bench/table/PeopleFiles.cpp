#include "table/PeopleFiles.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "support/documents/ModelDocument.h"

namespace nbscore::bench {
namespace {

/// Of made-up people: six texts, two numbers that stand for themselves, and two that are put in bins.
struct PersonColumn {
    std::string_view name;
    test::FieldType type;
    /// Of texts.
    std::vector<std::string_view> texts = {};
    /// Of numbers: the least one, and how many there are.
    std::size_t least = 0;
    std::size_t count = 0;
    /// Of bins.
    std::vector<std::size_t> cutpoints = {};
};

constexpr std::size_t numPersonColumns = 10;
/// For each column which of its texts or numbers a person has, from 0.
using Person = std::array<std::size_t, numPersonColumns>;

std::array<PersonColumn, numPersonColumns> MakeColumns() {
    using enum test::FieldType;
    return {{
        {"region", Texts, {"coast", "south", "north", "inland", "mountains", "border", "capital", "islands"}},
        {"job",
         Texts,
         {"student", "employee", "worker", "pensioner", "nurse", "teacher", "engineer", "farmer", "shopkeeper",
          "civil servant", "self-employed", "none"}},
        {"education", Texts, {"none", "primary", "secondary", "college", "university", "doctorate"}},
        {"housing", Texts, {"rent", "own", "family", "dormitory", "cooperative"}},
        {"channel", Texts, {"branch", "phone", "web", "app", "letter", "partner", "fair"}},
        {"plan", Texts, {"basic", "plus", "gold", "family", "youth", "senior", "night", "travel", "business"}},
        {"children", Numbers, {}, 0, 6},
        {"rooms", Numbers, {}, 1, 7},
        {"age", Bins, {}, 18, 73, {25, 35, 45, 55, 65}},
        {"income", Bins, {}, 800, 9200, {1500, 2500, 3500, 5000}},
    }};
}

std::size_t CountValues(const PersonColumn& column) {
    return column.type == test::FieldType::Texts ? column.texts.size() : column.count;
}

const std::array<PersonColumn, numPersonColumns>& GetPersonColumns() {
    static const std::array<PersonColumn, numPersonColumns> columns = MakeColumns();
    return columns;
}

class PeopleDrawer {
public:
    explicit PeopleDrawer(std::uint64_t seed) : random(seed) {}

    /// All values of a column are equally likely.
    Person Draw() {
        Person person{};
        for (std::size_t i = 0; i < numPersonColumns; ++i)
            person[i] = DrawBelow(CountValues(GetPersonColumns()[i]));
        return person;
    }
    /// Values in the back of a column's list are more likely for people who say yes.
    Person DrawWhoSays(bool yes) {
        Person person = Draw();
        if (!yes) return person;
        const Person other = Draw();
        for (std::size_t i = 0; i < numPersonColumns; ++i)
            person[i] = std::max(person[i], other[i]);
        return person;
    }
    std::size_t DrawBelow(std::size_t end) { return static_cast<std::size_t>(random() % end); }

private:
    std::mt19937_64 random;
};

/// The row of a table, without the line's end.
void WritePerson(std::ostream& out, const Person& person) {
    for (std::size_t i = 0; i < numPersonColumns; ++i) {
        const PersonColumn& column = GetPersonColumns()[i];
        if (i > 0) out << ',';
        if (column.type == test::FieldType::Texts) {
            out << column.texts[person[i]];
        } else {
            out << column.least + person[i];
        }
    }
}

/// The category of a person's value in a column; of bins the bin, which is closed on its right.
std::size_t CategoryOf(const PersonColumn& column, std::size_t value) {
    if (column.type != test::FieldType::Bins) return value;
    const auto bin = std::ranges::lower_bound(column.cutpoints, column.least + value);
    return static_cast<std::size_t>(bin - column.cutpoints.begin());
}

constexpr std::size_t trainingPeople = 50'000;
constexpr std::size_t distinctPeople = 20'000;

class TableFile {
public:
    TableFile(const std::filesystem::path& file, const char* lastColumn) : out(file, std::ios::binary) {
        out.exceptions(std::ios::failbit | std::ios::badbit);
        for (std::size_t i = 0; i < numPersonColumns; ++i)
            out << (i > 0 ? "," : "") << GetPersonColumns()[i].name;
        out << lastColumn << '\n';
    }
    void Add(const Person& person, const char* lastCell) {
        WritePerson(out, person);
        out << lastCell << '\n';
    }
    void Close() { out.close(); }

private:
    std::ofstream out;
};

std::size_t CountCategories(const PersonColumn& column) {
    switch (column.type) {
        case test::FieldType::Texts:
            return column.texts.size();
        case test::FieldType::Numbers:
            return column.count;
        default:
            return column.cutpoints.size() + 1;
    }
}

std::string ValueOf(const PersonColumn& column, std::size_t category) {
    switch (column.type) {
        case test::FieldType::Texts:
            return std::string(column.texts[category]);
        case test::FieldType::Numbers:
            return std::to_string(column.least + category);
        default:
            return std::to_string(column.cutpoints[category]);
    }
}

/// Writes people who were asked, and counts what they said.
class Training {
public:
    explicit Training(const std::filesystem::path& file) {
        TableFile table(file, ",answer");
        PeopleDrawer people(1);
        for (std::size_t n = 0; n < trainingPeople; ++n) {
            const std::size_t answer = people.DrawBelow(4) == 0 ? 1 : 0;
            const Person person = people.DrawWhoSays(answer == 1);
            table.Add(person, answer == 1 ? ",yes" : ",no");
            ++answers[answer];
            for (std::size_t i = 0; i < numPersonColumns; ++i)
                ++counts[{i, CategoryOf(GetPersonColumns()[i], person[i]), answer}];
        }
        table.Close();
    }

    void WriteModel(const std::filesystem::path& file) const {
        test::ModelDocument document;
        for (const PersonColumn& column : GetPersonColumns()) {
            document.inputs.push_back({std::string(column.name), column.type, CountCategories(column),
                                       [&column](std::size_t category) { return ValueOf(column, category); }});
        }
        document.target = "answer";
        document.targetCategories = {"no", "yes"};
        document.targetCountOf = [this](std::size_t answer) { return answers[answer]; };
        document.countOf = [this](std::size_t, std::size_t input, std::size_t category, std::size_t answer) {
            const auto counted = counts.find({input, category, answer});
            return counted == counts.end() ? std::size_t{0} : counted->second;
        };
        WriteDocument(document, file);
    }

private:
    std::array<std::size_t, 2> answers{};
    std::map<std::tuple<std::size_t, std::size_t, std::size_t>, std::size_t> counts;
};

}  // namespace

void WritePeopleFiles(const PeopleFiles& files, std::size_t numCases) {
    const Training training(files.training);
    training.WriteModel(files.model);

    PeopleDrawer people(2);
    TableFile differing(files.differing, "");
    for (std::size_t n = 0; n < numCases; ++n)
        differing.Add(people.Draw(), "");
    differing.Close();

    std::vector<Person> known;
    for (std::size_t n = 0; n < distinctPeople; ++n)
        known.push_back(people.Draw());
    const auto writeSome = [&](const std::filesystem::path& file, std::size_t cases) {
        TableFile repeating(file, "");
        for (std::size_t n = 0; n < cases; ++n)
            repeating.Add(known[people.DrawBelow(known.size())], "");
        repeating.Close();
    };
    writeSome(files.repeating, numCases);
    writeSome(files.repeatingLong, timesAsLong * numCases);
}

}  // namespace nbscore::bench
