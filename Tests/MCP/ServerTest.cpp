#include "TarvoMCP/Server.h"

#include "Tests/MCP/FakeClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

using tarvo::mcp::Consent;
using tarvo::mcp::ErrorCode;
using tarvo::mcp::Tool;
using tarvo::mcp::ToolAnswer;
using tarvo::mcp::ToolCall;
using tarvo::testing::at;
using tarvo::testing::envelope;
using tarvo::testing::FakeClient;
using testing::HasSubstr;

namespace {

constexpr const char* asks = R"({"elicitation":{}})";

std::string nameOf(Consent consent) {
    constexpr std::array names{"given", "declined", "cancelled", "cannotAsk", "pending", "invalid"};
    return names[static_cast<std::size_t>(consent)];
}

/// A tool that asks for the user's word and says what it got.
Tool asking() {
    return {.name = "ask",
            .input = tarvo::mcp::schemaOf({{"subject", tarvo::mcp::schema("string")}}),
            .output = tarvo::mcp::schemaOf({}),
            .hints = {.isReadOnly = false},
            .run = [](const ToolCall& call) {
                const Consent consent = call.ask("May I?", at(call.arguments, "subject"));
                return consent == Consent::pending ? tarvo::mcp::pending()
                                                   : ToolAnswer{.text = nameOf(consent)};
            }};
}

/// A tool that works until it is told to stop.
Tool endless(std::atomic<bool>& hasStopped) {
    return {.name = "endless",
            .input = tarvo::mcp::schemaOf({}),
            .output = tarvo::mcp::schemaOf({}),
            .hints = {.isReadOnly = false},
            .run = [&](const ToolCall& call) {
                call.progress({.done = 1, .message = "at it", .total = 2});
                call.progress({.done = 1, .message = "still"});
                while (!call.stop.stop_requested()) {
                    std::this_thread::yield();
                }
                hasStopped = true;
                return ToolAnswer{};
            }};
}

/// What the tool that asks was told, when the client answers its question with that result or error.
std::string wordAfter(const std::string& reply) {
    FakeClient client({{asking()}});
    client.shakeHands("2025-11-25", asks);
    client.call(1, "ask", "{}");
    const auto question = client.request("elicitation/create");
    EXPECT_EQ(at(question, "params/message"), "May I?");
    client.reply(question, reply);
    return at(client.answer(1), "result/content/0/text");
}

} // namespace

TEST(MessageReader, AnswersWhatIsNoMessageWithItsReason) {
    struct Case {
        const char* line;
        const char* id;
        ErrorCode code;
    };
    FakeClient client(tarvo::mcp::Offerings{});
    std::size_t answers = 0;
    for (const Case& wrong :
         {Case{"{", "null", ErrorCode::parseError}, Case{"\xFF", "null", ErrorCode::parseError},
          Case{"[]", "null", ErrorCode::invalidRequest}, Case{"7", "null", ErrorCode::invalidRequest},
          Case{R"({"id":1,"method":"ping"})", "1", ErrorCode::invalidRequest},
          Case{R"({"jsonrpc":"2.0","id":1.5,"method":"ping"})", "null", ErrorCode::invalidRequest},
          Case{R"({"jsonrpc":"2.0","id":{},"method":"ping"})", "null", ErrorCode::invalidRequest},
          Case{R"({"jsonrpc":"2.0","id":"a","method":7})", "a", ErrorCode::invalidRequest},
          Case{R"({"jsonrpc":"2.0","id":2,"method":"ping","params":[]})", "2", ErrorCode::invalidParams},
          Case{R"({"jsonrpc":"2.0","id":3})", "3", ErrorCode::invalidRequest},
          Case{R"({"jsonrpc":"2.0","id":4,"method":"tools/list"})", "4", ErrorCode::invalidRequest}}) {
        client.send(wrong.line);
        const auto said =
            client.message([&, seen = std::size_t{0}](const auto&) mutable { return seen++ == answers; });
        ++answers;
        EXPECT_EQ(at(said, "id"), wrong.id) << wrong.line;
        EXPECT_EQ(at(said, "error/code"), std::to_string(static_cast<int>(wrong.code))) << wrong.line;
    }
    // Neither needs an answer: an empty line, a reply to nothing, and a note that nobody knows.
    for (const char* line :
         {"", " \r", R"({"jsonrpc":"2.0","id":1,"result":{}})",
          R"({"jsonrpc":"2.0","method":"x","params":[]})",
          R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":9}})"}) {
        client.send(line);
    }
    EXPECT_EQ(client.count(), answers);
    client.send("{\"jsonrpc\":\"2.0\",\"id\":5,\"method\":\"" + std::string(200, '[') + "\"}");
    client.send(std::string(100000, '['));
    EXPECT_EQ(client.count(), answers + 2);
}

