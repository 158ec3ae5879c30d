#include "LumoCore/Basics/Words.h"
#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Cleanup/Archiver.h"
#include "Platform/Environment.h"
#include "TarvoMCP/Answers.h"
#include "TarvoModel/Flows/Archiving.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/PuttingBack.h"
#include "TarvoModel/Showing/ArchiveTexts.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

namespace tarvo::mcp {

using lumo::CleanupAction;
using lumo::CleanupOutcome;
using lumo::TrashedItem;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

/// The word as a shell reads it back.
std::string quoted(std::string_view word) {
    std::string text = "'";
    for (const char c : word) {
        text += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return text + "'";
}

/// A command that the user can give, for this home.
std::string commandLine(std::string_view words, const std::string& home) {
    const bool isUsual = platform::environmentVariable("HOME") == home;
    return "tarvo " + std::string(words) + (isUsual ? "" : " --home " + quoted(home));
}

/// Why nothing was done, where the user did not agree; absent when they did.
std::optional<ToolAnswer> unlessGiven(Consent consent, const std::string& command) {
    switch (consent) {
    case Consent::given:
        return std::nullopt;
    case Consent::pending:
        return pending();
    case Consent::declined:
        return problem(Words{"El usuario ha dicho que no: no se ha tocado nada.",
                             "The user said no: nothing was touched."}
                           .in());
    case Consent::invalid:
        return problem(
            Words{"Esa respuesta no corresponde a ninguna pregunta abierta: no se ha tocado nada. "
                  "Llama otra vez sin ella para volver a preguntar.",
                  "That reply belongs to no open question: nothing was touched. Call again without "
                  "it to ask anew."}
                .in());
    case Consent::cannotAsk:
        break;
    }
    return problem(
        Words{"Este programa no puede preguntar al usuario, así que no se ha tocado nada. El usuario puede "
              "hacerlo en un terminal: {}",
              "This client cannot ask the user, so nothing was touched. The user can do it in a terminal: {}"}
            .with(command));
}

/// The lines of a question, one an item; of many only the first.
std::string itemLines(const std::vector<std::string>& items) {
    constexpr std::size_t mostShown = 15;
    std::string lines;
    for (std::size_t index = 0; index < std::min(items.size(), mostShown); ++index) {
        lines += "• " + lumo::printable(items[index]) + "\n";
    }
    if (items.size() > mostShown) {
        lines += Words{"… y {} más\n", "… and {} more\n"}.with(items.size() - mostShown);
    }
    return lines;
}

// Cleaning.

/// What the ids choose of the plan; all of it without any. A failure names an id that cannot be chosen.
lumo::Result<std::vector<CleanupAction>> chosenActions(const ProposedPlan& plan,
                                                       const std::vector<std::string>& ids) {
    std::vector<CleanupAction> all = lumo::CleanupPlanner::actionsOf(plan.plan.entries);
    if (ids.empty()) {
        return all;
    }
    std::vector<CleanupAction> chosen;
    std::ranges::copy_if(all, std::back_inserter(chosen), [&](const CleanupAction& action) {
        return std::ranges::find(ids, action.id) != ids.end();
    });
    for (const std::string& id : ids) {
        if (std::ranges::find(all, id, &CleanupAction::id) == all.end()) {
            return lumo::failure(Words{"el plan no puede limpiar «{}»", "the plan cannot clean “{}”"}.with(
                lumo::printable(id)));
        }
    }
    return chosen;
}

std::string cleaningCommand(const ProposedPlan& plan, const std::vector<CleanupAction>& actions,
                            const std::string& home) {
    std::string words = "clean";
    for (const std::string& id : plan.request.include) {
        words += " --include " + quoted(id);
    }
    for (const CleanupAction& action : actions) {
        words += " --only " + quoted(action.id);
    }
    return commandLine(words + (plan.request.includesActiveDependencies ? " --dependencies" : ""), home);
}

std::string cleaningQuestion(const std::vector<CleanupAction>& actions, const std::string& caller) {
    std::vector<std::string> items;
    for (const CleanupAction& action : actions) {
        items.push_back(action.title + " — " + lumo::ByteFormat::string(action.estimatedBytes));
    }
    const CleanupShares shares = sharesOf(actions);
    return Words{"{} pide limpiar {} con Tarvo AI:\n{}{}", "{} asks to clean {} with Tarvo AI:\n{}{}"}.with(
        caller, lumo::ByteFormat::string(shares.total), itemLines(items), confirmationMessage(shares));
}

/// What came of a cleanup.
struct CleaningAnswer {
    std::vector<CleanupOutcome> outcomes;
    std::int64_t freedBytes = 0;
    std::int64_t setAsideBytes = 0;

    static constexpr auto fields = std::tuple{lumo::field("outcomes", &CleaningAnswer::outcomes),
                                              lumo::field("freedBytes", &CleaningAnswer::freedBytes),
                                              lumo::field("setAsideBytes", &CleaningAnswer::setAsideBytes)};
};

/// Of what a cleanup gives back, and an archiving.
template <class Record>
JsonValue schemaOfOutcomes() {
    return schemaOf<Record>(
        {{"trashedBytes", Words{"apartado, aún no libre", "set aside, not free yet"}.in()}});
}

/// What came of it, with what failed and what was agreed to but has a reason against it by now.
ToolAnswer answerOf(Cleaned cleaned) {
    const CleanupSums sums = sumsOf(cleaned.outcomes);
    const auto failed =
        std::ranges::count(cleaned.outcomes, lumo::CleanupStatus::failed, &CleanupOutcome::status);
    std::string said = cleanupDone(sums);
    if (failed > 0) {
        said += failed == 1
                    ? Words{" · 1 no se pudo limpiar", " · 1 could not be cleaned"}.in()
                    : Words{" · {} no se pudieron limpiar", " · {} could not be cleaned"}.with(failed);
    }
    for (const LeftOut& left : cleaned.leftOut) {
        said += Words{" · {} se ha dejado como estaba: {}", " · {} was left as it was: {}"}.with(
            lumo::printable(left.title), lumo::printable(left.reason));
    }
    const bool hasLogProblem = cleaned.logProblem.has_value();
    if (hasLogProblem) {
        said += " · " + *cleaned.logProblem;
    }
    return {.text = said,
            .structured = lumo::encode(CleaningAnswer{std::move(cleaned.outcomes), sums.freed, sums.trashed}),
            .isProblem = failed > 0 || hasLogProblem};
}

ToolAnswer carryOut(Workspace& workspace, const ProposedPlan& plan, const std::vector<CleanupAction>& agreed,
                    const ToolCall& call) {
    std::vector<std::string> titles;
    const CleanupWatch watch{
        .onPlanned =
            [&](const std::vector<CleanupAction>& actions) {
                for (const CleanupAction& action : actions) {
                    titles.push_back(lumo::printable(action.title));
                }
            },
        .onBegin = [&](std::size_t index) { call.progress(static_cast<std::int64_t>(index), titles[index]); },
        .stop = call.stop,
        .cancelTool = call.stop};
    auto cleaned = tarvo::clean(plan.request, {.actions = agreed, .shown = plan.plan.shown},
                                workspace.desk(call.caller), watch);
    if (!cleaned) {
        return problem(cleaned.error().message);
    }
    workspace.forgetReports();
    return answerOf(std::move(*cleaned));
}

ToolAnswer clean(Workspace& workspace, const ToolCall& call) {
    const auto handle = textArgument(call.arguments, "plan");
    const auto ids = textsArgument(call.arguments, "items");
    if (!handle || !ids) {
        return problem(handle ? ids.error().message : handle.error().message);
    }
    const ProposedPlan* plan = workspace.planNamed(handle->value_or(""));
    if (plan == nullptr) {
        return problem(Words{"No hay ningún plan con ese identificador: haz uno con propose_cleanup.",
                             "There is no plan with that handle: make one with propose_cleanup."}
                           .in());
    }
    const auto actions = chosenActions(*plan, *ids);
    if (!actions || actions->empty()) {
        return problem(
            actions ? Words{"El plan no tiene nada que limpiar.", "The plan has nothing to clean."}.in()
                    : actions.error().message);
    }
    const std::string subject = plan->handle + dumpJson(lumo::encode(*actions), lumo::JsonLayout::line);
    const Consent consent = call.ask(cleaningQuestion(*actions, call.caller), subject);
    if (auto answer = unlessGiven(consent, cleaningCommand(*plan, *actions, workspace.home()))) {
        return *answer;
    }
    return carryOut(workspace, *plan, *actions, call);
}

// Putting back.

std::string restoringCommand(const std::vector<std::string>& ids, const std::vector<TrashedItem>& items,
                             const std::string& home) {
    std::string words = ids.empty() ? "undo" : "restore";
    for (const TrashedItem& item : ids.empty() ? std::vector<TrashedItem>() : items) {
        words += " " + quoted(item.original);
    }
    return commandLine(words, home);
}

std::string restoringQuestion(const std::vector<TrashedItem>& items, const std::string& caller,
                              const std::string& home) {
    std::vector<std::string> originals;
    for (const TrashedItem& item : items) {
        originals.push_back(lumo::abbreviated(item.original, home));
    }
    return Words{"{} pide devolver a su sitio con Tarvo AI:\n{}", "{} asks to put back with Tarvo AI:\n{}"}
        .with(caller, itemLines(originals));
}

ToolAnswer restore(Workspace& workspace, const ToolCall& call) {
    const auto ids = textsArgument(call.arguments, "items");
    if (!ids) {
        return problem(ids.error().message);
    }
    const Desk desk = workspace.desk(call.caller);
    const PutBackRequest request{.ids = *ids};
    const auto shown = itemsMeant(request, desk);
    if (!shown || shown->empty()) {
        return problem(shown ? Words{"No hay nada que deshacer.", "There is nothing to undo."}.in()
                             : shown.error().message);
    }
    const Consent consent = call.ask(restoringQuestion(*shown, call.caller, workspace.home()),
                                     dumpJson(lumo::encode(*shown), lumo::JsonLayout::line));
    if (auto answer = unlessGiven(consent, restoringCommand(*ids, *shown, workspace.home()))) {
        return *answer;
    }
    const auto result = restoreAgreed(request, *shown, desk);
    if (!result) {
        return problem(result.error().message);
    }
    workspace.forgetReports();
    return {.text = restoredText(*result),
            .structured = lumo::encode(*result),
            .isProblem = !result->failures.empty()};
}

// Archiving.

struct ArchiveAnswer {
    std::string archive;
    std::vector<CleanupOutcome> outcomes;

    static constexpr auto fields = std::tuple{lumo::field("archive", &ArchiveAnswer::archive),
                                              lumo::field("outcomes", &ArchiveAnswer::outcomes)};
};

ToolAnswer archiveAgreed(Workspace& workspace, const std::string& path,
                         const lumo::Archiver::Estimate& estimate, const ToolCall& call) {
    lumo::Archiver::ArchiveProgress progress;
    std::expected<Archived, NotArchived> archived;
    whileTicking(
        [&] {
            call.progress(progress.writtenBytes + progress.checkedBytes,
                          lumo::printable(lumo::fileName(path)));
        },
        [&] {
            archived = tarvo::archive(
                path, workspace.desk(call.caller),
                {.expectedBytes = estimate.compressedBytes, .progress = &progress, .stop = call.stop});
        });
    if (!archived) {
        return problem(lumo::printable(archived.error().reason));
    }
    workspace.forgetReports();
    const std::string shown = lumo::printable(lumo::abbreviated(archived->archive, workspace.home()));
    const bool isFailed = archived->outcome.status == lumo::CleanupStatus::failed;
    return {.text = isFailed
                        ? originalKeptText(shown, lumo::printable(archived->outcome.message.value_or("")))
                        : archivedText(shown, archived->archiveBytes),
            .structured = lumo::encode(ArchiveAnswer{archived->archive, {archived->outcome}}),
            .isProblem = isFailed};
}

ToolAnswer archive(Workspace& workspace, const ToolCall& call) {
    const auto given = textArgument(call.arguments, "path");
    if (!given) {
        return problem(given.error().message);
    }
    const auto path = workspace.pathInHome(given->value_or(""));
    if (!path) {
        return problem(path.error().message);
    }
    if (const auto refusal = archiveRefusal(*path, workspace.desk())) {
        return problem(*refusal);
    }
    const auto estimate = lumo::Archiver::estimate(*path, lumo::Archiver::usualSamples,
                                                   lumo::Archiver::usualSampleBytes, call.stop);
    const std::string name = lumo::printable(lumo::fileName(*path));
    const std::string destination = lumo::Archiver::destination(*path);
    const std::string question =
        Words{"{} pide archivar con Tarvo AI:\n• {}\n{}\n{}",
              "{} asks to archive with Tarvo AI:\n• {}\n{}\n{}"}
            .with(call.caller, lumo::printable(lumo::abbreviated(*path, workspace.home())),
                  estimateText(name, estimate),
                  archiveExplanation(lumo::printable(lumo::fileName(destination))));
    const Consent consent = call.ask(question, *path);
    if (auto answer = unlessGiven(consent, commandLine("archive " + quoted(*path), workspace.home()))) {
        return *answer;
    }
    return archiveAgreed(workspace, *path, estimate, call);
}

} // namespace

std::vector<Tool> changingTools(const std::shared_ptr<Workspace>& workspace) {
    constexpr ToolHints deletes{.isReadOnly = false, .isDestructive = true, .isIdempotent = false};
    constexpr ToolHints moves{.isReadOnly = false, .isDestructive = false, .isIdempotent = false};
    std::vector<Tool> tools;
    tools.push_back(
        {.name = "clean",
         .title = Words{"Limpiar", "Clean"}.in(),
         .description =
             Words{"Lleva a cabo un plan de propose_cleanup, o solo lo que elijas de él. Antes pregunta al "
                   "usuario "
                   "y solo sigue si acepta. Lo que se regenera solo se borra; lo del usuario se aparta {} "
                   "días.",
                   "Carries out a plan of propose_cleanup, or only what you choose of it. Asks the user "
                   "first and "
                   "only goes on when they accept. What recreates itself is deleted; the user's own is set "
                   "aside "
                   "for {} days."}
                 .with(lumo::Holding::retentionDays),
         .input = schemaOf(
             {{"plan", schema("string", Words{"el identificador del plan", "the plan's handle"}.in()), true},
              {"items", listOf(schema("string"), Words{"identificadores; sin ellos, todo el plan",
                                                       "ids; without them the whole plan"}
                                                     .in())}}),
         .output = schemaOfOutcomes<CleaningAnswer>(),
         .hints = deletes,
         .run = [workspace](const ToolCall& call) { return clean(*workspace, call); }});
    tools.push_back(
        {.name = "restore",
         .title = Words{"Devolver a su sitio", "Put back"}.in(),
         .description = Words{"Deshace la última limpieza, o devuelve a su sitio lo que elijas de "
                              "list_set_aside. Antes pregunta al usuario. Nunca pisa nada.",
                              "Undoes the last cleanup, or puts back what you choose of list_set_aside. Asks "
                              "the user first. Never overwrites anything."}
                            .in(),
         .input = schemaOf(
             {{"items", listOf(schema("string"), Words{"identificadores; sin ellos, la última limpieza",
                                                       "ids; without them the last cleanup"}
                                                     .in())}}),
         .output = schemaOf<lumo::TrashOperationResult>(),
         .hints = moves,
         .run = [workspace](const ToolCall& call) { return restore(*workspace, call); }});
    tools.push_back(
        {.name = "archive",
         .title = Words{"Archivar", "Archive"}.in(),
         .description =
             Words{"Cambia una carpeta o un archivo del usuario por un zip comprobado y aparta el "
                   "original {} días. Antes pregunta al usuario.",
                   "Replaces a folder or file of the user's by a verified zip and sets the original "
                   "aside for {} days. Asks the user first."}
                 .with(lumo::Holding::retentionDays),
         .input = schemaOf(
             {{"path", schema("string", Words{"ruta en la carpeta personal", "path in the home folder"}.in()),
               true}}),
         .output = schemaOfOutcomes<ArchiveAnswer>(),
         .hints = moves,
         .run = [workspace](const ToolCall& call) { return archive(*workspace, call); }});
    return tools;
}

} // namespace tarvo::mcp
