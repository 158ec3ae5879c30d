#include "LumoCore/Basics/Codec.h"
#include "Tests/MCP/Agent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using lumo::JsonValue;
using tarvo::mcp::Consent;
using tarvo::mcp::Offer;
using tarvo::mcp::Offerings;
using tarvo::mcp::Resource;
using tarvo::mcp::Workspace;
using tarvo::testing::at;
using tarvo::testing::envelope;
using tarvo::testing::FakeClient;
using tarvo::testing::TempHome;
using testing::HasSubstr;
using testing::Not;

namespace {

Offerings offered(const TempHome& home, Offer offer = Offer::everything) {
    return tarvo::mcp::offeringsOf(std::make_shared<Workspace>(home.path()), offer);
}

/// A document that says what was asked for.
Offerings echoing() {
    const auto read = [](const std::string& given) -> lumo::Result<JsonValue> {
        if (given == "gone") {
            return lumo::failure("gone");
        }
        return tarvo::mcp::object({{"given", tarvo::mcp::word(given)}});
    };
    return {{},
            {{.uri = "x://a", .name = "a", .read = read}, {.uri = "x://a/{b}", .name = "b", .read = read}}};
}

std::string uri(const std::string& text) {
    return R"("uri":")" + text + "\"";
}

std::string prompt(const std::string& arguments) {
    return R"("name":"free_space","arguments":)" + arguments;
}

} // namespace

TEST(Offerings, TellEachRevisionOnlyWhatItKnows) {
    // Clients of the first revisions were sent titles, hints and schemas of answers, which came later.
    const TempHome home;
    struct Known {
        const char* version;
        bool hints;
        bool records;
    };
    for (const Known& known : {Known{"2024-11-05", false, false}, Known{"2025-03-26", true, false},
                               Known{"2025-06-18", true, true}, Known{"2025-11-25", true, true}}) {
        FakeClient client(offered(home));
        client.shakeHands(known.version, "{}");
        const auto hand = client.message([](const auto&) { return true; });
        EXPECT_EQ(at(hand, "result/serverInfo/title") == "Tarvo AI", known.records) << known.version;
        EXPECT_EQ(at(hand, "result/capabilities"), R"({"tools":{},"resources":{},"prompts":{}})");
        const JsonValue tool = *client.ask(1, "tools/list").find("result")->find("tools");
        EXPECT_EQ(at(tool, "0/title").empty(), !known.records) << known.version;
        EXPECT_EQ(at(tool, "0/outputSchema").empty(), !known.records) << known.version;
        EXPECT_EQ(at(tool, "0/annotations").empty(), !known.hints) << known.version;
        EXPECT_EQ(at(tool, "0/annotations/title").empty(), !known.hints || known.records) << known.version;
        for (int id = 10; const char* list : {"resources", "prompts"}) {
            const auto answer = client.ask(++id, std::string(list) + "/list");
            EXPECT_EQ(at(answer, "result/" + std::string(list) + "/0/title").empty(), !known.records);
            EXPECT_THAT(at(answer, "result"), Not(HasSubstr("ttlMs")));
        }
        const auto answer = client.ask(3, "tools/call", R"("name":"list_set_aside","arguments":{})");
        EXPECT_EQ(at(answer, "result/structuredContent").empty(), !known.records) << known.version;
        EXPECT_EQ(at(answer, "result/content/1/text").empty(), known.records) << known.version;
    }
}

