#include "TarvoModel/Showing/DemoTables.h"

#include <array>

namespace tarvo::DemoDisk {

using lumo::Safety;

std::span<const FindingRow> macFindingRows() {
    static const auto rows = std::to_array<FindingRow>({
        // What recreates itself.
        {.rule = "xcode-derived-data", .megabytes = 6430, .grown = 2340},
        {.rule = "npm-cache", .megabytes = 4120, .grown = 620},
        {.rule = "xcode-device-support", .megabytes = 3890},
        {.rule = "tarvoai-apartado", .megabytes = 3210},
        {.rule = "uv-cache", .megabytes = 2310},
        {.rule = "gradle-cache", .megabytes = 1720},
        {.rule = "pnpm-store", .megabytes = 1480},
        {.rule = "used-installers",
         .megabytes = 1340,
         .places = {"~/Downloads/Docker.dmg", "~/Downloads/googlechrome.dmg"}},
        {.rule = "playwright-browsers", .megabytes = 1260},
        {.rule = "homebrew-cache", .megabytes = 1190, .grown = 240},
        {.rule = "chrome-cache", .megabytes = 970},
        {.rule = "pip-cache", .megabytes = 640},
        {.rule = "codex-runtimes", .megabytes = 480},
        {.rule = "android-studio-cache",
         .megabytes = 430,
         .places = {"~/Library/Caches/Google/AndroidStudio2025.1"}},
        {.rule = "claude-code-old-versions",
         .megabytes = 410,
         .places = {"~/Library/Application Support/Claude/claude-code/2.0.9",
                    "~/Library/Application Support/Claude/claude-code/2.0.14"}},
        {.rule = "yarn-cache", .megabytes = 390},
        {.rule = "puppeteer-browsers", .megabytes = 330},
        {.rule = "app-updaters",
         .megabytes = 310,
         .places = {"~/Library/Caches/com.tinyspeck.slackmacgap.ShipIt", "~/Library/Caches/figma-updater"}},
        {.rule = "bun-cache", .megabytes = 270},
        {.rule = "claude-app-cache",
         .megabytes = 260,
         .places = {"~/Library/Application Support/Claude/Cache",
                    "~/Library/Application Support/Claude/Code Cache",
                    "~/Library/Application Support/Claude/GPUCache"}},
        {.rule = "npx-cache", .megabytes = 210},
        {.rule = "gradle-wrapper", .megabytes = 180},
        {.rule = "prisma-engines", .megabytes = 140},
        {.rule = "user-logs", .megabytes = 120},
        // What needs a look.
        {.rule = "docker-disk", .megabytes = 22040, .grown = 1810},
        {.rule = "ios-backups", .megabytes = 16300},
        {.rule = "ollama", .megabytes = 12210},
        {.rule = "claude-vm", .megabytes = 10420},
        {.rule = "ios-simulators", .megabytes = 8730},
        {.rule = "huggingface", .megabytes = 6910},
        {.rule = "downloaded-installers",
         .megabytes = 5210,
         .places = {"~/Downloads/Xcode_26.xip", "~/Downloads/ubuntu-24.04-desktop-arm64.iso"}},
        {.rule = "lmstudio", .megabytes = 4680},
        {.rule = "xcode-archives", .megabytes = 2940},
        {.rule = "chrome-ai-model", .megabytes = 2870},
        {.rule = "trash", .megabytes = 2480},
        {.rule = "whisper", .megabytes = 1530},
        {.rule = "aerial-wallpapers", .megabytes = 1170},
        {.rule = "desktop-screenshots",
         .megabytes = 740,
         .places = {"~/Desktop/Screenshot 2026-10-02 at 11.20.31.png",
                    "~/Desktop/Screen Recording 2026-10-14 at 17.03.12.mov"}},
        {.rule = "uv-python", .megabytes = 690},
        {.rule = "npm-global", .megabytes = 560},
        // What is kept.
        {.rule = "photos-library", .megabytes = 61200, .places = {"~/Pictures/Photos Library.photoslibrary"}},
        {.rule = "chrome-profiles",
         .megabytes = 3950,
         .places = {"~/Library/Application Support/Google/Chrome/Default",
                    "~/Library/Application Support/Google/Chrome/Profile 1"}},
        {.rule = "claude-code-history", .megabytes = 870},
        {.rule = "codex-sessions", .megabytes = 340},
        {.rule = "claude-code-current",
         .megabytes = 205,
         .places = {"~/Library/Application Support/Claude/claude-code/2.0.31"}},
    });
    return rows;
}

std::span<const ProjectRow> macProjectRows() {
    static const auto rows = std::to_array<ProjectRow>({
        {.name = {"Proyectos/analizador", "Projects/parser"},
         .ownMegabytes = 62,
         .daysAgo = 46,
         .artifacts = {{"target", 3420}}},
        {.name = {"Proyectos/tienda", "Projects/shop"},
         .ownMegabytes = 184,
         .daysAgo = 0,
         .artifacts = {{"node_modules", 2040, 310}, {".next", 780}}},
        {.name = {"Proyectos/prediccion", "Projects/forecast"},
         .ownMegabytes = 420,
         .daysAgo = 9,
         .artifacts = {{".venv", 1860}, {"__pycache__", 35}}},
        {.name = {"Proyectos/juego", "Projects/game"},
         .ownMegabytes = 910,
         .daysAgo = 3,
         .artifacts = {{".build", 1130}}},
        {.name = {"Proyectos/blog-antiguo", "Projects/old-blog"},
         .ownMegabytes = 48,
         .daysAgo = 240,
         .artifacts = {{"node_modules", 610}, {".parcel-cache", 95}}},
    });
    return rows;
}

std::span<const UnclassifiedRow> macUnclassifiedRows() {
    static const auto rows = std::to_array<UnclassifiedRow>({
        {.path = "~/Virtual Machines.localized",
         .megabytes = 26400,
         .explanation =
             ExplanationRow{.whatItIs = {"Una máquina virtual con Ubuntu y su disco",
                                         "A virtual machine with Ubuntu and its disk"},
                            .owner = "VMware Fusion",
                            .safety = Safety::review,
                            .suggested = Safety::review,
                            .reason = {"Lo que haya dentro de la máquina solo está ahí.",
                                       "Whatever is inside the machine exists only there."},
                            .howToFree = {"Si ya no la usas, bórrala desde VMware Fusion.",
                                          "If you no longer use it, delete it in VMware Fusion."}}},
        {.path = "~/Library/Application Support/Steam",
         .megabytes = 18200,
         .explanation =
             ExplanationRow{.whatItIs = {"Juegos instalados con Steam", "Games installed with Steam"},
                            .owner = "Steam",
                            .safety = Safety::review,
                            .suggested = Safety::safe,
                            .reason = {"Los juegos se pueden volver a descargar, pero tardan horas.",
                                       "Games can be downloaded again, but that takes hours."},
                            .howToFree = {"Desinstala desde Steam los que ya no juegues.",
                                          "Uninstall the ones you no longer play in Steam."},
                            .note = {"La IA lo cree seguro, pero no hay garantía: revísalo.",
                                     "The AI thinks it's safe, but there's no guarantee: review it."}}},
        {.path = "~/Documents/datasets",
         .megabytes = 9100,
         .grown = 1240,
         .explanation =
             ExplanationRow{.whatItIs = {"Datos para entrenar modelos, casi todo archivos .parquet",
                                         "Data for training models, almost all .parquet files"},
                            .owner = {},
                            .safety = Safety::review,
                            .suggested = Safety::review,
                            .reason = {"Está en tus documentos y puede que no exista en otro sitio.",
                                       "It's in your documents and may exist nowhere else."},
                            .howToFree = {"Archívalos en .zip si ya no los usas.",
                                          "Archive them as a .zip if you no longer use them."}}},
        {.path = "~/Library/Group Containers/group.net.whatsapp.WhatsApp.shared",
         .megabytes = 4310,
         .explanation =
             ExplanationRow{.whatItIs = {"Datos de WhatsApp", "WhatsApp data"},
                            .owner = "WhatsApp",
                            .safety = Safety::review,
                            .suggested = std::nullopt,
                            .reason = {"Puede contener ajustes o documentos de la app.",
                                       "It may contain the app's settings or documents."},
                            .howToFree =
                                {"Revisar desde los ajustes de WhatsApp o desinstalarla si no la usas.",
                                 "Review it in WhatsApp's settings, or uninstall it if you don't use "
                                 "it."}}},
        {.path = "~/Library/Caches/com.spotify.client",
         .megabytes = 1640,
         .explanation =
             ExplanationRow{.whatItIs = {"Caché de Spotify", "Spotify cache"},
                            .owner = "Spotify",
                            .safety = Safety::safe,
                            .suggested = std::nullopt,
                            .reason = {"macOS permite borrar las cachés: la app las regenera.",
                                       "macOS allows caches to be deleted: the app recreates them."},
                            .howToFree = {"Vaciar la carpeta con la app cerrada.",
                                          "Empty the folder with the app closed."}}},
        {.path = "~/Library/Application Support/obs-studio", .megabytes = 720},
    });
    return rows;
}

} // namespace tarvo::DemoDisk
