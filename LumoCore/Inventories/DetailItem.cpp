#include "LumoCore/Inventories/DetailItem.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Path.h"

#include <algorithm>

namespace lumo {

namespace {

struct KindTexts {
    Words command;
    Words title;
    std::string_view idPrefix;
};

/// In the order of the enumeration.
constexpr std::array<KindTexts, inventoryKindCount> texts{
    {{{"grandes", "large"}, {"Archivos grandes", "Large files"}, "archivo:"},
     {{"duplicados", "duplicates"}, {"Archivos duplicados", "Duplicate files"}, "copia:"},
     {{"sin-usar", "unused"}, {"Apps sin usar", "Unused apps"}, "app:"},
     {{"restos", "leftovers"}, {"Restos de lo desinstalado", "Leftovers of what was removed"}, "resto:"},
     {{"docker", "docker"}, {"Contenedores", "Containers"}, "docker:"},
     {{"modelos", "models"}, {"Modelos de IA", "AI models"}, "modelo:"},
     {{"sistema", "system"}, {"Lo que guarda el sistema", "What the system keeps"}, "sistema:"},
     {{"instaladores", "installers"},
      {"Instaladores y comprimidos", "Installers and archives"},
      "instalador:"},
     {{"nube", "cloud"}, {"Copias de la nube", "Copies from the cloud"}, "nube:"}}};

const KindTexts& textsOf(InventoryKind kind) {
    return texts[static_cast<std::size_t>(kind)];
}

std::optional<InventoryKind> firstWith(bool (*fits)(const KindTexts&, std::string_view),
                                       std::string_view sought) {
    const auto found = std::ranges::find_if(texts, [&](const KindTexts& kind) { return fits(kind, sought); });
    return found != texts.end() ? std::optional(static_cast<InventoryKind>(found - texts.begin()))
                                : std::nullopt;
}

} // namespace

std::optional<InventoryKind> inventoryKindNamed(std::string_view name) {
    return firstWith(
        [](const KindTexts& kind, std::string_view sought) {
            return kind.command.es == sought || kind.command.en == sought;
        },
        name);
}

std::string commandNameOf(InventoryKind kind, Language language) {
    return textsOf(kind).command.in(language);
}

std::string titleOf(InventoryKind kind, Language language) {
    return textsOf(kind).title.in(language);
}

std::string_view idPrefixOf(InventoryKind kind) {
    return textsOf(kind).idPrefix;
}

std::optional<InventoryKind> inventoryKindOfID(std::string_view id) {
    return firstWith(
        [](const KindTexts& kind, std::string_view sought) { return sought.starts_with(kind.idPrefix); }, id);
}

void Inventory::miss(std::string path, std::string reason) {
    constexpr std::size_t mostNamed = 20;
    unreadableCount = checkedSum(unreadableCount, 1);
    if (!unread) {
        unread.emplace();
    }
    if (unread->size() < mostNamed) {
        unread->push_back({std::move(path), std::move(reason)});
    }
}

void Inventory::miss(const platform::FilesFound& found) {
    for (const std::string& folder : found.unlisted) {
        miss(folder);
    }
    unreadableCount =
        checkedSum(unreadableCount, found.unreadableCount - static_cast<std::int64_t>(found.unlisted.size()));
}

void Inventory::missIn(const std::string& folder, std::int64_t count, Language language) {
    if (count > 0) {
        miss(folder, Words{"no del todo", "not all of it"}.in(language));
        unreadableCount = checkedSum(unreadableCount, count - 1);
    }
}

bool InventoryQuery::asksFor(std::int64_t bytes, const std::optional<Date>& lastUsed) const {
    const bool isOldEnough =
        !olderThanDays || !lastUsed || now - *lastUsed >= std::chrono::days(*olderThanDays);
    return bytes >= minimumBytes.value_or(0) && isOldEnough;
}

void sortLargestFirst(std::vector<DetailItem>& items) {
    std::ranges::sort(items, {}, &DetailItem::id);
    sortLargestFirst(items, &DetailItem::bytes);
}

std::vector<DetailItem> itemsNamed(const std::vector<std::string>& ids,
                                   const std::vector<DetailItem>& items) {
    std::vector<DetailItem> named;
    for (const std::string& id : ids) {
        if (const auto found = std::ranges::find(items, id, &DetailItem::id); found != items.end()) {
            named.push_back(*found);
        }
    }
    return named;
}

DetailItem itemToSetAside(std::string id, std::string name, std::vector<std::string> paths,
                          std::int64_t bytes, std::string detail, Safety safety) {
    DetailItem item{.id = id, .name = name, .bytes = bytes, .detail = std::move(detail), .safety = safety};
    if (!paths.empty()) {
        item.path = paths.front();
    }
    item.action = {.id = std::move(id),
                   .title = std::move(name),
                   .safety = safety,
                   .estimatedBytes = bytes,
                   .method = method::TrashItems{paths},
                   .measuredPaths = std::move(paths)};
    return item;
}

DetailItem itemForTool(std::string id, std::string name, std::vector<std::string> words, std::int64_t bytes,
                       std::string detail, std::vector<std::string> measuredPaths) {
    DetailItem item = itemToSetAside(std::move(id), std::move(name), {}, bytes, std::move(detail));
    item.action.method = method::Command{std::move(words)};
    item.action.measuredPaths = std::move(measuredPaths);
    return item;
}

DetailItem itemToShow(std::string id, std::string name, std::int64_t bytes, std::string detail,
                      std::string blockedBecause) {
    DetailItem item = itemToSetAside(std::move(id), std::move(name), {}, bytes, std::move(detail));
    item.blockedBecause = std::move(blockedBecause);
    return item;
}

namespace {

constexpr Words administratorWords{"hace falta ser administrador: {}", "needs an administrator: {}"};

} // namespace

std::string needsAdministrator(std::string_view command, Language language) {
    return administratorWords.in(language, command);
}

std::optional<std::string> commandIn(std::string_view blockedBecause) {
    for (const Language language : {Language::es, Language::en}) {
        const std::string before = needsAdministrator("", language);
        if (blockedBecause.starts_with(before)) {
            return std::string(blockedBecause.substr(before.size()));
        }
    }
    return std::nullopt;
}

std::string pathInID(std::string_view path, std::string_view home) {
    return isInside(path, home) && path.size() > home.size() ? std::string(path.substr(home.size() + 1))
                                                             : std::string(path);
}

std::optional<std::string> pathFromID(std::string_view text, std::string_view home) {
    if (text.empty() || !isSpeltOut(text)) {
        return std::nullopt;
    }
    return text.starts_with('/') ? std::string(text) : joined(home, text);
}

} // namespace lumo
