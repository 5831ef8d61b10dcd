// The page of the built-in functions ends with the program's own table of them. When this test fails, run it once with
// NBSCORE_UPDATE_DOCS=1 in the environment to update the page.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

#include "support/WholeFile.h"
#include "transform/functions/BuiltInFunctions.h"

namespace nbscore::test {
namespace {

const std::string tableStart = "<!-- From here on, docs_test writes what the program says of itself. -->\n";

std::string MissingRuleText(MissingRule rule) {
    switch (rule) {
        case MissingRule::GivesMissing:
            return "gives missing";
        case MissingRule::IsLeftOut:
            return "is left out";
        case MissingRule::IsSeen:
            return "see there";
    }
    return {};
}

std::string KindText(ValueKind kind) {
    switch (kind) {
        case ValueKind::Number:
            return "number";
        case ValueKind::Truth:
            return "truth value";
        case ValueKind::Text:
            return "text";
        case ValueKind::Any:
            return "any";
    }
    return {};
}

std::string Row(const BuiltInFunction& function) {
    std::ostringstream row;
    row << "| `" << function.name << "` | " << function.parameters << " | " << MissingRuleText(function.missingRule)
        << " | " << KindText(function.resultKind) << " | " << function.description << " |\n";
    return row.str();
}

std::string Tables() {
    std::string tables = tableStart;
    std::string_view family;
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        if (function.family != family) {
            family = function.family;
            tables += "\n## " + std::string(family) + "\n\n";
            tables += "| function | arguments | a missing one | gives | result |\n|---|---|---|---|---|\n";
        }
        tables += Row(function);
    }
    return tables;
}

TEST(FunctionsPage, ShowsTheProgramsTable) {
    const auto path = std::filesystem::path(NBSCORE_SOURCE_DIR) / "docs" / "functions.md";
    const std::string page = ReadWholeFile(path);
    const std::size_t start = page.find(tableStart);
    ASSERT_NE(start, std::string::npos) << path << " has lost the line before its table.";
    const std::string tables = Tables();
    if (std::getenv("NBSCORE_UPDATE_DOCS") != nullptr) {
        WriteWholeFile(path, page.substr(0, start) + tables);
    } else {
        EXPECT_EQ(page.substr(start), tables)
            << "Run docs_test once with NBSCORE_UPDATE_DOCS=1 in the environment to write the page anew.";
    }
}

}  // namespace
}  // namespace nbscore::test
