#include "TarvoCLI/WatchedCleanup.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Watching.h"

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

lumo::Result<Cleaned> watchedCleanup(const std::function<lumo::Result<Cleaned>(const CleanupWatch&)>& clean,
                                     const Invocation& invocation) {
    platform::noteInterrupts();
    std::stop_source stop;
    std::stop_source cancel;
    std::vector<lumo::CleanupAction> actions; // Not changed once the first has begun.
    std::atomic<std::size_t> begun = 0;
    const CleanupWatch cleanup{.onPlanned = [&](const auto& planned) { actions = planned; },
                               .onBegin = [&](std::size_t index) { begun = index + 1; },
                               .stop = stop.get_token(),
                               .cancelTool = cancel.get_token()};
    lumo::Result<Cleaned> cleaned;
    bool hasShown = false;
    watch([&] { cleaned = clean(cleanup); },
          [&](int ticks) {
              if (platform::wasInterrupted() && stop.request_stop() && invocation.showsProgress) {
                  sayItEnds();
              }
              if (platform::interruptCount() > 1) {
                  cancel.request_stop();
              }
              if (const std::size_t count = begun; count > 0 && invocation.showsProgress && showsOn(ticks)) {
                  showAction(count - 1, actions);
                  hasShown = true;
              }
          });
    if (hasShown) {
        platform::writeAll(platform::Stream::error, clearLine);
    }
    return cleaned;
}

} // namespace tarvo
