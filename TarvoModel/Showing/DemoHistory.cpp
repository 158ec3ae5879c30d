#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <fmt/format.h>

#include <chrono>
#include <set>

/// What has been on the made-up disk before.
namespace tarvo::DemoDisk {

using lumo::CleanupOutcome;
using lumo::Date;
using lumo::DiskSnapshot;
using lumo::Language;
using lumo::System;
using lumo::Words;
using std::chrono::days;

namespace {

constexpr std::int64_t megabyte = 1'000'000;

/// The largest caches of tools, which cleanups have taken before.
std::vector<const lumo::Finding*> recreated(const lumo::ScanReport& report, std::size_t most) {
    std::vector<const lumo::Finding*> findings;
    for (const lumo::Finding& finding : report.findings) {
        if (finding.safety == lumo::Safety::safe && finding.category == lumo::Category::packageCache &&
            findings.size() < most) {
            findings.push_back(&finding);
        }
    }
    return findings;
}

/// What took more so many days ago: bytes by id, see `snapshots`.
std::int64_t sizeThen(const std::string& id, std::int64_t now, std::int64_t yesterday, int daysAgo,
                      const std::set<std::string>& cleaned) {
    constexpr int cleanedDaysAgo = 5;
    constexpr int weeks = 40;
    if (cleaned.contains(id) && now == yesterday) {
        return daysAgo > cleanedDaysAgo ? now + now * (30 - daysAgo) / 30 : now;
    }
    // What grew since yesterday grew before as well, though not as fast.
    return now == yesterday ? now : yesterday - yesterday * daysAgo / weeks;
}

/// One line of the made-up log.
CleanupOutcome outcome(std::string id, std::string title, std::int64_t freed, Date date) {
    return {.id = std::move(id),
            .title = std::move(title),
            .message = {},
            .freedBytes = freed,
            .restorable = {},
            .date = date,
            .caller = {}};
}

/// Something of the user's that was set aside, in parts.
struct OwnRow {
    Words title;
    int daysAgo = 0;
    std::int64_t megabytes = 0;
    std::vector<Words> places;
};

std::vector<OwnRow> ownRows() {
    return {{{"Instaladores en Descargas", "Installers in Downloads"},
             12,
             940,
             {{"~/Descargas/Setup.zip", "~/Downloads/Setup.zip"}}},
            {{"Modelos de Whisper", "Whisper models"},
             5,
             1180,
             {{"~/.cache/whisper/medium.pt", "~/.cache/whisper/medium.pt"}}},
            {{"Vídeos repetidos", "Duplicate videos"},
             2,
             2030,
             {{"~/Vídeos/Boda (copia).mp4", "~/Videos/Wedding (copy).mp4"},
              {"~/Vídeos/Playa (copia).mp4", "~/Videos/Beach (copy).mp4"},
              {"~/Descargas/Playa.mp4", "~/Downloads/Beach.mp4"}}}};
}

/// What a cleanup that long ago set aside. Its batch is the one in `held`.
CleanupOutcome setAside(const OwnRow& row, Date date, Language language, System system) {
    CleanupOutcome made = outcome(row.title.in(Language::en), row.title.in(language), 0, date);
    made.trashedBytes = row.megabytes * megabyte;
    made.restorable.emplace();
    for (std::size_t place = 0; place < row.places.size(); ++place) {
        const std::string original = lumo::expanded(row.places[place].in(language), home(system));
        made.restorable->push_back(
            {.original = original,
             .inTrash = fmt::format("{}/00000000-0000-4000-8000-{:06}{:06}-{}",
                                    lumo::Holding::newBatch(std::string(home(system)), date), row.daysAgo,
                                    place, lumo::fileName(original))});
    }
    return made;
}

} // namespace

std::vector<DiskSnapshot> snapshots(const lumo::ScanReport& report, System system) {
    const DiskSnapshot now = DiskSnapshot::from(report);
    const DiskSnapshot before = yesterday(report, system);
    std::set<std::string> cleaned;
    for (const lumo::Finding* finding : recreated(report, 6)) {
        cleaned.insert(finding->ruleID);
    }
    std::vector<DiskSnapshot> made;
    for (const int daysAgo : {25, 22, 19, 16, 13, 10, 8, 6, 5, 4, 3, 2}) {
        DiskSnapshot then = now;
        then.date = report.scannedAt - days(daysAgo);
        for (auto& [id, size] : then.sizes) {
            size = sizeThen(id, now.sizes.at(id), before.sizes.at(id), daysAgo, cleaned);
            then.freeBytes += now.sizes.at(id) - size;
        }
        // Of the folders that no rule knows one came up meanwhile.
        if (constexpr int cameDaysAgo = 10; daysAgo > cameDaysAgo && !report.unclassified.empty()) {
            const auto unknown = then.sizes.find(lumo::unclassifiedID(report.unclassified.back()));
            then.freeBytes += unknown->second;
            then.sizes.erase(unknown);
        }
        made.push_back(std::move(then));
    }
    made.push_back(before);
    made.push_back(now);
    return made;
}

std::vector<CleanupOutcome> history(const lumo::ScanReport& report, Language language, System system) {
    const Date now = report.scannedAt;
    std::vector<CleanupOutcome> log;
    const std::vector<const lumo::Finding*> findings = recreated(report, 5);
    const std::vector<OwnRow> own = ownRows();
    for (const int daysAgo : {23, 12, 5, 2}) {
        Date date = now - days(daysAgo);
        for (const lumo::Finding* finding : findings) {
            // Each time less: caches need their time to grow again.
            log.push_back(
                outcome(finding->ruleID, finding->name, finding->usage.allocatedBytes / 30 * daysAgo, date));
            log.back().caller = daysAgo == 12 ? std::optional<std::string>("Claude Code") : std::nullopt;
        }
        for (const OwnRow& row : own) {
            if (row.daysAgo == daysAgo) {
                log.push_back(setAside(row, date, language, system));
                log.back().caller = log[log.size() - 2].caller;
            }
        }
    }
    CleanupOutcome& failed = log[2];
    failed.status = lumo::CleanupStatus::failed;
    failed.freedBytes = 0;
    failed.message = failed.title + ": " + Words{"está en uso", "it is in use"}.in(language);
    return log;
}

std::vector<HeldItem> heldItems(const std::vector<CleanupOutcome>& history, Date now, System system) {
    std::set<std::string, std::less<>> batches;
    for (const lumo::Holding::Batch& batch : held(now, system)) {
        batches.insert(batch.path);
    }
    std::vector<HeldItem> items;
    for (const CleanupOutcome& each : history) {
        for (const lumo::TrashedItem& item : each.restorable.value_or(std::vector<lumo::TrashedItem>())) {
            const std::string_view batch = lumo::Holding::batchOf(item.inTrash);
            if (batches.contains(batch)) {
                items.push_back({heldIDOf(item), item.original, std::string(batch), false});
            }
        }
    }
    return items;
}

} // namespace tarvo::DemoDisk
