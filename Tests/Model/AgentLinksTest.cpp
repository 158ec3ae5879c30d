#include "TarvoModel/Flows/AgentLinks.h"
#include "Platform/Environment.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace tarvo::AgentLinks;
using namespace tarvo::testing;
using namespace testing;

namespace {

/// The language is chosen once a process, before the first test asks for it.
[[maybe_unused]] const int english = setenv("TARVO_IDIOMA", "en", 1);

const std::string folder = "Library/Application Support/Claude/";
const std::string desktop = ".config/Claude/claude_desktop_config.json";

/// Claude Code, which writes down how it was started.
void install(const TempHome& home, const std::string& place, const std::string& more) {
    home.program(place, "printf '%s\\n' \"$HOME\" \"$@\" >>" + home.path("calls") + "\n" + more);
}

std::string messageOf(const LinkResult& result) {
    return result ? "done: " + *result : result.error().message;
}

} // namespace

TEST(AgentLinks, FindTheServerOnlyInSettingsThatHaveItUnderItsName) {
    using Case = std::pair<const char*, LinkState>;
    for (const auto& [settings, state] :
         {Case{R"({"mcpServers": {"tarvo-ai": null}, "n": 12345678901234567890})", LinkState::linked},
          Case{R"({"mcpServers": {"tarvo": {}}, "tarvo-ai": {}})", LinkState::notLinked},
          Case{R"({"mcpServers": ["tarvo-ai"]})", LinkState::notLinked}, Case{"[]", LinkState::malformed},
          Case{"", LinkState::malformed}}) {
        const TempHome home;
        home.fileWith(".claude.json", settings);
        home.fileWith(desktop, settings);
        EXPECT_EQ(stateInClaudeCode(home.path()), state) << settings;
        EXPECT_EQ(stateInClaudeDesktop(home.path()), state) << settings;
        EXPECT_EQ(isInClaudeDesktop(home.path()), state == LinkState::linked) << settings;
    }
    const TempHome home;
    EXPECT_EQ(stateInClaudeCode(home.path()), LinkState::notLinked);
    home.folder(".claude.json");
    EXPECT_EQ(stateInClaudeCode(home.path()), LinkState::unreadable);
}

TEST(AgentLinks, FindTheHighestVersionThatCanBeRunUnlessAUsualPlaceHasOne) {
    const TempHome home;
    EXPECT_THAT(messageOf(connectClaudeCode(home.path(), {}, usualPatience, lumo::System::macos)),
                StartsWith("I can't find Claude Code on this Mac."));
    EXPECT_THAT(messageOf(connectClaudeCode(home.path(), {}, usualPatience, lumo::System::linux)),
                StartsWith("I can't find Claude Code on this computer."));
    EXPECT_EQ(messageOf(disconnectClaudeCode(home.path())), "I can't find Claude Code.");
    for (const char* version : {"2.1.9", "2.1.10", "x3"}) {
        install(home, folder + "claude-code/" + version + "/claude.app/Contents/MacOS/claude", "");
    }
    home.fileWith(folder + "claude-code/2.1.11/claude.app/Contents/MacOS/claude", "cannot be run");
    home.folder(folder + "claude-code/3.0/claude.app/Contents/MacOS/claude");
    home.folder(".local/bin/claude");
    EXPECT_THAT(claudeCodeBinary(home.path()).value_or(""), HasSubstr("/2.1.10/"));
    std::filesystem::remove(home.path(".local/bin/claude"));
    install(home, ".local/bin/claude", "");
    EXPECT_EQ(claudeCodeBinary(home.path()), home.path(".local/bin/claude"));
}

TEST(AgentLinks, AreMadeWhereTheAgentsAreAndKeepTheirSettingsOnLinux) {
    // Claude Code of an npm prefix or of nvm was not found; a link made by one whose settings a variable
    // moves was shown as missing; Claude Desktop's were sought where XDG_CONFIG_HOME had moved them from.
    const TempHome home;
    install(home, ".nvm/versions/node/v9.1.0/bin/claude", "");
    install(home, ".nvm/versions/node/v22.3.0/bin/claude", "");
    EXPECT_EQ(claudeCodeBinary(home.path(), lumo::System::linux),
              home.path(".nvm/versions/node/v22.3.0/bin/claude"));
    EXPECT_EQ(claudeCodeBinary(home.path(), lumo::System::macos), std::nullopt);
    home.program(".nvm/versions/node/v22.3.0/bin/node", "echo $CLAUDE_CONFIG_DIR >\"$HOME/folder\"");
    home.fileWith(".claude/local/claude", "#!/usr/bin/env node\n");
    home.setMode(".claude/local/claude", 0755);
    std::filesystem::rename(home.path(".claude/local/claude"),
                            home.path(".nvm/versions/node/v22.3.0/bin/claude"));

    const std::string before = lumo::platform::environmentVariable("HOME").value_or("");
    setenv("CLAUDE_CONFIG_DIR", home.path("agent").c_str(), 1);
    setenv("XDG_CONFIG_HOME", home.path("settings").c_str(), 1);
    EXPECT_EQ(claudeCodeSettings(home.path()), home.path(".claude.json")) << "another's variables";
    EXPECT_THAT(messageOf(connectClaudeCode(home.path())), StartsWith("done: "));
    EXPECT_EQ(contentOf(home.path("folder")), "\n");
    setenv("HOME", home.path().c_str(), 1);
    EXPECT_EQ(claudeCodeSettings(home.path()), home.path("agent/.claude.json"));
    EXPECT_THAT(messageOf(connectClaudeCode(home.path())), StartsWith("done: "));
    EXPECT_EQ(contentOf(home.path("folder")), home.path("agent") + "\n");
    home.folder("settings/Claude");
    EXPECT_THAT(messageOf(setInClaudeDesktop(home.path(), true)), StartsWith("done: "));
    EXPECT_TRUE(std::filesystem::exists(home.path("settings/Claude/claude_desktop_config.json")));
    unsetenv("CLAUDE_CONFIG_DIR");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", before.c_str(), 1);
}

