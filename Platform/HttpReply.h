#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumo::platform {

/// What a server said to one request.
struct HttpReply {
    int status = 0; ///< 200 when all is well (RFC 9110).
    std::string body;

    friend bool operator==(const HttpReply&, const HttpReply&) = default;
};

/// Puts the reply to an HTTP/1.0 request together from its bytes as they arrive. To such a request a server
/// sends the body in one piece, as long as its head says or else until the connection ends (RFC 9112), so
/// there is nothing here to unwrap. Memory is bounded by the limits, whatever arrives.
class HttpReplyReader final {
  public:
    enum class State { unfinished, finished, malformed, tooLarge };

    static constexpr std::size_t mostHeadBytes = std::size_t{16} * 1024;

    explicit HttpReplyReader(std::size_t mostBodyBytes) : mostBodyBytes_(mostBodyBytes) {}

    /// Takes the next bytes; those after the end of the reply are dropped.
    State add(std::string_view bytes);

    /// Takes note that the connection ended: a reply that is still short of its length is malformed.
    State end();

    /// The finished reply.
    [[nodiscard]] HttpReply take() { return std::move(reply_); }

  private:
    State readHead();
    State readBody(std::string_view bytes);

    std::size_t mostBodyBytes_;
    std::string head_;
    bool hasHead_ = false;
    std::optional<std::size_t> bodyBytes_; ///< Absent when only the end of the connection tells.
    HttpReply reply_;
    State state_ = State::unfinished;
};

} // namespace lumo::platform
