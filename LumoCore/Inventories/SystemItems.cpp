#include "LumoCore/Inventories/SystemItems.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/AskedTool.h"
#include "LumoCore/Inventories/Packages.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <array>

namespace lumo::SystemItems {

namespace {

using platform::EntryKind;

constexpr InventoryKind kind = InventoryKind::system;

/// A folder that the system fills, and what empties it.
struct Place {
    std::string_view id;
    Words name;
    std::string_view folder;
    std::string_view command;
    Words detail;
};

constexpr std::array<Place, 7> places{
    {{"apt",
      {"Paquetes descargados por apt", "Packages downloaded by apt"},
      "/var/cache/apt/archives",
      "sudo apt clean",
      {"se descargan otra vez si hacen falta", "downloaded again when needed"}},
     {"dnf",
      {"Paquetes descargados por dnf", "Packages downloaded by dnf"},
      "/var/cache/dnf",
      "sudo dnf clean all",
      {"se descargan otra vez si hacen falta", "downloaded again when needed"}},
     {"pacman",
      {"Paquetes descargados por pacman", "Packages downloaded by pacman"},
      "/var/cache/pacman/pkg",
      "sudo pacman -Sc",
      {"se descargan otra vez si hacen falta; así se queda lo instalado",
       "downloaded again when needed; this keeps what is installed"}},
     {"journal",
      {"Diario del sistema", "System journal"},
      "/var/log/journal",
      "sudo journalctl --vacuum-time=2weeks",
      {"lo que apuntaron los programas; así quedan dos semanas",
       "what programs noted down; this keeps two weeks"}},
     {"coredump",
      {"Volcados de programas que fallaron", "Dumps of programs that crashed"},
      "/var/lib/systemd/coredump",
      "sudo find /var/lib/systemd/coredump -type f -delete",
      {"solo sirven para buscar un fallo", "only good for looking for a fault"}},
     {"crash",
      {"Informes de fallos", "Crash reports"},
      "/var/crash",
      "sudo find /var/crash -type f -delete",
      {"solo sirven para buscar un fallo", "only good for looking for a fault"}},
     {"tmp",
      {"Archivos temporales que sobreviven al reinicio", "Temporary files that outlive a restart"},
      "/var/tmp",
      "sudo systemd-tmpfiles --clean",
      {"el sistema borra él mismo los que tienen más de 30 días",
       "the system itself deletes those older than 30 days"}}}};

/// Adds what the system's own list says.
class Search final {
  public:
    Search(const InventoryQuery& query, Inventory& inventory) : query_(query), inventory_(inventory) {}

    void run() {
        for (const Place& place : places) {
            addPlace(place);
        }
        addKernels();
        addSnaps();
        addFlatpakRuntimes();
    }

  private:
    [[nodiscard]] std::string say(const Words& words) const { return words.in(query_.language); }

    [[nodiscard]] std::string needsAdministrator(std::string_view command) const {
        return lumo::needsAdministrator(command, query_.language);
    }

    void add(DetailItem item, const std::string& path = {}) {
        if (!path.empty()) {
            item.path = path;
        }
        if (item.bytes > 0 && query_.asksFor(item.bytes)) {
            inventory_.items.push_back(std::move(item));
        }
    }

    static std::string idOf(std::string_view own) { return std::string(idPrefixOf(kind)) + std::string(own); }

    std::int64_t measured(const std::string& path) {
        HardLinkRegistry registry;
        const Usage usage =
            FileTree::measure(path, registry, {.progress = query_.progress, .stop = query_.stop});
        inventory_.missIn(path, usage.unreadableCount, query_.language);
        return usage.fileCount > 0 ? usage.allocatedBytes : 0;
    }

    void addPlace(const Place& place) {
        const std::string folder = query_.systemRoot + std::string(place.folder);
        if (platform::kindOf(folder) == EntryKind::folder) {
            add(itemToShow(idOf(place.id), say(place.name), measured(folder), say(place.detail),
                           needsAdministrator(place.command)),
                folder);
        }
    }

