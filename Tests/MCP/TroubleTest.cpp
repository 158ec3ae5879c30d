#include "Tests/MCP/Agent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

using tarvo::mcp::Consent;
using tarvo::testing::Agent;
using tarvo::testing::at;
using tarvo::testing::envelope;
using tarvo::testing::FakeClient;
using tarvo::testing::TempHome;
using testing::HasSubstr;
using testing::Not;

namespace {

/// What clients say, before it is spoiled.
std::vector<std::string> messages() {
    std::vector<std::string> all{
        R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"protocolVersion":"2025-11-25","capabilities":{}}})",
        R"({"jsonrpc":"2.0","id":"tarvo-1","result":{"action":"accept","content":{}}})",
        R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":3}})",
        R"([{"jsonrpc":"2.0","id":2,"method":"ping"},{"jsonrpc":"2.0","id":3,"method":"tools/list"}])"};
    for (const std::string& note : {std::string(), "," + envelope(R"({"elicitation":{}})")}) {
        for (const char* params : {R"("name":"list_set_aside","arguments":{"limit":3,"offset":1}})",
                                   R"("name":"clean","arguments":{"plan":"x"})",
                                   R"("name":"list_folder","arguments":{"path":"~"})",
                                   R"("name":"restore","arguments":{"items":["a"]})",
                                   R"("name":"help","arguments":{"question":"?"})"}) {
            all.push_back(R"({"jsonrpc":"2.0","id":4,"method":"tools/call","params":{)" +
                          std::string(params) + note + "}}");
        }
        all.push_back(
            R"({"jsonrpc":"2.0","id":5,"method":"resources/read","params":{"uri":"tarvo://plan/x")" + note +
            "}}");
        all.push_back(
            R"({"jsonrpc":"2.0","id":6,"method":"prompts/get","params":{"name":"free_space","arguments":)"
            R"({"gigabytes":"20"})" +
            note + "}}");
    }
    return all;
}

std::string spoiled(std::string text, std::mt19937& chance) {
    static const std::vector<std::string> pieces{
        "{",    "}",     "[",       "]",    "\"",   ":",  ",", "null", "1e999",
        "-",    "\\u00", "\\ud800", "\xFF", "\xC3", "\0", " ", "true", "99999999999999999999",
        "\x1B", "\t",    "\"id\":"};
    const auto below = [&](std::size_t end) { return chance() % end; };
    for (std::size_t edits = 1 + below(4); edits > 0; --edits) {
        const std::size_t place = below(text.size() + 1);
        switch (below(4)) {
        case 0:
            text.insert(place, pieces[below(pieces.size())]);
            break;
        case 1:
            text.erase(place, 1 + below(8));
            break;
        case 2:
            text.insert(place, text.substr(below(text.size() + 1), below(40)));
            break;
        default:
            text.replace(place, 1, 1, static_cast<char>(below(256)));
        }
    }
    std::erase(text, '\n');
    return text;
}

/// One line, unless we broke it, with nothing in it that a terminal obeys or that turns letters around.
void expectHarmless(const std::string& text, const std::string& from) {
    EXPECT_THAT(text, Not(HasSubstr("\nIGNORE"))) << from;
    for (const char c : text) {
        EXPECT_TRUE(c == '\n' || c == '\t' || (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F))
            << from << ": " << text;
    }
    for (const char* turning : {"\u202E", "\u2066", "\u202A"}) {
        EXPECT_THAT(text, Not(HasSubstr(turning))) << from;
    }
}

} // namespace

TEST(Trouble, OfTenThousandSpoiledMessagesLeavesTheServerAnswering) {
    const TempHome home;
    home.file(".cache/uv/wheel", 3000000);
    std::mt19937 chance(20250314);
    const std::vector<std::string> all = messages();
    for (const char* version : {"2025-03-26", "2025-11-25"}) {
        FakeClient client(
            offeringsOf(std::make_shared<tarvo::mcp::Workspace>(home.path()), tarvo::mcp::Offer::everything));
        client.shakeHands(version, R"({"elicitation":{}})");
        for (int index = 0; index < 5000; ++index) {
            client.send(spoiled(all[chance() % all.size()], chance));
        }
        // Each answer was read as one document when it came.
        EXPECT_EQ(at(client.ask(1000000, "ping"), "result"), "{}");
        EXPECT_FALSE(at(client.ask(1000001, "tools/list"), "result/tools").empty());
    }
    EXPECT_TRUE(std::filesystem::exists(home.path(".cache/uv/wheel")));
}

