#pragma once

#include "TarvoMCP/Calls.h"
#include "TarvoMCP/Channel.h"
#include "TarvoMCP/Message.h"
#include "TarvoMCP/Offerings.h"
#include "TarvoMCP/Protocol.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo::mcp {

/// Answers a client. Messages are read on the caller's thread and calls are worked off on others, so that a
/// cancellation arrives while a call is at work.
class Server final {
  public:
    /// A call whose work or question takes long gives a sign of life at most each `beat`.
    Server(ServerCard card, Offerings offerings, Send send,
           std::chrono::milliseconds beat = std::chrono::seconds(10));
    ~Server() { end(); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Takes one line of the client's.
    void receive(std::string_view line);

    /// Takes note that a line was too long to be read.
    void receiveTooLong();

    /// Stops whatever is at work and waits for it. Nothing is answered any more.
    void end();

    /// True once the client is gone.
    [[nodiscard]] bool isEnded() const { return channel_.ending().stop_requested(); }

  private:
    /// The way back for messages that stand alone.
    Reply alone();

    void take(const Batch& batch, const Reply& reply);
    void take(const Request& request, const Reply& reply);
    void take(const Notification& notification, const Reply& reply);
    void take(const Response& response, const Reply& reply);
    void take(const Malformed& malformed, const Reply& reply);

    void takeStateless(const Request& request, const std::string& version, const Reply& reply);
    void takeAfterHandshake(const Request& request, const Reply& reply);
    /// What both ways of speaking have.
    void takeCommon(const Request& request, const Peer& peer, const Reply& reply);
    void takeCall(const Request& request, const Peer& peer, const Reply& reply);
    void takeReading(const Request& request, const Peer& peer, const Reply& reply);
    void takePrompt(const Request& request, const Peer& peer, const Reply& reply);
    /// Has the call worked off, or says why not.
    void add(Call call);

    const ServerCard card_;
    const Offerings offerings_;
    Channel channel_;
    std::optional<Peer> peer_; ///< Of the handshake. Used by the reading thread alone.
    Calls calls_;              ///< Last, so that all it uses is there while it works.
};

} // namespace tarvo::mcp
