#include "TarvoMCP/Tools.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "Tests/MCP/FakeClient.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using tarvo::mcp::Consent;
using tarvo::mcp::Tool;
using tarvo::mcp::ToolAnswer;
using tarvo::mcp::Workspace;
using tarvo::testing::at;
using tarvo::testing::TempHome;
using testing::HasSubstr;

namespace {

/// Calls tools on a home as a client would, and answers their questions.
class Agent final {
  public:
    explicit Agent(const TempHome& home) {
        const auto workspace = std::make_shared<Workspace>(home.path());
        tools_ = tarvo::mcp::lookingTools(workspace);
        for (Tool& tool : tarvo::mcp::changingTools(workspace)) {
            tools_.push_back(std::move(tool));
        }
    }

    ToolAnswer call(const std::string& name, const std::string& arguments,
                    Consent consent = Consent::declined) {
        const auto tool = std::ranges::find(tools_, name, &Tool::name);
        return tool->run({.arguments = lumo::parseJson(arguments).value(),
                          .caller = "Agent",
                          .progress = [](std::int64_t, const std::string&) {},
                          .ask =
                              [this, consent](const std::string& question, const std::string&) {
                                  asked = question;
                                  return consent;
                              }});
    }

    std::string asked; ///< The last question to the user.

  private:
    std::vector<Tool> tools_;
};

std::string planIn(const ToolAnswer& proposal) {
    return R"({"plan":")" + at(*proposal.structured, "plan") + "\"";
}

} // namespace

TEST(Tools, CleanOnlyWhatTheUserAgreedToAndPutItBack) {
    const TempHome home;
    home.file(".cache/uv/wheel", 3000000);
    home.file("Desktop/Screenshot 2025-01-01 at 10.00.00.png", 2000000);
    Agent agent(home);
    const ToolAnswer analysis = agent.call("analyze_disk", "{}");
    EXPECT_EQ(at(*analysis.structured, "items/0/id"), "uv-cache");
    const std::string proposal = planIn(agent.call("propose_cleanup", "{}"));
    for (const Consent consent :
         {Consent::declined, Consent::cannotAsk, Consent::invalid, Consent::pending}) {
        const ToolAnswer answer = agent.call("clean", proposal + "}", consent);
        EXPECT_EQ(answer.isPending, consent == Consent::pending);
        EXPECT_EQ(answer.isProblem, consent != Consent::pending);
        if (consent == Consent::cannotAsk) {
            EXPECT_THAT(answer.text, HasSubstr("tarvo clean --only 'uv-cache' --home '" + home.path() + "'"));
        }
    }
    EXPECT_TRUE(agent.call("clean", proposal + R"(,"items":["npm"]})", Consent::given).isProblem);
    EXPECT_TRUE(std::filesystem::exists(home.path(".cache/uv/wheel")));
    EXPECT_THAT(agent.asked, HasSubstr("Agent asks to clean 3 MB with Tarvo AI:\n• "));

    home.file(".cache/uv/more", 1000000);
    const ToolAnswer cleaned = agent.call("clean", proposal + "}", Consent::given);
    EXPECT_FALSE(cleaned.isProblem);
    EXPECT_EQ(at(*cleaned.structured, "outcomes/0/caller"), "Agent");
    EXPECT_FALSE(std::filesystem::exists(home.path(".cache/uv/wheel")));
    const auto log = lumo::HistoryLog::outcomes(lumo::OwnFiles::historyLog(home.path()));
    EXPECT_EQ(log->back().caller, "Agent");
}

TEST(Tools, PutBackWhatTheLogKnowsByItsIdAndNothingElse) {
    const TempHome home;
    const std::string original = home.file("Documents/old/letter.txt", 2000000);
    Agent agent(home);
    const ToolAnswer archived = agent.call("archive", R"({"path":"~/Documents/old"})", Consent::given);
    ASSERT_FALSE(archived.isProblem) << archived.text;
    EXPECT_FALSE(std::filesystem::exists(original));
    const ToolAnswer held = agent.call("list_set_aside", "{}");
    EXPECT_EQ(at(*held.structured, "items/0/original"), home.path("Documents/old"));
    const std::string id = at(*held.structured, "items/0/id");
    EXPECT_TRUE(agent.call("restore", R"({"items":["../x"]})", Consent::given).isProblem);
    EXPECT_TRUE(agent.call("restore", R"({"items":[")" + id + "\"]}", Consent::declined).isProblem);
    EXPECT_FALSE(std::filesystem::exists(original));
    EXPECT_EQ(at(*agent.call("restore", R"({"items":[")" + id + "\"]}", Consent::given).structured, "done"),
              "1");
    EXPECT_TRUE(std::filesystem::exists(original));
    EXPECT_TRUE(agent.call("restore", "{}", Consent::given).isProblem) << "nothing is left to undo";
}

TEST(Tools, LookOnlyIntoTheHome) {
    const TempHome home;
    home.file("Music/a.flac", 100000);
    home.link("out", "/");
    Agent agent(home);
    home.folder("Library/Application Support/TarvoAI");
    for (const char* path : {"~", "Music", "~/Music/", ".", "~/Library"}) {
        EXPECT_FALSE(agent.call("list_folder", R"({"path":")" + std::string(path) + "\"}").isProblem) << path;
    }
    for (const char* path : {"/etc", "..", "~/../..", "out/etc", "/", "Music/../../x", "nothing", "~root",
                             "/Applications/X.app"}) {
        for (const char* tool : {"list_folder", "explain_folder", "archive"}) {
            EXPECT_TRUE(
                agent.call(tool, R"({"path":")" + std::string(path) + "\"}", Consent::given).isProblem)
                << tool << " " << path;
        }
    }
    EXPECT_TRUE(agent.call("list_folder", R"({"path":7})").isProblem);
}

TEST(Tools, KeepToTheirOutputSchemas) {
    const TempHome home;
    home.file("Music/a.flac", 100000);
    const auto workspace = std::make_shared<Workspace>(home.path());
    for (const Tool& tool : tarvo::mcp::lookingTools(workspace)) {
        EXPECT_TRUE(tool.hints.isReadOnly && !tool.hints.isDestructive) << tool.name;
        const bool takesPath = tool.input.find("properties")->find("path") != nullptr;
        const ToolAnswer answer =
            tool.run({.arguments = lumo::parseJson(takesPath ? R"({"path":"Music"})" : "{}").value(),
                      .caller = "Agent",
                      .progress = [](std::int64_t, const std::string&) {}});
        ASSERT_TRUE(answer.structured) << tool.name << answer.text;
        for (const auto& required : std::get<lumo::JsonValue::Array>(tool.output.find("required")->value)) {
            EXPECT_NE(answer.structured->find(std::get<std::string>(required.value)), nullptr)
                << tool.name << " " << std::get<std::string>(required.value);
        }
    }
}
