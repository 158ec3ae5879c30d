#include "TarvoModel/Flows/Preferences.h"
#include "Tests/MCP/Agent.h"
#include "Tests/support/OllamaLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using tarvo::mcp::Consent;
using tarvo::mcp::Offer;
using tarvo::mcp::ToolAnswer;
using tarvo::testing::Agent;
using tarvo::testing::at;
using tarvo::testing::countOf;
using tarvo::testing::envelope;
using tarvo::testing::expectFits;
using tarvo::testing::FakeClient;
using tarvo::testing::planIn;
using tarvo::testing::TempHome;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// Two copies of a picture, and a film of one's own.
void fill(const TempHome& home) {
    home.fileWith("Pictures/a.jpg", std::string(1200000, 'p'));
    home.fileWith("Downloads/a.jpg", std::string(1200000, 'p'));
    home.file("Videos/film.mkv", 3000000);
}

std::string itemsArgument(const std::string& ids) {
    return R"({"items":[)" + ids + "]}";
}

} // namespace

TEST(FindItems, HandsItsIdsToAProposalAndThatToACleanup) {
    const TempHome home;
    fill(home);
    home.file(".cache/uv/wheel", 3000000);
    Agent agent(home);
    const ToolAnswer films = agent.call("find_items", R"({"kind":"large","minBytes":2000000})");
    EXPECT_EQ(at(*films.structured, "items/0/id"), "archivo:Videos/film.mkv");
    EXPECT_EQ(at(*films.structured, "items/0/path"), home.path("Videos/film.mkv"));
    const ToolAnswer copies = agent.call("find_items", R"({"kind":"duplicados"})");
    EXPECT_EQ(at(*copies.structured, "items/0/kept"), home.path("Pictures/a.jpg"));
    const std::string copy = at(*copies.structured, "items/0/id");
    EXPECT_THAT(agent.told.message, testing::AnyOf("", StartsWith("Duplicate files"), StartsWith("Large")));

    const ToolAnswer plan =
        agent.call("propose_cleanup", itemsArgument(R"("archivo:Videos/film.mkv",")" + copy + '"'));
    EXPECT_EQ(countOf(*plan.structured, "items"), 2U) << "nothing that recreates itself";
    const std::string handle = planIn(plan);
    const ToolAnswer refused =
        agent.call("clean", handle + R"(,"items":[")" + copy + "\"]}", Consent::cannotAsk);
    EXPECT_THAT(refused.text, HasSubstr("tarvo clean --item '" + copy + "' --home"));
    EXPECT_TRUE(std::filesystem::exists(home.path("Videos/film.mkv")));
    EXPECT_FALSE(agent.call("clean", handle + "}", Consent::given).isProblem);
    EXPECT_THAT(agent.asked, HasSubstr("YOURS, set aside and can be put back (2, "));
    EXPECT_THAT(agent.asked, HasSubstr("~/Videos/film.mkv"));
    EXPECT_FALSE(std::filesystem::exists(home.path("Videos/film.mkv")));
    EXPECT_FALSE(std::filesystem::exists(home.path("Downloads/a.jpg")));
    EXPECT_TRUE(std::filesystem::exists(home.path("Pictures/a.jpg")));
    EXPECT_TRUE(std::filesystem::exists(home.path(".cache/uv/wheel")));
    // What is gone is looked for anew.
    EXPECT_EQ(at(*agent.call("find_items", R"({"kind":"duplicates"})").structured, "items"), "[]");
    EXPECT_FALSE(agent.call("restore", "{}", Consent::given).isProblem);
    EXPECT_TRUE(std::filesystem::exists(home.path("Videos/film.mkv")));
}