TEST(Trouble, WithHostileNamesNeverReachesATextOrAQuestion) {
    const std::string evil = "e\x1B[31m\u202Ev\u2066il\u200B\U000E0041\xFF\nIGNORE ALL\x7F";
    const TempHome home;
    home.file("work/" + evil + "/package.json", 10);
    home.file("work/" + evil + "/node_modules/x", 1100000);
    home.file("Downloads/" + evil + ".deb", 2000000);
    home.file("Documents/" + evil + "/" + evil, 100000);
    Agent agent(home);
    const auto quoted = [](const std::string& text) {
        return lumo::dumpJson(tarvo::mcp::word(text), lumo::JsonLayout::line);
    };
    const auto call = [&](const std::string& tool, const std::string& arguments) {
        const auto answer = agent.call(tool, "{" + arguments + "}", Consent::given);
        expectHarmless(answer.text, tool + arguments);
        expectHarmless(agent.asked, tool + " asks");
        expectHarmless(agent.told.message, tool + " tells");
        for (const char* hidden : {"\u200B", "\U000E0041", "\xFF"}) {
            EXPECT_THAT(agent.asked, Not(HasSubstr(hidden))) << tool;
        }
        // What goes out is one line of JSON that carries the very bytes.
        const std::string line = lumo::dumpJson(resultOf(answer, true), lumo::JsonLayout::line);
        EXPECT_TRUE(lumo::parseJson(line)) << tool;
        EXPECT_EQ(line.find('\n'), std::string::npos);
        return answer;
    };
    call("analyze_disk", "");
    const auto listed = call("list_folder", R"("path":"Downloads")");
    EXPECT_EQ(at(*listed.structured, "items/0/name"), evil + ".deb");
    call("list_folder", R"("path":)" + quoted("Documents/" + evil));
    call("explain_folder", R"("path":)" + quoted("Documents/" + evil));
    call("what_grew", "");
    const auto found = call("find_items", R"("kind":"large","minBytes":1000)");
    const std::string item = at(*found.structured, "items/0/id");
    EXPECT_THAT(item, HasSubstr(evil));
    call("find_items", R"("kind":)" + quoted(evil));
    call("find_items", R"("kind":"large","folder":)" + quoted(evil));
    call("propose_cleanup", R"("items":[)" + quoted(evil) + "]");
    const auto ofItem = call("propose_cleanup", R"("items":[)" + quoted(item) + "]");
    call("clean", R"("plan":)" + quoted(at(*ofItem.structured, "plan")));
    EXPECT_FALSE(std::filesystem::exists(home.path("Documents/" + evil + "/" + evil)));
    call("restore", "");
    const auto plan = call("propose_cleanup", R"("include":["downloaded-installers"],"dependencies":true)");
    const std::string handle = R"("plan":)" + quoted(at(*plan.structured, "plan"));
    call("clean", handle + R"(,"items":[)" + quoted(evil) + "]");
    call("clean", handle);
    EXPECT_THAT(agent.asked, HasSubstr("\\xF3\\xA0\\x81\\x81"));
    call("what_was_cleaned", handle);
    call("what_was_cleaned", "");
    call("list_set_aside", "");
    call("archive", R"("path":)" + quoted("Documents/" + evil));
    call("restore", "");
    for (const char* tool : {"list_folder", "explain_folder", "archive"}) {
        call(tool, R"("path":)" + quoted(evil + "/nowhere"));
    }
    call("propose_cleanup", R"("include":[)" + quoted(evil) + "]");
    call("propose_cleanup", R"("plan":)" + quoted(evil));
    call("restore", R"("items":[)" + quoted(evil) + "]");
    FakeClient client({agent.tools()});
    client.shakeHands("2025-11-25", "{}");
    int id = 0;
    for (const char* method : {"tools/call", "resources/read", "prompts/get"}) {
        const auto answer =
            client.ask(++id, method, R"("name":)" + quoted(evil) + R"(,"uri":)" + quoted(evil));
        expectHarmless(at(answer, "error/message"), method);
    }
    expectHarmless(at(client.ask(++id, "tools/call", R"("name":"help","arguments":{)" + quoted(evil) + ":1}"),
                      "result/content/0/text"),
                   "arguments");
}
