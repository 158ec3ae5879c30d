#pragma once

#include "TarvoMCP/Channel.h"
#include "TarvoMCP/Protocol.h"
#include "TarvoMCP/Tool.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace tarvo::mcp {

/// What a client is told of one call's progress. Used by any thread.
class Reporter final {
  public:
    /// Tells nothing unless the parameters of the call have a token to tell it under.
    Reporter(Channel& channel, const JsonValue& params, const Peer& peer);

    /// A figure that does not grow is not told, since it must; its words go with the next sign of life.
    void tell(const Progress& progress);

    /// Says the last words again, when nothing was told for that long.
    void signOfLife(std::chrono::milliseconds silence);

  private:
    /// Holds the lock.
    void send();

    using Clock = std::chrono::steady_clock;
    Channel& channel_;
    const std::optional<JsonValue> token_;
    const bool readsWords_;
    std::mutex mutex_; ///< Of everything below.
    Progress last_;
    Clock::time_point sentAt_ = Clock::now();
};

} // namespace tarvo::mcp
