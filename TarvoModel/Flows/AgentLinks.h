#pragma once

#include "LumoCore/Basics/System.h"

#include <chrono>
#include <expected>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

/// Offering this application to the user's coding agents as a tool server: its own command, started with the
/// word "mcp". Links are made in the agents' own settings, for one home folder.
namespace tarvo::AgentLinks {

/// The key under "mcpServers" in every agent's settings.
inline constexpr std::string_view serverName = "tarvo-ai";

/// The command that agents start: the one in the bundle that is running, in the bundle's usual place, or,
/// where applications are no bundles, the one beside the running program.
std::string serverExecutable();

/// Why a link was not made or ended, in the interface language.
struct LinkError {
    std::string message;

    friend bool operator==(const LinkError&, const LinkError&) = default;
};

/// What to tell the user afterwards.
using LinkResult = std::expected<std::string, LinkError>;

enum class LinkState {
    linked,
    notLinked, ///< Also when there are no settings.
    malformed, ///< The settings are no JSON object, which counts as not linked.
    unreadable ///< There are settings, and nobody may say what is in them.
};

LinkState stateInClaudeCode(const std::string& home);
LinkState stateInClaudeDesktop(const std::string& home);
bool isInClaudeCode(const std::string& home);
bool isInClaudeDesktop(const std::string& home);

/// The settings that these look at: where the agents' own variables, or the desktop's, have put them for this
/// home.
std::string claudeCodeSettings(const std::string& home);
std::string claudeDesktopSettings(const std::string& home);

/// The program of Claude Code: in one of its three usual places, or else the highest version among those that
/// the Claude application installs for itself. On Linux also where its other installers put it: into its own
/// folder, into one of the search path, or beside one of several versions of Node.
std::optional<std::string> claudeCodeBinary(const std::string& home,
                                            lumo::System system = lumo::currentSystem());

/// How long Claude Code may take for one command; then it is ended.
inline constexpr std::chrono::milliseconds usualPatience = std::chrono::seconds(30);

/// Adds or removes the server through Claude Code's own command line and waits for it; to be called on a
/// background thread. Adding one that is there runs nothing. A requested stop ends the command.
LinkResult connectClaudeCode(const std::string& home, const std::stop_token& stop = {},
                             std::chrono::milliseconds patience = usualPatience,
                             lumo::System system = lumo::currentSystem());
LinkResult disconnectClaudeCode(const std::string& home, const std::stop_token& stop = {},
                                std::chrono::milliseconds patience = usualPatience);

/// Adds the server to Claude Desktop's settings or removes it, everything else in them kept to the byte. A
/// backup is made first. Nothing is written when nothing changes, or when the settings are no JSON object. On
/// Linux, where there is no such application unless somebody installed one, nothing is added while its folder
/// is missing.
LinkResult setInClaudeDesktop(const std::string& home, bool on, lumo::System system = lumo::currentSystem());

/// What the user copies for other agents: a command for Codex, and one line of JSON for the rest.
std::string codexCommand();
std::string jsonSnippet();

} // namespace tarvo::AgentLinks
