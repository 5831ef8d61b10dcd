#include "table/DrawnTable.h"

#include <algorithm>
#include <fstream>
#include <set>

#include "support/documents/ModelDocument.h"

namespace nbscore::bench {
namespace {

/// So many cells and numbers a table and its scores have together, which bounds its rows.
constexpr std::size_t cellsAndNumbers = 16'000'000;

/// Most words are short.
std::string DrawWord(Random& random) {
    std::string word(Between(0, 5, random) == 0 ? Between(9, 14, random) : Between(2, 8, random), 'a');
    for (char& letter : word)
        letter = static_cast<char>('a' + Between(0, 25, random));
    return word;
}

DrawnColumn DrawColumn(std::size_t position, Random& random) {
    using enum test::FieldType;
    DrawnColumn column{"field" + std::to_string(position), Texts, {}, 0};
    const std::size_t categories = Between(2, 15, random);
    const std::size_t type = Between(0, 9, random);
    if (type < 6) {
        std::set<std::string> words;
        while (words.size() < categories)
            words.insert(DrawWord(random));
        column.values.assign(words.begin(), words.end());
        std::ranges::shuffle(column.values, random);
    } else if (type < 8) {
        column.type = Numbers;
        for (std::size_t i = 0; i < categories; ++i)
            column.values.push_back(std::to_string(i));
    } else {
        column.type = Bins;
        column.endOfNumbers = Between(0, 1, random) == 0 ? 100 : 10'000;
        std::set<std::size_t> margins;
        while (margins.size() + 1 < categories)
            margins.insert(Between(1, column.endOfNumbers - 1, random));
        for (const std::size_t margin : margins)
            column.values.push_back(std::to_string(margin));
    }
    return column;
}

std::string NameOfTarget(std::size_t category) {
    return "class" + std::to_string(category);
}

}  // namespace

DrawnTable DrawTable(TableClass tableClass, Random& random) {
    DrawnTable table;
    std::size_t columns = 0;
    switch (tableClass) {
        case TableClass::Plain:
            columns = Between(6, 15, random);
            table.targetCategories = Between(2, 4, random);
            break;
        case TableClass::Wide:
            columns = Between(30, 70, random);
            table.targetCategories = Between(10, 30, random);
            break;
        case TableClass::Set:
            columns = Between(20, 60, random);
            table.subModels = Between(100, 300, random);
            break;
    }
    for (std::size_t i = 0; i < columns; ++i)
        table.columns.push_back(DrawColumn(i, random));
    const std::size_t read = table.subModels == 0 ? columns : Between(4, 12, random);
    for (std::size_t model = 0; model < std::max<std::size_t>(table.subModels, 1); ++model)
        table.columnsOfModels.push_back(DrawSome(read, columns, random));
    table.missingShare = Between(0, 1, random) == 0 ? 0.0 : std::uniform_real_distribution<double>(0.0, 0.1)(random);
    table.cases = cellsAndNumbers / (columns + std::max(table.targetCategories, table.subModels));
    return table;
}

std::string DrawnTable::Describe() const {
    std::string text = std::to_string(columns.size()) + " columns, ";
    if (subModels > 0) {
        text += std::to_string(subModels) + " sub-models of " + std::to_string(columnsOfModels.front().size());
    } else {
        text += std::to_string(targetCategories) + " target categories";
    }
    return text + ", " + std::to_string(static_cast<int>(100.0 * missingShare)) + " % missing, " +
           std::to_string(cases) + " rows";
}

void DrawnTable::WriteModel(const std::filesystem::path& file, Random& random) const {
    test::ModelDocument document;
    document.subModels = subModels;
    for (const DrawnColumn& column : columns) {
        document.inputs.push_back({column.name, column.type, column.CountCategories(),
                                   [&column](std::size_t category) { return column.values[category]; }});
    }
    document.inputsOfModels = columnsOfModels;
    for (std::size_t k = 0; k < targetCategories; ++k)
        document.targetCategories.push_back(NameOfTarget(k));
    document.targetCountOf = [&](std::size_t k) { return 100'000 + 1'000 * k; };
    document.countOf = [&](std::size_t, std::size_t, std::size_t, std::size_t) { return Between(1, 5'000, random); };
    WriteDocument(document, file);
}

void DrawnTable::WriteCases(const std::filesystem::path& file, Random& random) const {
    constexpr std::size_t oneInSoManyIsUnknown = 200;
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    for (std::size_t i = 0; i < columns.size(); ++i)
        out << (i > 0 ? "," : "") << columns[i].name;
    std::bernoulli_distribution isMissing(missingShare);
    for (std::size_t n = 0; n < cases; ++n) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const DrawnColumn& column = columns[i];
            out << (i > 0 ? ',' : '\n');
            if (isMissing(random)) continue;
            if (column.type == test::FieldType::Bins) {
                out << random() % column.endOfNumbers;
            } else if (random() % oneInSoManyIsUnknown == 0) {
                out << 77;
            } else {
                out << column.values[random() % column.values.size()];
            }
        }
    }
    out << '\n';
    out.close();
}

}  // namespace nbscore::bench
