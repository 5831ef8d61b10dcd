#include "table/PeopleFiles.h"

#include <array>
#include <fstream>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "common/ModelDocument.h"
#include "table/People.h"

namespace nbscore::bench {
namespace {

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
    switch (column.kind) {
        case InputKind::Texts:
            return column.texts.size();
        case InputKind::Numbers:
            return column.count;
        default:
            return column.cutpoints.size() + 1;
    }
}

std::string ValueOf(const PersonColumn& column, std::size_t category) {
    switch (column.kind) {
        case InputKind::Texts:
            return std::string(column.texts[category]);
        case InputKind::Numbers:
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
        ModelDocument document;
        for (const PersonColumn& column : GetPersonColumns()) {
            document.inputs.push_back({std::string(column.name), column.kind, CountCategories(column),
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
