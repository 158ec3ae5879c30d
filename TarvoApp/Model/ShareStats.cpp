#include "TarvoApp/Model/ShareStats.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "Platform/CheckedSum.h"
#include "TarvoApp/Model/CleanupTexts.h"
#include "TarvoApp/Model/DesktopFolder.h"
#include "TarvoApp/Model/Said.h"

#include <algorithm>
#include <iterator>

namespace tarvo {

using lumo::Category;
using lumo::Language;

namespace {

/// What an action's id tells of what it cleans.
std::optional<Category> categoryOf(const std::string& id) {
    if (id.starts_with(lumo::artifactIDPrefix)) {
        return Category::buildOutput;
    }
    if (id.starts_with("cache-app:")) {
        return Category::appCache;
    }
    const std::vector<lumo::Rule>& rules = lumo::RuleCatalog::all();
    const auto rule = std::ranges::find(rules, id, &lumo::Rule::id);
    return rule == rules.end() ? std::nullopt : std::optional(rule->category);
}

void add(const lumo::CleanupOutcome& outcome, std::vector<ShareStats::Item>& items) {
    if (outcome.freedBytes <= 0) {
        return;
    }
    const std::optional<Category> category = categoryOf(outcome.id);
    auto item = std::ranges::find(items, category, &ShareStats::Item::category);
    if (item == items.end()) {
        item = items.insert(item, {.category = category});
    }
    item->bytes = lumo::checkedSum(item->bytes, outcome.freedBytes);
}

} // namespace

ShareStats ShareStats::make(const std::vector<lumo::CleanupOutcome>& outcomes, const Surroundings& around) {
    ShareStats stats{.freedBytes = sumsOf(outcomes).freed,
                     .items = {},
                     .freeBefore = around.freeBefore,
                     .freeAfter = around.freeAfter,
                     .capacity = around.capacity,
                     .lifetimeBytes =
                         lumo::checkedSum(around.lifetimeBefore, lumo::CleanupHistory::total(outcomes))};
    for (const lumo::CleanupOutcome& outcome : outcomes) {
        add(outcome, stats.items);
    }
    lumo::sortLargestFirst(stats.items, &Item::bytes);
    return stats;
}

ShareStats ShareStats::withEmptied(std::int64_t bytes) const {
    // The lifetime total has counted what was set aside already.
    ShareStats stats = *this;
    stats.freedBytes = lumo::checkedSum(stats.freedBytes, bytes);
    stats.freeAfter = lumo::checkedSum(stats.freeAfter, bytes);
    return stats;
}

bool ShareStats::isWorthCelebrating() const {
    constexpr std::int64_t half = 500000000;
    return freedBytes >= half;
}

std::vector<std::int64_t> ShareStats::reachedMilestones() const {
    std::vector<std::int64_t> reached;
    std::ranges::copy_if(milestones, std::back_inserter(reached),
                         [this](std::int64_t milestone) { return lifetimeBytes >= milestone; });
    return reached;
}

std::string ShareStats::postText(Language language) const {
    return said("Acabo de limpiar ", "Just cleaned up ", language) +
           lumo::ByteFormat::string(freedBytes, language) +
           said(" de mi Mac con Tarvo AI. Solo borra lo que se regenera solo.",
                " on my Mac with Tarvo AI. It only deletes what recreates itself.", language);
}

std::string categoryTitle(const std::optional<Category>& category, Language language) {
    if (!category) {
        return said("Otros", "Other", language);
    }
    switch (*category) {
    case Category::packageCache:
        return said("Cachés de paquetes", "Package caches", language);
    case Category::buildOutput:
        return said("Carpetas de compilación", "Build folders", language);
    case Category::aiModel:
        return said("Modelos de IA", "AI models", language);
    case Category::aiApp:
        return said("Apps de IA", "AI apps", language);
    case Category::virtualMachine:
        return said("Máquinas virtuales", "Virtual machines", language);
    case Category::developerTools:
        return said("Herramientas de desarrollo", "Developer tools", language);
    case Category::appCache:
        return said("Cachés de apps", "App caches", language);
    case Category::downloads:
        return said("Descargas", "Downloads", language);
    case Category::personal:
        break;
    }
    return said("Archivos propios", "Own files", language);
}

std::string shareImagePath(const std::string& home, lumo::Date now) {
    const std::string stamp = lumo::stampText(now);
    return desktopFolder(home) + "/TarvoAI-liberado-" + stamp.substr(0, 4) + "-" + stamp.substr(4, 2) + "-" +
           stamp.substr(6, 2) + ".png";
}

std::string imageSavedText(Language language) {
    return said("Imagen guardada en el Escritorio", "Image saved to the Desktop", language);
}

std::string imageFailedText(std::string_view reason, Language language) {
    return said("No se pudo guardar la imagen: ", "Couldn't save the image: ", language) +
           std::string(reason);
}

std::string imageCopiedText(Language language) {
    return said("Imagen copiada: pégala en tu publicación", "Image copied: paste it into your post",
                language);
}

} // namespace tarvo
