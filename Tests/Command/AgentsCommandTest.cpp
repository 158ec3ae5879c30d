#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tarvo::testing;
using namespace testing;

TEST(AgentsCommand, AnswersInTheShapesThatProgramsRelyOn) {
    const TempHome home;
    home.folder(".config/Claude");
    EXPECT_EQ(jsonOf(home, {"agents", "status"}), json(R"({"claude-code": false, "claude-desktop": false})"));
    EXPECT_EQ(jsonOf(home, {"agents", "connect", "claude-desktop"}),
              json(R"({"ok": true, "message": "Conectado. Cierra y vuelve a abrir Claude para verlo."})"));
    EXPECT_EQ(jsonOf(home, {"agentes"}), json(R"({"claude-code": false, "claude-desktop": true})"));
    const std::string program = tarvoProgram();
    const auto texts = jsonOf(home, {"agentes", "snippets"});
    EXPECT_EQ(*texts.find("codex"), lumo::JsonValue{"codex mcp add tarvo-ai -- \"" + program + "\" mcp"});
    EXPECT_EQ(*texts.find("json"), lumo::JsonValue{R"({"mcpServers": {"tarvo-ai": {"command": ")" + program +
                                                   R"(", "args": ["mcp"]}}})"});
    const Ran failed = runTarvo(home, {"agents", "disconnect", "claude-code", "--json"});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(json(failed.output), json(R"({"ok": false, "message": "No encuentro Claude Code."})"));
    EXPECT_EQ(runTarvo(home, {"agents", "connect", "codex"}).exitCode, 2);
}

TEST(AgentsCommand, SaysWhatIsLinkedAndWhatCannotBeRead) {
    const TempHome home;
    home.fileWith(".claude.json", R"({"mcpServers": {"tarvo-ai": {}}})");
    EXPECT_THAT(runTarvo(home, {"agentes", "estado"}).output,
                StartsWith("claude-code     conectado     Claude"));
    EXPECT_THAT(runTarvo(home, {"agents"}, {"TARVO_IDIOMA=en"}).output,
                HasSubstr("To connect: tarvo agents connect claude-desktop\n"));
    home.folder(".config/Claude/claude_desktop_config.json");
    const Ran ran = runTarvo(home, {"agents", "--json"});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(json(ran.output), json(R"({"claude-code": true, "claude-desktop": false})"));
    EXPECT_THAT(ran.error, HasSubstr("claude_desktop_config.json: comprueba qué es"));
}
