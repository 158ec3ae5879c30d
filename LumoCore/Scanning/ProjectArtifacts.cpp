#include "LumoCore/Scanning/ProjectArtifacts.h"

#include "LumoCore/Basics/Words.h"

#include <algorithm>

namespace lumo::ProjectArtifacts {

bool isRegenerable(std::string_view name) {
    return std::ranges::find(regenerable, name) != regenerable.end();
}

std::string hint(std::string_view name, Language language) {
    if (name == "node_modules") {
        return Words{"se reinstala con npm, pnpm o bun install", "reinstalled with npm, pnpm or bun install"}
            .in(language);
    }
    if (name == ".venv" || name == "venv") {
        return Words{"se recrea con uv sync o pip install", "recreated with uv sync or pip install"}.in(
            language);
    }
    if (name == "__pycache__" || name == ".pytest_cache" || name == ".mypy_cache" || name == ".ruff_cache") {
        return Words{"caché de Python", "Python cache"}.in(language);
    }
    return Words{"se regenera al compilar", "recreated when you build"}.in(language);
}

} // namespace lumo::ProjectArtifacts