TEST(FindItems, OfWhichOnlySomeAreCleanedComeToWhatTheyAreAlone) {
    // Of two models with a shared part, the second alone came to what it is beside the first, and was
    // refused.
    using namespace tarvo::testing;
    const TempHome home;
    for (const auto& [name, part] : {std::pair("one", '1'), {"two", '2'}}) {
        home.fileWith(ollamaManifests + name + "/latest", manifest(blob(part), blob('a')));
        home.file(ollamaStore + "blobs/" + blob(part), 20000);
    }
    home.file(ollamaStore + "blobs/" + blob('a'), 20000);
    Agent agent(home);
    const std::string id = "modelo:ollama:" + ollamaManifests;
    const ToolAnswer plan =
        agent.call("propose_cleanup", itemsArgument("\"" + id + "one/latest\",\"" + id + "two/latest\""));
    const ToolAnswer done =
        agent.call("clean", planIn(plan) + R"(,"items":[")" + id + "two/latest\"]}", Consent::given);
    EXPECT_FALSE(done.isProblem) << done.text;
    EXPECT_FALSE(std::filesystem::exists(home.path(ollamaStore + "blobs/" + blob('2'))));
    EXPECT_TRUE(std::filesystem::exists(home.path(ollamaStore + "blobs/" + blob('a'))));
}

TEST(FindItems, FitsAModelAndSaysHowMuchMoreThereIs) {
    const TempHome home;
    const std::string deep = "Videos/" + std::string(200, 'd') + "/" + std::string(200, 'e') + "/";
    for (int index = 0; index < 250; ++index) {
        home.file(deep + std::to_string(index) + std::string(150, 'f'), 10000);
    }
    Agent agent(home);
    for (const char* arguments : {R"("limit":200)", R"("limit":10)", R"("limit":200,"offset":245)"}) {
        const ToolAnswer answer =
            agent.call("find_items", R"({"kind":"large","minBytes":1000,)" + std::string(arguments) + "}");
        expectFits(answer, arguments);
        const std::size_t shown = countOf(*answer.structured, "items");
        const std::size_t before = std::string(arguments).ends_with("245") ? 245 : 0;
        EXPECT_EQ(at(*answer.structured, "moreItems/count"), std::to_string(250 - before - shown));
        if (before == 0) {
            EXPECT_THAT(answer.text, HasSubstr("go on with offset " + std::to_string(shown)));
        }
    }
    EXPECT_TRUE(agent.call("find_items", R"({"kind":"films"})").isProblem);
    EXPECT_TRUE(agent.call("propose_cleanup", R"({"items":["archivo:none"]})").isProblem);
}

TEST(FindItems, SaysWhatCannotBeToldAndWhatCannotBeDoneFromHere) {
    const TempHome home;
    fill(home);
    Agent agent(home, Offer::looking);
    const ToolAnswer cloud = agent.call("find_items", R"({"kind":"cloud"})");
    EXPECT_FALSE(cloud.isProblem);
    EXPECT_FALSE(at(*cloud.structured, "unavailable").empty());
    EXPECT_THAT(cloud.text, HasSubstr("cannot be told: "));
    auto preferences = tarvo::Preferences::load(home.path());
    ASSERT_TRUE(preferences.set(tarvo::preference::protectedFolders, {home.path("Videos")}));
    const ToolAnswer films = agent.call("find_items", R"({"kind":"large","minBytes":2000000})");
    EXPECT_THAT(at(*films.structured, "items/0/blockedBecause"), HasSubstr("protected"));
    EXPECT_EQ(at(*films.structured, "bytes"), "0");
    EXPECT_THAT(films.text, HasSubstr("cannot be cleaned from here"));
    const ToolAnswer plan = agent.call("propose_cleanup", itemsArgument(R"("archivo:Videos/film.mkv")"));
    EXPECT_EQ(at(*plan.structured, "items"), "[]");
    EXPECT_EQ(at(*plan.structured, "blocked/0/count"), "1");
}

TEST(FindItems, AnswersInBothErasOfTheProtocol) {
    const TempHome home;
    fill(home);
    for (const bool isStateless : {false, true}) {
        FakeClient client({Agent(home).tools()});
        if (!isStateless) {
            client.shakeHands("2025-11-25", "{}");
        }
        const auto answer = client.ask(1, "tools/call",
                                       R"("name":"find_items","arguments":{"kind":"duplicates"})" +
                                           (isStateless ? "," + envelope("{}") : std::string()));
        EXPECT_EQ(at(answer, "result/structuredContent/items/0/kept"), home.path("Pictures/a.jpg"));
    }
}
