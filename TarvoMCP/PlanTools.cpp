#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoMCP/Answers.h"
#include "TarvoMCP/Lines.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <fmt/format.h>
#include <ranges>

namespace tarvo::mcp {

using lumo::Words;

namespace {

std::string proposalText(const Proposal& proposal, const std::vector<lumo::CleanupAction>& actions,
                         const Page& page) {
    std::string text = Words{"No se ha hecho nada. ", "Nothing has been done. "}.in();
    text += actions.empty() ? Words{"No hay nada que limpiar ahora.", "There is nothing to clean now."}.in()
                            : Words{"El plan {} liberaría {}. {}", "The plan {} would free {}. {}"}.with(
                                  proposal.plan, lumo::ByteFormat::string(proposal.totalBytes),
                                  confirmationMessage(actions));
    text += firstLines(proposal.items, [](const ProposedItem& item) {
        return itemLine(item.title, item.bytes, named(item.id));
    });
    text += moreLine(proposal.moreItems, page);
    for (const BlockedItems& group : proposal.blocked | std::views::take(3)) {
        text += "\n" + Words{"Se queda fuera ({}, {}): {}", "Left out ({}, {}): {}"}.with(
                           group.count, lumo::ByteFormat::string(group.bytes), named(group.reason));
    }
    return text;
}

/// The plan that the call asks to see more of, or a new one; a failure says what is wrong.
lumo::Result<std::shared_ptr<const ProposedPlan>> planMeant(Workspace& workspace, const ToolCall& call) {
    const auto handle = textArgument(call.arguments, "plan");
    const auto include = textsArgument(call.arguments, "include");
    const auto items = textsArgument(call.arguments, "items");
    const auto dependencies = flagArgument(call.arguments, "dependencies");
    for (const auto* failed :
         {handle ? nullptr : &handle.error(), include ? nullptr : &include.error(),
          items ? nullptr : &items.error(), dependencies ? nullptr : &dependencies.error()}) {
        if (failed != nullptr) {
            return std::unexpected(*failed);
        }
    }
    if (*handle) {
        auto kept = workspace.planNamed(**handle);
        return kept ? lumo::Result<std::shared_ptr<const ProposedPlan>>(std::move(kept))
                    : lumo::failure(noSuchPlan());
    }
    if (auto trouble = preferencesProblem(workspace.desk())) {
        return lumo::failure(std::move(*trouble));
    }
    const std::vector<std::string> wanted = include->value_or(std::vector<std::string>());
    // What a closer look found needs no report, unless something else is wanted, too.
    const bool areItemsAlone = *items && !(*items)->empty() && wanted.empty() && !*dependencies;
    const auto report =
        areItemsAlone ? std::shared_ptr<const lumo::ScanReport>() : workspace.recentReport(call);
    if (!report) {
        return std::unexpected(report.error());
    }
    ProposedPlan plan{.handle = {},
                      .request = {.report = *report,
                                  .include = {wanted.begin(), wanted.end()},
                                  .items = items->value_or(std::vector<std::string>()),
                                  .includesActiveDependencies = *dependencies,
                                  .recentProjectHint = Words{" (inclúyelo con dependencies: true)",
                                                             " (include it with dependencies: true)"}
                                                           .in()},
                      .plan = {}};
    if (auto unknown = unknownIDs(plan.request)) {
        return lumo::failure(std::move(*unknown));
    }
    plan.plan = planned(plan.request, workspace.desk());
    if (!plan.plan.unknownItems.empty()) {
        return lumo::failure(Words{"no hay ahora nada que se llame «{}»; find_items dice qué hay",
                                   "there is nothing called “{}” now; find_items tells what there is"}
                                 .with(named(plan.plan.unknownItems.front())));
    }
    return workspace.keep(std::move(plan));
}

ToolAnswer propose(Workspace& workspace, const ToolCall& call) {
    auto page = pageArgument(call.arguments, usualItems);
    if (!page) {
        return problem(page.error());
    }
    const auto plan = planMeant(workspace, call);
    if (!plan) {
        return problem(plan.error());
    }
    const Proposal proposal = fitted(*page, [&](const Page& part) { return proposalOf(**plan, part); });
    return {.text = proposalText(proposal, lumo::CleanupPlanner::actionsOf((*plan)->plan.entries), *page),
            .structured = lumo::encode(proposal)};
}

std::string setAsideText(std::size_t count, std::int64_t bytes) {
    const std::string size = lumo::ByteFormat::string(bytes);
    return count == 1 ? Words{"1 elemento apartado, {}.", "1 item is set aside, {}."}.with(size)
                      : Words{"{} elementos apartados, {}.", "{} items are set aside, {}."}.with(count, size);
}

ToolAnswer listSetAside(const Workspace& workspace, const ToolCall& call) {
    auto page = pageArgument(call.arguments, usualItems);
    if (!page) {
        return problem(page.error());
    }
    const auto held = heldItems(workspace.desk());
    if (!held) {
        return problem(held.error());
    }
    const HeldItems shown = fitted(*page, [&](const Page& part) { return heldPage(*held, part); });
    const std::string said = held->items.empty()
                                 ? Words{"No hay nada apartado.", "Nothing is in Recently Cleaned."}.in()
                                 : setAsideText(held->items.size(), held->bytes);
    return {
        .text =
            said +
            firstLines(shown.items,
                       [&](const ListedItem& item) {
                           return fmt::format("\n• {}: {}", item.id,
                                              named(lumo::abbreviated(item.original, workspace.home())));
                       }) +
            (shown.moreItems == 0
                 ? std::string()
                 : Words{"\n… y {} más: sigue con offset {}", "\n… and {} more: go on with offset {}"}.with(
                       shown.moreItems, page->offset + page->limit)),
        .structured = lumo::encode(shown)};
}

/// What came of a plan, also when its answer never arrived; without one the log, the newest first.
ToolAnswer whatWasCleaned(const Workspace& workspace, const ToolCall& call) {
    const auto handle = textArgument(call.arguments, "plan");
    auto page = pageArgument(call.arguments, usualItems);
    if (!handle || !page) {
        return problem(handle ? page.error() : handle.error());
    }
    const auto plan = *handle ? workspace.planNamed(**handle) : nullptr;
    if (*handle && !plan) {
        return problem(noSuchPlan());
    }
    if (plan && !plan->cleaned) {
        return problem(Words{"Ese plan no se ha llevado a cabo: no se ha tocado nada.",
                             "That plan was not carried out: nothing was touched."}
                           .in());
    }
    const auto log = history(workspace.desk());
    if (!plan && !log) {
        return problem(log.error());
    }
    const CleaningAnswer answer = fitted(*page, [&](const Page& part) {
        return plan ? cleaningAnswer(plan->handle, *plan->cleaned, part) : historyAnswer(*log, part);
    });
    return {.text = cleanedText(answer, *page), .structured = lumo::encode(answer)};
}

Property planArgument(const Words& words) {
    return {"plan", schema("string", words.in())};
}

} // namespace

std::vector<Tool> planTools(const std::shared_ptr<Workspace>& workspace, Offer offer) {
    std::vector<Tool> tools;
    tools.push_back(
        {.name = "propose_cleanup",
         .title = Words{"Proponer una limpieza", "Propose a cleanup"}.in(),
         .description =
             Words{
                 "Hace un plan de limpieza y lo devuelve con un identificador, que vale una hora y una sola "
                 "vez. No limpia nada.",
                 "Makes a cleanup plan and returns it with a handle, which is good for an hour and serves "
                 "once. Cleans nothing."}
                 .in() +
             (offer == Offer::everything ? Words{" Para eso está clean, que antes pregunta al usuario.",
                                                 " That is for clean, which asks the user first."}
                                               .in()
                                         : std::string()),
         .input = pagedArguments(
             {planArgument({"sigue con las páginas de ese plan en vez de hacer otro",
                            "go on with the pages of that plan instead of making another"}),
              {"include",
               listOf(schema("string"),
                      Words{"identificadores de lo que hay que mirar antes y el usuario quiere incluir",
                            "ids of what needs a look that the user wants included"}
                          .in())},
              {"items",
               listOf(schema("string"), Words{"identificadores de find_items; sin include, solo ellos",
                                              "ids of find_items; without include only these"}
                                            .in())},
              {"dependencies",
               schema("boolean", Words{"incluir dependencias de proyectos con cambios recientes",
                                       "include dependencies of recently changed projects"}
                                     .in())}}),
         .output = schemaOf<Proposal>(
             {{"plan", Words{"el identificador del plan", "the plan's handle"}.in()},
              {"blocked",
               Words{"lo que no se limpia ahora, por motivos", "what is not cleaned now, by reasons"}.in()},
              {"ids", Words{"los primeros", "the first ones"}.in()},
              {"fate", Words{"deletedAtOnce (se borra ya: se regenera solo), setAside (se aparta {} días) o "
                             "byItsOwnTool (lo borra su herramienta: no se puede deshacer)",
                             "deletedAtOnce (it recreates itself), setAside for {} days, or byItsOwnTool "
                             "(cannot be undone)"}
                           .with(lumo::Holding::retentionDays)}}),
         .hints = {.isIdempotent = false},
         .run = [workspace](const ToolCall& call) { return propose(*workspace, call); }});
    tools.push_back(
        {.name = "list_set_aside",
         .title = Words{"Ver lo apartado", "See what is set aside"}.in(),
         .description = Words{"Lista lo que las limpiezas apartaron y aún se puede devolver a su sitio.",
                              "Lists what cleanups set aside and can still be put back."}
                            .in(),
         .input = pagedArguments({}, HasSizes::no),
         .output = schemaOf<HeldItems>(
             {{"id", offer == Offer::everything
                         ? Words{"el identificador que pide restore", "the id that restore takes"}.in()
                         : Words{"el identificador", "the id"}.in()},
              {"original", Words{"dónde estaba y adónde vuelve", "where it was and goes back to"}.in()},
              {"expires", Words{"cuándo se borra solo", "when it is deleted by itself"}.in()}}),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return listSetAside(*workspace, call); }});
    tools.push_back(
        {.name = "what_was_cleaned",
         .title = Words{"Ver qué se ha limpiado", "See what was cleaned"}.in(),
         .description =
             Words{
                 "Dice qué salió de un plan que se llevó a cabo, aunque su respuesta no llegara, o todas las "
                 "limpiezas, las últimas primero.",
                 "Tells what came of a plan that was carried out, even if its answer never arrived, or all "
                 "cleanups, the newest first."}
                 .in(),
         .input = pagedArguments({planArgument({"el identificador del plan; sin él, todo el historial",
                                                "the plan's handle; without it the whole history"})}),
         .output = schemaOf<CleaningAnswer>(cleaningWords()),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return whatWasCleaned(*workspace, call); }});
    return tools;
}

} // namespace tarvo::mcp
