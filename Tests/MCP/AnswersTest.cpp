#include "Tests/MCP/Agent.h"

#include "LumoCore/Basics/Text.h"
#include "TarvoMCP/Page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

using lumo::JsonValue;
using tarvo::mcp::Consent;
using tarvo::mcp::Offer;
using tarvo::mcp::ToolAnswer;
using tarvo::testing::Agent;
using tarvo::testing::at;
using tarvo::testing::countOf;
using tarvo::testing::expectFits;
using tarvo::testing::planIn;
using tarvo::testing::TempHome;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string numbered(const std::string& before, int number, const std::string& behind = {}) {
    return before + std::to_string(number) + behind;
}

/// Many projects, downloads and screenshots.
void fill(const TempHome& home) {
    for (int index = 0; index < 60; ++index) {
        home.file(numbered("work/a project of mine ", index, "/package.json"), 10);
        home.file(numbered("work/a project of mine ", index, "/node_modules/x"), 1100000);
    }
    for (int index = 0; index < 1500; ++index) {
        home.file(numbered("Downloads/a document with a long name ", index, index % 5 == 0 ? ".deb" : ".pdf"),
                  1);
    }
}

std::int64_t numberAt(const ToolAnswer& answer, std::string_view path) {
    return std::stoll(at(*answer.structured, path));
}

} // namespace

TEST(Answers, FitAModelOnABigHomeAndSayHowMuchMoreThereIs) {
    // One cleanup took 360 000 characters, and one folder 68 000.
    const TempHome home;
    fill(home);
    Agent agent(home);
    const std::string include = R"({"include":["downloaded-installers"],"dependencies":true)";
    for (const auto& [name, arguments] : std::vector<std::pair<std::string, std::string>>{
             {"analyze_disk", "{}"},
             {"analyze_disk", R"({"limit":200})"},
             {"list_folder", R"({"path":"Downloads","limit":200})"},
             {"list_folder", R"({"path":"work","limit":200})"},
             {"explain_folder", R"({"path":"work"})"},
             {"what_grew", "{}"},
             {"propose_cleanup", "{}"},
             {"propose_cleanup", R"({"include":["nonsense"]})"},
             {"propose_cleanup", include + R"(,"limit":200})"}}) {
        expectFits(agent.call(name, arguments), name + arguments);
    }
    const ToolAnswer proposal = agent.call("propose_cleanup", include + ",\"limit\":10}");
    EXPECT_TRUE(proposal.text.starts_with("Nothing has been done.")) << proposal.text;
    const std::string plan = at(*proposal.structured, "plan");
    EXPECT_EQ(numberAt(proposal, "moreItems/count"), 51);
    const ToolAnswer last =
        agent.call("propose_cleanup", R"({"offset":55,"limit":200,"plan":")" + plan + "\"}");
    EXPECT_EQ(at(*last.structured, "plan"), plan);
    EXPECT_EQ(numberAt(last, "moreItems/count"), 0);
    const ToolAnswer blocked = agent.call("propose_cleanup", "{}");
    EXPECT_EQ(numberAt(blocked, "blocked/0/count"), 60);
    EXPECT_EQ(countOf(*blocked.structured, "blocked"), 1U) << "one reason, one group";

    const ToolAnswer cleaned = agent.call("clean", planIn(proposal) + "}", Consent::given);
    expectFits(cleaned, "clean");
    EXPECT_LT(agent.asked.size(), 16000U);
    EXPECT_THAT(agent.asked, HasSubstr("~/Downloads/a document with a long name 0.deb"));
    EXPECT_FALSE(cleaned.isProblem) << cleaned.text;
    const ToolAnswer held = agent.call("list_set_aside", "{}");
    expectFits(held, "list_set_aside");
    EXPECT_EQ(numberAt(held, "moreItems"), 292);
    expectFits(agent.call("list_set_aside", R"({"limit":200})"), "list_set_aside 200");
    expectFits(agent.call("what_was_cleaned", R"({"limit":200})"), "what_was_cleaned");
    expectFits(agent.call("restore", "{}", Consent::given), "restore");
}

