#include "LumoCore/Inventories/Installers.h"

#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/UserFiles.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "Platform/ArchiveEntries.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <set>
#include <utility>

namespace lumo::Installers {

namespace {

using platform::EntryKind;

constexpr InventoryKind kind = InventoryKind::installers;

bool hasEnding(const std::string& path, std::span<const std::string_view> endings) {
    const std::string lower = lowerCased(fileName(path));
    return std::ranges::any_of(endings, [&](std::string_view ending) { return lower.ends_with(ending); });
}

/// The catalogue's own locator of installers in this home; absent only if the catalogue had none.
std::optional<locator::Installers> locatorIn(const std::string& home) {
    for (const Rule& rule : RuleCatalog::inHome(home)) {
        for (const Locator& place : rule.places) {
            const auto* installers = std::get_if<locator::Installers>(&place);
            if (installers != nullptr && installers->use == locator::InstallerUse::unused) {
                return *installers;
            }
        }
    }
    return std::nullopt;
}

/// The name without what says how it is packed: "photos.tar.gz" is unpacked into "photos".
std::string_view unpackedName(std::string_view name) {
    const std::string_view stem = fileStem(name);
    return stem.ends_with(".tar") ? stem.substr(0, stem.size() - 4) : stem;
}

/// True when the entry stands in the folder as the archive has it.
bool standsIn(const std::string& folder, const platform::ArchiveEntry& entry) {
    std::string_view inArchive = entry.path;
    inArchive = inArchive.substr(inArchive.starts_with("./") ? 2 : 0);
    while (inArchive.ends_with('/')) {
        inArchive.remove_suffix(1);
    }
    if (inArchive.empty() || inArchive == ".") {
        return entry.kind == EntryKind::folder; // The folder that was packed.
    }
    if (!isSpeltOut(inArchive) || inArchive.starts_with('/')) {
        return false;
    }
    const std::string path = joined(folder, inArchive);
    if (entry.kind != EntryKind::file) {
        return platform::kindOf(path) == entry.kind;
    }
    const auto status = platform::statusOfFile(path);
    return status && entry.bytes && status->bytes == *entry.bytes;
}

/// True when everything in the archive stands in the folder.
bool isUnpackedIn(const std::string& folder, const std::string& archive) {
    constexpr std::int64_t mostEntries = 1000000;
    std::int64_t files = 0;
    std::int64_t entries = 0;
    bool isThere = true;
    const auto visited = platform::visitArchive(archive, [&](const platform::ArchiveEntry& entry) {
        files += entry.kind == EntryKind::file ? 1 : 0;
        isThere = ++entries <= mostEntries && standsIn(folder, entry);
        return isThere;
    });
    return visited && isThere && files > 0;
}

/// True for archives that begin or end with a list of what is in them; others are read to their ends.
bool hasDirectory(const std::string& path) {
    constexpr std::array<std::string_view, 2> withDirectory{".zip", ".7z"};
    return hasEnding(path, withDirectory);
}

std::optional<std::string> useOfArchive(const std::string& path, std::int64_t mostBytes, Language language) {
    const auto status = platform::statusOfFile(path);
    if (!status || (status->bytes > mostBytes && !hasDirectory(path))) {
        return std::nullopt;
    }
    const std::string folder(parentOf(path));
    const std::string own = joined(folder, unpackedName(fileName(path)));
    const bool hasOwn = own != path && platform::kindOf(own) == EntryKind::folder;
    if (isUnpackedIn(folder, path) || (hasOwn && isUnpackedIn(own, path))) {
        return Words{"ya descomprimido al lado", "already unpacked beside it"}.in(language);
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> Judge::useOfPackage(const std::string& path, Language language) {
    constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;
    const auto isControl = [](std::string_view name) { return name.starts_with("control.tar"); };
    const auto packed = platform::entryOfArchive(path, isControl, mostBytes);
    const auto control =
        packed ? platform::entryOfArchiveIn(
                     *packed, [](std::string_view name) { return fileName(name) == "control"; }, mostBytes)
               : std::unexpected(packed.error());
    if (!control) {
        return std::nullopt;
    }
    std::call_once(arePackagesRead_, [this] { packages_ = packagesOfSystem(systemRoot_); });
    const std::string_view name = controlField(*control, "Package");
    const auto found = packages_.find(name);
    const bool isUsed = found != packages_.end() && found->second.state == Package::State::installed &&
                        compareVersions(controlField(*control, "Version"), found->second.version) <= 0;
    return isUsed ? std::optional(Words{"{} {} ya está instalado", "{} {} is installed"}.in(
                        language, name, found->second.version))
                  : std::nullopt;
}

std::optional<std::string> Judge::useOfFlatpak(const std::string& path, Language language) const {
    constexpr std::size_t mostBytes = std::size_t{64} * 1024;
    const auto text = platform::quietBeginning(path, mostBytes);
    for (std::string_view rest = text ? std::string_view(*text) : ""; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        constexpr std::string_view key = "Name=";
        if (!line.starts_with(key)) {
            continue;
        }
        const std::string id(line.substr(key.size()));
        const bool isInstalled =
            isSpeltOut(id) && id.find('/') == std::string::npos &&
            (platform::kindOf(home_ + "/.local/share/flatpak/app/" + id) == EntryKind::folder ||
             platform::kindOf(systemRoot_ + "/var/lib/flatpak/app/" + id) == EntryKind::folder);
        return isInstalled ? std::optional(Words{"{} ya está instalado", "{} is installed"}.in(language, id))
                           : std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::string> Judge::useOf(const std::string& path, Language language) {
    constexpr std::array<std::string_view, 1> packages{".deb"};
    constexpr std::array<std::string_view, 1> references{".flatpakref"};
    constexpr std::array<std::string_view, 8> archives{".zip",     ".tar.gz",  ".tgz", ".tar.xz",
                                                       ".tar.bz2", ".tar.zst", ".7z",  ".rar"};
    if (hasEnding(path, packages)) {
        return useOfPackage(path, language);
    }
    if (hasEnding(path, references)) {
        return useOfFlatpak(path, language);
    }
    return hasEnding(path, archives) ? useOfArchive(path, mostArchiveBytes_, language) : std::nullopt;
}

namespace {

/// The installers of one folder.
struct Judged {
    std::vector<std::string> used;
    std::vector<std::string> unused;
};

Judged judged(const locator::Installers& where, const std::string& home, const std::stop_token& stop) {
    const std::vector<std::string> paths = installersByExtension(where, home);
    std::vector<std::uint8_t> isUsed(paths.size());
    Judge judge(home, {}, mostBytesByTheWay);
    parallelFor(paths.size(), stop, [&](std::size_t index) {
        isUsed[index] = judge.useOf(paths[index], Language::en).has_value() ? 1 : 0;
    });
    Judged installers;
    for (std::size_t index = 0; index < paths.size(); ++index) {
        (isUsed[index] != 0 ? installers.used : installers.unused).push_back(paths[index]);
    }
    return installers;
}

/// What has been looked at, by the locator without what it wants of it.
struct Looked {
    std::mutex mutex;
    std::vector<std::pair<locator::Installers, Judged>> places;
};

} // namespace

InstallersFinder finder(const std::stop_token& stop) {
    return [stop, looked = std::make_shared<Looked>()](const locator::Installers& where,
                                                       const std::string& home) {
        locator::Installers place = where;
        place.use = locator::InstallerUse::unused;
        const std::lock_guard<std::mutex> lock(looked->mutex);
        auto& places = looked->places;
        auto found = std::ranges::find(places, place, &std::pair<locator::Installers, Judged>::first);
        if (found == places.end()) {
            found = places.insert(found, {place, judged(place, home, stop)});
        }
        return where.use == locator::InstallerUse::used ? found->second.used : found->second.unused;
    };
}

namespace {

/// What the query finds in one folder. Only in the downloads folder is anything deleted without being set
/// aside: elsewhere an archive beside its contents may be somebody's copy of them.
void findIn(const std::string& folder, const locator::Installers& downloads, Judge& judge,
            const InventoryQuery& query, std::vector<DetailItem>& items) {
    locator::Installers where = downloads;
    where.in = folder;
    const bool areDownloads = folder == expanded(downloads.in, query.home);
    for (const std::string& path : installersByExtension(where, query.home)) {
        const auto status = platform::statusOfFile(path);
        if (query.stop.stop_requested() || !status ||
            !query.asksFor(status->allocatedBytes, status->modified)) {
            continue;
        }
        const auto use = judge.useOf(path, query.language);
        std::string detail = use.value_or(kindOfFile(path, query.language)) +
                             Words{", del ", ", from "}.in(query.language) +
                             dayText(status->modified, query.language);
        items.push_back(itemToSetAside(
            std::string(idPrefixOf(kind)) + pathInID(path, query.home), std::string(fileName(path)), {path},
            status->allocatedBytes, std::move(detail), use && areDownloads ? Safety::safe : Safety::review));
    }
}

} // namespace

Inventory find(const InventoryQuery& query) {
    Inventory inventory{.kind = kind};
    if (const auto downloads = locatorIn(query.home)) {
        Judge judge(query.home, query.systemRoot);
        for (const std::string& folder :
             query.folders.empty() ? std::vector{expanded(downloads->in, query.home)} : query.folders) {
            findIn(folder, *downloads, judge, query, inventory.items);
        }
    }
    sortLargestFirst(inventory.items);
    return inventory;
}

std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query) {
    const auto downloads = locatorIn(query.home);
    std::set<std::string> folders;
    for (const std::string& id : ids) {
        const auto path = pathFromID(std::string_view(id).substr(idPrefixOf(kind).size()), query.home);
        if (path && downloads && path->find("/.") == std::string::npos) {
            folders.insert(std::string(parentOf(*path)));
        }
    }
    Judge judge(query.home, query.systemRoot);
    std::vector<DetailItem> beside;
    for (const std::string& folder : folders) {
        findIn(folder, *downloads, judge, query, beside);
    }
    return itemsNamed(ids, beside);
}

} // namespace lumo::Installers
