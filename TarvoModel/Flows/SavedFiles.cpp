#include "TarvoModel/Flows/SavedFiles.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/JsonValue.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace tarvo {

using lumo::Words;

namespace {

/// Saved plans are lists.
bool isPlan(std::string_view bytes) {
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && bytes[first] == '[';
}

/// Nothing of another home can be ticked: what stands at its paths here is not what was measured.
ShownPlan lookedAtOnly(ShownPlan plan, const lumo::ScanReport& report) {
    for (lumo::PlanEntry& entry : plan.entries) {
        entry.skipReason =
            Words{"el informe es de otra carpeta personal", "the report is about another home folder"}.in();
    }
    plan.rows = rowsOf(report, plan.entries);
    plan.defaults.clear();
    plan.shown = {};
    plan.recoverable = 0;
    return plan;
}

std::string textOf(const OpenedReport& opened) {
    const lumo::ScanReport& report = *opened.result.report;
    const Words words = opened.isOfOtherHome
                            ? Words{"Informe guardado de {}, del {}: de otra carpeta personal, solo se mira",
                                    "Saved report about {} of {}: another home folder, to look at only"}
                            : Words{"Informe guardado de {}, del {}", "Saved report about {} of {}"};
    return words.with(lumo::printable(report.home), lumo::momentText(report.scannedAt));
}

/// What a file that was never written by Tarvo AI, or was cut, is told of. What is wrong with it is no news
/// for whoever wanted to look at it.
lumo::Failure damaged() {
    return {Words{"está dañado o no es un informe ni un plan que guardara Tarvo AI",
                  "it is damaged, or neither a report nor a plan that Tarvo AI saved"}
                .in()};
}

/// Why a file is refused although it can be read.
lumo::Failure foreign() {
    return {Words{"pide limpiezas que este programa no haría por sí mismo, así que no se usa nada de él",
                  "it asks for cleanups that this program would not do by itself, so nothing of it is used"}
                .in()};
}

lumo::Result<OpenedReport> openedReport(std::string_view bytes, PlanRequest request, const Desk& desk) {
    auto read = lumo::scanReportFromJson(bytes);
    if (!read) {
        return std::unexpected(damaged());
    }
    OpenedReport opened;
    opened.isOfOtherHome = read->home != desk.home;
    if (!opened.isOfOtherHome) {
        if (const auto checked = checkReport(*read, desk); !checked) {
            return std::unexpected(foreign());
        }
    }
    opened.result =
        savedResult(std::make_shared<const lumo::ScanReport>(std::move(*read)), std::move(request), desk);
    if (opened.isOfOtherHome) {
        opened.result.plan = WholePlan::of(lookedAtOnly(*opened.result.plan->plan(), *opened.result.report));
        opened.result.certain.clear();
        opened.result.summary = lumo::DiskSummary::templateText(*opened.result.report, 0, desk.now());
    }
    opened.text = textOf(opened);
    return opened;
}

/// What stands at the measured paths now.
lumo::Usage measuredNow(const lumo::CleanupAction& action) {
    std::vector<std::string_view> paths(action.measuredPaths.begin(), action.measuredPaths.end());
    // What is gone would count as something that cannot be read.
    std::erase_if(paths, [](std::string_view path) { return lumo::platform::isMissing(std::string(path)); });
    lumo::HardLinkRegistry registry;
    lumo::Usage all;
    for (const lumo::Usage& usage : lumo::FileTree::measureAll(paths, registry)) {
        all += usage;
    }
    return all;
}

/// True when nothing is left of what the action would take: no file, or of what goes whole not even a folder.
bool isDone(const lumo::CleanupAction& action, const lumo::Usage& now) {
    return std::holds_alternative<lumo::method::TrashItems>(action.method)
               ? std::ranges::all_of(action.measuredPaths, lumo::platform::isMissing)
               : now.fileCount == 0 && now.unreadableCount == 0;
}

/// Gives what the plan would do the amounts of now, there and in the file's own entries: those of then would
/// promise what is gone. Only what passed the checks is measured.
void measureNow(OpenedPlan& opened) {
    for (lumo::PlanEntry& entry : opened.now.entries) {
        if (entry.skipReason || entry.action.measuredPaths.empty()) {
            continue;
        }
        const auto saved = std::ranges::find(opened.saved, entry);
        const lumo::Usage now = measuredNow(entry.action);
        entry.action.estimatedBytes = now.allocatedBytes;
        if (isDone(entry.action, now)) {
            entry.skipReason = Words{"ya no queda nada ahí", "nothing is left there"}.in();
        }
        if (saved != opened.saved.end()) {
            *saved = entry;
        }
    }
}

lumo::Result<OpenedPlan> openedPlan(std::string_view bytes, const PlanRequest& request, const Desk& desk) {
    auto saved = savedPlan(bytes, desk);
    if (!saved) {
        const bool isPlanAtAll = lumo::decodeJson<std::vector<lumo::PlanEntry>>(bytes).has_value();
        return std::unexpected(isPlanAtAll ? foreign() : damaged());
    }
    Plan now = planned(requestForSaved(*saved, request), desk);
    if (now.problem) {
        return lumo::failure(*now.problem);
    }
    OpenedPlan opened{.saved = std::move(*saved), .now = std::move(now)};
    measureNow(opened);
    return opened;
}

lumo::Result<void> save(const lumo::JsonValue& document, const std::string& path) {
    constexpr unsigned mode = 0666; // As far as the user's mask allows, like any file that is saved.
    const std::string bytes = lumo::dumpJson(document, lumo::JsonLayout::indented) + "\n";
    if (const auto saved = lumo::platform::replaceWhole(path, bytes, mode); !saved) {
        return lumo::failure(Words{"No se pudo guardar {}: {}", "{} couldn't be saved: {}"}.with(
            lumo::printable(lumo::fileName(path)), lumo::reasonText(saved.error())));
    }
    return {};
}

/// Without the time of day: a name that a person reads.
std::string dated(const Words& name, lumo::Date now, lumo::Language language) {
    return name.in(language) + "-" + lumo::isoText(now).substr(0, 10) + ".json";
}

} // namespace

