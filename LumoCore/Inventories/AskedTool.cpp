#include "LumoCore/Inventories/AskedTool.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/ToolOutput.h"
#include "Platform/ToolCommand.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace lumo {

namespace {

constexpr int notStarted = 127;

/// Requests a stop when the time is over, or when another stop is requested.
class Deadline final {
  public:
    Deadline(std::chrono::milliseconds patience, const std::stop_token& outer)
        : onOuter_(outer, [this] { stop_.request_stop(); }),
          thread_([this, patience](const std::stop_token& done) {
              std::unique_lock lock(mutex_);
              if (!wakes_.wait_for(lock, done, patience, [&] { return done.stop_requested(); })) {
                  isOver_ = true;
                  stop_.request_stop();
              }
          }) {}

    [[nodiscard]] std::stop_token token() const { return stop_.get_token(); }

    /// Ends waiting; true when the time was over before.
    bool finish() {
        thread_.request_stop();
        thread_.join();
        return isOver_;
    }

  private:
    std::stop_source stop_;
    std::stop_callback<std::function<void()>> onOuter_;
    std::mutex mutex_;
    std::condition_variable_any wakes_;
    bool isOver_ = false; ///< Read once the thread has ended.
    std::jthread thread_;
};

} // namespace

std::expected<std::string, NoAnswer> askTool(const std::vector<std::string>& words,
                                             const InventoryQuery& query,
                                             std::chrono::milliseconds patience) {
    Deadline deadline(patience, query.stop);
    platform::ToolRun ran = platform::runTool(words, query.home, deadline.token());
    const bool isTooSlow = deadline.finish();
    if (ran.wasEndedByUs || isTooSlow) {
        return std::unexpected(
            NoAnswer{.reason = Words{"{} no ha respondido a tiempo", "{} did not answer in time"}.in(
                         query.language, words.front())});
    }
    if (ran.status == notStarted) {
        return std::unexpected(NoAnswer{.isMissing = true,
                                        .reason = Words{"{} no está instalado", "{} is not installed"}.in(
                                            query.language, words.front())});
    }
    if (ran.status != 0) {
        return std::unexpected(
            NoAnswer{.reason = words.front() + ": " +
                               printable(failureDetail(ran.output, ran.status, query.language))});
    }
    return std::move(ran.output);
}

std::string_view jsonIn(std::string_view answer) {
    const auto isOpening = [](char c) { return c == '{' || c == '['; };
    std::size_t first = 0;
    while (first < answer.size() && !isOpening(answer[first])) {
        const std::size_t end = answer.find('\n', first);
        first = end == std::string_view::npos ? answer.size() : end + 1;
    }
    const std::size_t last = answer.find_last_of("]}");
    return last == std::string_view::npos || last < first ? std::string_view()
                                                          : answer.substr(first, last + 1 - first);
}

} // namespace lumo
