#pragma once

#include "TarvoMCP/Message.h"
#include "TarvoMCP/Protocol.h"
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

/// Answers a client. Messages are read on the caller's thread and calls are worked off one after the other on
/// another one, so that a cancellation arrives while a call is at work. While one waits for the user, those
/// that only look are worked off.
class Server final {
  public:
    /// Sends one line to the client, from either thread, one at a time; false when nobody is there any more.
    using Send = std::function<bool(const std::string& line)>;

    /// A call whose work or question takes long gives a sign of life at most each `beat`.
    Server(ServerCard card, std::vector<Tool> tools, Send send,
           std::chrono::milliseconds beat = std::chrono::seconds(10));
    ~Server() { end(); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Takes one line of the client's.
    void receive(std::string_view line);

    /// Takes note that a line was too long to be read.
    void receiveTooLong();

    /// Stops whatever is at work and waits for it. Nothing is answered any more.
    void end();

    /// True once the client is gone.
    [[nodiscard]] bool isEnded() const { return ending_.stop_requested(); }

  private:
    /// What a client is told of one call's progress. Used by any thread.
    class Reporter;

    struct Job {
        Request request;
        Peer peer;
        const Tool* tool = nullptr;
        std::stop_source stop;
        std::shared_ptr<Reporter> reporter = {};
    };
    /// A question to the user that went out as a request of ours.
    struct Question {
        bool isAnswered = false;
        Consent consent = Consent::cancelled;
    };

    void take(const Request& request);
    void take(const Notification& notification);
    void take(const Response& response);
    void take(const Malformed& malformed);

    void takeStateless(const Request& request, const std::string& version);
    void takeAfterHandshake(const Request& request);
    /// What both ways of speaking have; false when it is something else.
    bool takeCommon(const Request& request, const Peer& peer);
    void takeCall(const Request& request, const Peer& peer);

    void work();
    std::shared_ptr<Job> nextJob();
    /// The first waiting call of a tool that only looks, and takes it out; null without one. Holds the lock.
    std::shared_ptr<Job> nextLooking();
    void run(Job& job);
    /// The arguments of the call, and the ways back from it. `form` gets a question that is the answer.
    ToolCall callOf(Job& job, std::optional<JsonValue>& form);
    void finish(Job& job);

    Consent ask(Job& job, const std::string& question, const std::string& subject,
                std::optional<JsonValue>& form);
    Consent askByRequest(const Job& job, const std::string& question);
    /// Waits for the reply to the question with that key, and works and gives signs of life meanwhile.
    void awaitReply(const Job& job, const std::string& key, std::unique_lock<std::mutex>& lock);
    Consent askByResult(const Job& job, const std::string& question, const std::string& subject,
                        std::optional<JsonValue>& form);

    void send(const std::string& line);
    void sendResult(const Request& request, const Peer& peer, JsonValue result,
                    std::string_view kind = "complete");

    const ServerCard card_;
    const std::vector<Tool> tools_;
    const Send send_;
    const std::chrono::milliseconds beat_;
    std::mutex sending_;

    std::optional<Peer> peer_; ///< Of the handshake. Used by the reading thread alone.
    ConsentTickets tickets_;   ///< Used by the working thread alone.

    std::mutex mutex_; ///< Of everything below.
    std::condition_variable_any changed_;
    std::deque<std::shared_ptr<Job>> queue_;
    std::map<std::string, std::shared_ptr<Job>> unanswered_; ///< By the text of their ids.
    std::map<std::string, Question> questions_;              ///< By our own ids.
    std::uint64_t nextQuestion_ = 1;

    std::stop_source ending_;
    std::jthread worker_; ///< Last, so that all it uses is there while it runs.
};

} // namespace tarvo::mcp
