// Tables that others wrote are read as they meant them, and others read what is written here.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "output/HostError.h"
#include "support/RunCommand.h"
#include "support/TemporaryFolder.h"
#include "table/CsvReader.h"
#include "table/CsvText.h"

namespace nbscore::test {
namespace {

using Table = std::vector<std::vector<std::string>>;
using Json = nlohmann::json;

Table ReadTable(const std::filesystem::path& path, char delimiter) {
    std::ifstream input(path, std::ios::binary);
    EXPECT_TRUE(input.is_open()) << path;
    CsvReader reader(input, path.filename().string(), delimiter);
    Table table;
    std::vector<std::string_view> cells;
    while (reader.ReadRow(cells))
        table.emplace_back(cells.begin(), cells.end());
    return table;
}

/// Each row as the cells under the header's names.
Json RowsByName(const Table& table) {
    Json rows = Json::array();
    for (std::size_t row = 1; row < table.size(); ++row) {
        Json cells = Json::object();
        EXPECT_EQ(table[row].size(), table.front().size());
        for (std::size_t column = 0; column < table[row].size(); ++column)
            cells[table.front().at(column)] = table[row][column];
        rows.push_back(cells);
    }
    return rows;
}

/// The paths of a folder's files of one kind.
std::vector<std::filesystem::path> FilesOfKind(const std::filesystem::path& folder, const std::string& extension) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == extension) files.push_back(entry.path());
    }
    return files;
}

TEST(CsvAgainstOthers, TablesOfACollectionAreReadAsItSays) {
    const std::filesystem::path collection = NBSCORE_CSV_COLLECTION;
    const std::vector<std::filesystem::path> tables = FilesOfKind(collection / "csvs", ".csv");
    EXPECT_GE(tables.size(), 11U);
    for (const std::filesystem::path& path : tables) {
        const std::string name = path.stem().string();
        const Json expected = Json::parse(ReadWholeFile(collection / "json" / (name + ".json")));
        EXPECT_EQ(RowsByName(ReadTable(path, ',')), expected) << name;
    }
}

#ifndef _WIN32  // Python is a program of the machine that builds

CommandResult RunPython(const std::string& verb, const std::filesystem::path& folder) {
    CommandCall call;
    call.program = NBSCORE_PYTHON;
    call.arguments = {NBSCORE_SOURCES "/tests/table/csv_tables.py", verb, folder.string()};
    return RunCommand(call);
}

TEST(CsvAgainstOthers, TablesThatPythonWroteAreReadAsItMeantThem) {
    const TemporaryFolder folder;
    const CommandResult written = RunPython("write", folder.GetPath());
    ASSERT_EQ(written.exitStatus, 0) << written.err;
    const std::vector<std::filesystem::path> tables = FilesOfKind(folder.GetPath(), ".csv");
    EXPECT_GE(tables.size(), 900U);
    for (const std::filesystem::path& path : tables) {
        const Json expected = Json::parse(ReadWholeFile(folder / (path.stem().string() + ".json")));
        const char delimiter = expected.at("delimiter").get<std::string>().front();
        ASSERT_EQ(Json(ReadTable(path, delimiter)), expected.at("rows")) << ReadWholeFile(path);
    }
}

std::string DrawCell(std::mt19937& random) {
    static const std::vector<std::string> pieces = {"",     "a",  "bc",   " ",  ",",  ";",        "\"",
                                                    "\"\"", "\n", "\r\n", "\r", "\t", "\xC3\xA4", "longer text"};
    std::string cell;
    for (auto count = random() % 4; count > 0; --count)
        cell += pieces[random() % pieces.size()];
    return cell;
}

TEST(CsvAgainstOthers, PythonReadsWhatIsWrittenHere) {
    const TemporaryFolder folder;
    std::mt19937 random(4180);
    for (int number = 0; number < 300; ++number) {
        const char delimiter = ",;\t"[number % 3];
        Table table(1 + random() % 20);
        std::string text;
        for (std::vector<std::string>& cells : table) {
            cells.resize(1 + random() % 5);
            CsvRow row(text, delimiter);
            for (std::string& cell : cells)
                row.Add(cell = DrawCell(random));
            row.End();
        }
        const std::string name = std::to_string(number);
        folder.Write(name + ".csv", text);
        folder.Write(name + ".json", Json({{"delimiter", std::string(1, delimiter)}, {"rows", table}}).dump());
    }
    const CommandResult checked = RunPython("check", folder.GetPath());
    EXPECT_EQ(checked.exitStatus, 0) << checked.err << checked.out.substr(0, 2000);
}

std::string DrawText(std::mt19937& random) {
    static const std::vector<std::string> pieces = {
        "\n", "\r\n", "\r", ",", ",\"\"", "\r\"b\"", "a\n", "bc\r", "\"\r\n\"\r", "\"\"\"\r\"\n", ",\"d\re\n\"\r\n"};
    std::string text = "a";
    for (auto count = random() % 12; count > 0; --count)
        text += pieces[random() % pieces.size()];
    return text;
}

/// The rows of a text and the lines on which they begin; null where it has a fault.
Json ReadText(const std::string& text) {
    std::istringstream input(text);
    CsvReader reader(input, "t.csv", ',');
    Json read = {{"delimiter", ","}, {"rows", Json::array()}, {"lines", Json::array()}};
    std::vector<std::string_view> cells;
    try {
        while (reader.ReadRow(cells)) {
            read["rows"].push_back(std::vector<std::string>(cells.begin(), cells.end()));
            read["lines"].push_back(reader.GetRowLine());
        }
    } catch (const CaseDataError&) {
        return nullptr;
    }
    return read;
}

TEST(CsvAgainstOthers, PythonReadsTheSameRowsOnTheSameLines_HoweverLinesEnd) {
    const TemporaryFolder folder;
    std::mt19937 random(4180);
    int tables = 0;
    for (int number = 0; tables < 400; ++number) {
        const std::string text = DrawText(random);
        const Json read = ReadText(text);
        if (read.is_null()) continue;
        ++tables;
        folder.Write(std::to_string(number) + ".csv", text);
        folder.Write(std::to_string(number) + ".json", read.dump());
    }
    const CommandResult checked = RunPython("check", folder.GetPath());
    EXPECT_EQ(checked.exitStatus, 0) << checked.err << checked.out.substr(0, 2000);
}

#endif

}  // namespace
}  // namespace nbscore::test
