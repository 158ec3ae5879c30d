#include "TarvoCLI/OutcomeText.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Table.h"

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::Words;

namespace {

std::string whatBecameOf(const CleanupOutcome& outcome) {
    if (outcome.status == lumo::CleanupStatus::failed) {
        const std::string reason =
            outcome.message.value_or(Words{"se interrumpió a medias", "it was cut short half-way"}.in());
        return Words{"falló: ", "failed: "}.in() + lumo::printable(reason);
    }
    if (outcome.message) {
        return lumo::printable(*outcome.message);
    }
    return std::string(outcome.restorable || outcome.trashedBytes > 0 ? Words{"apartado", "set aside"}.in()
                                                                      : Words{"liberado", "freed"}.in());
}

/// Whose wish it was, where that was not the user's alone.
std::string callerText(const CleanupOutcome& outcome) {
    return outcome.caller
               ? Words{" (a petición de {})", " (asked for by {})"}.with(lumo::printable(*outcome.caller))
               : std::string();
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
                                       whatBecameOf(outcome) + callerText(outcome)};
        if (dates == OutcomeDates::shown) {
            cells.insert(cells.begin(), lumo::momentText(outcome.date));
        }
        table.add(std::move(cells));
    }
    return table.lines(0, outputColumns(), invocation);
}

} // namespace tarvo
