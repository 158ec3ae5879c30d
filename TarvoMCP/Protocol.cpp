#include "TarvoMCP/Protocol.h"

#include "LumoCore/Basics/Text.h"

#include <algorithm>
#include <array>

namespace tarvo::mcp {

namespace {

constexpr std::array<std::string_view, 4> handshakeVersions{"2024-11-05", "2025-03-26", "2025-06-18",
                                                            "2025-11-25"};
constexpr std::string_view serverInfoKey = "io.modelcontextprotocol/serverInfo";

/// Questions in the form of a form: what a client means that says no more than that it can be asked.
bool canBeAsked(const JsonValue* capabilities) {
    const JsonValue* asking = capabilities != nullptr ? objectIn(*capabilities, "elicitation") : nullptr;
    return asking != nullptr && (asking->find("form") != nullptr || asking->find("url") == nullptr);
}

/// The name comes from outside and ends up in the log and on terminals.
std::string shownName(const JsonValue* info) {
    constexpr std::size_t mostCharacters = 60;
    const std::string* name = info != nullptr ? textIn(*info, "name") : nullptr;
    if (name == nullptr || name->empty()) {
        return "MCP";
    }
    return lumo::shortened(lumo::printable(*name), mostCharacters);
}

JsonValue ourInfo(const ServerCard& card) {
    return object({{"name", word("tarvo-ai")}, {"title", word("Tarvo AI")}, {"version", word(card.version)}});
}

JsonValue ourCapabilities() {
    return object({{"tools", object({})}});
}

const JsonValue* noteIn(const JsonValue& params, std::string_view name) {
    const JsonValue* meta = objectIn(params, "_meta");
    return meta != nullptr ? meta->find("io.modelcontextprotocol/" + std::string(name)) : nullptr;
}

} // namespace

std::string handshakeVersion(std::string_view asked) {
    const bool isKnown = std::ranges::find(handshakeVersions, asked) != handshakeVersions.end();
    return std::string(isKnown ? asked : handshakeVersions.back());
}

Peer peerOfHandshake(const JsonValue& params) {
    constexpr std::string_view firstThatAsks = "2025-06-18"; // And reads records.
    const std::string* asked = textIn(params, "protocolVersion");
    Peer peer{.version = handshakeVersion(asked != nullptr ? *asked : ""),
              .name = shownName(objectIn(params, "clientInfo"))};
    // Revisions are dates, so their texts are in the order of their time.
    peer.canBeAsked = peer.version >= firstThatAsks && canBeAsked(objectIn(params, "capabilities"));
    peer.readsRecords = peer.version >= firstThatAsks;
    return peer;
}

std::optional<std::string> versionInRequest(const JsonValue& params) {
    const JsonValue* version = noteIn(params, "protocolVersion");
    if (version == nullptr) {
        return std::nullopt;
    }
    const auto* text = std::get_if<std::string>(&version->value);
    return text != nullptr ? *text : std::string();
}

std::optional<Peer> peerOfRequest(const JsonValue& params) {
    const JsonValue* capabilities = noteIn(params, "clientCapabilities");
    if (capabilities == nullptr || !std::holds_alternative<JsonValue::Object>(capabilities->value)) {
        return std::nullopt;
    }
    return Peer{.version = std::string(statelessVersion),
                .isStateless = true,
                .canBeAsked = canBeAsked(capabilities),
                .name = shownName(noteIn(params, "clientInfo"))};
}

JsonValue handshakeResult(const ServerCard& card, std::string_view version) {
    return object({{"protocolVersion", word(version)},
                   {"capabilities", ourCapabilities()},
                   {"serverInfo", ourInfo(card)},
                   {"instructions", word(card.instructions)}});
}

JsonValue discoverResult(const ServerCard& card) {
    return object({{"supportedVersions", list({word(statelessVersion)})},
                   {"capabilities", ourCapabilities()},
                   {"instructions", word(card.instructions)},
                   {"ttlMs", number(0)},
                   {"cacheScope", word("private")}});
}

JsonValue dressed(JsonValue result, const ServerCard& card, bool isStateless, std::string_view kind) {
    if (isStateless) {
        auto& members = std::get<JsonValue::Object>(result.value);
        members.insert(members.begin(), {"resultType", word(kind)});
        members.push_back({"_meta", object({{std::string(serverInfoKey), ourInfo(card)}})});
    }
    return result;
}

JsonValue versionsKnown(std::string_view requested) {
    return object({{"supported", list({word(statelessVersion)})}, {"requested", word(requested)}});
}

} // namespace tarvo::mcp
