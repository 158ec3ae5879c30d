#include "Tests/support/RunTarvo.h"

#include <gtest/gtest.h>

namespace tarvo::testing {

Ran runTarvo(const TempHome& home, const std::vector<std::string>& words,
             const std::vector<std::string>& environment) {
    std::vector<std::string> all{"HOME=" + home.path(), "XDG_DATA_DIRS=" + home.path("no-data"),
                                 "TERM=xterm-256color"};
    all.insert(all.end(), environment.begin(), environment.end());
    return runProgram(tarvoProgram(), words, all);
}

lumo::JsonValue jsonOf(const TempHome& home, std::vector<std::string> words) {
    words.emplace_back("--json");
    const Ran ran = runTarvo(home, words);
    EXPECT_EQ(ran.exitCode, 0) << ::testing::PrintToString(words);
    EXPECT_EQ(ran.error, "") << ::testing::PrintToString(words);
    const auto document = lumo::parseJson(ran.output);
    EXPECT_TRUE(document) << ran.output;
    return document.value_or(lumo::JsonValue());
}

lumo::JsonValue json(const std::string& text) {
    return lumo::parseJson(text).value();
}

} // namespace tarvo::testing