TEST(AgentLinks, AreMadeByClaudeCodeForTheHomeThatIsMeant) {
    const TempHome home;
    install(home, ".local/bin/claude", "");
    EXPECT_EQ(messageOf(connectClaudeCode(home.path(), {}, usualPatience, lumo::System::macos)),
              "done: Connected. Start a new session and ask “what's taking up space on my Mac?”.");
    EXPECT_EQ(messageOf(disconnectClaudeCode(home.path())), "done: Disconnected.");
    const std::string calls = home.path() + "\nmcp\nadd\n--scope\nuser\ntarvo-ai\n--\n" + serverExecutable() +
                              "\nmcp\n" + home.path() + "\nmcp\nremove\n--scope\nuser\ntarvo-ai\n";
    EXPECT_EQ(contentOf(home.path("calls")), calls);
    home.fileWith(".claude.json", R"({"mcpServers": {"tarvo-ai": {}}})");
    EXPECT_THAT(messageOf(connectClaudeCode(home.path())), StartsWith("done: "));
    EXPECT_EQ(contentOf(home.path("calls")), calls) << "It was there already.";
}

TEST(AgentLinks, SayWhyClaudeCodeMadeNone) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [script, message] : {Case{"#!/bin/sh\nprintf 'no\\n way\\n\\n' >&2; exit 3", "no\n way"},
                                          Case{"#!/bin/sh\nexit 4", "Claude Code: code 4"},
                                          Case{"#!/nonexistent", "Couldn't open Claude Code."}}) {
        const TempHome home;
        home.fileWith(".local/bin/claude", script);
        home.setMode(".local/bin/claude", 0755);
        EXPECT_EQ(messageOf(connectClaudeCode(home.path())), message);
    }
    const TempHome home;
    install(home, ".local/bin/claude", "sleep 1000\n");
    EXPECT_EQ(messageOf(connectClaudeCode(home.path(), {}, std::chrono::milliseconds(0))),
              "Claude Code doesn't respond: it was stopped. Try again.");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THAT(messageOf(disconnectClaudeCode(home.path(), stop.get_token())), StartsWith("Interrupted"));
}

TEST(AgentLinks, ChangeClaudeDesktopsSettingsBackAndForthAndRefuseBrokenOnes) {
    for (const std::string broken : {"[]", "", "{\"a\": 1", R"({"mcpServers": {}, "mcpServers": {}})"}) {
        const TempHome home;
        home.fileWith(desktop, broken);
        EXPECT_THAT(messageOf(setInClaudeDesktop(home.path(), true)), EndsWith("I won't touch it."))
            << broken;
        EXPECT_EQ(contentOf(home.path(desktop)), broken);
        EXPECT_FALSE(std::filesystem::exists(home.path(desktop + ".antes-de-tarvo")));
    }
    const TempHome home;
    EXPECT_TRUE(setInClaudeDesktop(home.path(), false));
    EXPECT_FALSE(std::filesystem::exists(home.path(".config"))) << "There was nothing to remove.";
    // Settings were written for a program that was not there, and called connected.
    EXPECT_THAT(messageOf(setInClaudeDesktop(home.path(), true)), StartsWith("I can't find the Claude app"));
    EXPECT_FALSE(std::filesystem::exists(home.path(".config")));
    const std::string before = "{\r\n\t\"mcpServers\": {\r\n\t\t\"b\": {\"n\": 1.0}\r\n\t}\r\n}";
    home.fileWith(desktop, before);
    EXPECT_EQ(messageOf(setInClaudeDesktop(home.path(), true)),
              "done: Connected. Quit and reopen Claude to see it.");
    EXPECT_TRUE(isInClaudeDesktop(home.path()));
    EXPECT_THAT(messageOf(setInClaudeDesktop(home.path(), false)), StartsWith("done: Disconnected."));
    EXPECT_EQ(contentOf(home.path(desktop)), before);
    std::filesystem::remove_all(home.path(".config"));
    home.folder(".config/Claude");
    EXPECT_TRUE(setInClaudeDesktop(home.path(), true));
    const std::string server = R"({"command": ")" + serverExecutable() + R"(", "args": ["mcp"]})";
    EXPECT_EQ(jsonSnippet(), R"({"mcpServers": {"tarvo-ai": )" + server + "}}");
    EXPECT_EQ(contentOf(home.path(desktop)).back(), '\n');
    home.fileWith(desktop, R"({"mcpServers": {"tarvo-ai": {"args":["mcp"],"command":")" + serverExecutable() +
                               R"("}}})");
    EXPECT_TRUE(setInClaudeDesktop(home.path(), true));
    EXPECT_FALSE(std::filesystem::exists(home.path(desktop + ".antes-de-tarvo"))) << "It meant the same.";
}
