#include "TarvoMCP/Questions.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "TarvoMCP/Answers.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/Preview.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace tarvo::mcp {

using lumo::CleanupAction;
using lumo::Words;
using Actions = std::vector<CleanupAction>;

namespace {

/// A question is read by a person, and goes out in an answer to some clients: all items have their line, and
/// of a thousand paths as many as this allows.
constexpr std::size_t mostPathCharacters = 12000;
constexpr std::size_t mostRecreated = 5;

std::string shownPath(const std::string& path, const std::string& home) {
    return lumo::revealed(lumo::abbreviated(path, home));
}

/// A line for each path while there is room, and how many more there are.
std::string pathLines(const std::vector<std::string>& paths, std::size_t room) {
    std::string lines;
    for (std::size_t index = 0; index < paths.size(); ++index) {
        if (index > 0 && lines.size() + paths[index].size() > room) {
            return lines + Words{"  … y {} más\n", "  … and {} more\n"}.with(paths.size() - index);
        }
        lines += "  " + paths[index] + "\n";
    }
    return lines;
}

std::int64_t bytesOf(const Actions& actions) {
    std::int64_t bytes = 0;
    for (const CleanupAction& action : actions) {
        bytes = lumo::checkedSum(bytes, action.estimatedBytes);
    }
    return bytes;
}

/// How many files the scan counted there; absent for what was not measured as a finding.
std::optional<std::int64_t> filesOf(const CleanupAction& action, const lumo::ScanReport& report) {
    const auto finding = std::ranges::find(report.findings, action.id, &lumo::Finding::ruleID);
    return finding != report.findings.end() ? std::optional(finding->usage.fileCount) : std::nullopt;
}

/// What is done to the item, path by path.
std::vector<std::string> touched(const CleanupAction& action, const std::string& home) {
    std::vector<std::string> lines;
    if (const auto* command = std::get_if<lumo::method::Command>(&action.method)) {
        lines.push_back("$ " + lumo::revealed(fmt::format("{}", fmt::join(command->words, " "))));
        for (const std::string& path : action.measuredPaths) {
            lines.push_back(shownPath(path, home));
        }
        return lines;
    }
    const bool isContents = std::holds_alternative<lumo::method::TrashContents>(action.method);
    for (const std::string& path : lumo::CleanupExecutor::touchedPaths(action)) {
        lines.push_back(isContents
                            ? Words{"todo lo que hay en {}", "everything in {}"}.with(shownPath(path, home))
                            : shownPath(path, home));
    }
    return lines;
}

std::string titleLine(const CleanupAction& action, std::optional<std::int64_t> files) {
    return fmt::format("• {} — {}{}\n", lumo::revealed(action.title),
                       files ? itemsText(*files) + ", " : std::string(),
                       lumo::ByteFormat::string(action.estimatedBytes));
}

/// The room of each list of paths: what the short ones leave goes to the long ones.
std::vector<std::size_t> roomsFor(const std::vector<std::vector<std::string>>& lists) {
    std::vector<std::pair<std::size_t, std::size_t>> needs; // And where the list is.
    for (const std::vector<std::string>& paths : lists) {
        std::size_t need = 0;
        for (const std::string& path : paths) {
            need += path.size() + 3; // Indented, with its line feed.
        }
        needs.emplace_back(need, needs.size());
    }
    std::ranges::sort(needs);
    std::vector<std::size_t> rooms(lists.size());
    std::size_t left = mostPathCharacters;
    for (std::size_t index = 0; index < needs.size(); ++index) {
        const auto [need, place] = needs[index];
        rooms[place] = std::min(need, left / (needs.size() - index));
        left -= rooms[place];
    }
    return rooms;
}

/// Every item with all that is done to it.
std::string inFull(const Actions& actions, const lumo::ScanReport& report, const std::string& home) {
    std::vector<std::vector<std::string>> paths;
    std::ranges::transform(actions, std::back_inserter(paths),
                           [&](const CleanupAction& action) { return touched(action, home); });
    const std::vector<std::size_t> rooms = roomsFor(paths);
    std::string lines;
    for (std::size_t index = 0; index < actions.size(); ++index) {
        lines += titleLine(actions[index], filesOf(actions[index], report)) +
                 pathLines(paths[index], rooms[index]);
    }
    return lines;
}

/// The largest items, and what the others come to.
std::string inShort(Actions actions) {
    lumo::sortLargestFirst(actions, &CleanupAction::estimatedBytes);
    std::string lines;
    for (std::size_t index = 0; index < std::min(actions.size(), mostRecreated); ++index) {
        lines += titleLine(actions[index], std::nullopt);
    }
    if (actions.size() > mostRecreated) {
        const Actions others(actions.begin() + mostRecreated, actions.end());
        lines += Words{"… y {} más, {}\n", "… and {} more, {}\n"}.with(
            others.size(), lumo::ByteFormat::string(bytesOf(others)));
    }
    return lines;
}

std::string head(const Words& words, const Actions& actions) {
    return words.with(actions.size(), lumo::ByteFormat::string(bytesOf(actions))) + "\n";
}

} // namespace

