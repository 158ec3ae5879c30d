#include "TarvoModel/Flows/AgentLinks.h"

#include "LumoCore/Basics/JsonEdit.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/ToolOutput.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/ForeignFile.h"
#include "Platform/StateFile.h"
#include "Platform/ToolCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

namespace tarvo::AgentLinks {

using lumo::JsonValue;
using lumo::Words;
namespace JsonEdit = lumo::JsonEdit;
namespace platform = lumo::platform;

namespace {

constexpr std::array<std::string_view, 2> serverPath{"mcpServers", serverName};

JsonValue serverEntry() {
    return {JsonValue::Object{{"command", {serverExecutable()}},
                              {"args", {JsonValue::Array{{std::string("mcp")}}}}}};
}

/// Whether the text of a value means the entry, whatever the order and the blanks in it.
bool meansServerEntry(const std::string& valueText) {
    const auto value = lumo::parseJson(valueText);
    const auto* object = value ? std::get_if<JsonValue::Object>(&value->value) : nullptr;
    const JsonValue entry = serverEntry();
    return object != nullptr && object->size() == std::get<JsonValue::Object>(entry.value).size() &&
           std::ranges::all_of(std::get<JsonValue::Object>(entry.value),
                               [&](const JsonValue::Member& wanted) {
                                   const JsonValue* member = value->find(wanted.name);
                                   return member != nullptr && *member == wanted.value;
                               });
}

LinkState stateIn(const std::string& settings) {
    const auto bytes = platform::readWhole(settings, lumo::mostJsonBytes);
    if (!bytes) {
        return bytes.error().isMissing() ? LinkState::notLinked : LinkState::unreadable;
    }
    // Half of the way is no server: only an object can have one under its name.
    const auto value = JsonEdit::valueAt(*bytes, serverPath);
    if (!value) {
        return LinkState::malformed;
    }
    return *value ? LinkState::linked : LinkState::notLinked;
}

std::unexpected<LinkError> failed(const Words& words) {
    return std::unexpected(LinkError{words.in()});
}

/// What a tool that failed said; the end of it when it said a lot.
std::string said(const platform::ToolRun& ran) {
    constexpr std::size_t most = 4000;
    const std::size_t last = ran.output.find_last_not_of(" \t\r\n");
    if (last == std::string::npos) {
        return "Claude Code: " + lumo::failureDetail("", ran.status);
    }
    std::string words = ran.output.substr(0, last + 1);
    if (words.size() <= most) {
        return words;
    }
    const std::size_t line = words.find('\n', words.size() - most);
    return "…" + words.substr(line == std::string::npos ? words.size() - most : line);
}

/// The folder of settings that Claude Code is told by its variable; it says nothing about another's home.
std::optional<std::string> claudeCodeFolder(const std::string& home) {
    const auto folder = platform::environmentVariable("CLAUDE_CONFIG_DIR");
    const bool isOwn = platform::isSamePlace(platform::environmentVariable("HOME").value_or(""), home);
    return folder && folder->starts_with('/') && isOwn ? folder : std::nullopt;
}

/// Runs Claude Code with these arguments; absent when all went well.
std::optional<LinkError> runClaudeCode(const std::string& binary, const std::vector<std::string>& arguments,
                                       const std::string& home, const std::stop_token& stop,
                                       std::chrono::milliseconds patience) {
    // It finds its settings by the home folder of its environment, which need not be the one meant here.
    std::vector<std::string> words{"/usr/bin/env"};
    if (!claudeCodeFolder(home)) {
        words.insert(words.end(), {"-u", "CLAUDE_CONFIG_DIR"});
    }
    words.push_back("HOME=" + home);
    if (lumo::currentSystem() == lumo::System::linux) {
        // A script of Node's stands beside the Node that it needs.
        words.push_back("PATH=" + std::string(lumo::parentOf(binary)) + ":" +
                        platform::environmentVariable("PATH").value_or("/usr/bin:/bin"));
    }
    words.push_back(binary);
    words.insert(words.end(), arguments.begin(), arguments.end());
    const platform::ToolRun ran = platform::runToolInTime(words, home, patience, stop);
    // What the launcher answers when there is nothing to start, or it may not be started.
    constexpr int notStartable = 126;
    constexpr int notFound = 127;
    if (ran.wasEndedByUs) {
        return LinkError{std::string(stop.stop_requested()
                                         ? Words{"Interrumpido: Claude Code no ha acabado.",
                                                 "Interrupted: Claude Code had not finished."}
                                               .in()
                                         : Words{"Claude Code no responde: lo he parado. Vuelve a probar.",
                                                 "Claude Code doesn't respond: it was stopped. Try again."}
                                               .in())};
    }
    if (ran.status == notStartable || ran.status == notFound) {
        return LinkError{Words{"No se pudo abrir Claude Code.", "Couldn't open Claude Code."}.in()};
    }
    return ran.status == 0 ? std::nullopt : std::optional(LinkError{said(ran)});
}

/// The settings as they are to be; a failure says why they stay as they are.
std::expected<std::string, LinkError> edited(const std::optional<std::string>& present, bool on) {
    std::string before = present.value_or("{}");
    JsonEdit::Edited<std::string> after = on ? JsonEdit::withValue(before, serverPath, serverEntry())
                                             : JsonEdit::withoutValue(before, serverPath);
    if (!after && after.error() == JsonEdit::Problem::ambiguous) {
        return failed({"La configuración de Claude Desktop tiene la misma clave dos veces: no la toco.",
                       "Claude Desktop's config has the same key twice: I won't touch it."});
    }
    if (!after) {
        return failed({"La configuración de Claude Desktop no es JSON válido: no la toco.",
                       "Claude Desktop's config isn't valid JSON: I won't touch it."});
    }
    const auto value = JsonEdit::valueAt(before, serverPath);
    if (on && value && *value && meansServerEntry(**value)) {
        return before; // However it is laid out.
    }
    return present ? std::move(*after) : *after + "\n";
}

} // namespace

std::string serverExecutable() {
    constexpr std::string_view inBundle = "/Contents/MacOS";
    const std::string folder = platform::programFolder();
    if (folder.ends_with(".app" + std::string(inBundle))) {
        return folder + "/tarvo";
    }
    const std::string usual = "/Applications/Tarvo AI.app" + std::string(inBundle) + "/tarvo";
    const std::string beside = platform::isProgram(usual) ? "" : platform::commandBesideProgram();
    return beside.empty() ? usual : beside;
}

std::string claudeCodeSettings(const std::string& home) {
    const bool mayBeElsewhere = lumo::currentSystem() == lumo::System::linux;
    return (mayBeElsewhere ? claudeCodeFolder(home).value_or(home) : home) + "/.claude.json";
}

std::string claudeDesktopSettings(const std::string& home) {
    return lumo::ApplicationFolders::claudeDesktopSettings(home);
}

LinkState stateInClaudeCode(const std::string& home) {
    return stateIn(claudeCodeSettings(home));
}

LinkState stateInClaudeDesktop(const std::string& home) {
    return stateIn(claudeDesktopSettings(home));
}

bool isInClaudeCode(const std::string& home) {
    return stateInClaudeCode(home) == LinkState::linked;
}

bool isInClaudeDesktop(const std::string& home) {
    return stateInClaudeDesktop(home) == LinkState::linked;
}

namespace {

/// The first of the folders in which the program stands.
std::optional<std::string> programIn(const std::vector<std::string>& folders, std::string_view name) {
    for (const std::string& folder : folders) {
        if (std::string path = lumo::joined(folder, name); platform::isProgram(path)) {
            return path;
        }
    }
    return std::nullopt;
}

/// The folders whose names begin like versions, the highest first.
std::vector<std::string> versionsIn(const std::string& folder, std::string_view prefix = "") {
    std::vector<std::string> versions = platform::namesIn(folder);
    std::erase_if(versions, [&](const std::string& name) {
        return !name.starts_with(prefix) || name.size() == prefix.size() || name[prefix.size()] < '0' ||
               name[prefix.size()] > '9';
    });
    std::ranges::sort(versions, [](const std::string& left, const std::string& right) {
        return lumo::comesBeforeNumerically(right, left);
    });
    for (std::string& version : versions) {
        version = lumo::joined(folder, version);
    }
    return versions;
}

/// Where its other installers put it on Linux.
std::vector<std::string> otherFolders(const std::string& home) {
    std::vector<std::string> folders{home + "/.claude/local", home + "/.npm-global/bin", home + "/.bun/bin"};
    const std::string path = platform::environmentVariable("PATH").value_or("");
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(':', begin), path.size());
        // What is relative depends on where one stands.
        if (path[begin] == '/') {
            folders.push_back(path.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    for (const std::string& version : versionsIn(home + "/.nvm/versions/node", "v")) {
        folders.push_back(version + "/bin");
    }
    return folders;
}

} // namespace

std::optional<std::string> claudeCodeBinary(const std::string& home, lumo::System system) {
    if (auto usual = programIn({home + "/.local/bin", "/opt/homebrew/bin", "/usr/local/bin"}, "claude")) {
        return usual;
    }
    if (auto ofApplication = programIn(versionsIn(home + "/Library/Application Support/Claude/claude-code"),
                                       "claude.app/Contents/MacOS/claude")) {
        return ofApplication;
    }
    return system == lumo::System::linux ? programIn(otherFolders(home), "claude") : std::nullopt;
}

LinkResult connectClaudeCode(const std::string& home, const std::stop_token& stop,
                             std::chrono::milliseconds patience, lumo::System system) {
    const std::optional<std::string> binary = claudeCodeBinary(home);
    if (!binary) {
        return failed(lumo::SystemWords{
            .macos = {"No encuentro Claude Code en este Mac. Instálalo (o abre la app de Claude una vez) "
                      "y vuelve a probar.",
                      "I can't find Claude Code on this Mac. Install it (or open the Claude app once) "
                      "and try again."},
            .linux = {"No encuentro Claude Code en este equipo. Instálalo (o abre la app de Claude una "
                      "vez) y vuelve a probar.",
                      "I can't find Claude Code on this computer. Install it (or open the Claude app "
                      "once) and try again."}}
                          .on(system));
    }
    if (!isInClaudeCode(home)) {
        const std::vector<std::string> arguments{
            "mcp", "add", "--scope", "user", std::string(serverName), "--", serverExecutable(), "mcp"};
        if (auto problem = runClaudeCode(*binary, arguments, home, stop, patience)) {
            return std::unexpected(std::move(*problem));
        }
    }
    return lumo::SystemWords{
        .macos = {"Conectado. Abre una sesión nueva y pregunta «¿qué ocupa espacio en mi Mac?».",
                  "Connected. Start a new session and ask “what's taking up space on my Mac?”."},
        .linux = {"Conectado. Abre una sesión nueva y pregunta «¿qué ocupa espacio en mi disco?».",
                  "Connected. Start a new session and ask “what's taking up space on my disk?”."}}
        .on(system)
        .in();
}

LinkResult disconnectClaudeCode(const std::string& home, const std::stop_token& stop,
                                std::chrono::milliseconds patience) {
    const std::optional<std::string> binary = claudeCodeBinary(home);
    if (!binary) {
        return failed({"No encuentro Claude Code.", "I can't find Claude Code."});
    }
    const std::vector<std::string> arguments{"mcp", "remove", "--scope", "user", std::string(serverName)};
    if (auto problem = runClaudeCode(*binary, arguments, home, stop, patience)) {
        return std::unexpected(std::move(*problem));
    }
    return Words{"Desconectado.", "Disconnected."}.in();
}

LinkResult setInClaudeDesktop(const std::string& home, bool on, lumo::System system) {
    const std::string settings = lumo::ApplicationFolders::claudeDesktopSettings(home, system);
    if (on && system == lumo::System::linux &&
        !platform::isFolderThroughLinks(std::string(lumo::parentOf(settings)))) {
        return failed(
            {"No encuentro la app de Claude en este equipo. Instálala, ábrela una vez y vuelve a probar.",
             "I can't find the Claude app on this computer. Install it, open it once and try again."});
    }
    std::optional<LinkError> refused;
    const auto edit = [&](const std::optional<std::string>& present) -> std::optional<std::string> {
        auto wanted = edited(present, on);
        refused = wanted ? std::nullopt : std::optional(wanted.error());
        const bool isNothingNew = wanted && !present && !on;
        return wanted && !isNothingNew ? std::optional(std::move(*wanted)) : std::nullopt;
    };
    const auto written = platform::rewriteForeign(
        settings, lumo::ApplicationFolders::claudeDesktopBackup(home), lumo::mostJsonBytes, edit);
    if (!written) {
        return std::unexpected(
            LinkError{Words{"No he podido cambiar la configuración de Claude Desktop ({}): {}.",
                            "Claude Desktop's config ({}) couldn't be changed: {}."}
                          .with(lumo::printable(settings), lumo::reasonText(written.error()))});
    }
    if (refused) {
        return std::unexpected(std::move(*refused));
    }
    if (!on) {
        return Words{"Desconectado. Cierra y vuelve a abrir Claude para que lo note.",
                     "Disconnected. Quit and reopen Claude for it to notice."}
            .in();
    }
    return Words{"Conectado. Cierra y vuelve a abrir Claude para verlo.",
                 "Connected. Quit and reopen Claude to see it."}
        .in();
}

std::string codexCommand() {
    return fmt::format("codex mcp add {} -- \"{}\" mcp", serverName, serverExecutable());
}

std::string jsonSnippet() {
    const JsonValue servers{JsonValue::Object{{std::string(serverName), serverEntry()}}};
    return lumo::dumpJson({JsonValue::Object{{"mcpServers", servers}}}, lumo::JsonLayout::spaced);
}

} // namespace tarvo::AgentLinks
