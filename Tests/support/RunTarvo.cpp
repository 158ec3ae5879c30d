#include "Tests/support/RunTarvo.h"

#include <gtest/gtest.h>

namespace tarvo::testing {

namespace {

std::vector<std::string> environmentOf(const TempHome& home, const std::vector<std::string>& more) {
    std::vector<std::string> all{"HOME=" + home.path(), "XDG_DATA_DIRS=" + home.path("no-data"),
                                 "TERM=xterm-256color"};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

} // namespace

Ran runTarvo(const TempHome& home, const std::vector<std::string>& words,
             const std::vector<std::string>& environment) {
    return runProgram(tarvoProgram(), words, environmentOf(home, environment));
}

Ran runTarvoOnTerminal(const TempHome& home, const std::vector<std::string>& words, std::string_view typed) {
    return runOnTerminal(tarvoProgram(), words, environmentOf(home, {"TARVO_IDIOMA=es"}), typed);
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
