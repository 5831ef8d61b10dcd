#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "cli/FruitDocument.h"
#include "support/RunCommand.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {

/// Runs the built command in a folder of its own that holds model.pmml and cases.csv, so that messages name files as
/// a user would.
class CommandTest : public testing::Test {
protected:
    CommandTest() {
        folder.Write("model.pmml", fruitDocument);
        folder.Write("cases.csv", fruitCases);
    }

    CommandCall MakeCall(std::vector<std::string> arguments, std::string standardInput = "") const {
        CommandCall call;
        call.program = NBSCORE_COMMAND;
        call.arguments = std::move(arguments);
        call.standardInput = std::move(standardInput);
        call.workingFolder = folder.GetPath();
        return call;
    }
    CommandResult Run(std::vector<std::string> arguments, std::string standardInput = "") const {
        return RunCommand(MakeCall(std::move(arguments), std::move(standardInput)));
    }

    TemporaryFolder folder;
};

/// The lines of a text.
inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

}  // namespace nbscore::test
