#include "TarvoCLI/WatchedScan.h"

#include "Platform/Clock.h"
#include "Platform/Terminal.h"
#include "TarvoApp/Model/ScanPass.h"
#include "TarvoCLI/Watching.h"

#include <stop_token>

namespace tarvo {

using lumo::ScanPhase;
using lumo::text;
namespace platform = lumo::platform;

namespace {

std::string_view phaseText(ScanPhase phase) {
    switch (phase) {
    case ScanPhase::locating:
        return text("Buscando lo que conozco", "Looking for what I know");
    case ScanPhase::measuringRules:
        return text("Midiendo lo que conozco", "Measuring what I know");
    case ScanPhase::searchingProjects:
        return text("Buscando proyectos", "Looking for projects");
    case ScanPhase::measuringProjects:
        return text("Midiendo proyectos", "Measuring projects");
    case ScanPhase::measuringUnclassified:
        break;
    }
    return text("Midiendo carpetas sin clasificar", "Measuring unclassified folders");
}

} // namespace

std::optional<lumo::ScanReport> watchedScan(const std::vector<lumo::Rule>& rules,
                                            const lumo::ScanOptions& options, const Invocation& invocation) {
    platform::noteInterrupts();
    std::stop_source stop;
    lumo::ScanProgress progress;
    lumo::ScanContext context;
    context.startedAt = platform::now();
    context.stop = stop.get_token();
    context.progress = &progress;
    context.findAppCaches = appCacheRules;

    std::optional<lumo::ScanReport> report;
    const double start = platform::monotonicSeconds();
    bool hasShown = false;
    watch([&] { report = lumo::Scanner::scan(rules, options, context); },
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
    return report;
}

} // namespace tarvo
