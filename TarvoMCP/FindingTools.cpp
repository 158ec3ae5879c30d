#include "TarvoMCP/Tools.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Folder.h"
#include "TarvoMCP/Answers.h"
#include "TarvoMCP/Lines.h"
#include "TarvoModel/Flows/Finding.h"
#include "TarvoModel/Showing/ItemRows.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tarvo::mcp {

using lumo::InventoryKind;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

std::span<const std::string_view> kindNames() {
    return lumo::EnumNames<InventoryKind>::values;
}

lumo::Result<InventoryKind> kindArgument(const ToolCall& call) {
    const auto given = textArgument(call.arguments, "kind");
    if (!given) {
        return std::unexpected(given.error());
    }
    const auto kind = lumo::inventoryKindNamed(given->value_or(""));
    return kind ? lumo::Result<InventoryKind>(*kind)
                : lumo::failure(Words{"«kind» es uno de: {}", "“kind” is one of: {}"}.with(
                      fmt::format("{}", fmt::join(kindNames(), ", "))));
}

/// What the call asks for; a failure says what is wrong with it.
lumo::Result<FindRequest> requestOf(const Workspace& workspace, const ToolCall& call, const Page& page) {
    const auto kind = kindArgument(call);
    const auto folder = textArgument(call.arguments, "folder");
    if (!kind || !folder) {
        return std::unexpected(kind ? folder.error() : kind.error());
    }
    FindRequest request{.kinds = {*kind}};
    if (page.minBytes > 0) {
        request.minimumBytes = page.minBytes;
    }
    if (*folder) {
        auto path = workspace.pathInHome(**folder);
        if (!path) {
            return std::unexpected(path.error());
        }
        // A link would be followed, and lead out of the home.
        if (platform::kindOf(*path) != platform::EntryKind::folder) {
            return lumo::failure(Words{"{} no es una carpeta", "{} is no folder"}.with(named(*path)));
        }
        request.folders.push_back(std::move(*path));
    }
    return request;
}

/// "• name — 3 GB — what it is — id", where the id is short enough to be read; the record has all of it.
std::string lineOf(const FoundItem& item) {
    constexpr std::size_t mostColumns = 160;
    const std::string& about = item.blockedBecause.value_or(item.detail);
    return itemLine(lumo::shortened(item.name, mostColumns), item.bytes,
                    fmt::format("{}{}{}", item.blockedBecause ? "✗ " : "",
                                named(lumo::shortened(about, mostColumns)),
                                item.id.size() <= mostColumns ? " — " + named(item.id) : std::string()));
}

/// `unread` as `unreadText` says it.
std::string foundText(InventoryKind kind, const FoundItems& found, const std::string& unread,
                      const Page& page) {
    std::string text = lumo::titleOf(kind) + ": ";
    if (found.unavailable) {
        return text + Words{"no se puede saber: {}", "cannot be told: {}"}.with(named(*found.unavailable));
    }
    const std::int64_t all = lumo::checkedSum(found.bytes, found.blockedBytes);
    text += all == 0 && found.items.empty() ? Words{"nada.", "nothing."}.in()
                                            : lumo::ByteFormat::string(all) + ".";
    if (found.blockedBytes > 0) {
        text += Words{" De ello {} no se puede limpiar desde aquí (✗).",
                      " Of that {} cannot be cleaned from here (✗)."}
                    .with(lumo::ByteFormat::string(found.blockedBytes));
    }
    text += firstLines(found.items, lineOf);
    if (found.items.size() > mostLines) {
        text += "\n" + Words{"… y {} más en esta página", "… and {} more on this page"}.with(
                           found.items.size() - mostLines);
    }
    text += moreLine(found.moreItems, page);
    return unread.empty() ? text : text + "\n" + unread + ".";
}

ToolAnswer findItems(Workspace& workspace, const ToolCall& call) {
    auto page = pageArgument(call.arguments, usualItems);
    if (!page) {
        return problem(page.error());
    }
    const auto request = requestOf(workspace, call, *page);
    if (!request) {
        return problem(request.error());
    }
    const auto inventory = workspace.find(*request, call);
    if (!inventory) {
        return problem(inventory.error());
    }
    const FoundItems found = fitted(*page, [&](const Page& part) { return foundItemsOf(**inventory, part); });
    return {.text = foundText((*inventory)->kind, found, unreadText(**inventory, workspace.home()), *page),
            .structured = lumo::encode(found)};
}

} // namespace

std::vector<Tool> findingTools(const std::shared_ptr<Workspace>& workspace) {
    std::vector<Tool> tools;
    tools.push_back(
        {.name = "find_items",
         .title = Words{"Mirar de cerca", "Take a closer look"}.in(),
         .description =
             Words{"Busca lo que analyze_disk no ve: archivos grandes del usuario, duplicados (tarda), apps "
                   "sin "
                   "usar, restos de lo desinstalado, contenedores, modelos de IA, instaladores, lo del "
                   "sistema. Sus id son para propose_cleanup.",
                   "Finds what analyze_disk does not see: the user's large files, duplicates (slow), unused "
                   "apps, leftovers of removed ones, containers, AI models, installers, what the system "
                   "keeps. Its ids are for propose_cleanup."}
                 .in(),
         .input =
             pagedArguments({{"kind", choiceOf(kindNames()), true},
                             {"folder", schema("string", Words{"solo en esta", "only in this one"}.in())}}),
         .output = schemaOf<FoundItems>(
             {{"kept", Words{"la copia que se queda", "the copy that stays"}.in()},
              {"blockedBecause",
               Words{"por qué desde aquí no, y qué ejecutar", "why not from here, and what to run"}.in()}}),
         .hints = {},
         .run = [workspace](const ToolCall& call) { return findItems(*workspace, call); }});
    return tools;
}

} // namespace tarvo::mcp
