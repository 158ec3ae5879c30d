#include "TarvoMCP/Server.h"

#include "Platform/Clock.h"
#include "Platform/Signing.h"

#include <algorithm>
#include <exception>

namespace tarvo::mcp {

namespace {

constexpr std::string_view consentKey = "consent";

std::string keyOf(const JsonValue& id) {
    return dumpJson(id, lumo::JsonLayout::line);
}

/// What the client wants progress to be called; absent when it wants none.
std::optional<JsonValue> progressToken(const JsonValue& params) {
    const JsonValue* meta = objectIn(params, "_meta");
    const JsonValue* token = meta != nullptr ? meta->find("progressToken") : nullptr;
    const bool isToken = token != nullptr && (std::holds_alternative<std::string>(token->value) ||
                                              std::holds_alternative<std::int64_t>(token->value));
    return isToken ? std::optional(*token) : std::nullopt;
}

} // namespace

Server::Server(ServerCard card, std::vector<Tool> tools, Send send)
    : card_(std::move(card)), tools_(std::move(tools)), send_(std::move(send)), worker_([this] { work(); }) {}

void Server::receive(std::string_view line) {
    if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
        return; // Some clients part their messages by empty lines.
    }
    std::visit([this](const auto& message) { take(message); }, readMessage(line));
}

void Server::receiveTooLong() {
    take(Malformed{{}, ErrorCode::invalidRequest, "the message is longer than 1 MiB"});
}

void Server::end() {
    ending_.request_stop();
    {
        const std::scoped_lock lock(mutex_);
        for (const auto& [id, job] : unanswered_) {
            job->stop.request_stop();
        }
        queue_.clear();
    }
    changed_.notify_all();
    if (worker_.joinable()) {
        worker_.join();
    }
}

void Server::take(const Malformed& malformed) {
    send(errorLine(malformed.id, malformed.code, malformed.reason));
}

void Server::take(const Response& response) {
    {
        const std::scoped_lock lock(mutex_);
        const auto question = questions_.find(keyOf(response.id));
        if (question == questions_.end() || question->second.isAnswered) {
            return; // To nothing of ours, or too late.
        }
        question->second.isAnswered = true;
        question->second.consent = response.result ? consentIn(*response.result) : Consent::declined;
    }
    changed_.notify_all();
}

void Server::take(const Notification& notification) {
    const JsonValue* id = notification.params.find("requestId");
    if (notification.method != "notifications/cancelled" || id == nullptr) {
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        if (const auto found = unanswered_.find(keyOf(*id)); found != unanswered_.end()) {
            found->second->stop.request_stop();
        }
    }
    changed_.notify_all();
}

void Server::take(const Request& request) {
    if (const auto version = versionInRequest(request.params)) {
        takeStateless(request, *version);
    } else {
        takeAfterHandshake(request);
    }
}

void Server::takeStateless(const Request& request, const std::string& version) {
    if (version != statelessVersion) {
        send(errorLine(request.id, ErrorCode::unsupportedVersion, "Unsupported protocol version: " + version,
                       versionsKnown(version)));
        return;
    }
    const std::optional<Peer> peer = peerOfRequest(request.params);
    if (!peer) {
        send(errorLine(request.id, ErrorCode::invalidParams,
                       "_meta: expected io.modelcontextprotocol/clientCapabilities"));
    } else if (request.method == "server/discover") {
        sendResult(request, *peer, discoverResult(card_));
    } else if (!takeCommon(request, *peer)) {
        send(errorLine(request.id, ErrorCode::methodNotFound, "Method not found"));
    }
}

