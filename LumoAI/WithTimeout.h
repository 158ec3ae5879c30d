#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>

namespace lumo {

/// Of several who finish, lets exactly one be the first.
class FirstResult final {
  public:
    /// True for the first caller and false for all others.
    bool claim() { return !claimed_.test_and_set(); }

  private:
    std::atomic_flag claimed_;
};

/// The operation's value; absent when the time ran out first, and then the operation was told to stop and its
/// late value is dropped. It runs on the calling thread and the clock on another one, which has ended when
/// this returns: whoever loses the race is stopped and waited for. So this returns as soon after the time as
/// the operation heeds its stop token. A stop requested from outside reaches the operation too, whose value
/// then counts. Absent also when the system allows no thread for the clock.
template <class Operation>
auto withTimeout(std::chrono::milliseconds limit, Operation operation, const std::stop_token& outside = {})
    -> std::optional<std::invoke_result_t<Operation, std::stop_token>> {
    FirstResult first;
    std::stop_source cancel;
    const std::stop_callback forward(outside, [&] { cancel.request_stop(); });
    std::mutex mutex;
    std::condition_variable_any bell;
    std::jthread clock;
    try {
        clock = std::jthread([&](const std::stop_token& isOver) {
            std::unique_lock lock(mutex);
            bell.wait_for(lock, isOver, limit, [] { return false; });
            if (first.claim()) {
                cancel.request_stop();
            }
        });
    } catch (const std::system_error&) {
        return std::nullopt;
    }
    auto value = operation(cancel.get_token());
    return first.claim() ? std::optional(std::move(value)) : std::nullopt;
}

} // namespace lumo
