#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/CleanedReport.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoCLI/PlanArguments.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/WatchedCleanup.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/SessionNotice.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Flows/WeeklySwitch.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace tarvo {

using lumo::JsonValue;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

std::string statusText(const Preferences& preferences, const Desk& desk) {
    const bool isOn = preferences.value(preference::autoCleanWeekly);
    const auto line =
        WeeklyCleanup::autoCleanStatus(isOn, WeeklyCleanup::storedRecord(preferences), desk.now());
    if (!line) {
        return paragraph(
            Words{
                "La limpieza semanal está desactivada. Cada semana borraría lo que se regenera solo, nunca "
                "lo "
                "tuyo. Para activarla: tarvo semanal activar",
                "The weekly cleanup is off. Every week it would delete what recreates itself, never what is "
                "yours. To turn it on: tarvo weekly on"}
                .in(),
            readingColumns());
    }
    return *line + "\n" + paragraph(timerStateText(WeeklyTimer::state(desk.home)), readingColumns());
}

std::string statusJson(const Preferences& preferences, const Desk& desk) {
    const bool isOn = preferences.value(preference::autoCleanWeekly);
    const WeeklyCleanup::Record record = WeeklyCleanup::storedRecord(preferences);
    JsonValue::Object object{{"on", {isOn}}};
    if (isOn) {
        object.push_back({"next", lumo::encode(WeeklyCleanup::next(record, desk.now()))});
    }
    if (record.last) {
        object.push_back({"last", lumo::encode(*record.last)});
    }
    if (record.bytes) {
        object.push_back({"freedBytes", {*record.bytes}});
    }
    return lumo::dumpJson({std::move(object)}, lumo::JsonLayout::indented) + "\n";
}

ExitCode show(const Preferences& preferences, const Desk& desk, const Invocation& invocation) {
    const ExitCode printed =
        print(invocation.isJson ? statusJson(preferences, desk) : statusText(preferences, desk));
    const std::optional<std::string> problem = preferences.problem();
    return problem ? complain(*problem, ExitCode::failed) : printed;
}

ExitCode showStatus(const Invocation& invocation) {
    return show(Preferences::load(invocation.home), deskOf(invocation, "weekly"), invocation);
}

ExitCode turn(bool on, const Invocation& invocation) {
    if (const auto refused = refuseForeign(invocation)) {
        return *refused;
    }
    const Desk desk = deskOf(invocation, "weekly");
    platform::noteInterrupts();
    std::stop_source stop;
    std::optional<lumo::Result<WeeklySwitch>> switched;
    watch([&] { switched = setWeeklyCleanup(desk, on, TimerWish::needed, {.stop = stop.get_token()}); },
          [&](int) {
              if (platform::wasInterrupted()) {
                  stop.request_stop();
              }
          });
    if (!*switched) {
        return complain((*switched).error().message,
                        platform::wasInterrupted() ? ExitCode::interrupted : ExitCode::failed);
    }
    const ExitCode shown = show((*switched)->preferences, desk, invocation);
    return (*switched)->timerProblem ? complain(*(*switched)->timerProblem, ExitCode::failed) : shown;
}

ExitCode reportRun(const Cleaned& cleaned, const Desk& desk, const Invocation& invocation) {
    if (cleaned.outcomes.empty() && !invocation.isJson) {
        return print(paragraph(Words{"Hay menos de {} que se regeneren solos: no se ha borrado nada.",
                                     "Less than {} recreates itself: nothing was deleted."}
                                   .with(lumo::ByteFormat::string(WeeklyCleanup::smallestGain)),
                               readingColumns()));
    }
    const auto notification = WeeklyCleanup::notification(sumsOf(cleaned.outcomes).freed);
    // Whoever sits before the terminal reads it there.
    if (notification && !platform::isTerminal(platform::Stream::output)) {
        postSessionNotice(*notification, desk.home);
    }
    return reportCleaned(cleaned, invocation);
}

ExitCode run(bool atOnce, const Invocation& invocation) {
    if (const auto refused = refuseForeign(invocation)) {
        return *refused;
    }
    const Desk desk = deskOf(invocation, "weekly");
    if (const auto refused = refuseUntrustedPreferences(desk)) {
        return *refused;
    }
    // Nothing to do is no failure: a timer asks every day.
    const auto isNothingToDo = [&] {
        return !atOnce && !WeeklyCleanup::isWanted(Preferences::load(desk.home), desk.now());
    };
    const auto sayNothingToDo = [&] {
        return print(invocation.isJson ? "[]\n" : statusText(Preferences::load(desk.home), desk));
    };
    if (isNothingToDo()) {
        return sayNothingToDo();
    }
    const auto report = reportFrom({}, invocation);
    if (!report) {
        return report.error();
    }
    const PlanRequest request{.report = *report};
    const auto cleaned = watchedCleanup(
        [&](const CleanupWatch& watch) {
            return atOnce ? WeeklyCleanup::runAtOnce(request, desk, watch)
                          : WeeklyCleanup::run(request, desk, watch);
        },
        invocation);
    if (cleaned) {
        return reportRun(*cleaned, desk, invocation);
    }
    // Somebody else may have done it while this one measured.
    return isNothingToDo() ? sayNothingToDo() : complain(cleaned.error().message, ExitCode::failed);
}

} // namespace

void addWeeklyCommand(CLI::App& app, Action& chosen) {
    CLI::App* weekly = addCommand(
        app, "semanal", "weekly", "la limpieza semanal de lo que se regenera solo; sin más, dice cómo está",
        "the weekly cleanup of what recreates itself; without more, tells how it is");
    weekly->require_subcommand(0, 1);
    weekly->callback([weekly, &chosen] {
        if (weekly->get_subcommands().empty()) {
            chosen = showStatus;
        }
    });
    addCommand(*weekly, "estado", "status", "si está activada, cuándo toca y qué liberó la última",
               "whether it is on, when it is due and what the last one freed")
        ->callback([&chosen] { chosen = showStatus; });
    addCommand(*weekly, "activar", "on",
               "actívala, con un temporizador de tu sesión que no necesita la ventana",
               "turn it on, with a timer of your session that needs no window")
        ->callback(
            [&chosen] { chosen = [](const Invocation& invocation) { return turn(true, invocation); }; });
    addCommand(*weekly, "desactivar", "off", "desactívala y quita el temporizador",
               "turn it off and take the timer away")
        ->callback(
            [&chosen] { chosen = [](const Invocation& invocation) { return turn(false, invocation); }; });
    CLI::App* runner = addCommand(*weekly, "hacer", "run", "hazla si toca", "do it when it is due");
    const auto atOnce = std::make_shared<bool>(false);
    runner->add_flag("--now", *atOnce, Words{"ahora mismo, toque o no", "at once, due or not"}.in());
    runner->callback([atOnce, &chosen] {
        chosen = [atOnce](const Invocation& invocation) { return run(*atOnce, invocation); };
    });
}

} // namespace tarvo
