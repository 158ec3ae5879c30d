#include "LumoAI/ExplanationCache.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Explaining/Explanation.h"
#include "Platform/Clock.h"
#include "TarvoModel/Flows/HelpReply.h"
#include "Tests/MCP/Agent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

using lumo::JsonValue;
using tarvo::mcp::Consent;
using tarvo::mcp::ToolAnswer;
using tarvo::testing::Agent;
using tarvo::testing::at;
using tarvo::testing::planIn;
using tarvo::testing::TempHome;
using testing::HasSubstr;
using testing::Not;

namespace {

struct Painted {
    static constexpr std::string_view caseName = "painted";
    std::string by;
    static constexpr auto fields = std::tuple{lumo::field("by", &Painted::by)};
};
struct Bare {
    static constexpr std::string_view caseName = "bare";
    static constexpr auto fields = std::tuple{};
};
using Surface = std::variant<Painted, Bare>;

/// What of the document is not as its schema says, or is not in it; empty when all is.
std::string faultOf(const JsonValue& document, const JsonValue& schema) {
    if (const JsonValue* cases = schema.find("oneOf")) {
        const auto& all = std::get<JsonValue::Array>(cases->value);
        const bool fits =
            std::ranges::any_of(all, [&](const auto& each) { return faultOf(document, each).empty(); });
        return fits ? "" : "fits no case";
    }
    static const std::vector<std::string> types{"null",   "boolean", "integer", "number",
                                                "string", "array",   "object"};
    const std::string type = at(schema, "type");
    if (types[document.value.index()] != type) {
        return "no " + type;
    }
    if (const JsonValue* names = schema.find("enum")) {
        const auto& all = std::get<JsonValue::Array>(names->value);
        return std::ranges::find(all, document) != all.end() ? "" : "unknown value";
    }
    if (schema.find("format") != nullptr && !lumo::decode<lumo::Date>(document)) {
        return "no date";
    }
    if (const auto* list = std::get_if<JsonValue::Array>(&document.value)) {
        const JsonValue* items = schema.find("items");
        for (const JsonValue& each : items != nullptr ? *list : JsonValue::Array()) {
            if (const std::string fault = faultOf(each, *items); !fault.empty()) {
                return "[]: " + fault;
            }
        }
    }
    const JsonValue* properties = schema.find("properties");
    if (properties == nullptr) {
        return "";
    }
    for (const auto& member : std::get<JsonValue::Object>(document.value)) {
        const JsonValue* of = properties->find(member.name);
        const std::string fault = of != nullptr ? faultOf(member.value, *of) : "not in the schema";
        if (!fault.empty()) {
            return member.name + ": " + fault;
        }
    }
    return "";
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
         {Consent::declined, Consent::cancelled, Consent::cannotAsk, Consent::invalid, Consent::pending}) {
        const ToolAnswer answer = agent.call("clean", proposal + "}", consent);
        EXPECT_EQ(answer.isPending, consent == Consent::pending);
        EXPECT_EQ(answer.isProblem, consent != Consent::pending);
        EXPECT_EQ(answer.text.starts_with("The user said no"), consent == Consent::declined) << answer.text;
        if (consent == Consent::cannotAsk) {
            EXPECT_THAT(answer.text, HasSubstr("The person must run it, in their terminal"));
            EXPECT_THAT(answer.text, HasSubstr("tarvo clean --home '" + home.path() + "'"));
        }
    }
    // No item at all was taken for all items.
    for (const char* items : {R"(["npm"])", "[]"}) {
        const ToolAnswer wrong = agent.call("clean", proposal + ",\"items\":" + items + "}", Consent::given);
        EXPECT_TRUE(wrong.isProblem);
        EXPECT_THAT(wrong.text, HasSubstr("uv-cache"));
    }
    EXPECT_TRUE(std::filesystem::exists(home.path(".cache/uv/wheel")));
    EXPECT_THAT(agent.asked, HasSubstr("Agent asks to clean 3 MB with Tarvo AI.\n"));
    EXPECT_TRUE(agent.call("what_was_cleaned", proposal + "}").isProblem) << "not carried out yet";

    home.file(".cache/uv/more", 1000000);
    const ToolAnswer cleaned = agent.call("clean", proposal + "}", Consent::given);
    EXPECT_FALSE(cleaned.isProblem);
    EXPECT_FALSE(std::filesystem::exists(home.path(".cache/uv/wheel")));
    EXPECT_EQ(agent.told.total, 1);
    EXPECT_THAT(agent.told.message, HasSubstr("1 of 1 · 0 MB of 3 MB: "));
    // A plan could be carried out again and again.
    const ToolAnswer again = agent.call("clean", proposal + "}", Consent::given);
    EXPECT_TRUE(again.isProblem);
    EXPECT_THAT(again.text, HasSubstr("carried out already"));
    EXPECT_EQ(*agent.call("what_was_cleaned", proposal + "}").structured, *cleaned.structured);
    EXPECT_EQ(at(*agent.call("what_was_cleaned", "{}").structured, "outcomes/0/id"), "uv-cache");
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
    for (const char* items : {R"(["../x"])", "[]"}) {
        EXPECT_THAT(agent.call("restore", "{\"items\":" + std::string(items) + "}", Consent::given).text,
                    HasSubstr(id));
    }
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
        for (const char* tool : {"list_folder", "archive"}) {
            EXPECT_TRUE(
                agent.call(tool, R"({"path":")" + std::string(path) + "\"}", Consent::given).isProblem)
                << tool << " " << path;
        }
        EXPECT_TRUE(
            agent.call("find_items", R"({"kind":"large","folder":")" + std::string(path) + "\"}").isProblem)
            << path;
    }
    EXPECT_TRUE(agent.call("find_items", R"({"kind":"large","folder":"out"})").isProblem) << "a link";
    EXPECT_TRUE(agent.call("list_folder", R"({"path":7})").isProblem);
    EXPECT_FALSE(agent.call("explain_folder", R"({"path":"/etc"})").isProblem) << "what is certain of it";
}

