#include "TarvoCLI/WatchedScan.h"

#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/CommandDesk.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/Scanning.h"

#include <stop_token>

namespace tarvo {

using lumo::ScanPhase;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

std::string phaseText(ScanPhase phase) {
    switch (phase) {
    case ScanPhase::locating:
        return Words{"Buscando lo que conozco", "Looking for what I know"}.in();
    case ScanPhase::measuringRules:
        return Words{"Midiendo lo que conozco", "Measuring what I know"}.in();
    case ScanPhase::searchingProjects:
        return Words{"Buscando proyectos", "Looking for projects"}.in();
    case ScanPhase::measuringProjects:
        return Words{"Midiendo proyectos", "Measuring projects"}.in();
    case ScanPhase::measuringUnclassified:
        break;
    }
    return Words{"Midiendo carpetas sin clasificar", "Measuring unclassified folders"}.in();
}

} // namespace

std::expected<lumo::ScanReport, ExitCode> watchedScan(const std::vector<lumo::Rule>& rules,
                                                      const lumo::ScanOptions& options,
                                                      const Invocation& invocation) {
    const Desk desk = deskOf(invocation, "scan");
    if (const auto problem = homeProblem(desk)) {
        return std::unexpected(complain(*problem, ExitCode::failed));
    }
    platform::noteInterrupts();
    std::stop_source stop;
    lumo::ScanProgress progress;

    std::optional<lumo::ScanReport> report;
    const double start = platform::monotonicSeconds();
    bool hasShown = false;
    watch([&] { report = scanned(rules, options, desk, {.progress = &progress, .stop = stop.get_token()}); },
          [&](int ticks) {
              if (platform::wasInterrupted()) {
                  stop.request_stop();
              }
              if (invocation.showsProgress && showsOn(ticks)) {
                  showWalk(phaseText(progress.phase), progress.walked, platform::monotonicSeconds() - start);
                  hasShown = true;
              }
          });
    if (hasShown) {
        platform::writeAll(platform::Stream::error, clearLine);
    }
    if (!report) {
        return std::unexpected(ExitCode::interrupted);
    }
    return std::move(*report);
}

} // namespace tarvo