void Server::takeAfterHandshake(const Request& request) {
    if (request.method == "initialize") {
        if (peer_) {
            send(errorLine(request.id, ErrorCode::invalidRequest, "already initialized"));
            return;
        }
        peer_ = peerOfHandshake(request.params);
        send(resultLine(request.id, handshakeResult(card_, peer_->version)));
    } else if (request.method == "ping") {
        send(resultLine(request.id, object({})));
    } else if (!peer_) {
        send(errorLine(request.id, ErrorCode::invalidRequest, "initialize comes first"));
    } else if (!takeCommon(request, *peer_)) {
        send(errorLine(request.id, ErrorCode::methodNotFound, "Method not found"));
    }
}

bool Server::takeCommon(const Request& request, const Peer& peer) {
    if (request.method == "tools/call") {
        takeCall(request, peer);
        return true;
    }
    if (request.method != "tools/list") {
        return false;
    }
    std::vector<JsonValue> tools;
    std::ranges::transform(tools_, std::back_inserter(tools), described);
    JsonValue result = object({{"tools", list(std::move(tools))}});
    if (peer.isStateless) {
        constexpr std::int64_t hour = 3600000;
        auto& members = std::get<JsonValue::Object>(result.value);
        members.push_back({"ttlMs", number(hour)}); // The tools are those of the program.
        members.push_back({"cacheScope", word("private")});
    }
    sendResult(request, peer, std::move(result));
    return true;
}

void Server::takeCall(const Request& request, const Peer& peer) {
    constexpr std::size_t mostWaiting = 32;
    const std::string* name = textIn(request.params, "name");
    const auto tool =
        std::ranges::find_if(tools_, [&](const Tool& each) { return name != nullptr && each.name == *name; });
    const JsonValue* arguments = request.params.find("arguments");
    if (tool == tools_.end()) {
        send(errorLine(request.id, ErrorCode::invalidParams,
                       "Unknown tool: " + (name != nullptr ? *name : std::string())));
        return;
    }
    if (arguments != nullptr && !std::holds_alternative<JsonValue::Object>(arguments->value)) {
        send(errorLine(request.id, ErrorCode::invalidParams, "arguments: expected an object"));
        return;
    }
    std::optional<ErrorCode> refused;
    {
        const std::scoped_lock lock(mutex_);
        const auto job = std::make_shared<Job>(Job{request, peer, &*tool, {}});
        if (queue_.size() >= mostWaiting) {
            refused = ErrorCode::serverIsBusy;
        } else if (!unanswered_.emplace(keyOf(request.id), job).second) {
            refused = ErrorCode::invalidRequest;
        } else {
            queue_.push_back(job);
        }
    }
    if (refused) {
        send(errorLine(request.id, *refused,
                       *refused == ErrorCode::serverIsBusy ? "too many calls at once" : "the id is in use"));
        return;
    }
    changed_.notify_all();
}

void Server::work() {
    while (const std::shared_ptr<Job> job = nextJob()) {
        if (job->stop.stop_requested()) {
            finish(*job);
        } else {
            run(*job);
        }
    }
}

std::shared_ptr<Server::Job> Server::nextJob() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, ending_.get_token(), [this] { return !queue_.empty(); });
    if (ending_.stop_requested()) {
        return nullptr;
    }
    const std::shared_ptr<Job> job = queue_.front();
    queue_.pop_front();
    return job;
}

void Server::run(Job& job) {
    std::optional<JsonValue> form;
    const ToolCall call = callOf(job, form);
    ToolAnswer answer;
    std::optional<std::string> fault;
    try {
        const auto checked = checkNames(*job.tool, call.arguments);
        answer = checked ? job.tool->run(call) : problem(checked.error().message);
    } catch (const std::exception& error) { // Memory or threads have run out; the next call may fare better.
        fault = error.what();
    }
    finish(job); // Before the answer: whoever has that may use the id again.
    if (job.stop.stop_requested()) {
        return; // Whoever cancelled expects no answer.
    }
    if (fault) {
        send(errorLine(job.request.id, ErrorCode::internalError, *fault));
    } else if (answer.isPending && form) {
        sendResult(job.request, job.peer, std::move(*form), "input_required");
    } else {
        sendResult(job.request, job.peer, resultOf(answer));
    }
}