TEST(Server, SpeaksEveryRevisionOfTheHandshakeAndTheStatelessOne) {
    for (const auto& [asked, spoken] : {std::pair{"2024-11-05", "2024-11-05"},
                                        {"2025-03-26", "2025-03-26"},
                                        {"2025-06-18", "2025-06-18"},
                                        {"2025-11-25", "2025-11-25"},
                                        {"2026-07-28", "2025-11-25"},
                                        {"1.0", "2025-11-25"}}) {
        FakeClient client({{asking()}});
        client.shakeHands(asked, "{}");
        client.send(R"({"jsonrpc":"2.0","id":1,"method":"tools/list"})");
        client.send(R"({"jsonrpc":"2.0","id":2,"method":"completion/complete"})");
        client.shakeHands(asked, "{}");
        EXPECT_EQ(at(client.message([](const auto&) { return true; }), "result/protocolVersion"), spoken);
        EXPECT_EQ(at(client.answer(1), "result/tools/0/name"), "ask");
        EXPECT_EQ(at(client.answer(1), "result/resultType"), "");
        EXPECT_EQ(at(client.answer(2), "error/code"), "-32601");
    }
    FakeClient client({{asking()}});
    EXPECT_EQ(at(client.ask(1, "server/discover", envelope("{}")), "result/supportedVersions"),
              R"(["2026-07-28"])");
    const auto tools = client.ask(2, "tools/list", envelope("{}"));
    EXPECT_EQ(at(tools, "result/resultType"), "complete");
    EXPECT_EQ(at(tools, "result/cacheScope"), "private");
    EXPECT_EQ(at(client.ask(3, "tools/list", envelope("{}", "2027-01-01")), "error/data"),
              R"({"supported":["2026-07-28"],"requested":"2027-01-01"})");
    EXPECT_EQ(at(client.ask(4, "tools/list", envelope("7")), "error/code"), "-32602");
    EXPECT_EQ(at(client.ask(5, "initialize", envelope("{}")), "error/code"), "-32601");
    EXPECT_EQ(at(client.ask(6, "tools/list", ""), "error/code"), "-32600") << "no handshake has taken place";
}

TEST(Server, RefusesCallsThatNoToolCanMean) {
    FakeClient client({{asking()}});
    client.shakeHands("2025-11-25", "{}");
    client.call(1, "nothing", "{}");
    client.call(2, "ask", "[]");
    client.call(3, "ask", R"({"misspelt":1})");
    EXPECT_EQ(at(client.answer(1), "error/code"), "-32602");
    EXPECT_EQ(at(client.answer(2), "error/code"), "-32602");
    EXPECT_EQ(at(client.answer(3), "result/isError"), "true");
    EXPECT_THAT(at(client.answer(3), "result/content/0/text"), HasSubstr("misspelt"));
}

TEST(Server, CountsOnlyAnAcceptedQuestionAsTheUsersWord) {
    EXPECT_EQ(wordAfter(R"("result":{"action":"accept","content":{}})"), "given");
    EXPECT_EQ(wordAfter(R"("result":{"action":"accept"},"error":null)"), "given");
    EXPECT_EQ(wordAfter(R"("result":{"action":"decline"})"), "declined");
    // Agents were told that the user had said no when nobody had been asked, or had closed the question.
    EXPECT_EQ(wordAfter(R"("result":{"action":"cancel"})"), "cancelled");
    for (const char* reply :
         {R"("result":{"action":true})", R"("result":{"action":"Accept"})", R"("result":{})",
          R"("result":true)", R"("error":{"code":-32601,"message":"no"})"}) {
        EXPECT_EQ(wordAfter(reply), "cannotAsk") << reply;
    }
    for (const auto& [version, capabilities] : {std::pair{"2025-11-25", "{}"},
                                                {"2025-03-26", asks},
                                                {"2025-11-25", R"({"elicitation":{"url":{}}})"}}) {
        FakeClient client({{asking()}});
        client.shakeHands(version, capabilities);
        client.call(1, "ask", "{}");
        EXPECT_EQ(at(client.answer(1), "result/content/0/text"), "cannotAsk") << version << capabilities;
    }
}