PlanRequest requestForSaved(std::vector<lumo::PlanEntry> saved, const PlanRequest& request) {
    PlanRequest wanted = request;
    wanted.report = nullptr;
    wanted.isReportFromFile = false;
    wanted.reviews = Reviews::asked;
    wanted.saved = std::move(saved);
    wanted.recentProjectHint = recentProjectHint();
    return wanted;
}

lumo::Result<OpenedFile> openedFile(const std::string& path, const PlanRequest& request, const Desk& desk) {
    const auto refused = [&](const std::string& why) {
        return lumo::failure(Words{"No se ha abierto {}: {}", "{} was not opened: {}"}.with(
            lumo::printable(lumo::fileName(path)), lumo::printable(why)));
    };
    const auto bytes = lumo::platform::readWhole(path, lumo::mostJsonBytes);
    if (!bytes) {
        return refused(lumo::reasonText(bytes.error()));
    }
    if (isPlan(*bytes)) {
        auto plan = openedPlan(*bytes, request, desk);
        return plan ? lumo::Result<OpenedFile>(std::move(*plan)) : refused(plan.error().message);
    }
    auto report = openedReport(*bytes, request, desk);
    return report ? lumo::Result<OpenedFile>(std::move(*report)) : refused(report.error().message);
}

lumo::Result<void> saveReport(const lumo::ScanReport& report, const std::string& path) {
    return save(lumo::encode(report), path);
}

lumo::Result<void> savePlan(const std::vector<lumo::CleanupAction>& actions, const std::string& path) {
    std::vector<lumo::PlanEntry> entries;
    for (const lumo::CleanupAction& action : actions) {
        entries.push_back({action, std::nullopt});
    }
    return save(lumo::encode(entries), path);
}

std::string reportFileName(lumo::Date now, lumo::Language language) {
    return dated({"informe-tarvo", "tarvo-report"}, now, language);
}

std::string planFileName(lumo::Date now, lumo::Language language) {
    return dated({"plan-tarvo", "tarvo-plan"}, now, language);
}

} // namespace tarvo
