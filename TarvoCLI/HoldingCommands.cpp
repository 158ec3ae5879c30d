#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/Undoing.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/HomeChange.h"
#include "TarvoCLI/Question.h"
#include "TarvoModel/Flows/HomeChanges.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <memory>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::PathGuard;
using lumo::TrashedItem;
using lumo::TrashOperationResult;
using lumo::Words;
using lumo::Holding::Batch;
namespace Holding = lumo::Holding;
namespace platform = lumo::platform;

namespace {

/// A batch as programs see it.
struct ListedBatch {
    std::string path;
    lumo::Date date;
    std::int64_t bytes = 0;
    lumo::Date expires;

    static constexpr auto fields =
        std::tuple{lumo::field("path", &ListedBatch::path), lumo::field("date", &ListedBatch::date),
                   lumo::field("bytes", &ListedBatch::bytes), lumo::field("expires", &ListedBatch::expires)};
};

template <class Record>
std::string jsonOf(const Record& record) {
    return lumo::dumpJson(lumo::encode(record), lumo::JsonLayout::indented) + "\n";
}

std::string nothingHeld() {
    return Words{"No hay nada apartado.\n", "Nothing is in Recently Cleaned.\n"}.in();
}

/// The originals of what the batch still holds, as the log knows them.
std::vector<std::string> originalsIn(const Batch& batch, const std::vector<CleanupOutcome>& outcomes) {
    std::vector<std::string> originals;
    for (const CleanupOutcome& outcome : outcomes) {
        for (const TrashedItem& item : outcome.restorable.value_or(std::vector<TrashedItem>())) {
            if (item.inTrash.starts_with(batch.path + "/") && platform::kindOf(item.inTrash)) {
                originals.push_back(item.original);
            }
        }
    }
    return originals;
}

std::string batchText(const Batch& batch, const std::vector<CleanupOutcome>& outcomes,
                      const Invocation& invocation) {
    constexpr std::size_t mostShown = 12;
    const std::string heading =
        Words{"{} · {} · se borra solo el {}", "{} · {} · deleted automatically on {}"}.with(
            lumo::momentText(batch.date), lumo::ByteFormat::string(batch.bytes),
            lumo::dayText(batch.expires()));
    std::string shown = tinted(heading, Tint::strong, invocation) + "\n";
    const std::vector<std::string> originals = originalsIn(batch, outcomes);
    for (std::size_t index = 0; index < std::min(originals.size(), mostShown); ++index) {
        shown += "  " + lumo::printable(lumo::abbreviated(originals[index], invocation.home)) + "\n";
    }
    if (originals.size() > mostShown) {
        shown += "  " + Words{"… y {} más", "… and {} more"}.with(originals.size() - mostShown) + "\n";
    }
    return shown;
}

/// The batches. On failure what is wrong has been said.
std::expected<std::vector<Batch>, ExitCode> batchesOf(const PathGuard& guard) {
    auto batches = Holding::batches(guard, platform::now());
    if (!batches) {
        return std::unexpected(complain(unreadableHoldingText(batches.error()), ExitCode::failed));
    }
    return std::move(*batches);
}

ExitCode runHolding(const Invocation& invocation) {
    const PathGuard guard(invocation.home);
    const auto held = batchesOf(guard);
    if (!held) {
        return held.error();
    }
    const std::vector<Batch>& batches = *held;
    if (invocation.isJson) {
        std::vector<ListedBatch> listed;
        for (const Batch& batch : batches) {
            listed.push_back({batch.path, batch.date, batch.bytes, batch.expires()});
        }
        return print(jsonOf(listed));
    }
    if (batches.empty()) {
        return print(nothingHeld());
    }
    const auto outcomes = readHistory(guard.home());
    if (!outcomes) {
        return outcomes.error();
    }
    std::string shown;
    for (const Batch& batch : batches) {
        shown += batchText(batch, *outcomes, invocation) + "\n";
    }
    return print(shown +
                 tinted(Words{"tarvo deshacer devuelve lo último a su sitio; tarvo vaciar lo borra ya.",
                              "tarvo undo puts the latest back; tarvo empty deletes it all now."}
                            .in(),
                        Tint::faint, invocation) +
                 "\n");
}

ExitCode tell(const TrashOperationResult& result, const Invocation& invocation) {
    std::string shown = jsonOf(result);
    if (!invocation.isJson) {
        shown = result.done == 0 && result.failures.empty()
                    ? Words{"No hay nada que deshacer.\n", "There is nothing to undo.\n"}.in()
                    : lumo::printable(restoredText(result)) + "\n";
        // The first failure stands in the sentence.
        for (std::size_t index = 1; index < result.failures.size(); ++index) {
            shown += "  " + lumo::printable(result.failures[index]) + "\n";
        }
    }
    const ExitCode printed = print(shown);
    return result.failures.empty() ? printed : ExitCode::failed;
}

ExitCode runUndo(const Invocation& invocation) {
    const PathGuard guard(invocation.home);
    const auto lock = lockHome(guard, "undo");
    if (!lock) {
        return lock.error();
    }
    const auto outcomes = readHistory(guard.home(), lock->unlogged());
    if (!outcomes) {
        return outcomes.error();
    }
    return tell(lumo::Undoing::undo(*outcomes, guard, platform::now()), invocation);
}

ExitCode runRestore(const std::vector<std::string>& paths, const Invocation& invocation) {
    const PathGuard guard(invocation.home);
    const auto lock = lockHome(guard, "restore");
    if (!lock) {
        return lock.error();
    }
    const auto outcomes = readHistory(guard.home(), lock->unlogged());
    if (!outcomes) {
        return outcomes.error();
    }
    std::vector<TrashedItem> items;
    for (const std::string& path : paths) {
        const std::string original = platform::absolutePath(path).value_or(path);
        // One that is not held any more has its own failure text.
        items.push_back(lumo::Undoing::newestFrom(original, *outcomes, guard)
                            .value_or(TrashedItem{.original = original, .inTrash = {}}));
    }
    return tell(Holding::restore(items, guard), invocation);
}

struct EmptyArguments {
    bool isConfirmed = false;
    bool isOnlyExpired = false;
};

ExitCode tell(const Holding::Emptied& emptied, const Invocation& invocation) {
    std::string shown = jsonOf(emptied);
    if (!invocation.isJson) {
        shown = lumo::printable(emptiedText(emptied)) + "\n";
        for (std::size_t index = 1; index < emptied.failures.size(); ++index) {
            shown += "  " + lumo::printable(emptied.failures[index]) + "\n";
        }
    }
    const ExitCode printed = print(shown);
    return emptied.failures.empty() ? printed : ExitCode::failed;
}

ExitCode tellNothingHeld(const Invocation& invocation) {
    return print(invocation.isJson ? jsonOf(Holding::Emptied{}) : nothingHeld());
}

std::optional<ExitCode> declinedEmptying(const std::vector<Batch>& batches) {
    std::int64_t bytes = 0;
    for (const Batch& batch : batches) {
        bytes = lumo::checkedSum(bytes, batch.bytes);
    }
    return declined(emptyQuestion() + " " + lumo::ByteFormat::string(bytes) + ". " + emptyExplanation());
}

ExitCode emptyExpired(const Invocation& invocation) {
    const PathGuard guard(invocation.home);
    auto lock = lockHome(guard, "empty");
    if (!lock) {
        return lock.error();
    }
    const auto batches = batchesOf(guard);
    if (!batches) {
        return batches.error();
    }
    const lumo::Date now = platform::now();
    Holding::Emptied emptied;
    if (lock->mayPurge(now, std::chrono::seconds(0))) {
        emptied = Holding::empty(Holding::expired(*batches, now), guard);
    } else {
        complain(
            Words{"no me fío del reloj ahora: lo apartado no caduca hasta dentro de una hora, vuelve a "
                  "probar entonces",
                  "the clock cannot be trusted now: nothing in Recently Cleaned expires for an hour, try "
                  "again then"}
                .in(),
            ExitCode::done);
    }
    if (emptied.freed == 0 && emptied.failures.empty() && !invocation.isJson) {
        return print(Words{"No hay nada caducado.\n", "Nothing has expired.\n"}.in());
    }
    return tell(emptied, invocation);
}

ExitCode runEmpty(const EmptyArguments& arguments, const Invocation& invocation) {
    if (arguments.isOnlyExpired) {
        return emptyExpired(invocation);
    }
    if (const auto impossible = cannotAsk(arguments.isConfirmed)) {
        return *impossible;
    }
    if (const auto refused = refuseForeign(invocation)) {
        return *refused;
    }
    const PathGuard guard(invocation.home);
    const auto asked = batchesOf(guard);
    if (!asked) {
        return asked.error();
    }
    if (!arguments.isConfirmed && asked->empty()) {
        return tellNothingHeld(invocation);
    }
    if (const auto no = arguments.isConfirmed ? std::nullopt : declinedEmptying(*asked)) {
        return *no;
    }
    const auto lock = lockHome(guard, "empty");
    if (!lock) {
        return lock.error();
    }
    const auto now = batchesOf(guard);
    if (!now) {
        return now.error();
    }
    const std::vector<Batch>& agreed = arguments.isConfirmed ? *now : *asked;
    return agreed.empty() ? tellNothingHeld(invocation)
                          : tell(emptyUnchanged(agreed, *now, guard), invocation);
}

template <class Run>
void choose(CLI::App& command, Action& chosen, const Run& run) {
    command.callback([run, &chosen] { chosen = run; });
}

} // namespace

