#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

#include <filesystem>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::StartsWith;

namespace {

constexpr const char* codeSettings = ".claude.json";

/// Claude Code, which registers what it is told to and fails at everything else.
void install(const AppStory& story) {
    story.home.program(".local/bin/claude", R"sh(case "$2" in
add) printf '{"mcpServers": {"tarvo-ai": {}}}' >"$HOME/.claude.json" ;;
*) echo "cannot be"; echo removed; exit 3 ;;
esac
)sh");
}

AgentDesk& settled(AppStory& story) {
    AgentDesk& agents = *story.app().agents();
    EXPECT_TRUE(story.waitUntil([&] { return !agents.isBusy(); }));
    return agents;
}

} // namespace

TEST(AgentDesk, LinksThroughTheAgentsOwnProgramAndSaysWhatItSaysWhenThatFails) {
    AppStory story;
    install(story);
    story.app().agents()->connectClaudeCode();
    EXPECT_TRUE(story.app().agents()->isBusy());
    story.app().agents()->disconnectClaudeCode(); // One at a time.
    AgentDesk& agents = settled(story);
    EXPECT_TRUE(agents.isInClaudeCode());
    EXPECT_FALSE(agents.hasFailed());
    EXPECT_THAT(bytesOf(agents.message()), StartsWith(lumo::Words{"Conectado.", "Connected."}.in()));
    agents.disconnectClaudeCode();
    settled(story);
    EXPECT_TRUE(agents.hasFailed());
    // What it said stood below the other agent, and its lines in one with a "\\n" between them.
    EXPECT_EQ(agents.codeMessage(), "cannot be\nremoved");
    EXPECT_EQ(agents.desktopMessage() + agents.copyMessage(), "");
    EXPECT_TRUE(agents.isInClaudeCode());
}

TEST(AgentDesk, LinksTheChatAndSeesWhatAnotherProgramChanged) {
    AppStory story;
    story.home.folder(".config/Claude");
    AgentDesk& agents = *story.app().agents();
    agents.connectClaudeDesktop();
    settled(story);
    EXPECT_TRUE(agents.isInClaudeDesktop());
    agents.disconnectClaudeDesktop();
    settled(story);
    EXPECT_FALSE(agents.isInClaudeDesktop());
    story.home.fileWith(codeSettings, R"({"mcpServers": {"tarvo-ai": {}}})");
    // Each time it was read, the main thread asked the disk for it.
    EXPECT_EQ(agents.codexCommand() + agents.jsonSnippet(), "") << "nobody has looked yet";
    agents.refresh();
    EXPECT_TRUE(story.waitUntil([&] { return agents.isInClaudeCode(); }));
    EXPECT_THAT(bytesOf(agents.codexCommand()), StartsWith("codex mcp add "));
    EXPECT_THAT(bytesOf(agents.jsonSnippet()), ::testing::HasSubstr("tarvo-ai"));
    agents.copy(agents.codexCommand());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), agents.codexCommand());
}

TEST(AgentDesk, InTheDemoNothingIsReadOrWritten) {
    AppStory story(RunMode{.isDemo = true});
    install(story);
    AgentDesk& agents = *story.app().agents();
    agents.connectClaudeCode();
    agents.connectClaudeDesktop();
    EXPECT_FALSE(agents.isBusy());
    EXPECT_EQ(agents.message(), shown(DemoDisk::notice()));
    EXPECT_FALSE(std::filesystem::exists(story.home.path(codeSettings)));
    EXPECT_FALSE(std::filesystem::exists(AgentLinks::claudeDesktopSettings(story.home.path())));
}
