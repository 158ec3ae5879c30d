#include "TarvoModel/Showing/DemoTables.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace tarvo::DemoDisk {

using lumo::FreeingAction;
using lumo::Safety;

std::span<const FindingRow> linuxFindingRows() {
    static const auto rows = std::to_array<FindingRow>({
        // What recreates itself.
        {.rule = "go-build-cache", .megabytes = 6430, .grown = 2340, .places = {"~/.cache/go-build"}},
        {.rule = "npm-cache", .megabytes = 4120, .grown = 620},
        {.rule = "cargo-registry",
         .megabytes = 3890,
         .places = {"~/.cargo/registry/cache", "~/.cargo/registry/src"}},
        {.rule = "tarvoai-apartado", .megabytes = 3210},
        {.rule = "uv-cache", .megabytes = 2310},
        {.rule = "gradle-cache", .megabytes = 1720},
        {.rule = "spotify-cache", .megabytes = 1640, .places = {"~/.cache/spotify"}},
        {.rule = "pnpm-store", .megabytes = 1480, .places = {"~/.local/share/pnpm/store"}},
        {.rule = "used-installers",
         .megabytes = 1340,
         .places = {"~/Downloads/google-chrome-stable_current_amd64.deb", "~/Downloads/steam_latest.deb"}},
        {.rule = "playwright-browsers", .megabytes = 1260, .places = {"~/.cache/ms-playwright"}},
        {.rule = "firefox-cache", .megabytes = 1190, .grown = 240, .places = {"~/.cache/mozilla/firefox"}},
        {.rule = "go-modules", .megabytes = 1120, .places = {"~/go/pkg/mod"}},
        {.rule = "chrome-cache", .megabytes = 970, .places = {"~/.cache/google-chrome"}},
        {.rule = "jetbrains-caches", .megabytes = 760, .places = {"~/.cache/JetBrains"}},
        {.rule = "pip-cache", .megabytes = 640, .places = {"~/.cache/pip"}},
        {.rule = "shader-caches",
         .megabytes = 520,
         .places = {"~/.local/share/Steam/steamapps/shadercache", "~/.cache/mesa_shader_cache"}},
        {.rule = "codex-runtimes", .megabytes = 480},
        {.rule = "ccache", .megabytes = 450, .places = {"~/.cache/ccache"}},
        {.rule = "yarn-cache", .megabytes = 390, .places = {"~/.cache/yarn"}},
        {.rule = "code-editor-caches",
         .megabytes = 380,
         .places = {"~/.config/Code/CachedData", "~/.config/Code/Cache", "~/.config/Code/logs"}},
        {.rule = "puppeteer-browsers", .megabytes = 330},
        {.rule = "thumbnails", .megabytes = 260, .places = {"~/.cache/thumbnails"}},
        {.rule = "npx-cache", .megabytes = 210},
        {.rule = "gradle-wrapper", .megabytes = 180},
        {.rule = "snap-app-caches", .megabytes = 150, .places = {"~/snap/firefox/common/.cache"}},
        {.rule = "prisma-engines", .megabytes = 140},
        // What needs a look.
        {.rule = "virtual-machines", .megabytes = 26400, .places = {"~/VirtualBox VMs"}},
        {.rule = "containers-storage",
         .megabytes = 22040,
         .grown = 1810,
         .places = {"~/.local/share/containers"}},
        {.rule = "steam-games", .megabytes = 18200, .places = {"~/.local/share/Steam/steamapps/common"}},
        {.rule = "ollama", .megabytes = 12210},
        {.rule = "flatpak-apps", .megabytes = 7400, .places = {"~/.local/share/flatpak"}},
        {.rule = "huggingface", .megabytes = 6910},
        {.rule = "downloaded-installers",
         .megabytes = 5210,
         .places = {"~/Downloads/ubuntu-24.04-desktop-amd64.iso",
                    "~/Downloads/blender-4.5-linux-x64.tar.xz"}},
        {.rule = "lmstudio", .megabytes = 4680},
        {.rule = "wine-prefixes", .megabytes = 3900, .places = {"~/.wine"}},
        {.rule = "chrome-ai-model",
         .megabytes = 2870,
         .places = {"~/.config/google-chrome/OptGuideOnDeviceModel"}},
        {.rule = "trash", .megabytes = 2480, .places = {"~/.local/share/Trash"}},
        {.rule = "maven-repository", .megabytes = 2100, .places = {"~/.m2/repository"}},
        {.rule = "rust-toolchains", .megabytes = 1730, .places = {"~/.rustup/toolchains"}},
        {.rule = "whisper", .megabytes = 1530},
        {.rule = "language-versions", .megabytes = 1170, .places = {"~/.nvm/versions", "~/.pyenv/versions"}},
        {.rule = "editor-extensions", .megabytes = 890, .places = {"~/.vscode/extensions"}},
        {.rule = "desktop-screenshots",
         .megabytes = 740,
         .places = {"~/Pictures/Screenshots/Screencast from 2026-10-14 17-03-12.webm",
                    "~/Pictures/Screenshots/Screenshot from 2026-10-02 11-20-31.png"}},
        {.rule = "uv-python", .megabytes = 690},
        {.rule = "npm-global", .megabytes = 560},
        // What is kept.
        {.rule = "mail", .megabytes = 8300, .places = {"~/.thunderbird"}},
        {.rule = "chrome-profiles",
         .megabytes = 3950,
         .places = {"~/.config/google-chrome/Default", "~/.config/google-chrome/Profile 1"}},
        {.rule = "firefox-profiles", .megabytes = 1950, .places = {"~/.mozilla/firefox"}},
        {.rule = "claude-code-history", .megabytes = 870},
        {.rule = "codex-sessions", .megabytes = 340},
    });
    return rows;
}

