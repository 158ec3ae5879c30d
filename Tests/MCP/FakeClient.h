#pragma once

#include "LumoCore/Basics/Text.h"
#include "TarvoMCP/Server.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace tarvo::testing {

/// A request of a client's; `params` are the members of its parameters.
inline std::string requestLine(int id, const std::string& method, const std::string& params = "") {
    return R"({"jsonrpc":"2.0","id":)" + std::to_string(id) + R"(,"method":")" + method + R"(","params":{)" +
           params + "}}";
}

/// The other end of a server: sends it messages and keeps what it says.
class FakeClient final {
  public:
    explicit FakeClient(mcp::Offerings offerings, std::string instructions = "Hi.",
                        std::chrono::milliseconds beat = std::chrono::seconds(10))
        : server_(
              {.version = "1", .instructions = std::move(instructions)}, std::move(offerings),
              [this](const std::string& line, mcp::Line) {
                  const std::scoped_lock lock(mutex_);
                  said_.push_back(lumo::parseJson(line).value());
                  characters_ += lumo::characterCount(line);
                  changed_.notify_all();
                  return true;
              },
              beat) {}

    void send(const std::string& line) {
        {
            const std::scoped_lock lock(mutex_);
            characters_ += lumo::characterCount(line);
        }
        server_.receive(line);
    }
    mcp::Server& server() { return server_; }

    /// Begins with a handshake; `capabilities` is an object's text.
    void shakeHands(const std::string& version, const std::string& capabilities) {
        send(R"({"jsonrpc":"2.0","id":"hand","method":"initialize","params":{"protocolVersion":")" + version +
             R"(","capabilities":)" + capabilities + R"(,"clientInfo":{"name":"Fake\u001b"}}})");
    }

    /// Calls a tool; `more` are further members of the parameters' text.
    void call(int id, const std::string& tool, const std::string& arguments, const std::string& more = "") {
        send(requestLine(id, "tools/call", R"("name":")" + tool + R"(","arguments":)" + arguments + more));
    }

    /// The first message that the server sent, or is about to send, for which the condition holds.
    mcp::JsonValue message(const std::function<bool(const mcp::JsonValue&)>& holds) {
        std::unique_lock lock(mutex_);
        std::size_t next = 0;
        for (;;) {
            for (; next < said_.size(); ++next) {
                if (holds(said_[next])) {
                    return said_[next];
                }
            }
            changed_.wait(lock, [&] { return next < said_.size(); });
        }
    }

    mcp::JsonValue answer(int id) {
        return message([&](const mcp::JsonValue& said) {
            const mcp::JsonValue* number = said.find("id");
            return number != nullptr && *number == mcp::number(id);
        });
    }

    mcp::JsonValue request(const std::string& method) {
        return message([&](const mcp::JsonValue& said) {
            const std::string* name = mcp::textIn(said, "method");
            return name != nullptr && *name == method;
        });
    }

    /// A request with the members of its parameters, and its answer.
    mcp::JsonValue ask(int id, const std::string& method, const std::string& params = "") {
        send(requestLine(id, method, params));
        return answer(id);
    }

    /// Answers the server's question with that result or error, whose member it is.
    void reply(const mcp::JsonValue& question, const std::string& member);
    void reply(const mcp::JsonValue& question, mcp::Consent consent) {
        reply(question, std::string(R"("result":{"action":")") +
                            (consent == mcp::Consent::given ? "accept" : "decline") + "\"}");
    }

    std::size_t count() {
        const std::scoped_lock lock(mutex_);
        return said_.size();
    }

    /// Of all that was said by both.
    std::size_t characters() {
        const std::scoped_lock lock(mutex_);
        return characters_;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<mcp::JsonValue> said_;
    std::size_t characters_ = 0;
    mcp::Server server_; ///< Last, so that it ends before what it writes to.
};

/// What the stateless revision puts into each request; `capabilities` is an object's text.
inline std::string envelope(const std::string& capabilities, const std::string& version = "2026-07-28") {
    return R"("_meta":{"io.modelcontextprotocol/protocolVersion":")" + version +
           R"(","io.modelcontextprotocol/clientCapabilities":)" + capabilities + "}";
}

/// The text at a path of members and numbers ("result/content/0/text"); "" when there is none.
inline std::string at(mcp::JsonValue value, std::string_view path) {
    while (!path.empty()) {
        const std::string_view step = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(path.size(), step.size() + 1));
        const auto* list = std::get_if<mcp::JsonValue::Array>(&value.value);
        const bool isIndex = !step.empty() && step.find_first_not_of("0123456789") == std::string_view::npos;
        const std::size_t index = list != nullptr && isIndex ? std::stoul(std::string(step)) : 0;
        const mcp::JsonValue* found = list == nullptr                   ? value.find(step)
                                      : isIndex && index < list->size() ? &(*list)[index]
                                                                        : nullptr;
        if (found == nullptr) {
            return "";
        }
        value = mcp::JsonValue(*found);
    }
    const auto* text = std::get_if<std::string>(&value.value);
    return text != nullptr ? *text : dumpJson(value, lumo::JsonLayout::line);
}

inline void FakeClient::reply(const mcp::JsonValue& question, const std::string& member) {
    send(R"({"jsonrpc":"2.0","id":")" + at(question, "id") + "\"," + member + "}");
}

} // namespace tarvo::testing