TEST(Offerings, AreReadByTheirAddress) {
    FakeClient client(echoing());
    client.shakeHands("2025-11-25", "{}");
    EXPECT_EQ(at(client.ask(1, "resources/list"), "result/resources/0/uri"), "x://a");
    EXPECT_EQ(at(client.ask(2, "resources/templates/list"), "result/resourceTemplates/0/uriTemplate"),
              "x://a/{b}");
    const auto read = client.ask(3, "resources/read", uri("x://a/c d"));
    EXPECT_EQ(at(read, "result/contents"),
              R"([{"uri":"x://a/c d","mimeType":"application/json","text":"{\"given\":\"c d\"}"}])");
    EXPECT_EQ(at(client.ask(4, "resources/read", uri("x://a")), "result/contents/0/text"), R"({"given":""})");
    int id = 4;
    for (const auto& [params, code] : {std::pair{uri("x://a/gone"), "-32002"},
                                       {uri("x://a/"), "-32002"},
                                       {uri("x://b"), "-32002"},
                                       {std::string(R"("uri":7)"), "-32602"},
                                       {std::string(), "-32602"}}) {
        EXPECT_EQ(at(client.ask(++id, "resources/read", params), "error/code"), code) << params;
    }
    EXPECT_EQ(at(client.ask(20, "resources/list", R"("cursor":"2")"), "error/code"), "-32602");
    // The stateless revision has no code of its own for it.
    EXPECT_EQ(at(client.ask(21, "resources/read", uri("x://b") + "," + envelope("{}")), "error/code"),
              "-32602");
    const auto stateless = client.ask(22, "resources/read", uri("x://a") + "," + envelope("{}"));
    EXPECT_EQ(at(stateless, "result/resultType"), "complete");
    EXPECT_EQ(at(stateless, "result/ttlMs"), "0");
    EXPECT_EQ(at(client.ask(23, "prompts/list", envelope("{}")), "result/cacheScope"), "private");
}

TEST(Offerings, HaveTheLastReportThePlanAndTheHistory) {
    const TempHome home;
    home.file(".cache/uv/wheel", 3000000);
    FakeClient client(offered(home));
    client.shakeHands("2025-11-25", R"({"elicitation":{}})");
    auto text = [&, id = 100](const std::string& address) mutable {
        return at(client.ask(++id, "resources/read", uri(address)), "result/contents/0/text");
    };
    EXPECT_EQ(text("tarvo://report"), "") << "no scan yet";
    EXPECT_EQ(text("tarvo://plan"), "");
    EXPECT_THAT(text("tarvo://history"), HasSubstr(R"("outcomes":[])"));
    const auto proposal = client.ask(1, "tools/call", R"("name":"propose_cleanup","arguments":{})");
    const std::string plan = at(proposal, "result/structuredContent/plan");
    EXPECT_THAT(text("tarvo://report"), HasSubstr(R"("id":"uv-cache")"));
    EXPECT_EQ(text("tarvo://plan"), at(proposal, "result/structuredContent"));
    EXPECT_EQ(text("tarvo://plan/" + plan), text("tarvo://plan"));
    EXPECT_EQ(text("tarvo://plan/other"), "");
    client.call(2, "clean", R"({"plan":")" + plan + "\"}");
    const auto question = client.request("elicitation/create");
    client.reply(question, Consent::given);
    client.answer(2);
    EXPECT_THAT(text("tarvo://history"), HasSubstr(R"("status":"done")"));
    EXPECT_EQ(text("tarvo://report"), "") << "no longer as it was";
}

TEST(Offerings, HaveAPromptThatCleansOnlyAfterTheUserAgreed) {
    const TempHome home;
    for (const Offer offer : {Offer::everything, Offer::looking}) {
        FakeClient client(offered(home, offer));
        client.shakeHands("2024-11-05", "{}");
        EXPECT_EQ(at(client.ask(1, "prompts/list"), "result/prompts/0/arguments/0/name"), "gigabytes");
        const auto said = client.ask(2, "prompts/get", prompt(R"({"gigabytes":"2.5"})"));
        EXPECT_EQ(at(said, "result/messages/0/role"), "user");
        EXPECT_THAT(at(said, "result/messages/0/content/text"), HasSubstr("2.5 GB"));
        int id = 2;
        for (const char* wrong :
             {"{}", R"({"gigabytes":"0"})", R"({"gigabytes":"-1"})", R"({"gigabytes":"1\n2"})",
              R"({"gigabytes":"123456789"})", R"({"gigabytes":20})", R"({"gigabytes":"2","more":"3"})",
              R"({"gigabytes":"1.2.3"})"}) {
            EXPECT_EQ(at(client.ask(++id, "prompts/get", prompt(wrong)), "error/code"), "-32602") << wrong;
        }
        EXPECT_EQ(at(client.ask(20, "prompts/get", R"("name":"x")"), "error/code"), "-32602");
    }
}

TEST(Batches, AreReadInTheOneRevisionThatHasThem) {
    // A batch was refused in the revision whose clients may send one.
    const std::string ping = R"({"jsonrpc":"2.0","id":1,"method":"ping"})";
    for (const char* version : {"2024-11-05", "2025-06-18", "2025-11-25"}) {
        FakeClient client(echoing());
        client.send("[" + ping + "]");
        client.shakeHands(version, "{}");
        client.send("[" + ping + "]");
        const auto refused = client.message(
            [&](const auto& said) { return at(said, "error/message").find(version) != std::string::npos; });
        EXPECT_EQ(at(refused, "error/code"), "-32600");
        EXPECT_EQ(client.count(), 3U);
    }
    FakeClient client(echoing());
    client.shakeHands("2025-03-26", "{}");
    client.send("[" + ping +
                R"(,{"jsonrpc":"2.0","id":2,"method":"resources/read","params":{"uri":"x://a"}},7,)" +
                R"({"jsonrpc":"2.0","method":"notifications/initialized"},[],)" +
                R"({"jsonrpc":"2.0","id":3,"method":"initialize","params":{}}])");
    const auto answers =
        client.message([](const auto& said) { return std::holds_alternative<JsonValue::Array>(said.value); });
    const auto& all = std::get<JsonValue::Array>(answers.value);
    EXPECT_EQ(all.size(), 5U) << "the notification has no answer";
    EXPECT_EQ(client.count(), 2U) << "one list";
    client.send(R"([{"jsonrpc":"2.0","method":"notifications/initialized"}])");
    EXPECT_EQ(client.count(), 2U) << "nothing to answer";
    client.send("[" + ping + [&] {
        std::string more;
        for (int index = 0; index < 40; ++index) {
            more += "," + ping;
        }
        return more;
    }() + "]");
    client.message(
        [](const auto& said) { return at(said, "error/message") == "a batch has 32 messages at most"; });
}
