#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/OutcomeText.h"

#include <algorithm>

namespace tarvo {

using lumo::Words;

namespace {

/// The log as programs see it.
struct History {
    std::int64_t total = 0;
    std::vector<lumo::CleanupOutcome> outcomes;

    static constexpr auto fields =
        std::tuple{lumo::field("total", &History::total), lumo::field("outcomes", &History::outcomes)};
};

/// What failed half-way has freed what its line says, but is not counted in the total.
Words totalWords(const std::vector<lumo::CleanupOutcome>& outcomes) {
    const bool leavesOut = std::ranges::any_of(outcomes, [](const lumo::CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::failed &&
               (outcome.freedBytes > 0 || outcome.trashedBytes > 0);
    });
    return leavesOut
               ? Words{"Limpiado en total, sin lo que falló: {}", "Cleaned in all, without what failed: {}"}
               : Words{"Limpiado en total: {}", "Cleaned in all: {}"};
}

ExitCode runHistory(const Invocation& invocation) {
    const auto outcomes = history(deskOf(invocation, "history"));
    if (!outcomes) {
        return complain(outcomes.error().message, ExitCode::failed);
    }
    const History shown{.total = lumo::CleanupHistory::total(*outcomes), .outcomes = *outcomes};
    if (invocation.isJson) {
        return print(lumo::dumpJson(lumo::encode(shown), lumo::JsonLayout::indented) + "\n");
    }
    if (shown.outcomes.empty()) {
        return print(Words{"Todavía no se ha limpiado nada.\n", "Nothing has been cleaned yet.\n"}.in());
    }
    return print(outcomeText(shown.outcomes, OutcomeDates::shown, invocation) + "\n" +
                 tinted(totalWords(shown.outcomes).with(lumo::ByteFormat::string(shown.total)), Tint::strong,
                        invocation) +
                 "\n");
}

} // namespace

void addHistoryCommand(CLI::App& app, Action& chosen) {
    addCommand(app, "historial", "history", "todas las limpiezas y lo que liberaron",
               "all cleanups and what they freed")
        ->callback([&chosen] { chosen = runHistory; });
}

} // namespace tarvo
