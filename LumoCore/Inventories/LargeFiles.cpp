#include "LumoCore/Inventories/LargeFiles.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Inventories/UserFiles.h"
#include "Platform/QuietFile.h"

#include <algorithm>
#include <utility>

namespace lumo::LargeFiles {

namespace {

using platform::FilesFound;
using platform::FileStatus;

constexpr InventoryKind kind = InventoryKind::large;
constexpr std::int64_t usualMinimum = 100000000;

std::optional<Date> lastUsedAt(const FileStatus& status) {
    return std::max(status.modified, status.opened.value_or(status.modified));
}

std::string detailOf(std::string_view name, const FileStatus& status, const InventoryQuery& query) {
    const Language language = query.language;
    std::string detail = kindOfFile(name, language) +
                         Words{", cambiado el ", ", last changed "}.in(language) +
                         dayText(status.modified, language);
    // Whoever writes a file has opened it; that says nothing of whether it was looked at later.
    if (status.opened && *status.opened - status.modified >= std::chrono::days(1)) {
        detail += Words{", abierto por última vez el ", ", last opened "}.in(language) +
                  dayText(*status.opened, language);
    }
    if (isForgotten(lastUsedAt(status), query.now)) {
        detail += Words{"; olvidado", "; forgotten"}.in(language);
    }
    return detail;
}

DetailItem itemOf(std::vector<std::string> names, const FileStatus& status, const InventoryQuery& query) {
    std::ranges::sort(names);
    std::string id = std::string(idPrefixOf(kind)) + pathInID(names.front(), query.home);
    std::string name(fileName(names.front()));
    std::string detail = detailOf(name, status, query);
    if (names.size() > 1) {
        detail += "; " + otherNamesText(names, query.home, query.language);
    }
    return itemToSetAside(std::move(id), std::move(name), std::move(names), status.allocatedBytes,
                          std::move(detail));
}

/// The files with the numbers of those that are one, beside each other.
std::vector<FilesFound::File> byObject(const FilesFound& found) {
    std::vector<FilesFound::File> files(found.files().begin(), found.files().end());
    std::ranges::sort(files, [](const auto& left, const auto& right) {
        return std::pair(left.object, left.bytes) < std::pair(right.object, right.bytes);
    });
    return files;
}

} // namespace

bool isForgotten(const std::optional<Date>& lastUsed, Date now) {
    constexpr std::chrono::days longAgo{180};
    return lastUsed && now - *lastUsed >= longAgo;
}

Inventory find(const InventoryQuery& query) {
    const UserFiles own(query);
    const std::int64_t minimum = query.minimumBytes.value_or(usualMinimum);
    const FilesFound found = own.search(minimum);
    Inventory inventory{.kind = kind};
    inventory.miss(found);
    const std::vector<FilesFound::File> files = byObject(found);
    for (std::size_t first = 0; first < files.size() && !query.stop.stop_requested();) {
        std::size_t end = first + 1;
        while (end < files.size() && found.isSame(files[first], files[end])) {
            ++end;
        }
        std::vector<std::string> names;
        for (; first < end; ++first) {
            names.push_back(found.pathOf(files[first]));
        }
        const auto status = platform::statusOfFile(names.front());
        const bool isOffered =
            status && names.size() == status->links && status->allocatedBytes >= minimum &&
            std::ranges::all_of(names, [&](const auto& name) { return own.mayHold(name); });
        if (isOffered && query.asksFor(status->allocatedBytes, lastUsedAt(*status))) {
            inventory.items.push_back(itemOf(std::move(names), *status, query));
        }
    }
    sortLargestFirst(inventory.items);
    return inventory;
}

std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query) {
    const UserFiles own(query);
    std::vector<DetailItem> items;
    for (const std::string& id : ids) {
        const auto path = pathFromID(std::string_view(id).substr(idPrefixOf(kind).size()), query.home);
        const auto status = path ? platform::statusOfFile(*path) : platform::failed(EINVAL);
        if (!status || !own.mayHold(*path)) {
            continue;
        }
        if (auto names = own.namesOf(*path, *status); !names.empty()) {
            items.push_back(itemOf(std::move(names), *status, query));
        }
    }
    return items;
}

} // namespace lumo::LargeFiles
