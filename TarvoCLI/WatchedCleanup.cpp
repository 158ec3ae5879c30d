#include "TarvoCLI/WatchedCleanup.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/HomeChanges.h"

#include <atomic>
#include <stop_token>

namespace tarvo {

using lumo::Words;
namespace platform = lumo::platform;

namespace {

void showAction(std::size_t index, const std::vector<lumo::CleanupAction>& actions) {
    const std::string line = Words{"Limpiando {} de {}: {}", "Cleaning {} of {}: {}"}.with(
        index + 1, actions.size(), lumo::printable(actions[index].title));
    const std::size_t columns = platform::terminalColumns(platform::Stream::error);
    platform::writeAll(platform::Stream::error,
                       clearLine + (columns > 1 ? lumo::shortened(line, columns - 1) : line));
}

/// What an interrupt means the first time.
void sayItEnds() {
    platform::writeAll(platform::Stream::error,
                       clearLine + Words{"Acabo lo que tengo entre manos y paro; otra vez Ctrl-C "
                                         "corta la herramienta en marcha.\n",
                                         "Finishing what is in hand, then stopping; Ctrl-C again "
                                         "ends a tool that is running.\n"}
                                       .in());
}

} // namespace

std::vector<lumo::CleanupOutcome> watchedCleanup(const std::vector<lumo::CleanupAction>& actions,
                                                 const lumo::PathGuard& guard, const Invocation& invocation,
                                                 const lumo::CleanupExecutor::Refusal& refusal) {
    platform::noteInterrupts();
    std::stop_source stop;
    std::stop_source cancel;
    std::atomic<std::size_t> inHand = 0;
    const lumo::CleanupExecutor::Control control{.onBegin = [&](std::size_t index) { inHand = index; },
                                                 .stop = stop.get_token(),
                                                 .cancelTool = cancel.get_token(),
                                                 .now = platform::now,
                                                 .refusal = refusal};
    std::vector<lumo::CleanupOutcome> outcomes;
    bool hasShown = false;
    watch([&] { outcomes = usualCarryOut(actions, guard, control); },
          [&](int ticks) {
              if (platform::wasInterrupted() && stop.request_stop() && invocation.showsProgress) {
                  sayItEnds();
              }
              if (platform::interruptCount() > 1) {
                  cancel.request_stop();
              }
              if (invocation.showsProgress && showsOn(ticks)) {
                  showAction(inHand, actions);
                  hasShown = true;
              }
          });
    if (hasShown) {
        platform::writeAll(platform::Stream::error, clearLine);
    }
    return outcomes;
}

} // namespace tarvo
