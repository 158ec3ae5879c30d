#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoCLI/ReportSource.h"
#include "TarvoCLI/Table.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Showing/GrowthTexts.h"

#include <fmt/format.h>

#include <memory>

namespace tarvo {

using lumo::Growth;
using lumo::GrowthItem;
using lumo::Words;
namespace GrowthTracker = lumo::GrowthTracker;

namespace {

/// "Yesterday" for what is nearer to one day than to two, otherwise the day: the scan before may be weeks
/// ago.
std::string heading(lumo::Date since, lumo::Date now) {
    constexpr std::chrono::hours yesterdayEnds{36};
    if (now - since >= GrowthTracker::baselineAge && now - since < yesterdayEnds) {
        return Words{"LO QUE MÁS HA CRECIDO DESDE AYER", "GREW MOST SINCE YESTERDAY"}.in();
    }
    return Words{"LO QUE MÁS HA CRECIDO DESDE EL {}", "GREW MOST SINCE {}"}.with(lumo::dayText(since));
}

/// Why there is nothing to compare with, and how there will be.
std::string reasonForNoBaseline(const lumo::platform::SystemResult<std::vector<lumo::DiskSnapshot>>& stored,
                                const lumo::SnapshotStore& store) {
    return stored ? noBaselineText(*stored) : unreadableSnapshotsText(store.path(), stored.error());
}

std::string textOfItems(const Growth& growth, lumo::Date now, const Invocation& invocation) {
    if (growth.items.empty()) {
        return Words{"Nada ha crecido más de 200 MB.\n", "Nothing has grown more than 200 MB.\n"}.in();
    }
    Table table({{.align = Align::right, .tint = Tint::review},
                 {.mayShrink = true},
                 {.align = Align::right, .tint = Tint::faint}});
    for (const GrowthItem& item : growth.items) {
        table.add({"+" + lumo::ByteFormat::string(item.delta),
                   lumo::printable(growthName(item.id, item.name)),
                   fmt::format("{} {}", Words{"ahora", "now"}.in(), lumo::ByteFormat::string(item.now))});
    }
    return tinted(heading(*growth.since, now), Tint::strong, invocation) + "\n" +
           table.lines(2, outputColumns(), invocation);
}

ExitCode runGrowth(const ReportSource& source, const Invocation& invocation) {
    const auto report = reportFrom(source, invocation);
    if (!report) {
        return report.error();
    }
    const lumo::SnapshotStore store(invocation.home);
    // What cannot be read is no history, as everywhere; a person is told so.
    const auto stored = store.read();
    // A report from a file says nothing of today's files.
    const lumo::DiskSnapshot now = source.file ? lumo::DiskSnapshot::from(**report)
                                               : snapshotNow(**report, deskOf(invocation, "growth"));
    const Growth growth = GrowthTracker::growthOf(now, stored.value_or(std::vector<lumo::DiskSnapshot>()));
    if (invocation.isJson) {
        return print(lumo::dumpJson(lumo::encode(growth), lumo::JsonLayout::indented) + "\n");
    }
    return print(growth.since ? textOfItems(growth, (*report)->scannedAt, invocation)
                              : paragraph(reasonForNoBaseline(stored, store), readingColumns()));
}

} // namespace

void addGrowthCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "crecimiento", "growth", "qué ha crecido desde ayer",
                                   "what has grown since yesterday");
    const auto source = std::make_shared<ReportSource>();
    addReportOption(*command, *source);
    command->callback([source, &chosen] {
        chosen = [source](const Invocation& invocation) { return runGrowth(*source, invocation); };
    });
}

} // namespace tarvo
