#include "TarvoCLI/PlanText.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <set>

namespace tarvo {

using lumo::PlanEntry;
using lumo::Words;

namespace {

/// What the entry does, for a person: it is deleted, run by a tool, or set aside.
std::string whatHappens(const PlanEntry& entry) {
    if (entry.skipReason) {
        return lumo::printable(*entry.skipReason);
    }
    if (const auto* command = std::get_if<lumo::method::Command>(&entry.action.method)) {
        return lumo::printable(fmt::format("{}", fmt::join(command->words, " ")));
    }
    return std::string(
        entry.action.safety == lumo::Safety::safe
            ? Words{"se borra", "is deleted"}.in()
            : Words{"se aparta {} días", "is set aside for {} days"}.with(lumo::Holding::retentionDays));
}

std::string section(std::string_view heading, const std::vector<PlanEntry>& entries, bool isSkipped,
                    const Invocation& invocation) {
    Table table({{.align = Align::right, .tint = isSkipped ? Tint::review : Tint::safe},
                 {.mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true},
                 {.tint = Tint::faint, .mayShrink = true}});
    std::int64_t sum = 0;
    for (const PlanEntry& entry : entries) {
        if (entry.skipReason.has_value() == isSkipped) {
            sum = lumo::checkedSum(sum, entry.action.estimatedBytes);
            table.add({lumo::ByteFormat::string(entry.action.estimatedBytes),
                       lumo::printable(entry.action.title), whatHappens(entry),
                       lumo::printable(entry.action.id)});
        }
    }
    if (table.isEmpty()) {
        return {};
    }
    return tinted(heading, Tint::strong, invocation) + "  " + lumo::ByteFormat::string(sum) + "\n" +
           table.lines(2, outputColumns(), invocation) + "\n";
}

} // namespace

std::string planText(const std::vector<PlanEntry>& entries, const Invocation& invocation) {
    const std::string shown =
        section(Words{"Se limpiaría", "Would be cleaned"}.in(), entries, false, invocation) +
        section(Words{"Se queda fuera", "Left out"}.in(), entries, true, invocation);
    return shown.empty() ? Words{"No hay nada que limpiar.\n", "There is nothing to clean.\n"}.in() : shown;
}

std::string deletedPathsText(const std::vector<lumo::CleanupAction>& actions, const Invocation& invocation) {
    std::string shown;
    for (const std::string& path : deletedPaths(actions, invocation.home)) {
        shown += "  " + lumo::printable(path) + "\n";
    }
    return shown.empty() ? shown
                         : tinted(Words{"Se borra ya", "Deleted right away"}.in(), Tint::strong, invocation) +
                               "\n" + shown + "\n";
}

std::string planJson(const std::vector<PlanEntry>& entries) {
    return lumo::dumpJson(lumo::encode(entries), lumo::JsonLayout::indented) + "\n";
}

} // namespace tarvo