ToolCall Server::callOf(Job& job, std::optional<JsonValue>& form) {
    const JsonValue* arguments = job.request.params.find("arguments");
    ToolCall call{.arguments = arguments != nullptr ? *arguments : object({}),
                  .caller = job.peer.name,
                  .stop = job.stop.get_token()};
    call.progress = [this, token = progressToken(job.request.params),
                     last = std::int64_t{-1}](std::int64_t done, const std::string& message) mutable {
        // A figure that stands still says nothing.
        if (token && done > last) {
            last = done;
            send(notificationLine(
                "notifications/progress",
                object({{"progressToken", *token}, {"progress", number(done)}, {"message", word(message)}})));
        }
    };
    call.ask = [this, &job, &form](const std::string& question, const std::string& subject) {
        return ask(job, question, subject, form);
    };
    return call;
}

void Server::finish(Job& job) {
    const std::scoped_lock lock(mutex_);
    unanswered_.erase(keyOf(job.request.id));
}

Consent Server::ask(Job& job, const std::string& question, const std::string& subject,
                    std::optional<JsonValue>& form) {
    if (!job.peer.canBeAsked) {
        return Consent::cannotAsk;
    }
    if (job.stop.stop_requested()) {
        return Consent::declined; // No question flashes up for a call that nobody waits for.
    }
    return job.peer.isStateless ? askByResult(job, question, subject, form) : askByRequest(job, question);
}

Consent Server::askByRequest(const Job& job, const std::string& question) {
    std::unique_lock lock(mutex_);
    const JsonValue id = word("tarvo-" + std::to_string(nextQuestion_++));
    const std::string key = keyOf(id);
    questions_[key] = {};
    lock.unlock();
    send(requestLine(id, "elicitation/create", questionForm(question)));
    lock.lock();
    const std::stop_token stop = job.stop.get_token();
    changed_.wait(lock, stop, [&] { return questions_[key].isAnswered; });
    const Question answered = questions_[key];
    questions_.erase(key);
    lock.unlock();
    if (!answered.isAnswered) {
        send(notificationLine("notifications/cancelled", object({{"requestId", id}})));
        return Consent::declined;
    }
    return stop.stop_requested() ? Consent::declined : answered.consent;
}

Consent Server::askByResult(const Job& job, const std::string& question, const std::string& subject,
                            std::optional<JsonValue>& form) {
    // All that the user is shown, and what stands behind it; both can be long, what they come to is not.
    const std::string about =
        job.tool->name + " " + lumo::platform::digestOf(job.peer.name + "\n" + question + "\n" + subject);
    const JsonValue& params = job.request.params;
    const JsonValue* replies = objectIn(params, "inputResponses");
    const JsonValue* reply = replies != nullptr ? objectIn(*replies, consentKey) : nullptr;
    const std::string* ticket = textIn(params, "requestState");
    if (ticket == nullptr) {
        const JsonValue asked =
            object({{"method", word("elicitation/create")}, {"params", questionForm(question)}});
        form = object({{"inputRequests", object({{std::string(consentKey), asked}})},
                       {"requestState", word(tickets_.issue(about, lumo::platform::monotonicSeconds()))}});
        return Consent::pending;
    }
    const bool isReply =
        reply != nullptr && tickets_.redeem(*ticket, about, lumo::platform::monotonicSeconds());
    return isReply ? consentIn(*reply) : Consent::invalid;
}

void Server::send(const std::string& line) {
    const std::scoped_lock lock(sending_);
    if (!ending_.stop_requested() && !send_(line)) {
        ending_.request_stop();
    }
}

void Server::sendResult(const Request& request, const Peer& peer, JsonValue result, std::string_view kind) {
    send(resultLine(request.id, dressed(std::move(result), card_, peer.isStateless, kind)));
}

} // namespace tarvo::mcp
