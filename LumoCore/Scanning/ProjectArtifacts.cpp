#include "LumoCore/Scanning/ProjectArtifacts.h"

#include <algorithm>

namespace lumo::ProjectArtifacts {

bool isRegenerable(std::string_view name) {
    return std::ranges::find(regenerable, name) != regenerable.end();
}

std::string hint(std::string_view name, Language language) {
    const auto in = [&](std::string_view es, std::string_view en) {
        return std::string(text(es, en, language));
    };
    if (name == "node_modules") {
        return in("se reinstala con npm, pnpm o bun install", "reinstalled with npm, pnpm or bun install");
    }
    if (name == ".venv" || name == "venv") {
        return in("se recrea con uv sync o pip install", "recreated with uv sync or pip install");
    }
    if (name == "__pycache__" || name == ".pytest_cache" || name == ".mypy_cache" || name == ".ruff_cache") {
        return in("caché de Python", "Python cache");
    }
    return in("se regenera al compilar", "recreated when you build");
}

} // namespace lumo::ProjectArtifacts
