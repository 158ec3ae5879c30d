#include "LumoCore/Inventories/Leftovers.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/Installed.h"
#include "LumoCore/Inventories/Packages.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace lumo::Leftovers {

namespace {

using platform::EntryKind;

constexpr InventoryKind kind = InventoryKind::leftovers;

struct Leftover {
    std::string path;
    std::string name;
    std::string detail;
};

std::vector<std::string> foldersIn(const std::string& folder) {
    std::vector<std::string> paths;
    for (const std::string& name : platform::namesIn(folder)) {
        if (std::string path = joined(folder, name); platform::kindOf(path) == EntryKind::folder) {
            paths.push_back(std::move(path));
        }
    }
    return paths;
}

/// What is installed, read below the query's own root.
Installed installedFor(const InventoryQuery& query) {
    Installed installed;
    if (query.systemRoot.empty()) {
        return Installed::ofThisMachine(query.home);
    }
    for (const auto& [name, package] : packagesOfSystem(query.systemRoot)) {
        (package.state == Package::State::installed ? installed.packages : installed.removedPackages)
            .insert(name);
    }
    installed.flatpakFolders = {query.home + "/.local/share/flatpak/app",
                                query.systemRoot + "/var/lib/flatpak/app"};
    installed.snapFolders = {query.systemRoot + "/snap"};
    return installed;
}

/// One detector after the other, each adding what it is sure of.
class Search final {
  public:
    explicit Search(const InventoryQuery& query)
        : query_(query), places_(HomePlaces::ofThisMachine(query.home)), installed_(installedFor(query)) {}

    std::vector<Leftover> run() {
        addUninstalled();
        addOlderVersions();
        addEntriesOfMissingImages();
        return std::move(found_);
    }

  private:
    [[nodiscard]] std::string say(const Words& words) const { return words.in(query_.language); }

    void add(const std::string& path, std::string name, std::string detail) {
        const auto isAround = [&](const Leftover& other) { return isInside(path, other.path); };
        if (std::ranges::none_of(found_, isAround)) {
            found_.push_back({path, std::move(name), std::move(detail)});
        }
    }

    void addUninstalled() {
        for (const char* place : {"/.var/app", "/snap"}) {
            for (const std::string& path : foldersIn(query_.home + place)) {
                // Snap itself and Flatpak's common parts have folders of their own there.
                const bool isOwn = path.ends_with("/snap/bin") || path.ends_with("/snap/common");
                if (const auto owner = isOwn ? std::nullopt : uninstalledOwnerOf(path)) {
                    add(path, *owner,
                        say({"datos de una app que ya no está instalada",
                             "data of an app that is no longer installed"}));
                }
            }
        }
        for (const char* place : {"~/.config", "~/.local/share", "~/.local/state", "~/.cache"}) {
            for (const std::string& path : foldersIn(places_.path(place))) {
                if (const auto owner = uninstalledOwnerOf(path)) {
                    add(path, *owner,
                        say({"ajustes o datos de un paquete que se quitó",
                             "settings or data of a package that was removed"}));
                }
            }
        }
    }

    [[nodiscard]] std::optional<std::string> uninstalledOwnerOf(const std::string& path) const {
        return installed_.uninstalledOwnerOf(path, query_.home, System::linux);
    }

    /// Where programs keep a folder a version, "Name1.2" or "1.2": JetBrains' and Android Studio's settings,
    /// caches and plug-ins, and Blender's and GIMP's settings.
    void addOlderVersions() {
        constexpr std::array<std::string_view, 9> parents{
            "~/.config/JetBrains", "~/.cache/JetBrains", "~/.local/share/JetBrains",
            "~/.config/Google",    "~/.cache/Google",    "~/.local/share/Google",
            "~/.config/blender",   "~/.config/GIMP",     "~/.config/libreoffice"};
        for (const std::string_view parent : parents) {
            std::map<std::string, std::vector<std::string>> byProduct;
            for (const std::string& path : foldersIn(places_.path(parent))) {
                const std::string_view name = fileName(path);
                const std::size_t digit = name.find_first_of("0123456789");
                if (digit != std::string_view::npos && isVersion(name.substr(digit))) {
                    byProduct[std::string(name.substr(0, digit))].push_back(path);
                }
            }
            for (auto& [product, versions] : byProduct) {
                addAllButNewest(product, versions, fileName(parent));
            }
        }
    }