    /// Kernels that are installed and neither run now nor are the newest.
    void addKernels() {
        constexpr std::size_t mostBytes = 4096;
        constexpr std::string_view prefix = "linux-image-";
        const auto running = platform::readWhole(query_.systemRoot + "/proc/sys/kernel/osrelease", mostBytes);
        if (!running) {
            return; // Without that nobody knows which one is needed.
        }
        const std::string release = running->substr(0, running->find('\n'));
        std::vector<std::string> versions;
        const auto packages = packagesOfSystem(query_.systemRoot);
        for (const auto& [name, package] : packages) {
            // The package "linux-image-amd64" only names the newest of the others.
            const bool isKernel = name.starts_with(prefix) && name.size() > prefix.size() &&
                                  name[prefix.size()] >= '0' && name[prefix.size()] <= '9';
            if (isKernel && package.state == Package::State::installed) {
                versions.push_back(name.substr(prefix.size()));
            }
        }
        std::ranges::sort(versions, comesBeforeNumerically);
        for (std::size_t index = 0; index + 1 < versions.size(); ++index) {
            const std::string& version = versions[index];
            if (version == release) {
                continue;
            }
            const std::string package = std::string(prefix) + version;
            add(itemToShow(idOf("kernel:" + version), "Linux " + version, packages.at(package).installedBytes,
                           say({"núcleo anterior; el que funciona ahora y el más nuevo se quedan",
                                "older kernel; the one that runs now and the newest stay"}),
                           needsAdministrator("sudo apt remove " + package)));
        }
    }

    /// Revisions that Snap keeps to go back to. A disabled one is not mounted, and its file lies there.
    void addSnaps() {
        const std::string folder = query_.systemRoot + "/var/lib/snapd/snaps";
        for (const std::string& name : platform::namesIn(folder)) {
            const std::string_view stem = fileStem(name);
            const std::size_t line = stem.rfind('_');
            if (!name.ends_with(".snap") || line == std::string_view::npos) {
                continue;
            }
            const std::string snap(stem.substr(0, line));
            const std::string revision(stem.substr(line + 1));
            const auto current = platform::linkTarget(query_.systemRoot + "/snap/" + snap + "/current");
            if (current && *current != revision) {
                add(itemToShow(idOf("snap:" + std::string(stem)), snap + " " + revision,
                               measured(joined(folder, name)),
                               Words{"revisión que no se usa; la que se usa es {}",
                                     "revision that is not used; the one in use is {}"}
                                   .in(query_.language, *current),
                               needsAdministrator("sudo snap remove " + snap + " --revision=" + revision)),
                    joined(folder, name));
            }
        }
    }

    /// Flatpak itself knows which runtimes nothing needs. What it would take is told by its own list, one
    /// reference a line.
    void addFlatpakRuntimes() {
        const std::string folder = query_.home + "/.local/share/flatpak/runtime";
        if (platform::kindOf(folder) != EntryKind::folder) {
            return;
        }
        const auto used = askTool({"flatpak", "list", "--user", "--app", "--columns=runtime"}, query_);
        if (!used) {
            return;
        }
        for (const std::string& runtime : platform::namesIn(folder)) {
            const bool isNeeded = used->find(runtime) != std::string::npos || isExtension(runtime);
            if (!isNeeded) {
                add(itemForTool(
                        idOf("runtime:" + runtime), runtime,
                        {"flatpak", "uninstall", "--user", "--noninteractive", "-y", "--runtime", runtime},
                        measured(joined(folder, runtime)),
                        say({"entorno de Flatpak que no usa ninguna app instalada",
                             "Flatpak runtime that no installed app uses"}),
                        {joined(folder, runtime)}),
                    joined(folder, runtime));
            }
        }
    }

    /// Graphics, languages and codecs belong to a runtime, and go with it by themselves.
    static bool isExtension(std::string_view runtime) {
        constexpr std::array<std::string_view, 7> parts{".GL.",      ".GL32.",  ".Locale",   ".Compat.",
                                                        ".openh264", ".ffmpeg", ".Extension"};
        return std::ranges::any_of(parts, [&](std::string_view part) {
            return runtime.find(part) != std::string_view::npos ||
                   runtime.ends_with(part.substr(0, part.size() - 1));
        });
    }

    const InventoryQuery& query_;
    Inventory& inventory_;
};

} // namespace

Inventory find(const InventoryQuery& query) {
    Inventory inventory{.kind = kind};
    Search(query, inventory).run();
    sortLargestFirst(inventory.items);
    return inventory;
}

} // namespace lumo::SystemItems
