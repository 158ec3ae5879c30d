#include "TarvoModel/Flows/SavedFiles.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/JsonValue.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/DiskSummary.h"
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

lumo::Result<OpenedReport> openedReport(std::string_view bytes, PlanRequest request, const Desk& desk) {
    auto read = savedReport(bytes);
    if (!read) {
        return std::unexpected(read.error());
    }
    OpenedReport opened;
    opened.isOfOtherHome = read->home != desk.home;
    if (!opened.isOfOtherHome) {
        if (const auto checked = checkReport(*read, desk); !checked) {
            return std::unexpected(checked.error());
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

/// True when nothing is left of what the action would take: no file, or of what goes whole not even a folder.
bool isDone(const lumo::CleanupAction& action, const lumo::Usage& now) {
    return std::holds_alternative<lumo::method::TrashItems>(action.method)
               ? std::ranges::all_of(action.measuredPaths, lumo::platform::isMissing)
               : now.fileCount == 0 && now.unreadableCount == 0;
}

void leaveOutWhatIsDone(lumo::PlanEntry& entry, const lumo::Usage& now) {
    if (isDone(entry.action, now)) {
        entry.skipReason = Words{"ya no queda nada ahí", "nothing is left there"}.in();
    }
}

lumo::Result<OpenedPlan> openedPlan(std::string_view bytes, const PlanRequest& request, const Desk& desk) {
    auto saved = savedPlan(bytes, desk);
    if (!saved) {
        return std::unexpected(saved.error());
    }
    Plan now = planned(requestForSaved(*saved, request), desk);
    if (now.problem) {
        return lumo::failure(*now.problem);
    }
    OpenedPlan opened{.saved = std::move(*saved), .now = std::move(now)};
    measureNow(opened.now, opened.saved, leaveOutWhatIsDone);
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