TEST(Server, AsksStatelessClientsByItsAnswerAndBelievesEachTicketOnce) {
    FakeClient client({{asking()}});
    int id = 0;
    const auto call = [&](const std::string& subject, const std::string& more) {
        client.call(++id, "ask", R"({"subject":")" + subject + "\"}", "," + envelope(asks) + more);
        return client.answer(id);
    };
    const auto replied = [&](const std::string& subject, const std::string& ticket,
                             const std::string& action) {
        return at(call(subject, R"(,"requestState":")" + ticket +
                                    R"(","inputResponses":{"consent":{"action":")" + action + "\"}}"),
                  "result/content/0/text");
    };
    const auto question = call("a", "");
    EXPECT_EQ(at(question, "result/resultType"), "input_required");
    EXPECT_EQ(at(question, "result/inputRequests/consent/method"), "elicitation/create");
    EXPECT_EQ(at(question, "result/inputRequests/consent/params/message"), "May I?");
    const std::string ticket = at(question, "result/requestState");
    EXPECT_EQ(replied("b", ticket, "accept"), "invalid") << "another subject";
    EXPECT_EQ(replied("a", "2" + ticket.substr(1), "accept"), "invalid") << "another number";
    EXPECT_EQ(replied("a", ticket + "0", "accept"), "invalid");
    EXPECT_EQ(replied("a", "", "accept"), "invalid");
    EXPECT_EQ(replied("a", ticket, "accept"), "given");
    EXPECT_EQ(replied("a", ticket, "accept"), "invalid") << "a second time";
    EXPECT_EQ(replied("a", at(call("a", ""), "result/requestState"), "decline"), "declined");
    EXPECT_EQ(at(call("a", R"(,"requestState":")" + at(call("a", ""), "result/requestState") + "\""),
                 "result/content/0/text"),
              "invalid")
        << "no reply beside it";
    client.call(99, "ask", "{}", "," + envelope("{}"));
    EXPECT_EQ(at(client.answer(99), "result/content/0/text"), "cannotAsk");
}

TEST(ConsentTickets, ServeForAFewMinutes) {
    tarvo::mcp::ConsentTickets tickets;
    const std::string early = tickets.issue("a", 1000);
    const std::string late = tickets.issue("a", 1000);
    EXPECT_TRUE(tickets.redeem(early, "a", 1600));
    EXPECT_FALSE(tickets.redeem(late, "a", 1601));
    EXPECT_FALSE(tarvo::mcp::ConsentTickets().redeem(tickets.issue("a", 0), "a", 0)) << "another server's";
}

TEST(Server, AnswersWhoLooksAndGivesSignsOfLifeWhileAQuestionIsOpenOrAnythingMeasures) {
    // Everything waited behind the user, and the client's timer ran out. Later the user's answer and whoever
    // looked waited behind what was measured meanwhile.
    std::atomic<bool> hasStopped = false;
    Tool measures = endless(hasStopped);
    measures.hints.isReadOnly = true;
    const Tool looks{.name = "look",
                     .input = tarvo::mcp::schemaOf({}),
                     .output = tarvo::mcp::schemaOf({}),
                     .run = [](const ToolCall&) { return ToolAnswer{.text = "seen"}; }};
    FakeClient client({{asking(), measures, looks}}, "", std::chrono::milliseconds(1));
    client.shakeHands("2025-11-25", asks);
    client.call(1, "ask", "{}", R"(,"_meta":{"progressToken":"t"})");
    const auto question = client.request("elicitation/create");
    client.call(2, "endless", "{}");
    client.call(3, "look", "{}");
    EXPECT_EQ(at(client.answer(3), "result/content/0/text"), "seen");
    const auto signs = [&](const char* progress) {
        return client.message([&](const auto& said) { return at(said, "params/progress") == progress; });
    };
    EXPECT_EQ(at(signs("0.0001"), "params/progressToken"), "t");
    signs("0.0002"); // Sums of more have other digits at their end.
    client.reply(question, Consent::given);
    EXPECT_EQ(at(client.answer(1), "result/content/0/text"), "given");
    EXPECT_FALSE(hasStopped);
}

TEST(Server, StopsAtOnceWhenCancelledOrEnded) {
    std::atomic<bool> hasStopped = false;
    FakeClient client({{endless(hasStopped), asking()}});
    client.shakeHands("2025-11-25", asks);
    client.call(1, "endless", "{}", R"(,"_meta":{"progressToken":"t"})");
    EXPECT_EQ(at(client.request("notifications/progress"), "params"),
              R"({"progressToken":"t","progress":1,"total":2,"message":"at it"})");
    client.call(1, "ask", "{}");
    EXPECT_EQ(at(client.answer(1), "error/message"), "the id is in use");
    client.send(R"({"jsonrpc":"2.0","method":"notifications/cancelled","params":{"requestId":1}})");
    client.call(2, "ask", "{}"); // Waits for the user until the end of input comes.
    client.request("elicitation/create");
    EXPECT_TRUE(hasStopped);
    const std::size_t said = client.count();
    client.server().end();
    EXPECT_EQ(client.count(), said);
    EXPECT_EQ(said, 4U) << "a second progress that says nothing new, or an answer to the cancelled call";
}
