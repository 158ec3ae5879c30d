#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Question.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Flows/PuttingBack.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <memory>

namespace tarvo {

using lumo::TrashOperationResult;
using lumo::Words;
using lumo::Holding::Batch;
namespace Holding = lumo::Holding;

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

std::string batchText(const Batch& batch, const HeldState& held, const Invocation& invocation) {
    constexpr std::size_t mostShown = 12;
    const std::string heading =
        Words{"{} · {} · se borra solo el {}", "{} · {} · deleted automatically on {}"}.with(
            lumo::momentText(batch.date), lumo::ByteFormat::string(batch.bytes),
            lumo::dayText(batch.expires()));
    std::string shown = tinted(heading, Tint::strong, invocation) + "\n";
    std::size_t count = 0;
    for (const HeldItem& item : held.items) {
        if (item.batch == batch.path && ++count <= mostShown) {
            shown += "  " + lumo::printable(lumo::abbreviated(item.original, invocation.home)) +
                     (item.isIncomplete ? Words{" (le faltan partes)", " (parts of it are gone)"}.in() : "") +
                     "\n";
        }
    }
    if (count > mostShown) {
        shown += "  " + Words{"… y {} más", "… and {} more"}.with(count - mostShown) + "\n";
    }
    return shown;
}

ExitCode runHolding(const Invocation& invocation) {
    const auto held = heldState(deskOf(invocation, "holding"));
    if (!held) {
        return complain(held.error().message, ExitCode::failed);
    }
    if (invocation.isJson) {
        std::vector<ListedBatch> listed;
        for (const Batch& batch : held->batches) {
            listed.push_back({batch.path, batch.date, batch.bytes, batch.expires()});
        }
        return print(jsonOf(listed));
    }
    if (held->batches.empty()) {
        return print(nothingHeld());
    }
    if (held->historyProblem) {
        return complain(*held->historyProblem, ExitCode::failed);
    }
    std::string shown;
    for (const Batch& batch : held->batches) {
        shown += batchText(batch, *held, invocation) + "\n";
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

ExitCode tell(const lumo::Result<TrashOperationResult>& result, const Invocation& invocation) {
    return result ? tell(*result, invocation) : complain(result.error().message, ExitCode::failed);
}

ExitCode runUndo(const Invocation& invocation) {
    return tell(undo(deskOf(invocation, "undo")), invocation);
}

ExitCode runRestore(const std::vector<std::string>& paths, const Invocation& invocation) {
    return tell(restore({.originals = paths}, deskOf(invocation, "restore")), invocation);
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

ExitCode runEmptyExpired(const Invocation& invocation) {
    const auto expired = emptyExpired(deskOf(invocation, "empty"));
    if (!expired) {
        return complain(expired.error().message, ExitCode::failed);
    }
    if (expired->isPutOff) {
        complain(
            Words{"no me fío del reloj ahora: lo apartado no caduca hasta dentro de una hora, vuelve a "
                  "probar entonces",
                  "the clock cannot be trusted now: nothing in Recently Cleaned expires for an hour, try "
                  "again then"}
                .in(),
            ExitCode::done);
    }
    if (expired->emptied.freed == 0 && expired->emptied.failures.empty() && !invocation.isJson) {
        return print(Words{"No hay nada caducado.\n", "Nothing has expired.\n"}.in());
    }
    return tell(expired->emptied, invocation);
}

/// Asks about the batches there are; what was agreed to, or the code to answer with.
std::expected<std::vector<Batch>, ExitCode> agreedBatches(const Desk& desk, const Invocation& invocation) {
    const auto held = heldState(desk);
    if (!held) {
        return std::unexpected(complain(held.error().message, ExitCode::failed));
    }
    if (held->batches.empty()) {
        return std::unexpected(tellNothingHeld(invocation));
    }
    if (const auto no = declinedEmptying(held->batches)) {
        return std::unexpected(*no);
    }
    return held->batches;
}

ExitCode runEmpty(const EmptyArguments& arguments, const Invocation& invocation) {
    if (arguments.isOnlyExpired) {
        return runEmptyExpired(invocation);
    }
    if (const auto impossible = cannotAsk(arguments.isConfirmed)) {
        return *impossible;
    }
    if (const auto refused = refuseForeign(invocation)) {
        return *refused;
    }
    const Desk desk = deskOf(invocation, "empty");
    if (arguments.isConfirmed) {
        const auto emptied = emptyAll(desk);
        return emptied ? tell(*emptied, invocation) : complain(emptied.error().message, ExitCode::failed);
    }
    const auto agreed = agreedBatches(desk, invocation);
    if (!agreed) {
        return agreed.error();
    }
    const auto emptied = emptyAgreed(*agreed, desk);
    return emptied ? tell(*emptied, invocation) : complain(emptied.error().message, ExitCode::failed);
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
    restore
        ->add_option(Words{"rutas", "paths"}.in(), wordsInto(*paths),
                     Words{"dónde estaba", "where it was"}.in())
        ->type_name(Words{"RUTA", "PATH"}.in())
        ->option_text(Words{"RUTA...", "PATH..."}.in())
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args()
        ->take_all()
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
                    Words{"solo lo que ya ha pasado sus {} días, sin preguntar",
                          "only what is past its {} days, no question asked"}
                        .with(lumo::Holding::retentionDays));
    choose(*empty, chosen,
           [arguments](const Invocation& invocation) { return runEmpty(*arguments, invocation); });
}

} // namespace tarvo
