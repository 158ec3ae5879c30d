#pragma once

#include "TarvoMCP/Channel.h"
#include "TarvoMCP/Consent.h"
#include "TarvoMCP/Message.h"
#include "TarvoMCP/Protocol.h"
#include "TarvoMCP/Reporter.h"
#include "TarvoMCP/Tool.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tarvo::mcp {

/// What comes of a call: a result, or the code of an error and its reason.
struct Outcome {
    JsonValue result = {};
    bool isPending = false; ///< The question to the user is the result.
    std::optional<ErrorCode> error = {};
    std::string reason = {};
};

/// A call that is to be worked off.
struct Call {
    Request request;
    Peer peer;
    bool isLooking = true; ///< It changes nothing.
    std::string name;      ///< Of what is called; the user's word for one is none for another.
    std::function<Outcome(const ToolCall& call)> run;
    Reply reply;
};

/// Calls that are waiting or at work. Those that change something come one after the other; those that look
/// wait neither for these, nor for the user, nor, up to a few of them, for one another. Messages arrive on
/// one thread; answers are made on others.
class Calls final {
  public:
    /// A call that has nothing to tell for `beat` gives a sign of life. Both references must outlive this.
    Calls(Channel& channel, const ServerCard& card, std::chrono::milliseconds beat);
    ~Calls() { end(); }
    Calls(const Calls&) = delete;
    Calls& operator=(const Calls&) = delete;

    /// Has the call worked off and answered. Absent when that is so; else why it is refused.
    std::optional<ErrorCode> add(Call call);

    /// Stops the call with that id, which is not answered then.
    void cancel(const JsonValue& id);

    /// Takes what the client says to a question of ours.
    void take(const Response& response);

    /// Stops whatever is at work and waits for it.
    void end();

  private:
    struct Job {
        Call call;
        std::stop_source stop;
        std::shared_ptr<Reporter> reporter;
        std::optional<JsonValue> form = {}; ///< A question that is the answer.
    };
    /// A question to the user that went out as a request of ours.
    struct Question {
        bool isAnswered = false;
        Consent consent = Consent::cancelled;
    };

    void work(bool isLooking);
    std::shared_ptr<Job> next(bool isLooking);
    void run(const std::shared_ptr<Job>& job);
    void answer(Job& job, Outcome outcome);
    /// Gives signs of life for all that wait or work.
    void beat();

    Consent ask(Job& job, const std::string& question, const std::string& subject);
    Consent askByRequest(const Job& job, const std::string& question);
    Consent askByResult(Job& job, const std::string& question, const std::string& subject);

    Channel& channel_;
    const ServerCard& card_;
    const std::chrono::milliseconds beat_;

    std::mutex mutex_; ///< Of everything below.
    std::condition_variable_any changed_;
    std::deque<std::shared_ptr<Job>> queue_;
    std::map<std::string, std::shared_ptr<Job>> unanswered_; ///< By the text of their ids.
    std::map<std::string, Question> questions_;              ///< By our own ids.
    std::uint64_t nextQuestion_ = 1;
    ConsentTickets tickets_;

    std::stop_source ending_;
    std::vector<std::jthread> threads_; ///< Last, so that all they use is there while they run.
};

} // namespace tarvo::mcp
