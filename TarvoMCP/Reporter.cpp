#include "TarvoMCP/Reporter.h"

#include "TarvoMCP/Message.h"

#include <algorithm>

namespace tarvo::mcp {

namespace {

/// What the client wants progress to be called; absent when it wants none.
std::optional<JsonValue> progressToken(const JsonValue& params) {
    const JsonValue* meta = objectIn(params, "_meta");
    const JsonValue* token = meta != nullptr ? meta->find("progressToken") : nullptr;
    const bool isToken = token != nullptr && (std::holds_alternative<std::string>(token->value) ||
                                              std::holds_alternative<std::int64_t>(token->value));
    return isToken ? std::optional(*token) : std::nullopt;
}

JsonValue figure(double value) {
    const auto whole = static_cast<std::int64_t>(value);
    return static_cast<double>(whole) < value ? JsonValue{value} : number(whole);
}

} // namespace

Reporter::Reporter(Channel& channel, const JsonValue& params, const Peer& peer)
    : channel_(channel), token_(progressToken(params)), readsWords_(peer.readsHints()) {}

void Reporter::tell(const Progress& progress) {
    const std::scoped_lock lock(mutex_);
    const bool hasGrown = progress.done > last_.done;
    const double before = last_.done;
    last_ = progress;
    last_.done = std::max(before, progress.done);
    if (hasGrown) {
        send();
    }
}

void Reporter::signOfLife(std::chrono::milliseconds silence) {
    const std::scoped_lock lock(mutex_);
    if (Clock::now() - sentAt_ >= silence) {
        // Each figure must be larger than the one before; thousands of these do not make one of the work.
        constexpr double next = 0.0001;
        last_.done += next;
        send();
    }
}

void Reporter::send() {
    sentAt_ = Clock::now();
    if (!token_) {
        return;
    }
    JsonValue params = object({{"progressToken", *token_}, {"progress", figure(last_.done)}});
    auto& members = std::get<JsonValue::Object>(params.value);
    if (last_.total) {
        members.push_back({"total", figure(*last_.total)});
    }
    if (readsWords_ && !last_.message.empty()) {
        members.push_back({"message", word(last_.message)});
    }
    channel_.send(notificationLine("notifications/progress", std::move(params)), Line::droppable);
}

} // namespace tarvo::mcp
