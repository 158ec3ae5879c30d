#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoMCP/Answers.h"
#include "TarvoMCP/Lines.h"
#include "TarvoModel/Flows/CleanupPlanning.h"

namespace tarvo::mcp {

using lumo::Words;

namespace {

/// The first page, as long as an answer may be.
template <class Make>
JsonValue firstPage(Make make) {
    constexpr std::size_t most = 50;
    Page page{.limit = most};
    return lumo::encode(fitted(page, make));
}

lumo::Result<JsonValue> lastReport(const Workspace& workspace) {
    const auto report = workspace.lastReport();
    if (!report) {
        return lumo::failure(Words{"Aún no hay ningún análisis que siga valiendo: lo hace analyze_disk.",
                                   "There is no scan yet that still holds: analyze_disk makes one."}
                                 .in());
    }
    const std::int64_t recoverable = recoverableBytes(report, workspace.desk());
    return firstPage([&](const Page& page) { return analysisOf(*report, false, recoverable, page); });
}

lumo::Result<JsonValue> planAt(const std::shared_ptr<const ProposedPlan>& plan) {
    if (!plan) {
        return lumo::failure(noSuchPlan());
    }
    return firstPage([&](const Page& page) { return proposalOf(*plan, page); });
}

lumo::Result<JsonValue> wholeHistory(const Workspace& workspace) {
    const auto log = history(workspace.desk());
    if (!log) {
        return std::unexpected(log.error());
    }
    return firstPage([&](const Page& page) { return historyAnswer(*log, page); });
}

} // namespace

std::vector<Resource> resources(const std::shared_ptr<Workspace>& workspace) {
    return {
        {.uri = "tarvo://report",
         .name = "report",
         .title = Words{"Último análisis", "Last scan"}.in(),
         .description =
             Words{"Como analyze_disk, sin medir otra vez", "As analyze_disk, without measuring again"}.in(),
         .read = [workspace](const std::string&) { return lastReport(*workspace); }},
        {.uri = "tarvo://plan",
         .name = "plan",
         .title = Words{"Último plan de limpieza", "Last cleanup plan"}.in(),
         .description =
             Words{"Como propose_cleanup, sin hacer otro", "As propose_cleanup, without making another"}.in(),
         .read = [workspace](const std::string&) { return planAt(workspace->lastPlan()); }},
        {.uri = "tarvo://history",
         .name = "history",
         .title = Words{"Historial de limpiezas", "Cleanup history"}.in(),
         .description =
             Words{"Como what_was_cleaned, lo último primero", "As what_was_cleaned, the newest first"}.in(),
         .read = [workspace](const std::string&) { return wholeHistory(*workspace); }},
        {.uri = "tarvo://plan/{plan}",
         .name = "plan-by-handle",
         .title = Words{"Un plan de limpieza", "A cleanup plan"}.in(),
         .description = Words{"El plan con ese identificador", "The plan with that handle"}.in(),
         .read = [workspace](const std::string& handle) { return planAt(workspace->planNamed(handle)); }}};
}

} // namespace tarvo::mcp