std::span<const ProjectRow> linuxProjectRows() {
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
        {.name = {"Proyectos/agenda", "Projects/planner"},
         .ownMegabytes = 910,
         .daysAgo = 3,
         .artifacts = {{".gradle", 1130}}},
        {.name = {"Proyectos/blog-antiguo", "Projects/old-blog"},
         .ownMegabytes = 48,
         .daysAgo = 240,
         .artifacts = {{"node_modules", 610}, {".parcel-cache", 95}}},
    });
    return rows;
}

std::span<const UnclassifiedRow> linuxUnclassifiedRows() {
    static const auto rows = std::to_array<UnclassifiedRow>({
        {.path = "~/.local/share/labeled-images",
         .megabytes = 9100,
         .grown = 1240,
         .explanation = ExplanationRow{.whatItIs = {"Imágenes etiquetadas para entrenar modelos",
                                                    "Labeled images for training models"},
                                       .safety = Safety::review,
                                       .suggested = Safety::review,
                                       .reason = {"Las etiquetas puede que no existan en otro sitio.",
                                                  "The labels may exist nowhere else."},
                                       .action = FreeingAction::reviewContents}},
        {.path = "~/.local/share/PrismLauncher",
         .megabytes = 6200,
         .explanation = ExplanationRow{.whatItIs = {"Mundos y versiones de un juego de bloques",
                                                    "Worlds and versions of a game of blocks"},
                                       .owner = "Prism Launcher",
                                       .safety = Safety::review,
                                       .suggested = Safety::safe,
                                       .reason = {"Las versiones se vuelven a descargar; los mundos, no.",
                                                  "Versions can be downloaded again; worlds cannot."},
                                       .action = FreeingAction::reviewContents}},
        {.path = "~/.local/share/kdenlive",
         .megabytes = 4310,
         .explanation = ExplanationRow{.owner = "Kdenlive"}},
        {.path = "~/.cache/stremio-server",
         .megabytes = 1640,
         .explanation = ExplanationRow{.owner = "Stremio"}},
        {.path = "~/.voice-typing", .megabytes = 980, .explanation = ExplanationRow{}},
        {.path = "~/.config/obs-studio", .megabytes = 720},
    });
    return rows;
}

