#pragma once

#include "TarvoMCP/Tools.h"
#include "Tests/MCP/FakeClient.h"
#include "Tests/support/TempHome.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
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

} // namespace tarvo::testing
