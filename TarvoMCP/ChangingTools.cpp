#include "LumoCore/Basics/Words.h"
#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "Platform/Environment.h"
#include "TarvoMCP/Answers.h"
#include "TarvoMCP/Questions.h"
#include "TarvoModel/Flows/Archiving.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/PuttingBack.h"
#include "TarvoModel/Showing/ArchiveTexts.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <mutex>
#include <ranges>

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
    case Consent::cancelled:
        return problem(
            Words{"La pregunta se ha cerrado sin respuesta: no se ha tocado nada. El usuario no ha "
                  "dicho ni que sí ni que no.",
                  "The question was closed without an answer: nothing was touched. The user said "
                  "neither yes nor no."}
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
    // Cut anywhere, a command could do something else; without words the program opens its window.
    constexpr std::size_t longestCommand = 2000;
    return problem(Words{
        "Tu programa no ha podido preguntar al usuario, así que no se ha tocado nada y nadie ha dicho que "
        "no. Tiene que hacerlo la persona, en su terminal; no lo ejecutes tú: {}",
        "Your program could not ask the user, so nothing was touched and nobody said no. The person must "
        "run it, in their terminal; do not run it for them: {}"}
                       .with(command.size() <= longestCommand ? command : "tarvo"));
}

/// The ids that could be given, as far as a text has room for them.
std::string namedIDs(const std::vector<std::string>& ids) {
    constexpr std::size_t mostNamed = 40;
    const auto shown = ids | std::views::take(mostNamed) | std::views::transform(lumo::printableWithStrays);
    std::string names = fmt::format("{}", fmt::join(shown, ", "));
    if (ids.size() > mostNamed) {
        names += Words{" y {} más", " and {} more"}.with(ids.size() - mostNamed);
    }
    return names;
}

/// Nothing was chosen, which is not the same as everything.
std::string nothingChosen(const std::vector<std::string>& valid) {
    return Words{"items está vacío: no se ha elegido nada. Hay: {}",
                 "items is empty: nothing was chosen. There are: {}"}
        .with(namedIDs(valid));
}

// Cleaning.

/// What the ids choose of the plan; all of it without any. A failure names an id that cannot be chosen, and
/// those that can.
lumo::Result<std::vector<CleanupAction>> chosenActions(const ProposedPlan& plan,
                                                       const std::optional<std::vector<std::string>>& ids) {
    std::vector<CleanupAction> all = lumo::CleanupPlanner::actionsOf(plan.plan.entries);
    if (all.empty()) {
        return lumo::failure(
            Words{"El plan no tiene nada que limpiar.", "The plan has nothing to clean."}.in());
    }
    if (!ids) {
        return all;
    }
    std::vector<std::string> valid;
    std::ranges::transform(all, std::back_inserter(valid), &CleanupAction::id);
    if (ids->empty()) {
        return lumo::failure(nothingChosen(valid));
    }
    for (const std::string& id : *ids) {
        if (std::ranges::find(valid, id) == valid.end()) {
            return lumo::failure(
                Words{"el plan no puede limpiar «{}»; puede: {}", "the plan cannot clean “{}”; it can: {}"}
                    .with(lumo::printableWithStrays(id), namedIDs(valid)));
        }
    }
    std::erase_if(
        all, [&](const CleanupAction& action) { return std::ranges::find(*ids, action.id) == ids->end(); });
    return all;
}

/// The plan of those items of it alone that were chosen: what a model comes to depends on which others go.
ProposedPlan narrowed(ProposedPlan plan, const std::optional<std::vector<std::string>>& ids,
                      const Desk& desk) {
    const std::size_t before = plan.request.items.size();
    std::erase_if(plan.request.items,
                  [&](const std::string& id) { return ids && std::ranges::find(*ids, id) == ids->end(); });
    if (plan.request.items.size() != before && !plan.request.items.empty()) {
        plan.plan = planned(plan.request, desk);
    }
    return plan;
}

/// The same for a person's terminal. `chosen` is what was chosen of the plan; when absent all of it.
std::string cleaningCommand(const ProposedPlan& plan, const std::optional<std::vector<CleanupAction>>& chosen,
                            const std::string& home) {
    const auto option = [](const char* name, const std::string& id) {
        return fmt::format(" {} {}", name, quoted(id));
    };
    std::string only;
    std::string items;
    for (const CleanupAction& action : chosen.value_or(std::vector<CleanupAction>())) {
        const bool isItem = lumo::inventoryKindOfID(action.id).has_value();
        (isItem ? items : only) += option(isItem ? "--item" : "--only", action.id);
    }
    if (!chosen) {
        for (const std::string& id : plan.request.items) {
            items += option("--item", id);
        }
    }
    std::string words = "clean";
    // Without anything else, items are cleaned alone.
    if (!chosen || !only.empty()) {
        for (const std::string& id : plan.request.include) {
            words += option("--include", id);
        }
        only += plan.request.includesActiveDependencies ? " --dependencies" : "";
    }
    return commandLine(words + only + items, home);
}

