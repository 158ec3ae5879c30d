#pragma once

#include "TarvoMCP/Tools.h"
#include "Tests/MCP/FakeClient.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::testing {

/// Calls tools on a home as a client would, and answers their questions.
class Agent final {
  public:
    explicit Agent(const TempHome& home, mcp::Offer offer = mcp::Offer::everything) {
        const auto workspace = std::make_shared<mcp::Workspace>(home.path());
        tools_ = mcp::lookingTools(workspace, offer);
        for (mcp::Tool& tool : mcp::changingTools(workspace)) {
            tools_.push_back(std::move(tool));
        }
    }

    mcp::ToolAnswer call(const std::string& name, const std::string& arguments,
                         mcp::Consent consent = mcp::Consent::declined) {
        return tool(name).run({.arguments = lumo::parseJson(arguments).value(),
                               .caller = "Agent",
                               .progress =
                                   [this](const mcp::Progress& progress) {
                                       const std::scoped_lock lock(mutex_);
                                       told = progress;
                                   },
                               .ask =
                                   [this, consent](const std::string& question, const std::string&) {
                                       asked = question;
                                       return consent;
                                   }});
    }

    [[nodiscard]] const mcp::Tool& tool(const std::string& name) const {
        return *std::ranges::find(tools_, name, &mcp::Tool::name);
    }

    std::string asked;  ///< The last question to the user.
    mcp::Progress told; ///< The last there was.

    [[nodiscard]] const std::vector<mcp::Tool>& tools() const { return tools_; }

  private:
    std::mutex mutex_;
    std::vector<mcp::Tool> tools_;
};

/// How many there are in a list of the document.
inline std::size_t countOf(const lumo::JsonValue& document, std::string_view list) {
    return std::get<lumo::JsonValue::Array>(document.find(list)->value).size();
}

/// The beginning of the arguments that name a proposal's plan: more members may follow, and the brace.
inline std::string planIn(const mcp::ToolAnswer& proposal) {
    return R"({"plan":")" + at(*proposal.structured, "plan") + "\"";
}

/// What the client gets, in the form with records and in the one for those that read only texts.
inline void expectFits(const mcp::ToolAnswer& answer, const std::string& name) {
    for (const bool readsRecords : {true, false}) {
        const std::string line = lumo::dumpJson(resultOf(answer, readsRecords), lumo::JsonLayout::line);
        EXPECT_LE(line.size(), 20000U) << name << " " << readsRecords;
    }
    EXPECT_LT(std::ranges::count(answer.text, '\n'), 15) << name << "\n" << answer.text;
}

} // namespace tarvo::testing
