#include "Tests/MCP/Agent.h"

#include <gtest/gtest.h>

#include <filesystem>

using lumo::JsonValue;
using tarvo::testing::at;
using tarvo::testing::envelope;
using tarvo::testing::FakeClient;
using tarvo::testing::TempHome;

namespace {

/// Somebody's home after years: projects that nobody touched for long, downloads and a folder full of
/// pictures.
void fill(const TempHome& home) {
    constexpr std::int64_t longAgo = 1600000000;
    for (int index = 0; index < 200; ++index) {
        const std::string project = "work/a project of mine " + std::to_string(index);
        home.file(project + "/package.json", 10);
        home.sparseFile(project + "/node_modules/all", 10);
        home.file(project + "/node_modules/x", 1000000);
        for (const char* name :
             {"/package.json", "/node_modules/all", "/node_modules/x", "/node_modules", ""}) {
            home.setModified(project + name, longAgo);
        }
    }
    for (int index = 0; index < 1500; ++index) {
        home.file("Downloads/a document with a long name " + std::to_string(index) +
                  (index % 5 == 0 ? ".deb" : ".pdf"));
    }
    for (int index = 0; index < 5000; ++index) {
        home.file("Pictures/holidays/IMG_" + std::to_string(index) + ".jpg");
    }
    for (const char* cache :
         {".cache/uv/wheel", ".cache/pip/http/a", ".npm/_cacache/x", ".cache/thumbnails/a.png"}) {
        home.file(cache, 3000000);
    }
}

} // namespace

TEST(Conversation, AboutFreeingSpaceOnABigHomeFitsAModel) {
    // It took 25 114 characters, two thirds of them the list of tools.
    const TempHome home;
    fill(home);
    for (const auto& [version, most] : {std::pair{"2024-11-05", 17000U},
                                        {"2025-03-26", 18000U},
                                        {"2025-06-18", 20000U},
                                        {"2025-11-25", 20000U},
                                        {"2026-07-28", 23000U}}) {
        const bool isStateless = version == std::string(tarvo::mcp::statelessVersion);
        FakeClient client(
            offeringsOf(std::make_shared<tarvo::mcp::Workspace>(home.path()), tarvo::mcp::Offer::everything),
            tarvo::mcp::instructions(tarvo::mcp::Offer::everything));
        const std::string note = isStateless ? envelope(R"({"elicitation":{}})") : "";
        int id = 0;
        std::vector<std::size_t> lengths;
        const auto ask = [&](const std::string& method, const std::string& params = "") {
            const std::size_t before = client.characters();
            const JsonValue answer =
                client.ask(++id, method, params + (params.empty() || note.empty() ? "" : ",") + note);
            lengths.push_back(client.characters() - before);
            return answer;
        };
        const auto call = [&](const std::string& tool, const std::string& arguments = "") {
            return ask("tools/call", R"("name":")" + tool + R"(","arguments":{)" + arguments + "}");
        };
        if (isStateless) {
            ask("server/discover");
        } else {
            client.shakeHands(version, R"({"elicitation":{}})");
        }
        ask("tools/list");
        call("analyze_disk");
        const JsonValue proposal = call("propose_cleanup");
        std::string plan = at(proposal, "result/structuredContent/plan");
        if (plan.empty()) {
            plan = at(lumo::parseJson(at(proposal, "result/content/1/text")).value(), "plan");
        }
        const std::string chosen = R"("plan":")" + plan + "\"";
        client.call(100, "clean", "{" + chosen + "}", note.empty() ? "" : "," + note);
        if (const std::string asked(version); asked == "2025-06-18" || asked == "2025-11-25") {
            const auto question = client.request("elicitation/create");
            EXPECT_EQ(at(question, "params/mode") == "form", asked == "2025-11-25");
            client.reply(question, tarvo::mcp::Consent::declined);
        }
        client.answer(100);
        call("list_set_aside");
        call("what_was_cleaned");
        EXPECT_LE(client.characters(), most) << version << ": " << testing::PrintToString(lengths);
        RecordProperty(version, static_cast<int>(client.characters()));
        EXPECT_TRUE(std::filesystem::exists(home.path(".cache/uv/wheel")));
    }
}