    static bool isVersion(std::string_view text) {
        const bool isSpelt =
            std::ranges::all_of(text, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
        return isSpelt && text.find('.') != std::string_view::npos && !text.ends_with('.');
    }

    void addAllButNewest(const std::string& product, std::vector<std::string>& versions,
                         std::string_view maker) {
        std::ranges::sort(versions, comesBeforeNumerically);
        const std::string newest(fileName(versions.back()));
        for (std::size_t index = 0; index + 1 < versions.size(); ++index) {
            const std::string name(fileName(versions[index]));
            add(versions[index], product.empty() ? std::string(maker) + " " + name : name,
                Words{"de una versión anterior; la más nueva es {}", "of an older version; the newest is {}"}
                    .in(query_.language, newest));
        }
    }

    void addEntriesOfMissingImages() {
        constexpr std::size_t mostBytes = std::size_t{64} * 1024;
        const std::string folder = places_.path("~/.local/share/applications");
        for (const std::string& name : platform::namesIn(folder)) {
            const std::string path = joined(folder, name);
            const auto text = name.ends_with(".desktop") && platform::kindOf(path) == EntryKind::file
                                  ? platform::quietBeginning(path, mostBytes)
                                  : platform::failed(EINVAL);
            const auto image = text ? imageStartedBy(*text) : std::nullopt;
            if (image && platform::isMissing(*image)) {
                add(path, name,
                    Words{"entrada de menú de {}, que ya no está", "menu entry of {}, which is gone"}.in(
                        query_.language, abbreviated(*image, query_.home)));
            }
        }
    }

    /// The AppImage that the entry's command line begins with, by its path; absent for any other program.
    static std::optional<std::string> imageStartedBy(std::string_view entry) {
        const std::size_t line = entry.starts_with("Exec=") ? 0 : entry.find("\nExec=");
        if (line == std::string_view::npos) {
            return std::nullopt;
        }
        std::string_view command = entry.substr(entry.find('=', line) + 1);
        command = command.substr(0, command.find('\n'));
        const bool isQuoted = command.starts_with('"');
        command.remove_prefix(isQuoted ? 1 : 0);
        const std::string program(command.substr(0, command.find(isQuoted ? '"' : ' ')));
        const bool isImage = program.starts_with('/') && lowerCased(program).ends_with(".appimage");
        return isImage ? std::optional(program) : std::nullopt;
    }

    const InventoryQuery& query_;
    HomePlaces places_;
    Installed installed_;
    std::vector<Leftover> found_;
};

} // namespace

Inventory find(const InventoryQuery& query) {
    Inventory inventory{.kind = kind};
    HardLinkRegistry registry;
    for (Leftover& leftover : Search(query).run()) {
        const Usage usage =
            FileTree::measure(leftover.path, registry, {.progress = query.progress, .stop = query.stop});
        if (query.stop.stop_requested()) {
            break;
        }
        inventory.missIn(leftover.path, usage.unreadableCount, query.language);
        if (usage.allocatedBytes > 0 && query.asksFor(usage.allocatedBytes, usage.lastModified)) {
            inventory.items.push_back(itemToSetAside(
                std::string(idPrefixOf(kind)) + pathInID(leftover.path, query.home), std::move(leftover.name),
                {leftover.path}, usage.allocatedBytes, std::move(leftover.detail)));
        }
    }
    sortLargestFirst(inventory.items);
    return inventory;
}

} // namespace lumo::Leftovers