void addHoldingCommands(CLI::App& app, Action& chosen) {
    choose(*addCommand(app, "apartado", "holding", "lo que apartaron las limpiezas y cuándo se borra",
                       "what cleanups set aside, and when it is deleted"),
           chosen, runHolding);
    choose(*addCommand(app, "deshacer", "undo", "devuelve a su sitio lo que apartó la última limpieza",
                       "put back what the last cleanup set aside"),
           chosen, runUndo);

    CLI::App* restore =
        addCommand(app, "restaurar", "restore", "devuelve a su sitio lo que se apartó de esas rutas",
                   "put back what was set aside from these paths");
    const auto paths = std::make_shared<std::vector<std::string>>();
    restore->add_option("paths", *paths, Words{"dónde estaba", "where it was"}.in())
        ->type_name(Words{"RUTA", "PATH"}.in())
        ->option_text(Words{"RUTA...", "PATH..."}.in())
        ->required();
    choose(*restore, chosen,
           [paths](const Invocation& invocation) { return runRestore(*paths, invocation); });

    CLI::App* empty =
        addCommand(app, "vaciar", "empty", "borra para siempre todo lo apartado, tras preguntarte",
                   "delete for good all that was set aside, after asking you");
    const auto arguments = std::make_shared<EmptyArguments>();
    empty->add_flag("--yes", arguments->isConfirmed,
                    Words{"confirmar sin preguntar", "confirm without asking"}.in());
    empty->add_flag("--expired", arguments->isOnlyExpired,
                    Words{"solo lo que ya ha pasado sus 7 días, sin preguntar",
                          "only what is past its 7 days, no question asked"}
                        .in());
    choose(*empty, chosen,
           [arguments](const Invocation& invocation) { return runEmpty(*arguments, invocation); });
}

} // namespace tarvo