std::string cleaningQuestion(const Actions& actions, const lumo::ScanReport& report, const Asking& asking) {
    const auto [forGood, own, recreated] = goingOf(actions);
    std::string question =
        Words{"{} pide limpiar {} con Tarvo AI.\n", "{} asks to clean {} with Tarvo AI.\n"}.with(
            lumo::revealed(asking.caller), lumo::ByteFormat::string(bytesOf(actions)));
    if (!forGood.empty()) {
        question += head({"NO SE PUEDE DESHACER, lo borra su propia herramienta ({}, {}):",
                          "CANNOT BE UNDONE, deleted by its own tool ({}, {}):"},
                         forGood) +
                    inFull(forGood, report, asking.home);
    }
    if (!own.empty()) {
        question += head({"TUYO, se aparta y se puede devolver a su sitio ({}, {}):",
                          "YOURS, set aside and can be put back ({}, {}):"},
                         own) +
                    inFull(own, report, asking.home);
    }
    if (!recreated.empty()) {
        question += head({"Se regenera solo, se borra ya ({}, {}):",
                          "Recreates itself, deleted right away ({}, {}):"},
                         recreated) +
                    inShort(recreated);
    }
    return inShortLines(question + confirmationMessage(actions));
}

std::string restoringQuestion(const std::vector<lumo::TrashedItem>& items, const Asking& asking) {
    std::vector<std::string> originals;
    for (const lumo::TrashedItem& item : items) {
        originals.push_back(shownPath(item.original, asking.home));
    }
    return inShortLines(
        Words{"{} pide devolver a su sitio con Tarvo AI ({}):\n{}",
              "{} asks to put back with Tarvo AI ({}):\n{}"}
            .with(lumo::revealed(asking.caller), items.size(), pathLines(originals, mostPathCharacters)));
}

std::string archivingQuestion(const std::string& path, const std::vector<std::string>& lines,
                              const Asking& asking) {
    return inShortLines(
        Words{"{} pide archivar con Tarvo AI:\n• {}\n{}", "{} asks to archive with Tarvo AI:\n• {}\n{}"}.with(
            lumo::revealed(asking.caller), shownPath(path, asking.home),
            lumo::revealed(fmt::format("{}", fmt::join(lines, " ")))));
}

std::string inShortLines(std::string_view text) {
    constexpr std::size_t mostCharacters = 120;
    std::string lines;
    std::size_t count = 0;     // Characters in the line so far.
    std::size_t lineStart = 0; // Where it begins in `lines`.
    for (const char byte : text) {
        const bool beginsCharacter = (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
        if (byte != '\n' && beginsCharacter && count == mostCharacters) {
            const std::size_t blank = lines.rfind(' ');
            // A word that takes more than half a line is broken where it is.
            const bool isNear = blank != std::string::npos && blank > lineStart + mostCharacters / 2;
            const std::string rest = isNear ? lines.substr(blank + 1) : std::string();
            lines.resize(isNear ? blank : lines.size());
            lines += "\n";
            lineStart = lines.size();
            lines += "  " + rest;
            count = lumo::characterCount(rest) + 2;
        }
        lines += byte;
        count += beginsCharacter ? 1 : 0;
        if (byte == '\n') {
            lineStart = lines.size();
            count = 0;
        }
    }
    return lines;
}

} // namespace tarvo::mcp
