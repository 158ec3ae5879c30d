#include "TarvoCLI/Watching.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"
#include "Platform/Clock.h"
#include "Platform/Terminal.h"
#include "TarvoModel/Showing/Preview.h"

#include <fmt/format.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tarvo {

namespace platform = lumo::platform;

void watch(const std::function<void()>& work, const std::function<void(int ticks)>& tick) {
    using namespace std::chrono_literals;
    std::mutex mutex;
    std::condition_variable finished;
    bool isFinished = false;
    const std::jthread worker([&] {
        work();
        const std::lock_guard<std::mutex> lock(mutex);
        isFinished = true;
        finished.notify_one();
    });
    std::unique_lock<std::mutex> lock(mutex);
    for (int ticks = 1; !finished.wait_for(lock, 20ms, [&] { return isFinished; }); ++ticks) {
        tick(ticks);
    }
}

void showWalk(std::string_view doing, const platform::WalkProgress& walked, double seconds) {
    const std::int64_t entries = walked.entries.load(std::memory_order_relaxed);
    const std::int64_t bytes = walked.bytes.load(std::memory_order_relaxed);
    std::string line = fmt::format("{}… ", doing);
    if (entries > 0) {
        line += fmt::format("{} · {} · ", itemsText(entries), lumo::ByteFormat::string(bytes));
    }
    line += lumo::ByteFormat::number(seconds, 1) + " s";
    const std::size_t columns = platform::terminalColumns(platform::Stream::error);
    // One column stays free: a full line would wrap, and only its last part would be cleared.
    const std::string shown = columns > 1 ? lumo::shortened(line, columns - 1) : line;
    platform::writeAll(platform::Stream::error, std::string(clearLine) + shown);
}

bool watchWalk(const Invocation& invocation, const std::function<void(const lumo::FileTree::Watch&)>& work,
               const std::function<std::string()>& doing) {
    platform::noteInterrupts();
    std::stop_source stop;
    platform::WalkProgress walked;
    const double start = platform::monotonicSeconds();
    bool hasShown = false;
    watch([&] { work({&walked, stop.get_token()}); },
          [&](int ticks) {
              if (platform::wasInterrupted()) {
                  stop.request_stop();
              }
              if (invocation.showsProgress && showsOn(ticks)) {
                  showWalk(doing(), walked, platform::monotonicSeconds() - start);
                  hasShown = true;
              }
          });
    if (hasShown) {
        platform::writeAll(platform::Stream::error, clearLine);
    }
    return !stop.stop_requested();
}

} // namespace tarvo
