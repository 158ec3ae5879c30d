#pragma once

#include "TarvoMCP/Json.h"
#include "TarvoMCP/Protocol.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

/// The user's word. A model cannot give it: it is asked for through the client, and only an explicit yes to
/// the very question counts.
namespace tarvo::mcp {

enum class Consent {
    given,
    declined,  ///< The user said no.
    cancelled, ///< The question was closed without an answer, or the request was cancelled meanwhile.
    cannotAsk, ///< The client has no way to ask its user, or failed to.
    pending,   ///< The question goes out as the answer to this request; the client comes back with the reply.
    invalid,   ///< What came back belongs to no question of ours, or to none that is still open.
};

/// What the client is told to put to its user. Nothing has to be filled in: the form has only its two
/// buttons.
JsonValue questionForm(std::string_view message, const Peer& peer);

/// What the user answered in a client's reply to such a form.
Consent consentIn(const JsonValue& reply);

/// Notes that go out with a question and come back with the reply, through a client that could change them:
/// each is signed, names what it is about, serves once and for a few minutes. Used by one thread.
class ConsentTickets final {
  public:
    ConsentTickets();

    /// A note for a question about that subject.
    std::string issue(std::string_view subject, double seconds);

    /// True for a note that was issued for this subject, is not too old and has not served yet. It has then.
    bool redeem(std::string_view ticket, std::string_view subject, double seconds);

  private:
    [[nodiscard]] std::string signatureFor(std::string_view number, std::string_view ends,
                                           std::string_view subject) const;

    std::array<std::uint8_t, 32> key_;
    std::uint64_t next_ = 1;
    std::set<std::string, std::less<>> open_; ///< Numbers of the notes that have not served.
};

} // namespace tarvo::mcp