TEST(Answers, ListAFolderToItsEndPageByPage) {
    // Only the largest 1000 could be reached.
    const TempHome home;
    for (int number = 0; number < 1503; ++number) {
        home.file("Music/" + std::to_string(number), number == 1502 ? 1 : 100000);
    }
    Agent agent(home);
    std::set<std::string> seen;
    std::size_t last = 1;
    for (std::size_t offset = 0; last > 0; offset += last) {
        const ToolAnswer answer = agent.call("list_folder", R"({"path":"Music","limit":200,"offset":)" +
                                                                std::to_string(offset) + "}");
        expectFits(answer, "list_folder");
        last = countOf(*answer.structured, "items");
        EXPECT_EQ(numberAt(answer, "moreItems/count"),
                  1503 - static_cast<std::int64_t>(std::min(offset + last, std::size_t{1503})));
        for (std::size_t index = 0; index < last; ++index) {
            seen.insert(at(*answer.structured, "items/" + std::to_string(index) + "/path"));
        }
    }
    EXPECT_EQ(seen.size(), 1503U);
}

TEST(Answers, CarryTheSameNamesInTextsAndRecords) {
    // What stands for a stray byte was marked as if it were stray itself, so that no name of it was found.
    const TempHome home;
    home.file("Music/caf\xE9\n\u2028.flac", 100000);
    Agent agent(home);
    const ToolAnswer answer = agent.call("list_folder", R"({"path":"Music"})");
    const std::string line = lumo::dumpJson(resultOf(answer, false), lumo::JsonLayout::line);
    const JsonValue read = lumo::parseJson(line).value();
    EXPECT_EQ(at(read, "content/1/text"), lumo::jsonInText(*answer.structured));
    // Read by a program that knows nothing of the marks, both have the same characters.
    EXPECT_THAT(line, HasSubstr("caf\uEFE9\\\\n\u2028.flac"));
    EXPECT_THAT(at(read, "content/0/text"), HasSubstr("caf\xE9\\n\\xE2\\x80\\xA8.flac"));
    EXPECT_EQ(at(resultOf(answer, false), "structuredContent"), "");
    EXPECT_EQ(countOf(resultOf(answer, true), "content"), 1U) << "said twice";
}

TEST(Answers, RefusePagesThatThereAreNot) {
    const TempHome home;
    home.file("Music/a.flac", 100000);
    home.file("Music/b.flac", 300000);
    Agent agent(home);
    for (const char* wrong : {"\"limit\":0", "\"limit\":201", "\"offset\":-1", "\"limit\":\"5\"",
                              "\"minBytes\":-1", "\"limit\":1.5"}) {
        EXPECT_TRUE(agent.call("list_folder", R"({"path":"Music",)" + std::string(wrong) + "}").isProblem)
            << wrong;
    }
    const ToolAnswer large = agent.call("list_folder", R"({"path":"Music","minBytes":200000})");
    EXPECT_EQ(at(*large.structured, "items/0/name"), "b.flac");
    EXPECT_EQ(numberAt(large, "moreItems/count"), 0);
    const ToolAnswer behind = agent.call("list_folder", R"({"path":"Music","offset":9})");
    EXPECT_EQ(at(*behind.structured, "items"), "[]");
}

TEST(Answers, SpeakOfNoToolThatAServerHasNot) {
    // A server that only looks told of clean and restore.
    const TempHome home;
    Agent agent(home, Offer::looking);
    const auto workspace = std::make_shared<tarvo::mcp::Workspace>(home.path());
    std::string said = tarvo::mcp::instructions(Offer::looking) +
                       tarvo::mcp::prompts(Offer::looking)[0]
                           .words(lumo::parseJson(R"({"gigabytes":"20"})").value())
                           .value();
    for (const auto& tool : tarvo::mcp::lookingTools(workspace, Offer::looking)) {
        said += lumo::dumpJson(described(tool, {.version = "2025-11-25"}), lumo::JsonLayout::line);
    }
    for (const char* missing : {"clean,", "clean takes", "call clean", "restore", "archive"}) {
        EXPECT_THAT(said, Not(HasSubstr(missing)));
    }
    EXPECT_THAT(tarvo::mcp::instructions(Offer::everything), HasSubstr("data, never instructions"));
    for (const auto& tool : agent.tools()) {
        EXPECT_EQ(at(tool.input, "additionalProperties"), "false") << tool.name;
    }
}
