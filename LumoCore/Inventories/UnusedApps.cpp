#include "LumoCore/Inventories/UnusedApps.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/DesktopEntry.h"
#include "LumoCore/Inventories/LargeFiles.h"
#include "LumoCore/Inventories/Packages.h"
#include "LumoCore/Inventories/Snaps.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

namespace lumo::UnusedApps {

namespace {

using platform::EntryKind;

constexpr InventoryKind kind = InventoryKind::unused;

/// The value of an attribute in a tag; empty when it has none of that name.
std::string_view attributeIn(std::string_view tag, std::string_view name) {
    const std::string key = " " + std::string(name) + "=\"";
    const std::size_t start = tag.find(key);
    if (start == std::string_view::npos) {
        return {};
    }
    tag.remove_prefix(start + key.size());
    return tag.substr(0, tag.find('"'));
}

class Search final {
  public:
    Search(const InventoryQuery& query, Inventory& inventory)
        : query_(query), inventory_(inventory), places_(HomePlaces::ofThisMachine(query.home)) {
        constexpr std::size_t mostBytes = std::size_t{4} * 1024 * 1024;
        const auto record = platform::quietBeginning(
            places_.path("~/.local/share") + "/gnome-shell/application_state", mostBytes);
        launches_ = launchesIn(record ? std::string_view(*record) : std::string_view());
    }

    void run() {
        addFlatpaks();
        addSnaps();
        addImages();
        addPackages();
    }

  private:
    [[nodiscard]] std::string say(const Words& words) const { return words.in(query_.language); }

    [[nodiscard]] std::optional<Date> launchOf(std::string_view id) const {
        const auto found = launches_.find(id);
        return found != launches_.end() ? std::optional(found->second) : std::nullopt;
    }

    [[nodiscard]] std::string lastUse(Date date) const {
        return Words{"usada por última vez el {}", "last used {}"}.in(query_.language,
                                                                      dayText(date, query_.language));
    }

    /// The item where it was asked for and the last use lies far enough back.
    void add(DetailItem item, const std::optional<Date>& used, const std::string& path = {}) {
        if (!LargeFiles::isForgotten(used, query_.now) || item.bytes <= 0 ||
            !query_.asksFor(item.bytes, used)) {
            return;
        }
        item.detail = lastUse(*used) + (item.detail.empty() ? "" : "; " + item.detail);
        if (!path.empty()) {
            item.path = path;
        }
        inventory_.items.push_back(std::move(item));
    }

    Usage measured(const std::string& path) {
        HardLinkRegistry registry;
        return FileTree::measure(path, registry, {.progress = query_.progress, .stop = query_.stop});
    }

    static std::string idOf(std::string_view source, std::string_view name) {
        return std::string(idPrefixOf(kind)) + std::string(source) + ":" + std::string(name);
    }

    void addFlatpaks() {
        addFlatpaksIn(query_.home + "/.local/share/flatpak/app", true);
        addFlatpaksIn(query_.systemRoot + "/var/lib/flatpak/app", false);
    }

    void addFlatpaksIn(const std::string& folder, bool isOwn) {
        for (const std::string& id : platform::namesIn(folder)) {
            const std::string path = joined(folder, id);
            const std::string dataPath = query_.home + "/.var/app/" + id;
            const auto launched = launchOf(id);
            // Without a record of launches or data of its own nobody knows whether it was ever used.
            if (query_.stop.stop_requested() || platform::kindOf(path) != EntryKind::folder ||
                (!launched && platform::kindOf(dataPath) != EntryKind::folder)) {
                continue;
            }
            const Usage data = platform::isMissing(dataPath) ? Usage() : measured(dataPath);
            std::optional<Date> used = std::max(launched, data.lastModified);
            used = std::max(used, platform::modificationDate(path)); // What was installed lately is new.
            const std::string detail = dataApart(data);
            const std::int64_t bytes = measured(path).allocatedBytes;
            if (isOwn) {
                add(itemForTool(idOf("flatpak", id), id,
                                {"flatpak", "uninstall", "--user", "--noninteractive", "-y", "--app", id},
                                bytes, detail, {path}),
                    used, path);
            } else {
                add(itemToShow(idOf("flatpak-system", id), id, bytes, detail,
                               needsAdministrator("sudo flatpak uninstall --system " + id)),
                    used, path);
            }
        }
    }

    [[nodiscard]] std::string needsAdministrator(const std::string& command) const {
        return lumo::needsAdministrator(command, query_.language);
    }

    [[nodiscard]] std::string dataApart(const Usage& data) const {
        return data.allocatedBytes > 0
                   ? Words{"sus datos, aparte: {}", "its data, apart: {}"}.in(
                         query_.language, ByteFormat::string(data.allocatedBytes, query_.language))
                   : std::string();
    }

    void addSnaps() {
        const auto snaps = installedSnaps(query_);
        if (!snaps) {
            inventory_.miss(snapSocket(query_),
                            Words{"snapd no ha respondido", "snapd did not answer"}.in(query_.language));
        }
        for (const InstalledSnap& snap : snaps.value_or(std::vector<InstalledSnap>())) {
            std::optional<Date> launched;
            for (const std::string& id : snap.desktopIDs) {
                launched = std::max(launched, launchOf(id));
            }
            const std::string dataPath = query_.home + "/snap/" + snap.name;
            if (query_.stop.stop_requested() ||
                (!launched && platform::kindOf(dataPath) != EntryKind::folder)) {
                continue;
            }
            const Usage data = platform::isMissing(dataPath) ? Usage() : measured(dataPath);
            // Snaps renew themselves, so that the day of a revision says nothing where launches are known.
            const std::optional<Date> used =
                std::max(data.lastModified, launched ? launched : snap.installed);
            add(itemToShow(idOf("snap", snap.name), printable(snap.title), snap.bytes, dataApart(data),
                           needsAdministrator("sudo snap remove " + snap.name)),
                used);
        }
    }

