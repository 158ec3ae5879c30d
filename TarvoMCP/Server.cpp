#include "TarvoMCP/Server.h"

#include "LumoCore/Basics/Words.h"
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

class Server::Reporter final {
  public:
    Reporter(Server& server, std::optional<JsonValue> token) : server_(server), token_(std::move(token)) {}

    void tell(const Progress& progress) {
        const std::scoped_lock lock(mutex_);
        if (progress.done > last_) {
            last_ = progress.done;
            send(progress.message, progress.total);
        } else {
            beat(progress.message, progress.total);
        }
    }

    /// A sign of life, when none was given for long enough.
    void signOfLife(const std::string& message) {
        const std::scoped_lock lock(mutex_);
        beat(message, {});
    }

  private:
    void beat(const std::string& message, std::optional<double> total) {
        if (Clock::now() - sentAt_ >= server_.beat_) {
            // Each figure must be larger than the one before; thousands of these do not make one of the work.
            constexpr double next = 0.0001;
            last_ += next;
            send(message, total);
        }
    }

    void send(const std::string& message, std::optional<double> total) {
        sentAt_ = Clock::now();
        if (!token_) {
            return;
        }
        JsonValue params = object({{"progressToken", *token_}, {"progress", figure(last_)}});
        auto& members = std::get<JsonValue::Object>(params.value);
        if (total) {
            members.push_back({"total", figure(*total)});
        }
        members.push_back({"message", word(message)});
        server_.send(notificationLine("notifications/progress", std::move(params)));
    }

    static JsonValue figure(double value) {
        const auto whole = static_cast<std::int64_t>(value);
        return static_cast<double>(whole) < value ? JsonValue{value} : number(whole);
    }

    using Clock = std::chrono::steady_clock;
    Server& server_;
    const std::optional<JsonValue> token_;
    std::mutex mutex_;
    double last_ = 0;
    Clock::time_point sentAt_ = Clock::now();
};

Server::Server(ServerCard card, std::vector<Tool> tools, Send send, std::chrono::milliseconds beat)
    : card_(std::move(card)), tools_(std::move(tools)), send_(std::move(send)), beat_(beat),
      worker_([this] { work(); }) {}

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
        question->second.consent = response.result ? consentIn(*response.result) : Consent::cannotAsk;
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
        sendResult(job.request, job.peer, resultOf(answer, job.peer.readsRecords));
    }
}

ToolCall Server::callOf(Job& job, std::optional<JsonValue>& form) {
    const JsonValue* arguments = job.request.params.find("arguments");
    ToolCall call{.arguments = arguments != nullptr ? *arguments : object({}),
                  .caller = job.peer.name,
                  .stop = job.stop.get_token()};
    job.reporter = std::make_shared<Reporter>(*this, progressToken(job.request.params));
    call.progress = [reporter = job.reporter](const Progress& progress) { reporter->tell(progress); };
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
        return Consent::cancelled; // No question flashes up for a call that nobody waits for.
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
    awaitReply(job, key, lock);
    const std::stop_token stop = job.stop.get_token();
    const Question answered = questions_[key];
    questions_.erase(key);
    lock.unlock();
    if (!answered.isAnswered) {
        send(notificationLine("notifications/cancelled", object({{"requestId", id}})));
        return Consent::cancelled;
    }
    return stop.stop_requested() ? Consent::cancelled : answered.consent;
}

void Server::awaitReply(const Job& job, const std::string& key, std::unique_lock<std::mutex>& lock) {
    const std::stop_token stop = job.stop.get_token();
    const auto isLooking = [](const auto& waiting) { return waiting->tool->hints.isReadOnly; };
    while (!questions_[key].isAnswered && !stop.stop_requested()) {
        changed_.wait_for(lock, stop, beat_, [&] {
            return questions_[key].isAnswered || std::ranges::any_of(queue_, isLooking);
        });
        const std::shared_ptr<Job> looking = questions_[key].isAnswered ? nullptr : nextLooking();
        lock.unlock();
        if (looking && !looking->stop.stop_requested()) {
            run(*looking);
        } else if (looking) {
            finish(*looking);
        } else {
            job.reporter->signOfLife(lumo::Words{"Esperando al usuario", "Waiting for the user"}.in());
        }
        lock.lock();
    }
}

std::shared_ptr<Server::Job> Server::nextLooking() {
    const auto found =
        std::ranges::find_if(queue_, [](const auto& job) { return job->tool->hints.isReadOnly; });
    if (found == queue_.end()) {
        return nullptr;
    }
    std::shared_ptr<Job> job = *found;
    queue_.erase(found);
    return job;
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
