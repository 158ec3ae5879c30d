#pragma once

#include "TarvoMCP/Channel.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace tarvo::mcp {

/// Lines on their way to a client that may be slow to read, or never read at all. Only the thread in here
/// ever waits for the client: whoever puts a line here goes on at once, so that no cleanup holds the home's
/// lock because of a client. What waits stays bounded: progress is dropped while anything waits, and whoever
/// takes the client's messages first waits for room. A client that takes nothing for long is taken for gone.
class Outbox final {
  public:
    /// Writes some of the bytes and says how many; 0 when the client took none for a while; absent when it is
    /// gone.
    using Write = std::function<std::optional<std::size_t>(std::string_view bytes)>;

    explicit Outbox(Write write) : write_(std::move(write)), writer_([this] { work(); }) {}
    ~Outbox() { close(); }
    Outbox(const Outbox&) = delete;
    Outbox& operator=(const Outbox&) = delete;

    /// False when the client is gone. May be called from any thread and does not wait.
    bool put(const std::string& line, Line kind);

    /// Waits until there is room for the answer to one more message. False when the client is gone, also
    /// because it took nothing the last `mostTries` times while there was no room.
    bool waitForRoom();

    /// Waits until all is written, or the client takes nothing the next few times.
    void close();

    static constexpr std::size_t mostWaitingBytes = std::size_t{256} * 1024;
    static constexpr int mostTries = 60;
    static constexpr int mostTriesAtTheEnd = 5;

  private:
    void work();
    /// Writes of the first line what the client takes. Holds the lock before and after.
    void writeFirst(std::unique_lock<std::mutex>& lock);

    const Write write_;
    std::mutex mutex_; ///< Of everything below.
    std::condition_variable changed_;
    std::deque<std::string> lines_;
    std::size_t written_ = 0; ///< Of the first line.
    std::size_t waiting_ = 0; ///< Bytes of all lines.
    int triesInVain_ = 0;
    bool isGone_ = false;
    bool isClosing_ = false;
    std::jthread writer_; ///< Last, so that all it uses is there while it runs.
};

} // namespace tarvo::mcp
