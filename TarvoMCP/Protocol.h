#pragma once

#include "TarvoMCP/Json.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The two ways in which clients and servers of the Model Context Protocol find out what they have in common:
/// a handshake before everything else (revisions 2024-11-05 to 2025-11-25), or a note in each request
/// (revision 2026-07-28).
namespace tarvo::mcp {

inline constexpr std::string_view statelessVersion = "2026-07-28";

/// Who asks, and what it can do.
struct Peer {
    std::string version =
        {}; ///< The revision of the protocol: a date, so that later ones compare as greater.
    bool isStateless = false; ///< It says all this in each request.
    bool canBeAsked = false;  ///< It can put a question to its user.
    std::string name = {};    ///< What it calls itself, as it may be shown and logged.

    /// Several messages in one list: one revision brought them, the next one took them away.
    [[nodiscard]] bool readsBatches() const { return version == "2025-03-26"; }
    /// What tools do to their surroundings, and the words beside a figure of progress.
    [[nodiscard]] bool readsHints() const { return version >= "2025-03-26"; }
    /// Answers that are records, their schemas, and titles beside names.
    [[nodiscard]] bool readsRecords() const { return version >= "2025-06-18"; }
    /// Questions that say in which form they are put.
    [[nodiscard]] bool readsModes() const { return version >= "2025-11-25"; }
};

/// The handshake's revision to answer with: the client's when it is known, else our newest.
std::string handshakeVersion(std::string_view asked);

/// The peer that the parameters of a handshake describe.
Peer peerOfHandshake(const JsonValue& params);

/// The revision that the request names for itself; absent when it belongs to a handshake.
std::optional<std::string> versionInRequest(const JsonValue& params);

/// The peer that a request of the stateless revision describes; absent when its note is malformed.
std::optional<Peer> peerOfRequest(const JsonValue& params);

/// What a server of ours is called and how it is to be used.
struct ServerCard {
    std::string version; ///< This program's.
    std::string instructions;
};

JsonValue handshakeResult(const ServerCard& card, const Peer& peer);
JsonValue discoverResult(const ServerCard& card);

/// A list that a stateless peer may keep for so long; others are told nothing of that.
JsonValue cacheable(JsonValue result, const Peer& peer, std::int64_t milliseconds);

/// The result as the peer's revision has it: a stateless one says what kind it is and whose.
JsonValue dressed(JsonValue result, const ServerCard& card, const Peer& peer,
                  std::string_view kind = "complete");

/// The data of the error for a revision that is not known.
JsonValue versionsKnown(std::string_view requested);

} // namespace tarvo::mcp