// Only what is not on a Mac as well, or looks different there.
std::span<const FolderRow> linuxFolderRows() {
    static const auto rows = std::to_array<FolderRow>({
        // By rule.
        {"go-build-cache",
         {{"7f", 41, {{"7f03c1-d", 23}, {"7fa2e4-d", 18}}},
          {"0c", 33, {{"0c81b7-d", 19}, {"0cd5f2-d", 14}}},
          {"e2", 25, {{"e24410-d", 1}}},
          {"trim.txt", 1}}},
        {"virtual-machines",
         {{"Ubuntu 24.04",
           1,
           {{"Ubuntu 24.04.vdi", 91}, {"Snapshots", 8, {{"state.sav", 1}}}, {"Logs.tar", 1}}}}},
        {"containers-storage",
         {{"storage",
           1,
           {{"overlay",
             92,
             {{"4f1ac8", 38, {{"diff.tar", 1}}}, {"b77d02", 31, {{"diff.tar", 1}}}, {"09ce5a", 23}}},
            {"volumes", 7, {{"database", 1, {{"data.db", 1}}}}},
            {"overlay-images", 1, {{"images.json", 1}}}}}}},
        {"steam-games",
         {{"Island Builder", 44, {{"assets.pak", 39}, {"game", 5}}},
          {"Night Train", 33, {{"levels.pak", 28}, {"sound.bank", 5}}},
          {"Puzzle Garden", 18, {{"data.unity3d", 1}}}}},
        {"flatpak-apps",
         {{"runtime", 58, {{"org.gnome.Platform", 33, {{"files.tar", 1}}}, {"org.kde.Platform", 25}}},
          {"app", 31, {{"org.gimp.GIMP", 17, {{"files.tar", 1}}}, {"net.ankiweb.Anki", 14}}},
          {"repo", 11, {{"objects.pack", 1}}}}},
        {"wine-prefixes",
         {{"drive_c",
           98,
           {{"Program Files", 71, {{"Accounts 2019", 44}, {"Scanner", 27}}},
            {"windows", 27, {{"system32", 1}}}}},
          {"system.reg", 2}}},
        {"trash",
         {{"files",
           99,
           {{"old-presentation.odp", 38},
            {"Recording 4.webm", 31},
            {"prototype", 24, {{"render.blend", 15}, {"textures.zip", 9}}},
            {"budget-2023.ods", 6}}},
          {"info", 1, {{"prototype.trashinfo", 1}}}}},
        {"mail",
         {{"k3x8f2.default-release",
           1,
           {{"ImapMail", 83, {{"mail.example.org", 1, {{"INBOX", 52}, {"Archive", 31}}}}},
            {"global-messages-db.sqlite", 14},
            {"abook.sqlite", 3}}}}},
        {"firefox-profiles",
         {{"p7q1ab.default-release",
           1,
           {{"storage", 66, {{"default.tar", 1}}}, {"places.sqlite", 21}, {"favicons.sqlite", 13}}}}},
        // By artifact.
        {"node_modules",
         {{"next", 26, {{"dist", 22, {{"compiled.js", 14}, {"server.js", 8}}}, {"amp.js", 1}}},
          {"@next", 20, {{"swc-linux-x64-gnu", 1, {{"next-swc.node", 1}}}}},
          {"typescript", 14, {{"lib", 1, {{"typescript.js", 9}, {"tsserver.js", 5}}}}},
          {"@img", 12, {{"sharp-libvips.so", 11}, {"sharp.node", 1}}},
          {"date-fns", 9, {{"esm.js", 5}, {"cjs.js", 4}}},
          {"react-dom", 7, {{"cjs.js", 5}, {"umd.js", 2}}},
          {"lodash", 5, {{"lodash.js", 1}}},
          {".cache.bin", 1}}},
        {".venv",
         {{"lib",
           96,
           {{"torch", 61, {{"libtorch_cpu.so", 49}, {"include.tar", 12}}},
            {"scipy", 14, {{"linalg.so", 1}}},
            {"pandas", 12, {{"_libs.so", 1}}},
            {"numpy", 9, {{"core.so", 1}}}}},
          {"bin", 4, {{"ruff", 3}, {"python", 1}}}}},
        {".gradle",
         {{"8.14", 77, {{"executionHistory.bin", 44}, {"fileHashes.bin", 33}}},
          {"buildOutputCleanup", 23, {{"outputFiles.bin", 1}}}}},
        // What no rule knows.
        {"~/.local/share/labeled-images",
         {{"train", 78, {{"streets.tar", 51}, {"plants.tar", 27}}},
          {"validation", 20, {{"streets.tar", 1}}},
          {"labels.json", 2}}},
        {"~/.local/share/PrismLauncher",
         {{"instances", 71, {{"Survival", 1, {{"saves", 48, {{"world.dat", 1}}}, {"mods.jar", 23}}}}},
          {"assets", 22, {{"objects.pack", 1}}},
          {"libraries", 7, {{"lwjgl.jar", 1}}}}},
        {"~/.local/share/kdenlive",
         {{"proxy", 88, {{"clip-0001.mkv", 47}, {"clip-0002.mkv", 41}}},
          {"library", 12, {{"titles.tar", 1}}}}},
        {"~/.cache/stremio-server", {{"streams-0.file", 58}, {"streams-1.file", 42}}},
        {"~/.voice-typing", {{"models", 99, {{"large.bin", 71}, {"small.bin", 28}}}, {"settings.json", 1}}},
        {"~/.config/obs-studio",
         {{"plugins", 72, {{"browser.bin", 50}, {"encoder.bin", 22}}},
          {"basic", 3, {{"scenes.json", 1}}},
          {"logs", 25, {{"2026-10-14.txt", 14}, {"2026-10-13.txt", 11}}}}},
    });
    return rows;
}

std::string named(std::string_view path, lumo::Language language, lumo::System system) {
    constexpr auto folders = std::to_array<lumo::Words>({{"Descargas/", "Downloads/"},
                                                         {"Documentos/", "Documents/"},
                                                         {"Escritorio/", "Desktop/"},
                                                         {"Imágenes/", "Pictures/"},
                                                         {"Vídeos/", "Videos/"}});
    const std::string_view start = path.starts_with("~/") ? "~/" : "";
    const std::string_view rest = path.substr(start.size());
    const auto folder =
        std::ranges::find_if(folders, [&](const lumo::Words& words) { return rest.starts_with(words.en); });
    if (system == lumo::System::macos || folder == folders.end()) {
        return std::string(path);
    }
    return std::string(start) + folder->in(language) + std::string(rest.substr(folder->en.size()));
}

} // namespace tarvo::DemoDisk
