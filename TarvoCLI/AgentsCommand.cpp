#include "LumoCore/Basics/JsonValue.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Table.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/AgentLinks.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <stop_token>

namespace tarvo {

using AgentLinks::LinkResult;
using AgentLinks::LinkState;
using lumo::JsonValue;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

enum class Wish { connected, disconnected };

/// An agent that links are made with.
struct Agent {
    std::string_view name;
    std::string_view labelEs;
    std::string_view labelEn;
    LinkState (*state)(const std::string& home);
    std::string (*settings)(const std::string& home);
    LinkResult (*link)(const std::string& home, Wish wish, const std::stop_token& stop);
};

LinkResult linkClaudeCode(const std::string& home, Wish wish, const std::stop_token& stop) {
    return wish == Wish::connected ? AgentLinks::connectClaudeCode(home, stop)
                                   : AgentLinks::disconnectClaudeCode(home, stop);
}

LinkResult linkClaudeDesktop(const std::string& home, Wish wish, const std::stop_token&) {
    return AgentLinks::setInClaudeDesktop(home, wish == Wish::connected);
}

constexpr std::array<Agent, 2> agents{{
    {"claude-code", "Claude Code (también en la app de Claude)", "Claude Code (also in the Claude app)",
     AgentLinks::stateInClaudeCode, AgentLinks::claudeCodeSettings, linkClaudeCode},
    {"claude-desktop", "Claude Desktop (el chat)", "Claude Desktop (chat)", AgentLinks::stateInClaudeDesktop,
     AgentLinks::claudeDesktopSettings, linkClaudeDesktop},
}};

std::string jsonText(JsonValue::Object object) {
    return lumo::dumpJson({std::move(object)}, lumo::JsonLayout::indented) + "\n";
}

std::string wordsFor(LinkState state) {
    switch (state) {
    case LinkState::linked:
        return Words{"conectado", "connected"}.in();
    case LinkState::notLinked:
        return Words{"sin conectar", "not connected"}.in();
    case LinkState::malformed:
        return Words{"su configuración no es JSON válido", "its config isn't valid JSON"}.in();
    case LinkState::unreadable:
        break;
    }
    return Words{"su configuración no se puede leer", "its config cannot be read"}.in();
}

ExitCode showStatus(const Invocation& invocation) {
    JsonValue::Object object;
    Table table({{.tint = Tint::strong}, {}, {.tint = Tint::faint, .mayShrink = true}});
    std::string unreadable;
    std::string next;
    for (const Agent& agent : agents) {
        const LinkState state = agent.state(invocation.home);
        object.push_back({std::string(agent.name), {state == LinkState::linked}});
        table.add({std::string(agent.name), wordsFor(state), Words{agent.labelEs, agent.labelEn}.in()});
        if (state == LinkState::unreadable && unreadable.empty()) {
            unreadable = lumo::printable(agent.settings(invocation.home));
        }
        if (state == LinkState::notLinked && next.empty()) {
            next = fmt::format("{} tarvo {} {}\n", Words{"Para conectar:", "To connect:"}.in(),
                               Words{"agentes conectar", "agents connect"}.in(), agent.name);
        }
    }
    const ExitCode printed = print(invocation.isJson ? jsonText(std::move(object))
                                                     : table.lines(0, outputColumns(), invocation) + next);
    if (printed == ExitCode::done && !unreadable.empty()) {
        return complain(Words{"no puedo leer {}: comprueba qué es y sus permisos",
                              "cannot read {}: check what it is and its permissions"}
                            .with(unreadable),
                        ExitCode::failed);
    }
    return printed;
}

/// What a tool said in several lines, in one.
std::string inOneLine(std::string_view message) {
    std::string line;
    while (!message.empty()) {
        const std::string_view part = message.substr(0, message.find('\n'));
        message.remove_prefix(std::min(part.size() + 1, message.size()));
        if (part.find_first_not_of(" \t\r") != std::string_view::npos) {
            line += (line.empty() ? "" : " · ") +
                    lumo::printable(part.substr(0, part.find_last_not_of('\r') + 1));
        }
    }
    return line;
}

ExitCode tell(const LinkResult& result, const Invocation& invocation) {
    const std::string& message = result ? *result : result.error().message;
    if (invocation.isJson) {
        const ExitCode printed = print(jsonText({{"ok", {result.has_value()}}, {"message", {message}}}));
        if (printed != ExitCode::done) {
            return printed;
        }
    }
    if (!result) {
        return complain(inOneLine(message), ExitCode::failed);
    }
    return invocation.isJson ? ExitCode::done : print(message + "\n");
}

ExitCode link(const std::string& name, Wish wish, const Invocation& invocation) {
    const auto* agent = std::ranges::find(agents, name, &Agent::name);
    if (agent == agents.end()) {
        return complain(Words{"no conozco el agente «{}»: di claude-code o "
                              "claude-desktop",
                              "I know no agent “{}”: say claude-code or "
                              "claude-desktop"}
                            .with(lumo::printable(name)),
                        ExitCode::usage);
    }
    if (const auto refused = refuseForeign(invocation)) {
        return *refused;
    }
    // The agent's own program may take its time, and has no terminal that an interrupt would reach.
    platform::noteInterrupts();
    std::stop_source stop;
    std::optional<LinkResult> result;
    watch([&] { result = agent->link(invocation.home, wish, stop.get_token()); },
          [&](int) {
              if (platform::wasInterrupted()) {
                  stop.request_stop();
              }
          });
    return platform::wasInterrupted() ? ExitCode::interrupted : tell(*result, invocation);
}

ExitCode showSnippets(const Invocation& invocation) {
    if (invocation.isJson) {
        return print(
            jsonText({{"codex", {AgentLinks::codexCommand()}}, {"json", {AgentLinks::jsonSnippet()}}}));
    }
    return print(tinted("Codex", Tint::strong, invocation) + "\n" + AgentLinks::codexCommand() + "\n\n" +
                 tinted(Words{"Cursor, Windsurf y otros (JSON)", "Cursor, Windsurf and others (JSON)"}.in(),
                        Tint::strong, invocation) +
                 "\n" + AgentLinks::jsonSnippet() + "\n");
}

void addLinkCommand(CLI::App& command, Wish wish, Action& chosen) {
    const auto name = std::make_shared<std::string>();
    command.add_option(Words{"NOMBRE", "NAME"}.in(), *name, "claude-code, claude-desktop")
        ->required()
        ->type_name("");
    command.callback([name, wish, &chosen] {
        chosen = [name, wish](const Invocation& invocation) { return link(*name, wish, invocation); };
    });
}

} // namespace

void addAgentsCommand(CLI::App& app, Action& chosen) {
    CLI::App* group =
        addCommand(app, "agentes", "agents", "ofrece Tarvo AI a tus agentes de IA; sin más, muestra a cuáles",
                   "offer Tarvo AI to your AI agents; without more, shows to which");
    group->require_subcommand(0, 1);
    group->callback([group, &chosen] {
        if (group->get_subcommands().empty()) {
            chosen = showStatus;
        }
    });
    addCommand(*group, "estado", "status", "qué agentes están conectados", "which agents are connected")
        ->callback([&chosen] { chosen = showStatus; });
    addLinkCommand(*addCommand(*group, "conectar", "connect", "conecta un agente", "connects an agent"),
                   Wish::connected, chosen);
    addLinkCommand(
        *addCommand(*group, "desconectar", "disconnect", "desconecta un agente", "disconnects an agent"),
        Wish::disconnected, chosen);
    addCommand(*group, "textos", "snippets", "textos que copiar para otros agentes",
               "texts to copy for other agents")
        ->callback([&chosen] { chosen = showSnippets; });
}

} // namespace tarvo