/// What came of it; what failed makes it a problem.
ToolAnswer answerOf(const std::string& handle, const Cleaned& cleaned) {
    constexpr std::size_t usualOutcomes = 10;
    Page page{.limit = usualOutcomes};
    const CleaningAnswer answer =
        fitted(page, [&](const Page& part) { return cleaningAnswer(handle, cleaned, part); });
    const bool hasFailed = std::ranges::any_of(cleaned.outcomes, [](const CleanupOutcome& outcome) {
        return outcome.status == lumo::CleanupStatus::failed;
    });
    return {.text = cleanedText(answer, page) + (cleaned.logProblem ? "\n" + *cleaned.logProblem : ""),
            .structured = lumo::encode(answer),
            .isProblem = hasFailed || cleaned.logProblem};
}

/// How far a cleanup is: which item is in hand, and what those before it were estimated to free. Told from
/// two threads.
class CleanupCount final {
  public:
    void plan(const std::vector<CleanupAction>& actions) {
        const std::scoped_lock lock(mutex_);
        actions_ = actions;
    }
    void begin(std::size_t index) {
        const std::scoped_lock lock(mutex_);
        current_ = index;
    }
    [[nodiscard]] std::optional<Progress> now() const {
        const std::scoped_lock lock(mutex_);
        if (!current_) {
            return std::nullopt;
        }
        const auto inHand = actions_.begin() + static_cast<std::ptrdiff_t>(*current_);
        const CleanupShares before = sharesOf({actions_.begin(), inHand});
        // The item in hand counts half, so that signs of life before the first one stay below it.
        return Progress{.done = static_cast<double>(*current_) + 0.5,
                        .message = Words{"{} de {} · {} de {}: {}", "{} of {} · {} of {}: {}"}.with(
                            *current_ + 1, actions_.size(), lumo::ByteFormat::string(before.total),
                            lumo::ByteFormat::string(sharesOf(actions_).total),
                            lumo::printableWithStrays(inHand->title)),
                        .total = static_cast<double>(actions_.size())};
    }

  private:
    mutable std::mutex mutex_;
    std::vector<CleanupAction> actions_;
    std::optional<std::size_t> current_;
};

ToolAnswer carryOut(Workspace& workspace, const ProposedPlan& plan, const std::vector<CleanupAction>& agreed,
                    const ToolCall& call) {
    CleanupCount count;
    const auto tell = [&] {
        if (const auto progress = count.now()) {
            call.progress(*progress);
        }
    };
    const CleanupWatch watch{
        .onPlanned = [&](const std::vector<CleanupAction>& actions) { count.plan(actions); },
        .onBegin =
            [&](std::size_t index) {
                count.begin(index);
                tell();
            },
        .stop = call.stop,
        .cancelTool = call.stop};
    lumo::Result<Cleaned> cleaned;
    whileTicking(tell, [&] {
        cleaned = tarvo::clean(plan.request, {.actions = agreed, .shown = plan.plan.shown},
                               workspace.desk(call.caller), watch);
    });
    if (!cleaned) {
        return problem(cleaned.error().message);
    }
    workspace.retire(plan.handle, *cleaned);
    return answerOf(plan.handle, *cleaned);
}

