#include "TarvoModel/Showing/ShareStats.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/DesktopFolder.h"

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
    static const std::vector<lumo::Rule> rules = lumo::RuleCatalog::of(lumo::currentSystem());
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

std::int64_t ShareStats::shownFreeBefore() const {
    return freeAfter >= freeBefore ? freeBefore : std::max<std::int64_t>(freeAfter - freedBytes, 0);
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

std::string ShareStats::postText(Language language, lumo::System system) const {
    return lumo::Words{"Acabo de limpiar ", "Just cleaned up "}.in(language) +
           lumo::ByteFormat::string(freedBytes, language) +
           lumo::SystemWords{.macos = {" de mi Mac con Tarvo AI. Solo borra lo que se regenera solo.",
                                       " on my Mac with Tarvo AI. It only deletes what recreates itself."},
                             .linux = {" de mi disco con Tarvo AI. Solo borra lo que se regenera solo.",
                                       " on my disk with Tarvo AI. It only deletes what recreates itself."}}
               .on(system)
               .in(language);
}

std::string categoryTitle(const std::optional<Category>& category, Language language) {
    if (!category) {
        return lumo::Words{"Otros", "Other"}.in(language);
    }
    switch (*category) {
    case Category::packageCache:
        return lumo::Words{"Cachés de paquetes", "Package caches"}.in(language);
    case Category::buildOutput:
        return lumo::Words{"Carpetas de compilación", "Build folders"}.in(language);
    case Category::aiModel:
        return lumo::Words{"Modelos de IA", "AI models"}.in(language);
    case Category::aiApp:
        return lumo::Words{"Apps de IA", "AI apps"}.in(language);
    case Category::virtualMachine:
        return lumo::Words{"Máquinas virtuales", "Virtual machines"}.in(language);
    case Category::developerTools:
        return lumo::Words{"Herramientas de desarrollo", "Developer tools"}.in(language);
    case Category::appCache:
        return lumo::Words{"Cachés de apps", "App caches"}.in(language);
    case Category::downloads:
        return lumo::Words{"Descargas", "Downloads"}.in(language);
    case Category::personal:
        break;
    }
    return lumo::Words{"Archivos propios", "Own files"}.in(language);
}

std::string shareImagePath(const std::string& home, lumo::Date now) {
    const std::string stamp = lumo::stampText(now);
    return desktopFolder(home) + "/TarvoAI-liberado-" + stamp.substr(0, 4) + "-" + stamp.substr(4, 2) + "-" +
           stamp.substr(6, 2) + ".png";
}

std::string imageSavedText(Language language) {
    return lumo::Words{"Imagen guardada en el Escritorio", "Image saved to the Desktop"}.in(language);
}

std::string imageFailedText(std::string_view reason, Language language) {
    return lumo::Words{"No se pudo guardar la imagen: ", "Couldn't save the image: "}.in(language) +
           std::string(reason);
}

std::string imageCopiedText(Language language) {
    return lumo::Words{"Imagen copiada: pégala en tu publicación", "Image copied: paste it into your post"}
        .in(language);
}

} // namespace tarvo
