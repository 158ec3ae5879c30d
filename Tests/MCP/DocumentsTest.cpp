#include "TarvoMCP/Tools.h"
#include "Tests/MCP/FakeClient.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

using lumo::JsonValue;
using tarvo::testing::at;

namespace {

constexpr std::string_view begins = "<!-- made from the server: TABLE -->\n";
constexpr std::string_view ends = "<!-- end of what is made -->\n";

/// Expects what stands in the document between the marks of that table to be this text. Where
/// TARVO_REFRESH_GOLDEN is set, it is made so first.
void expectTable(const std::string& document, const std::string& table, const std::string& actual) {
    const std::string path = SOURCE_FOLDER "/" + document;
    std::string text = tarvo::testing::contentOf(path);
    std::string mark(begins);
    mark.replace(mark.find("TABLE"), 5, table);
    const std::size_t found = text.find(mark);
    ASSERT_NE(found, std::string::npos) << document << " has no " << mark;
    const std::size_t first = found + mark.size();
    const std::size_t last = text.find(ends, first);
    ASSERT_NE(last, std::string::npos);
    if (std::getenv("TARVO_REFRESH_GOLDEN") != nullptr) {
        text.replace(first, last - first, actual);
        std::ofstream(path, std::ios::binary) << text;
        return;
    }
    EXPECT_EQ(text.substr(first, last - first), actual) << "When the change is meant: ./dev golden";
}

std::string argumentsOf(const JsonValue& schema) {
    std::string text;
    for (const auto& property : std::get<JsonValue::Object>(schema.find("properties")->value)) {
        const std::string description = at(property.value, "description");
        const bool isNeeded = at(schema, "required").find("\"" + property.name + "\"") != std::string::npos;
        text += (text.empty() ? "" : "<br>") + ("`" + property.name + "`") + (isNeeded ? " (needed)" : "") +
                (description.empty() ? "" : ": " + description);
    }
    return text;
}

} // namespace

TEST(Documents, GoldenTablesSayWhatTheServerHas) {
    const auto offerings =
        offeringsOf(std::make_shared<tarvo::mcp::Workspace>("/nowhere"), tarvo::mcp::Offer::everything);
    std::string brief = "| tool | what it does |\n|---|---|\n";
    std::string full = "| tool | what it does | arguments |\n|---|---|---|\n";
    for (const auto& tool : offerings.tools) {
        const std::string cells = "| `" + tool.name + "` | " + tool.description + " |";
        brief += cells + "\n";
        full += cells + " " + argumentsOf(tool.input) + " |\n";
    }
    std::string documents = "| address | what it is |\n|---|---|\n";
    for (const auto& resource : offerings.resources) {
        documents += "| `" + resource.uri + "` | " + resource.title + ". " + resource.description + " |\n";
    }
    std::string prompts = "| prompt | what it does | arguments |\n|---|---|---|\n";
    for (const auto& prompt : offerings.prompts) {
        prompts += "| `" + prompt.name + "` (" + prompt.title + ") | " + prompt.description + " |";
        for (const auto& argument : prompt.arguments) {
            prompts += " `" + argument.name + "`: " + argument.description + " |\n";
        }
    }
    expectTable("README.md", "tools", brief);
    expectTable("docs/agents.md", "tools", full);
    expectTable("docs/agents.md", "documents", documents);
    expectTable("docs/agents.md", "prompts", prompts);
}
