#include "TarvoCLI/OutcomeText.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Text.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Showing/HistoryRows.h"

namespace tarvo {

using lumo::CleanupOutcome;

namespace {

/// With whose wish it was, where that was not the user's alone.
std::string textOf(const CleanupOutcome& outcome) {
    const std::string caller = callerText(outcome.caller.value_or(""));
    return lumo::printable(becameText(outcome) + (caller.empty() ? "" : " (" + caller + ")"));
}

} // namespace

std::string outcomeText(const std::vector<CleanupOutcome>& outcomes, OutcomeDates dates,
                        const Invocation& invocation) {
    std::vector<Table::Column> columns{{.align = Align::right, .tint = Tint::safe},
                                       {.mayShrink = true},
                                       {.tint = Tint::faint, .mayShrink = true}};
    if (dates == OutcomeDates::shown) {
        columns.insert(columns.begin(), Table::Column{.tint = Tint::faint});
    }
    Table table(columns);
    for (const CleanupOutcome& outcome : outcomes) {
        const std::int64_t bytes = lumo::saturatedSum(outcome.freedBytes, outcome.trashedBytes);
        std::vector<std::string> cells{lumo::ByteFormat::string(bytes), lumo::printable(outcome.title),
                                       textOf(outcome)};
        if (dates == OutcomeDates::shown) {
            cells.insert(cells.begin(), lumo::momentText(outcome.date));
        }
        table.add(std::move(cells));
    }
    return table.lines(0, outputColumns(), invocation);
}

} // namespace tarvo
