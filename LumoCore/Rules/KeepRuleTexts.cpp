#include "LumoCore/Rules/RuleRow.h"

#include <array>

namespace lumo::RuleCatalog {

// The user's own data, and what is in use.
std::span<const Row> keepRows() {
    static const auto rows = std::to_array<Row>(
        {{.id = "chrome-profiles",
          .category = Category::personal,
          .name = {"Perfiles de Chrome", "Chrome profiles"},
          .explanation = {"Historial, sesiones y extensiones.", "History, sessions and extensions."},
          .cleanup = byHand("Son tus datos de navegación", "This is your browsing data"),
          .locator =
              locator::Children{"~/Library/Application Support/Google/Chrome", {"Default", "Profile *"}},
          .onLinux = {locator::Children{"~/.config/google-chrome", {"Default", "Profile *"}}}},
         {.id = "photos-library",
          .category = Category::personal,
          .name = {"Fototeca", "Photos library"},
          .explanation = {"Tus fotos y vídeos.", "Your photos and videos."},
          .cleanup = byHand("Fotos → Ajustes → iCloud → Optimizar almacenamiento",
                            "Photos → Settings → iCloud → Optimize Mac Storage"),
          .locator = locator::Children{"~/Pictures", {"*.photoslibrary"}},
          .handOnLinux = {"Son tus fotos y vídeos", "These are your photos and videos"}},
         {.id = "claude-code-current",
          .category = Category::aiApp,
          .name = {"Claude Code (versión en uso)", "Claude Code (version in use)"},
          .explanation = {"La versión de Claude Code que usa la app de Claude ahora mismo.",
                          "The Claude Code version the Claude app is using right now."},
          .cleanup = byHand("Es la versión en uso", "This is the version in use"),
          .locator = locator::NewestVersion{"~/Library/Application Support/Claude/claude-code"},
          .onLinux = {locator::NewestVersion{"~/.local/share/claude/versions", locator::VersionKind::file}},
          .nameOnLinux = {"Claude Code (versión más reciente)", "Claude Code (latest version)"},
          .explanationOnLinux = {"La versión más reciente de Claude Code en este equipo.",
                                 "The latest Claude Code version on this computer."},
          .handOnLinux = {"Es la versión más reciente", "This is the latest version"}},
         {.id = "claude-code-history",
          .category = Category::personal,
          .name = {"Historial de Claude Code", "Claude Code history"},
          .explanation = {"Tus conversaciones con Claude Code, por proyecto.",
                          "Your Claude Code conversations, by project."},
          .cleanup = byHand("Son tus conversaciones", "These are your conversations"),
          .locator = locator::Path{"~/.claude/projects"}},
         {.id = "codex-sessions",
          .category = Category::personal,
          .name = {"Historial de Codex", "Codex history"},
          .explanation = {"Tus sesiones de Codex.", "Your Codex sessions."},
          .cleanup = byHand("Son tus sesiones", "These are your sessions"),
          .locator = locator::Path{"~/.codex/sessions"}},
         {.id = "claude-mem-memory",
          .category = Category::personal,
          .name = {"Memoria de claude-mem", "claude-mem memory"},
          .explanation = {"La base de datos con la memoria que guarda el plugin claude-mem.",
                          "The database with the memory saved by the claude-mem plugin."},
          .cleanup = byHand("Es tu memoria guardada", "This is your saved memory"),
          .locator = locator::Children{"~/.claude-mem", {"claude-mem.db*"}}}});
    return rows;
}

} // namespace lumo::RuleCatalog