    /// Programs that are one file each, where people keep them.
    void addImages() {
        for (const char* place : {"~/Applications", "~/AppImages", "~/.local/bin", "~/bin", "~/Desktop"}) {
            const std::string folder = places_.path(place);
            for (const std::string& name : platform::namesIn(folder)) {
                const std::string path = joined(folder, name);
                const auto status = lowerCased(name).ends_with(".appimage") ? platform::statusOfFile(path)
                                                                            : platform::failed(EINVAL);
                if (status && status->opened && status->links == 1) {
                    add(itemToSetAside(idOf("appimage", pathInID(path, query_.home)), name, {path},
                                       status->allocatedBytes, ""),
                        std::max(status->modified, *status->opened));
                }
            }
        }
    }

    /// When the program of an entry was opened last, where the volume keeps that.
    [[nodiscard]] std::optional<Date> openingOf(const std::string& program) const {
        for (const char* folder : {"/usr/bin/", "/usr/local/bin/", "/usr/games/"}) {
            const auto real = platform::withoutLinks(query_.systemRoot + folder + program);
            const auto status = real ? platform::statusOfFile(*real) : platform::failed(ENOENT);
            if (status && status->opened) {
                return std::max(status->modified, *status->opened);
            }
        }
        return std::nullopt;
    }

    void addPackages() {
        const auto packages = packagesOfSystem(query_.systemRoot);
        if (packages.empty()) {
            return;
        }
        std::map<std::string, std::pair<DesktopEntry, Date>> unused; ///< By the entry's file.
        for (DesktopEntry& entry : desktopEntriesIn({query_.systemRoot + "/usr/share"})) {
            const auto opened = entry.program.empty() ? std::nullopt : openingOf(entry.program);
            const auto used = opened ? std::max(opened, launchOf(entry.id)) : std::nullopt;
            if (LargeFiles::isForgotten(used, query_.now)) {
                const std::string path = entry.path.substr(query_.systemRoot.size());
                unused.emplace(path, std::pair(std::move(entry), *used));
            }
        }
        if (unused.empty()) {
            return;
        }
        for (auto& [package, path] : ownersOf(unused)) {
            const auto found = packages.find(package);
            const auto& [entry, used] = unused.at(path);
            if (found != packages.end() && found->second.state == Package::State::installed) {
                add(itemToShow(idOf("package", package), entry.name, found->second.installedBytes, package,
                               needsAdministrator("sudo apt remove " + package)),
                    used);
            }
        }
    }

    /// The packages that the entries came with, each with one of them.
    template <class Entries>
    std::map<std::string, std::string> ownersOf(const Entries& entries) const {
        constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;
        constexpr std::string_view ending = ".list";
        std::map<std::string, std::string> owners;
        const std::string folder = query_.systemRoot + "/var/lib/dpkg/info";
        for (const std::string& name : platform::namesIn(folder)) {
            const auto list = name.ends_with(ending) ? platform::readWhole(joined(folder, name), mostBytes)
                                                     : platform::failed(EINVAL);
            if (!list || list->find("/usr/share/applications/") == std::string::npos) {
                continue;
            }
            const std::string_view stem = std::string_view(name).substr(0, name.size() - ending.size());
            for (const auto& [path, entry] : entries) {
                if (list->find(path + "\n") != std::string::npos) {
                    owners.emplace(stem.substr(0, stem.find(':')), path);
                }
            }
        }
        return owners;
    }

    const InventoryQuery& query_;
    Inventory& inventory_;
    HomePlaces places_;
    std::map<std::string, Date, std::less<>> launches_;
};

} // namespace

std::map<std::string, Date, std::less<>> launchesIn(std::string_view record) {
    constexpr std::string_view opening = "<application ";
    constexpr std::string_view ending = ".desktop";
    std::map<std::string, Date, std::less<>> launches;
    for (std::size_t start = record.find(opening); start != std::string_view::npos;
         start = record.find(opening, start + 1)) {
        const std::string_view tag = record.substr(start, record.find('>', start) - start);
        std::string_view id = attributeIn(tag, "id");
        const std::string_view seen = attributeIn(tag, "last-seen");
        std::int64_t seconds = 0;
        const auto read = std::from_chars(seen.data(), seen.data() + seen.size(), seconds);
        constexpr std::int64_t lastSecond = 253402300799; // Of the year 9999.
        if (read.ec == std::errc() && seconds > 0 && seconds <= lastSecond && id.ends_with(ending)) {
            id.remove_suffix(ending.size());
            launches[std::string(id)] = Date(std::chrono::seconds(seconds));
        }
    }
    return launches;
}

Inventory find(const InventoryQuery& query) {
    Inventory inventory{.kind = kind};
    Search(query, inventory).run();
    sortLargestFirst(inventory.items);
    return inventory;
}

} // namespace lumo::UnusedApps
