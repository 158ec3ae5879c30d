#include "TarvoMCP/Answers.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>

namespace tarvo::mcp {

namespace platform = lumo::platform;

namespace {

constexpr std::size_t mostPaths = 5;
constexpr std::size_t mostProjects = 50;
constexpr std::size_t mostUnknown = 50;
constexpr std::size_t mostItems = 40;
constexpr std::size_t mostInside = 10;
constexpr std::size_t mostExtensions = 10;

template <class Value>
std::vector<Value> firstOf(std::vector<Value> values, std::size_t most) {
    values.resize(std::min(values.size(), most));
    return values;
}

/// How many of a list were left out.
std::int64_t leftOut(std::size_t count, std::size_t most) {
    return static_cast<std::int64_t>(count - std::min(count, most));
}

JsonValue bytes() {
    return schema("integer", "bytes");
}

JsonValue safety() {
    JsonValue value =
        schema("string", lumo::Words{"safe: se recrea solo; review: míralo antes; keep: no se borra",
                                     "safe: recreates itself; review: needs a look; keep: never delete"}
                             .in());
    std::get<JsonValue::Object>(value.value)
        .push_back({"enum", list({word("safe"), word("review"), word("keep")})});
    return value;
}

JsonValue aText() {
    return schema("string");
}

JsonValue count() {
    return schema("integer");
}

} // namespace

Analysis analysisOf(const lumo::ScanReport& report, bool isQuick) {
    Analysis analysis{.home = report.home,
                      .isQuick = isQuick,
                      .totalBytes = report.volume.totalBytes,
                      .availableBytes = report.volume.availableBytes,
                      .safeBytes = report.safeBytes(),
                      .reviewBytes = report.bytes(lumo::Safety::review),
                      .keepBytes = report.bytes(lumo::Safety::keep),
                      .moreProjects = leftOut(report.projects.size(), mostProjects),
                      .moreUnknownFolders = leftOut(report.unclassified.size(), mostUnknown),
                      .unreadable = report.unreadableCount()};
    for (const lumo::Finding& finding : report.findings) {
        analysis.items.push_back({finding.ruleID, finding.name, finding.safety, finding.usage.allocatedBytes,
                                  finding.explanation, firstOf(finding.paths, mostPaths)});
    }
    for (const lumo::ProjectReport& project : firstOf(report.projects, mostProjects)) {
        analysis.projects.push_back(
            {project.name, project.usage.allocatedBytes, project.recoverableBytes(), project.lastCodeChange});
    }
    for (const lumo::UnclassifiedItem& folder : firstOf(report.unclassified, mostUnknown)) {
        analysis.unknownFolders.push_back({folder.path, folder.usage.allocatedBytes});
    }
    return analysis;
}

JsonValue analysisSchema() {
    return schemaOf(
        {{"home", aText(), true},
         {"quick", schema("boolean"), true},
         {"totalBytes", bytes(), true},
         {"availableBytes", bytes(), true},
         {"safeBytes", bytes(), true},
         {"reviewBytes", bytes(), true},
         {"keepBytes", bytes(), true},
         {"items",
          listOf(schemaOf({{"id", aText(), true},
                           {"name", aText(), true},
                           {"safety", safety(), true},
                           {"bytes", bytes(), true},
                           {"explanation", aText(), true},
                           {"paths", listOf(aText()), true}})),
          true},
         {"projects",
          listOf(schemaOf({{"name", aText(), true},
                           {"bytes", bytes(), true},
                           {"recoverableBytes", bytes(), true},
                           {"lastCodeChange", aText()}})),
          true},
         {"moreProjects", count(), true},
         {"unknownFolders", listOf(schemaOf({{"path", aText(), true}, {"bytes", bytes(), true}})), true},
         {"moreUnknownFolders", count(), true},
         {"unreadable", count(), true}});
}

FolderAnswer contentsOf(const std::string& path, const lumo::FileTree::Breakdown& breakdown,
                        const lumo::FolderContents::Listing& listing) {
    FolderAnswer answer{.path = path,
                        .bytes = breakdown.usage.allocatedBytes,
                        .files = breakdown.usage.fileCount,
                        .unreadable = breakdown.usage.unreadableCount,
                        .skipped = listing.skipped,
                        .items = firstOf(listing.items, mostItems),
                        .moreItems = leftOut(listing.items.size(), mostItems),
                        .extensions = firstOf(breakdown.extensions, mostExtensions)};
    for (lumo::FolderContents::Item& item : answer.items) {
        item.children = firstOf(std::move(item.children), mostInside);
    }
    return answer;
}

JsonValue contentsSchema() {
    const auto item = [](std::vector<Property> more) {
        std::vector<Property> properties{{"name", aText(), true},
                                         {"path", aText(), true},
                                         {"bytes", bytes(), true},
                                         {"isDirectory", schema("boolean"), true}};
        std::ranges::move(more, std::back_inserter(properties));
        return schemaOf(std::move(properties));
    };
    return schemaOf(
        {{"path", aText(), true},
         {"bytes", bytes(), true},
         {"files", count(), true},
         {"unreadable", count(), true},
         {"skipped",
          listOf(aText(), lumo::Words{"carpetas que se pasan de largo: contienen casi todo",
                                      "folders gone straight through: they hold nearly everything"}
                              .in()),
          true},
         {"items", listOf(item({{"children", listOf(item({})), true}})), true},
         {"moreItems", count(), true},
         {"extensions", listOf(schemaOf({{"name", aText(), true}, {"bytes", bytes(), true}})), true}});
}

JsonValue explanationSchema() {
    return schemaOf({{"path", aText(), true},
                     {"sizeBytes", bytes(), true},
                     {"whatItIs", aText(), true},
                     {"owner", aText(), true},
                     {"safety", safety(), true},
                     {"reason", aText(), true},
                     {"howToFree", aText(), true},
                     {"note", aText()},
                     {"source", schema("string", "ai or heuristic"), true}});
}

JsonValue growthSchema() {
    return schemaOf({{"since", aText()},
                     {"items",
                      listOf(schemaOf({{"id", aText(), true},
                                       {"name", aText(), true},
                                       {"delta", bytes(), true},
                                       {"now", bytes(), true}})),
                      true}});
}

JsonValue answerSchema() {
    return schemaOf(
        {{"text", aText(), true},
         {"byAI", schema("boolean"), true},
         {"sources",
          listOf(aText(), lumo::Words{"identificadores de temas de la ayuda", "ids of help topics"}.in()),
          true}});
}

Fate fateOf(const lumo::CleanupAction& action) {
    if (std::holds_alternative<lumo::method::Command>(action.method)) {
        return Fate::byItsOwnTool;
    }
    return action.safety == lumo::Safety::safe ? Fate::deletedAtOnce : Fate::setAside;
}

Proposal proposalOf(const ProposedPlan& plan) {
    const CleanupShares shares = sharesOf(lumo::CleanupPlanner::actionsOf(plan.plan.entries));
    Proposal proposal{.plan = plan.handle,
                      .items = {},
                      .totalBytes = shares.total,
                      .deletedAtOnceBytes = shares.total - shares.trash - shares.tool,
                      .setAsideBytes = shares.trash,
                      .byItsOwnToolBytes = shares.tool};
    for (const lumo::PlanEntry& entry : plan.plan.entries) {
        proposal.items.push_back({entry.action.id, entry.action.title, entry.action.safety,
                                  entry.action.estimatedBytes, fateOf(entry.action), entry.skipReason});
    }
    return proposal;
}

JsonValue proposalSchema() {
    return schemaOf(
        {{"plan",
          schema("string",
                 lumo::Words{"el identificador que pide clean", "the handle that clean takes"}.in()),
          true},
         {"items",
          listOf(
              schemaOf({{"id", aText(), true},
                        {"title", aText(), true},
                        {"safety", safety(), true},
                        {"bytes", bytes(), true},
                        {"fate",
                         schema("string", lumo::Words{"deletedAtOnce (se borra ya), setAside (se aparta 7 "
                                                      "días) o byItsOwnTool (lo borra su herramienta)",
                                                      "deletedAtOnce, setAside for 7 days, or byItsOwnTool"}
                                              .in()),
                         true},
                        {"blockedBecause", aText()}})),
          true},
         {"totalBytes", bytes(), true},
         {"deletedAtOnceBytes", bytes(), true},
         {"setAsideBytes", bytes(), true},
         {"byItsOwnToolBytes", bytes(), true}});
}

lumo::Result<HeldItems> heldItems(const Desk& desk) {
    const auto state = heldState(desk);
    if (!state) {
        return std::unexpected(state.error());
    }
    HeldItems held;
    for (const lumo::Holding::Batch& batch : state->batches) {
        held.bytes = lumo::checkedSum(held.bytes, batch.bytes);
    }
    for (const HeldItem& item : state->items) {
        const auto batch = std::ranges::find(state->batches, item.batch, &lumo::Holding::Batch::path);
        if (batch != state->batches.end()) {
            held.items.push_back({item.id, item.original, batch->expires()});
        }
    }
    return held;
}

JsonValue heldSchema() {
    return schemaOf(
        {{"items",
          listOf(schemaOf(
              {{"id",
                schema("string",
                       lumo::Words{"el identificador que pide restore", "the id that restore takes"}.in()),
                true},
               {"original",
                schema("string",
                       lumo::Words{"dónde estaba y adónde vuelve", "where it was and goes back to"}.in()),
                true},
               {"expires",
                schema("string", lumo::Words{"cuándo se borra solo", "when it is deleted by itself"}.in()),
                true}})),
          true},
         {"bytes", bytes(), true}});
}

} // namespace tarvo::mcp
