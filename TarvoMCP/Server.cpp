#include "TarvoMCP/Server.h"

#include <algorithm>

namespace tarvo::mcp {

namespace {

void refuse(const Request& request, ErrorCode code, std::string_view reason, const Reply& reply) {
    reply(errorLine(request.id, code, reason));
}

} // namespace

Server::Server(ServerCard card, Offerings offerings, Send send, std::chrono::milliseconds beat)
    : card_(std::move(card)), offerings_(std::move(offerings)), channel_(std::move(send)),
      calls_(channel_, card_, beat) {}

Reply Server::alone() {
    return [this](const std::string& line) { channel_.send(line); };
}

void Server::receive(std::string_view line) {
    if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
        return; // Some clients part their messages by empty lines.
    }
    std::visit([this](const auto& message) { take(message, alone()); }, readMessage(line));
}

void Server::receiveTooLong() {
    take(Malformed{{}, ErrorCode::invalidRequest, "the message is longer than 1 MiB"}, alone());
}

void Server::end() {
    channel_.end();
    calls_.end();
}

void Server::take(const Batch& batch, const Reply& reply) {
    constexpr std::size_t mostMembers = 32; // As many calls may wait.
    const auto refuseAll = [&](std::string_view reason) {
        reply(errorLine({}, ErrorCode::invalidRequest, reason));
    };
    if (!peer_ || !peer_->readsBatches()) {
        refuseAll(peer_ ? "revision " + peer_->version + " has no batches: send one message at a time"
                        : "a batch cannot come before the handshake");
        return;
    }
    if (batch.members.size() > mostMembers) {
        refuseAll("a batch has 32 messages at most");
        return;
    }
    const auto together = std::make_shared<BatchReply>(channel_);
    const Reply toBatch = [together](const std::string& line) { together->add(line); };
    for (const JsonValue& member : batch.members) {
        std::visit([&](const auto& message) { take(message, toBatch); }, messageIn(member));
    }
}

void Server::take(const Malformed& malformed, const Reply& reply) {
    reply(errorLine(malformed.id, malformed.code, malformed.reason));
}

void Server::take(const Response& response, const Reply& /*reply*/) {
    calls_.take(response);
}

void Server::take(const Notification& notification, const Reply& /*reply*/) {
    const JsonValue* id = notification.params.find("requestId");
    if (notification.method == "notifications/cancelled" && id != nullptr) {
        calls_.cancel(*id);
    }
}

void Server::take(const Request& request, const Reply& reply) {
    if (const auto version = versionInRequest(request.params)) {
        takeStateless(request, *version, reply);
    } else {
        takeAfterHandshake(request, reply);
    }
}

void Server::takeStateless(const Request& request, const std::string& version, const Reply& reply) {
    if (version != statelessVersion) {
        reply(errorLine(request.id, ErrorCode::unsupportedVersion,
                        "Unsupported protocol version: " + shown(&version), versionsKnown(shown(&version))));
        return;
    }
    const std::optional<Peer> peer = peerOfRequest(request.params);
    if (!peer) {
        refuse(request, ErrorCode::invalidParams,
               "_meta: expected io.modelcontextprotocol/clientCapabilities", reply);
    } else if (request.method == "server/discover") {
        reply(resultLine(request.id, dressed(discoverResult(card_), card_, *peer)));
    } else {
        takeCommon(request, *peer, reply);
    }
}

void Server::takeAfterHandshake(const Request& request, const Reply& reply) {
    if (request.method == "initialize") {
        if (peer_) {
            refuse(request, ErrorCode::invalidRequest, "already initialized", reply);
            return;
        }
        peer_ = peerOfHandshake(request.params);
        reply(resultLine(request.id, handshakeResult(card_, *peer_)));
    } else if (request.method == "ping") {
        reply(resultLine(request.id, object({})));
    } else if (!peer_) {
        refuse(request, ErrorCode::invalidRequest, "initialize comes first", reply);
    } else {
        takeCommon(request, *peer_, reply);
    }
}

void Server::takeCommon(const Request& request, const Peer& peer, const Reply& reply) {
    if (request.method == "tools/call") {
        takeCall(request, peer, reply);
    } else if (request.method == "resources/read") {
        takeReading(request, peer, reply);
    } else if (request.method == "prompts/get") {
        takePrompt(request, peer, reply);
    } else if (auto list = listed(offerings_, request.method, peer); !list) {
        refuse(request, ErrorCode::methodNotFound, "Method not found", reply);
    } else if (request.params.find("cursor") != nullptr) {
        refuse(request, ErrorCode::invalidParams, "cursor: the list has one page", reply);
    } else {
        reply(resultLine(request.id, dressed(std::move(*list), card_, peer)));
    }
}

void Server::takeCall(const Request& request, const Peer& peer, const Reply& reply) {
    const std::string* name = textIn(request.params, "name");
    const auto tool = std::ranges::find_if(
        offerings_.tools, [&](const Tool& each) { return name != nullptr && each.name == *name; });
    const JsonValue* arguments = request.params.find("arguments");
    if (tool == offerings_.tools.end()) {
        refuse(request, ErrorCode::invalidParams, "Unknown tool: " + shown(name), reply);
        return;
    }
    if (arguments != nullptr && !std::holds_alternative<JsonValue::Object>(arguments->value)) {
        refuse(request, ErrorCode::invalidParams, "arguments: expected an object", reply);
        return;
    }
    const auto run = [tool = &*tool, readsRecords = peer.readsRecords()](const ToolCall& call) {
        const auto checked = checkNames(*tool, call.arguments);
        const ToolAnswer answer = checked ? tool->run(call) : problem(checked.error().message);
        return Outcome{.result = resultOf(answer, readsRecords), .isPending = answer.isPending};
    };
    add({request, peer, tool->hints.isReadOnly, tool->name, run, reply});
}

void Server::takeReading(const Request& request, const Peer& peer, const Reply& reply) {
    const std::string* uri = textIn(request.params, "uri");
    const auto [resource, given] =
        uri != nullptr ? resourceAt(offerings_, *uri) : std::pair(nullptr, std::string());
    const ErrorCode notThere = peer.isStateless ? ErrorCode::invalidParams : ErrorCode::noSuchResource;
    if (resource == nullptr) {
        refuse(request, uri != nullptr ? notThere : ErrorCode::invalidParams,
               "Resource not found: " + shown(uri), reply);
        return;
    }
    const auto run = [resource, given, uri = *uri, peer, notThere](const ToolCall&) {
        const auto document = resource->read(given);
        return document ? Outcome{.result = cacheable(readResult(uri, *document), peer, 0)}
                        : Outcome{.error = notThere, .reason = document.error().message};
    };
    add({request, peer, true, resource->name, run, reply});
}

void Server::takePrompt(const Request& request, const Peer& peer, const Reply& reply) {
    auto result = promptResult(offerings_, request.params);
    if (result) {
        reply(resultLine(request.id, dressed(std::move(*result), card_, peer)));
    } else {
        refuse(request, ErrorCode::invalidParams, result.error().message, reply);
    }
}

void Server::add(Call call) {
    const Request request = call.request;
    const Reply reply = call.reply;
    if (const auto refused = calls_.add(std::move(call))) {
        refuse(request, *refused,
               *refused == ErrorCode::serverIsBusy ? "too many calls at once" : "the id is in use", reply);
    }
}

} // namespace tarvo::mcp