ToolAnswer clean(Workspace& workspace, const ToolCall& call) {
    const auto handle = textArgument(call.arguments, "plan");
    const auto ids = textsArgument(call.arguments, "items");
    if (!handle || !ids) {
        return problem(handle ? ids.error().message : handle.error().message);
    }
    const auto kept = workspace.planNamed(handle->value_or(""));
    if (!kept) {
        return problem(noSuchPlan());
    }
    if (kept->cleaned) {
        return problem(
            Words{"Ese plan ya se llevó a cabo: no se ha tocado nada más. what_was_cleaned dice qué "
                  "salió; para seguir, haz otro con propose_cleanup.",
                  "That plan was carried out already: nothing more was touched. what_was_cleaned "
                  "tells what came of it; to go on, make another with propose_cleanup."}
                .in());
    }
    if (const auto known = chosenActions(*kept, *ids); !known) {
        return problem(known.error().message);
    }
    const ProposedPlan plan = narrowed(*kept, *ids, workspace.desk(call.caller));
    const auto actions = chosenActions(plan, *ids);
    if (!actions) {
        return problem(actions.error().message);
    }
    const std::string subject = plan.handle + dumpJson(lumo::encode(*actions), lumo::JsonLayout::line);
    // A plan of single items was made without a report.
    const lumo::ScanReport report = plan.request.report ? *plan.request.report : lumo::ScanReport();
    const Consent consent =
        call.ask(cleaningQuestion(*actions, report, {call.caller, workspace.home()}), subject);
    if (auto answer =
            unlessGiven(consent, cleaningCommand(plan, *ids ? std::optional(*actions) : std::nullopt,
                                                 workspace.home()))) {
        return *answer;
    }
    return carryOut(workspace, plan, *actions, call);
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

/// The ids that restore takes now.
std::vector<std::string> restorableIDs(const Desk& desk) {
    std::vector<std::string> ids;
    if (const auto held = heldItems(desk)) {
        std::ranges::transform(held->items, std::back_inserter(ids), &ListedItem::id);
    }
    return ids;
}

ToolAnswer restore(Workspace& workspace, const ToolCall& call) {
    const auto ids = textsArgument(call.arguments, "items");
    if (!ids) {
        return problem(ids.error().message);
    }
    const Desk desk = workspace.desk(call.caller);
    const PutBackRequest request{.ids = ids->value_or(std::vector<std::string>())};
    if (*ids && request.ids.empty()) {
        return problem(nothingChosen(restorableIDs(desk)));
    }
    const auto shown = itemsMeant(request, desk);
    if (!shown) {
        return problem(Words{"{}. Hay: {}", "{}. There are: {}"}.with(shown.error().message,
                                                                      namedIDs(restorableIDs(desk))));
    }
    if (shown->empty()) {
        return problem(Words{"No hay nada que deshacer.", "There is nothing to undo."}.in());
    }
    const Consent consent = call.ask(restoringQuestion(*shown, {call.caller, workspace.home()}),
                                     dumpJson(lumo::encode(*shown), lumo::JsonLayout::line));
    if (auto answer = unlessGiven(consent, restoringCommand(request.ids, *shown, workspace.home()))) {
        return *answer;
    }
    auto result = restoreAgreed(request, *shown, desk);
    if (!result) {
        return problem(result.error().message);
    }
    workspace.forgetReports();
    constexpr std::size_t mostFailures = 20;
    const std::size_t failed = result->failures.size();
    if (failed > mostFailures) {
        result->failures.resize(mostFailures);
        result->failures.push_back(Words{"… y {} más", "… and {} more"}.with(failed - mostFailures));
    }
    return {.text = restoredText(*result),
            .structured = lumo::encode(*result),
            .isProblem = !result->failures.empty()};
}

// Archiving.

struct ArchiveAnswer {
    std::string archive;
    CleanedItem original;

    static constexpr auto fields = std::tuple{lumo::field("archive", &ArchiveAnswer::archive),
                                              lumo::field("original", &ArchiveAnswer::original)};
};

ToolAnswer archiveAgreed(Workspace& workspace, const std::string& path,
                         const lumo::Archiver::Estimate& estimate, const ToolCall& call) {
    lumo::Archiver::ArchiveProgress progress;
    std::expected<Archived, NotArchived> archived;
    whileTicking(
        [&] {
            call.progress({.done = static_cast<double>(progress.writtenBytes + progress.checkedBytes),
                           .message = lumo::printable(lumo::fileName(path))});
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
            .structured = lumo::encode(ArchiveAnswer{archived->archive, cleanedItem(archived->outcome)}),
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
    const std::string question = archivingQuestion(
        *path,
        {estimateText(name, estimate), archiveExplanation(lumo::printable(lumo::fileName(destination)))},
        {call.caller, workspace.home()});
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
    const std::string asWhatWasCleaned = Words{"como what_was_cleaned", "as what_was_cleaned"}.in();
    std::vector<Tool> tools;
    tools.push_back(
        {.name = "clean",
         .title = Words{"Limpiar", "Clean"}.in(),
         .description =
             Words{
                 "Lleva a cabo un plan de propose_cleanup, o solo lo que elijas de él, una sola vez. Antes "
                 "pregunta al usuario y solo sigue si acepta. Lo que se regenera solo se borra; lo del "
                 "usuario "
                 "se aparta {} días; lo que borra otra herramienta no se puede deshacer.",
                 "Carries out a plan of propose_cleanup, or only what you choose of it, once. Asks the user "
                 "first and only goes on when they accept. What recreates itself is deleted; the user's own "
                 "is "
                 "set aside for {} days; what another tool deletes cannot be undone."}
                 .with(lumo::Holding::retentionDays),
         .input = argumentsOf(
             {{"plan", schema("string", Words{"el identificador del plan", "the plan's handle"}.in()), true},
              {"items", listOf(schema("string"), Words{"identificadores; sin ellos, todo el plan",
                                                       "ids; without them the whole plan"}
                                                     .in())}}),
         .output = outlineOf(schemaOf<CleaningAnswer>(), asWhatWasCleaned),
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
         .input = argumentsOf(
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
         .input = argumentsOf(
             {{"path", schema("string", Words{"ruta en la carpeta personal", "path in the home folder"}.in()),
               true}}),
         .output = outlineOf(schemaOf<ArchiveAnswer>(), asWhatWasCleaned),
         .hints = moves,
         .run = [workspace](const ToolCall& call) { return archive(*workspace, call); }});
    return tools;
}

} // namespace tarvo::mcp
