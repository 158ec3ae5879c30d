#include "TarvoMCP/Calls.h"

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

} // namespace

Calls::Calls(Channel& channel, const ServerCard& card, std::chrono::milliseconds beat)
    : channel_(channel), card_(card), beat_(beat) {
    // Agents look at several things at once, and one of them may measure for a minute.
    constexpr int looking = 4;
    threads_.emplace_back([this] { work(false); });
    for (int index = 0; index < looking; ++index) {
        threads_.emplace_back([this] { work(true); });
    }
    threads_.emplace_back([this] { this->beat(); });
}

std::optional<ErrorCode> Calls::add(Call call) {
    constexpr std::size_t mostWaiting = 32;
    {
        const std::scoped_lock lock(mutex_);
        if (queue_.size() >= mostWaiting) {
            return ErrorCode::serverIsBusy;
        }
        const std::string key = keyOf(call.request.id);
        const auto reporter = std::make_shared<Reporter>(channel_, call.request.params, call.peer);
        const auto job = std::make_shared<Job>(Job{std::move(call), {}, reporter});
        if (!unanswered_.emplace(key, job).second) {
            return ErrorCode::invalidRequest;
        }
        queue_.push_back(job);
    }
    changed_.notify_all();
    return std::nullopt;
}

void Calls::cancel(const JsonValue& id) {
    {
        const std::scoped_lock lock(mutex_);
        if (const auto found = unanswered_.find(keyOf(id)); found != unanswered_.end()) {
            found->second->stop.request_stop();
        }
    }
    changed_.notify_all();
}

void Calls::take(const Response& response) {
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

void Calls::end() {
    ending_.request_stop();
    std::deque<std::shared_ptr<Job>> dropped;
    {
        const std::scoped_lock lock(mutex_);
        for (const auto& [id, job] : unanswered_) {
            job->stop.request_stop();
        }
        dropped.swap(queue_);
    }
    changed_.notify_all();
    for (std::jthread& thread : threads_) {
        if (thread.joinable()) {
            thread.join();
        }
    }
}

void Calls::work(bool isLooking) {
    while (const std::shared_ptr<Job> job = next(isLooking)) {
        run(job);
    }
}

std::shared_ptr<Calls::Job> Calls::next(bool isLooking) {
    const auto isMeant = [&](const std::shared_ptr<Job>& job) { return job->call.isLooking == isLooking; };
    std::unique_lock lock(mutex_);
    changed_.wait(lock, ending_.get_token(), [&] { return std::ranges::any_of(queue_, isMeant); });
    if (ending_.stop_requested()) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(queue_, isMeant);
    std::shared_ptr<Job> job = *found;
    queue_.erase(found);
    return job;
}

void Calls::run(const std::shared_ptr<Job>& job) {
    Outcome outcome;
    if (!job->stop.stop_requested()) {
        const JsonValue* arguments = job->call.request.params.find("arguments");
        const ToolCall call{.arguments = arguments != nullptr ? *arguments : object({}),
                            .caller = job->call.peer.name,
                            .stop = job->stop.get_token(),
                            .progress = [&](const Progress& progress) { job->reporter->tell(progress); },
                            .ask = [&](const std::string& question,
                                       const std::string& subject) { return ask(*job, question, subject); }};
        try {
            outcome = job->call.run(call);
        } catch (const std::exception& error) { // Memory has run out; the next call may fare better.
            outcome = {.error = ErrorCode::internalError, .reason = error.what()};
        }
    }
    {
        // Before the answer: whoever has that may use the id again.
        const std::scoped_lock lock(mutex_);
        unanswered_.erase(keyOf(job->call.request.id));
    }
    if (!job->stop.stop_requested()) { // Whoever cancelled expects no answer.
        answer(*job, std::move(outcome));
    }
}

void Calls::answer(Job& job, Outcome outcome) {
    const JsonValue& id = job.call.request.id;
    if (outcome.error) {
        job.call.reply(errorLine(id, *outcome.error, outcome.reason));
    } else if (outcome.isPending && job.form) {
        job.call.reply(resultLine(id, dressed(std::move(*job.form), card_, job.call.peer, "input_required")));
    } else {
        job.call.reply(resultLine(id, dressed(std::move(outcome.result), card_, job.call.peer)));
    }
}

void Calls::beat() {
    const std::chrono::milliseconds pause = std::max(beat_ / 2, std::chrono::milliseconds(1));
    std::unique_lock lock(mutex_);
    while (!ending_.stop_requested()) {
        changed_.wait_for(lock, ending_.get_token(), pause, [] { return false; });
        std::vector<std::shared_ptr<Job>> jobs;
        std::ranges::transform(unanswered_, std::back_inserter(jobs),
                               [](const auto& each) { return each.second; });
        lock.unlock();
        for (const std::shared_ptr<Job>& job : jobs) {
            job->reporter->signOfLife(beat_);
        }
        jobs.clear();
        lock.lock();
    }
}

Consent Calls::ask(Job& job, const std::string& question, const std::string& subject) {
    if (!job.call.peer.canBeAsked) {
        return Consent::cannotAsk;
    }
    if (job.stop.stop_requested()) {
        return Consent::cancelled; // No question flashes up for a call that nobody waits for.
    }
    return job.call.peer.isStateless ? askByResult(job, question, subject) : askByRequest(job, question);
}

Consent Calls::askByRequest(const Job& job, const std::string& question) {
    std::unique_lock lock(mutex_);
    const JsonValue id = word("tarvo-" + std::to_string(nextQuestion_++));
    const std::string key = keyOf(id);
    questions_[key] = {};
    lock.unlock();
    job.reporter->tell({.message = lumo::Words{"Esperando al usuario", "Waiting for the user"}.in()});
    channel_.send(requestLine(id, "elicitation/create", questionForm(question, job.call.peer)));
    const std::stop_token stop = job.stop.get_token();
    lock.lock();
    changed_.wait(lock, stop, [&] { return questions_[key].isAnswered; });
    const Question answered = questions_[key];
    questions_.erase(key);
    lock.unlock();
    if (!answered.isAnswered) {
        channel_.send(notificationLine("notifications/cancelled", object({{"requestId", id}})));
        return Consent::cancelled;
    }
    return stop.stop_requested() ? Consent::cancelled : answered.consent;
}

Consent Calls::askByResult(Job& job, const std::string& question, const std::string& subject) {
    // All that the user is shown, and what stands behind it; both can be long, what they come to is not.
    const std::string about =
        job.call.name + " " + lumo::platform::digestOf(job.call.peer.name + "\n" + question + "\n" + subject);
    const double now = lumo::platform::monotonicSeconds();
    const JsonValue& params = job.call.request.params;
    const JsonValue* replies = objectIn(params, "inputResponses");
    const JsonValue* reply = replies != nullptr ? objectIn(*replies, consentKey) : nullptr;
    const std::string* ticket = textIn(params, "requestState");
    const std::scoped_lock lock(mutex_);
    if (ticket == nullptr) {
        const JsonValue asked = object(
            {{"method", word("elicitation/create")}, {"params", questionForm(question, job.call.peer)}});
        job.form = object({{"inputRequests", object({{std::string(consentKey), asked}})},
                           {"requestState", word(tickets_.issue(about, now))}});
        return Consent::pending;
    }
    const bool isReply = reply != nullptr && tickets_.redeem(*ticket, about, now);
    return isReply ? consentIn(*reply) : Consent::invalid;
}

} // namespace tarvo::mcp
