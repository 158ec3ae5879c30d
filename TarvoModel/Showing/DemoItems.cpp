#include "TarvoModel/Showing/DemoItems.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "TarvoModel/Showing/DemoTables.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo::DemoDisk {

using lumo::DetailItem;
using lumo::InventoryKind;
using lumo::Words;

namespace {

/// Sizes in megabytes, paths from the home on.
struct ItemRow {
    InventoryKind kind;
    std::string_view name; ///< Without one the path's.
    std::string_view path; ///< May be empty.
    std::int64_t megabytes;
    Words detail;
    std::string_view kept = {};    ///< Of a duplicate.
    std::string_view command = {}; ///< An administrator's, who is needed then.
};

constexpr std::array table{
    ItemRow{
        InventoryKind::large,
        "",
        "Videos/Norway 2023.mp4",
        6840,
        {"Vídeo · sin abrir desde hace 14 meses: olvidado", "Film · not opened for 14 months: forgotten"}},
    ItemRow{InventoryKind::large,
            "",
            "Videos/Wedding (raw).mov",
            4410,
            {"Vídeo · cambió hace 3 años: olvidado", "Film · changed 3 years ago: forgotten"}},
    ItemRow{InventoryKind::large,
            "",
            "Documents/survey-2024.sqlite",
            1270,
            {"Base de datos · cambió hace 2 meses", "Database · changed 2 months ago"}},
    ItemRow{InventoryKind::duplicates,
            "",
            "Desktop/IMG_2041.mov",
            512,
            {"copia de Imágenes/Camera/IMG_2041.mov, que se queda",
             "copy of Pictures/Camera/IMG_2041.mov, which stays"},
            "Pictures/Camera/IMG_2041.mov"},
    ItemRow{InventoryKind::duplicates,
            "",
            "Documents/Old laptop/thesis-scans.pdf",
            186,
            {"copia de Documentos/thesis-scans.pdf, que se queda",
             "copy of Documents/thesis-scans.pdf, which stays"},
            "Documents/thesis-scans.pdf"},
    ItemRow{InventoryKind::unused,
            "org.kde.kdenlive",
            ".var/app/org.kde.kdenlive/config",
            940,
            {"sin abrir desde hace 11 meses", "not opened for 11 months"}},
    ItemRow{InventoryKind::unused, "GIMP", "", 320, {"gimp", "gimp"}, {}, "sudo apt remove gimp"},
    ItemRow{InventoryKind::leftovers,
            "com.valvesoftware.Steam",
            ".var/app/com.valvesoftware.Steam",
            2300,
            {"datos de una app que ya no está", "data of an app that is gone"}},
    ItemRow{InventoryKind::models,
            "mistral:7b",
            "",
            4100,
            {"7,2 mil millones de parámetros, Q4_0 · sin usar desde hace 5 meses",
             "7.2 billion parameters, Q4_0 · not used for 5 months"}},
    // The two that the scan found together.
    ItemRow{InventoryKind::installers,
            "",
            "Downloads/ubuntu-24.04-desktop-amd64.iso",
            3473,
            {"Imagen de disco, del 12 ago 2026", "Disk image, from Aug 12, 2026"}},
    ItemRow{InventoryKind::installers,
            "",
            "Downloads/blender-4.5-linux-x64.tar.xz",
            1737,
            {"Comprimido, del 3 jul 2026", "Archive, from Jul 3, 2026"}},
    ItemRow{InventoryKind::system,
            "journal",
            "",
            980,
            {"registro del sistema", "the system's journal"},
            {},
            "sudo journalctl --vacuum-time=2weeks"},
    ItemRow{InventoryKind::system,
            "Linux 6.8.0-31",
            "",
            410,
            {"núcleo antiguo", "old kernel"},
            {},
            "sudo apt remove linux-image-6.8.0-31-generic"},
};

DetailItem itemOf(const ItemRow& row, lumo::Language language, lumo::System system) {
    const auto inHome = [&](std::string_view path) {
        return lumo::joined(std::string(home(system)), named(path, language, system));
    };
    const std::string name(row.name.empty() ? lumo::fileName(row.path) : row.name);
    const std::string id =
        std::string(lumo::idPrefixOf(row.kind)) + std::string(row.path.empty() ? row.name : row.path);
    DetailItem item = lumo::itemToSetAside(
        id, name, row.path.empty() ? std::vector<std::string>() : std::vector{inHome(row.path)},
        row.megabytes * 1'000'000, row.detail.in(language));
    if (row.kind == InventoryKind::models) {
        item.action.method = lumo::method::Command{{"ollama", "rm", name}};
    }
    if (!row.kept.empty()) {
        item.kept = inHome(row.kept);
    }
    if (!row.command.empty()) {
        item.blockedBecause = lumo::needsAdministrator(row.command, language);
    }
    return item;
}

} // namespace

lumo::Inventory items(InventoryKind kind, lumo::Language language, lumo::System system) {
    lumo::Inventory inventory{.kind = kind};
    for (const ItemRow& row : table) {
        if (row.kind == kind) {
            inventory.items.push_back(itemOf(row, language, system));
        }
    }
    if (kind == InventoryKind::docker) {
        inventory.unavailable = Words{"Docker no está en marcha", "Docker is not running"}.in(language);
    } else if (kind == InventoryKind::cloud) {
        inventory.unavailable = Words{"ninguna carpeta de la nube dice qué copias puede devolver",
                                      "no cloud folder tells which copies it can give back"}
                                    .in(language);
    }
    return inventory;
}

} // namespace tarvo::DemoDisk