TEST(Tools, TellTheRiskTheNoteAndWhoWroteAnExplanation) {
    // An agent was told what a model had written as if it were certain, and passed it on.
    const TempHome home;
    home.file(".tool/data", 100000);
    lumo::ExplanationCache cache = lumo::ExplanationCache::ofHome(home.path());
    cache.store({.path = home.path(".tool"),
                 .sizeBytes = 100000,
                 .whatItIs = "Modelos de voz",
                 .owner = "Voces",
                 .suggestedSafety = lumo::Safety::safe,
                 .reason = "Se descargan.",
                 .howToFree = "Mira qué hay dentro.",
                 .note = "No hay garantía.",
                 .source = lumo::Explanation::Source::ai,
                 .createdAt = lumo::platform::now()});
    ASSERT_TRUE(cache.save());
    const std::string text = Agent(home).call("explain_folder", R"({"path":".tool"})").text;
    for (const char* said :
         {"Modelos de voz", "Voces", "Se descargan.", "Mira qué hay dentro.", "No hay garantía."}) {
        EXPECT_THAT(text, HasSubstr(said));
    }
    EXPECT_THAT(text, HasSubstr(lumo::Words{"Riesgo: Míralo antes", "Risk: Needs a look"}.in()));
    EXPECT_THAT(text, HasSubstr(lumo::Words{"Escrito por un modelo", "Written by a model"}.in()));
}

TEST(Tools, KeepToTheirOutputSchemas) {
    // The schemas stood beside the records and said nothing of `createdAt`, `restorable` and others.
    const TempHome home;
    home.file("Music/a.flac", 100000);
    home.file("Music/b/c.flac", 100000);
    home.file(".cache/uv/wheel", 3000000);
    Agent agent(home);
    const std::string plan = planIn(agent.call("propose_cleanup", "{}"));
    for (const auto& [name, arguments] :
         std::map<std::string, std::string>{{"analyze_disk", "{}"},
                                            {"list_folder", R"({"path":"Music"})"},
                                            {"explain_folder", R"({"path":"Music"})"},
                                            {"what_grew", "{}"},
                                            {"find_items", R"({"kind":"large","minBytes":1000})"},
                                            {"propose_cleanup", "{}"},
                                            {"clean", plan + "}"},
                                            {"archive", R"({"path":"Music/b"})"},
                                            {"list_set_aside", "{}"},
                                            {"what_was_cleaned", "{}"},
                                            {"restore", "{}"},
                                            {"help", R"({"question":"what do the colors mean"})"}}) {
        const ToolAnswer answer = agent.call(name, arguments, Consent::given);
        ASSERT_TRUE(answer.structured) << name << " " << answer.text;
        EXPECT_EQ(faultOf(*answer.structured, agent.tool(name).output), "") << name;
    }
    // The plan told agents of an option of the command, which their tool has not.
    home.file("app/package.json", 10);
    home.file("app/node_modules/x", 3000000);
    Agent another(home);
    EXPECT_THAT(lumo::dumpJson(*another.call("propose_cleanup", "{}").structured, lumo::JsonLayout::line),
                HasSubstr("(include it with dependencies: true)"));
    const std::string question = "¿Tiene atajos de teclado?"; // In the other language, too.
    EXPECT_EQ(*agent.call("help", "{\"question\":\"" + question + "\"}").structured,
              lumo::encode(tarvo::answerTo(question, {}).answer));
    EXPECT_THAT(agent.call("help", R"({"question":"xyzzy"})").text, HasSubstr("The help has no answer"));
    // Agents were told to run commands.
    for (const auto language : {lumo::Language::en, lumo::Language::es}) {
        for (const lumo::HelpTopic& topic : lumo::HelpCatalog::topics(language)) {
            const std::string said =
                at(*agent.call("help", R"({"question":")" + topic.id + "\"}").structured, "text");
            EXPECT_FALSE(said.empty()) << topic.id;
            for (const std::string& text : {said, topic.answerWithoutCommands}) {
                EXPECT_THAT(text, Not(testing::ContainsRegex("tarvo [a-z]|[][]"))) << topic.id;
            }
            EXPECT_THAT(topic.answer, Not(testing::ContainsRegex("[][]")));
        }
    }
    using namespace lumo;
    const Date now;
    EXPECT_EQ(faultOf(encode(Explanation{.suggestedSafety = Safety::safe, .note = "", .createdAt = now}),
                      agent.tool("explain_folder").output),
              "");
    EXPECT_EQ(faultOf(encode(Surface{Painted{"red"}}), tarvo::mcp::schemaIn<Surface>({})), "");
    EXPECT_EQ(faultOf(parseJson(R"({"painted":{"by":7}})").value(), tarvo::mcp::schemaIn<Surface>({})),
              "fits no case");
}
