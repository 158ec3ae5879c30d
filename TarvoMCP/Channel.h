#pragma once

#include <functional>
#include <mutex>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

/// The way to a client.
namespace tarvo::mcp {

/// Whether a line must arrive. Progress need not: the next one says more.
enum class Line { needed, droppable };

/// Sends one line to the client, from any thread, without waiting for the client to read it; false when
/// nobody is there any more.
using Send = std::function<bool(const std::string& line, Line kind)>;

/// Lines to a client until it is gone or everything ends. Used by any thread.
class Channel final {
  public:
    explicit Channel(Send send) : send_(std::move(send)) {}

    void send(const std::string& line, Line kind = Line::needed) {
        if (!ending_.stop_requested() && !send_(line, kind)) {
            ending_.request_stop();
        }
    }

    /// Nothing is sent any more.
    void end() { ending_.request_stop(); }
    [[nodiscard]] std::stop_token ending() const { return ending_.get_token(); }

  private:
    const Send send_;
    std::stop_source ending_;
};

/// Takes the answer to a message; it goes out by itself or with the others of its batch.
using Reply = std::function<void(const std::string& line)>;

/// The answers to a batch. They go out together once nobody holds this any more, so that a call which is
/// never answered, being cancelled, does not hold up the others. Used by any thread.
class BatchReply final {
  public:
    explicit BatchReply(Channel& channel) : channel_(channel) {}
    BatchReply(const BatchReply&) = delete;
    BatchReply& operator=(const BatchReply&) = delete;
    ~BatchReply() {
        if (!lines_.empty()) {
            channel_.send("[" + lines_ + "]");
        }
    }

    void add(std::string_view line) {
        const std::scoped_lock lock(mutex_);
        lines_ += (lines_.empty() ? "" : ",");
        lines_ += line;
    }

  private:
    Channel& channel_;
    std::mutex mutex_;
    std::string lines_;
};

} // namespace tarvo::mcp
