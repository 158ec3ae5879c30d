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
    return object({{"name", word("tarvo-ai")}, {"version", word(card.version)}});
}

/// What is offered never changes while the server runs, and nothing is watched for anybody.
JsonValue ourCapabilities() {
    return object({{"tools", object({})}, {"resources", object({})}, {"prompts", object({})}});
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
    const std::string* asked = textIn(params, "protocolVersion");
    Peer peer{.version = handshakeVersion(asked != nullptr ? *asked : ""),
              .name = shownName(objectIn(params, "clientInfo"))};
    // Questions came with records.
    peer.canBeAsked = peer.readsRecords() && canBeAsked(objectIn(params, "capabilities"));
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

JsonValue handshakeResult(const ServerCard& card, const Peer& peer) {
    JsonValue info = ourInfo(card);
    if (peer.readsRecords()) {
        std::get<JsonValue::Object>(info.value).push_back({"title", word("Tarvo AI")});
    }
    return object({{"protocolVersion", word(peer.version)},
                   {"capabilities", ourCapabilities()},
                   {"serverInfo", std::move(info)},
                   {"instructions", word(card.instructions)}});
}

JsonValue discoverResult(const ServerCard& card) {
    return object({{"supportedVersions", list({word(statelessVersion)})},
                   {"capabilities", ourCapabilities()},
                   {"instructions", word(card.instructions)},
                   {"ttlMs", number(0)},
                   {"cacheScope", word("private")}});
}

JsonValue cacheable(JsonValue result, const Peer& peer, std::int64_t milliseconds) {
    if (peer.isStateless) {
        auto& members = std::get<JsonValue::Object>(result.value);
        members.push_back({"ttlMs", number(milliseconds)});
        members.push_back({"cacheScope", word("private")});
    }
    return result;
}

JsonValue dressed(JsonValue result, const ServerCard& card, const Peer& peer, std::string_view kind) {
    if (peer.isStateless) {
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
