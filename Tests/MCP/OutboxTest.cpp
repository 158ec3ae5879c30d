#include "TarvoMCP/Outbox.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Platform/Clock.h"
#include "TarvoMCP/Server.h"
#include "TarvoMCP/Tools.h"
#include "Tests/MCP/FakeClient.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <filesystem>

using tarvo::mcp::Line;
using tarvo::mcp::Outbox;
using tarvo::testing::at;
using tarvo::testing::requestLine;
using tarvo::testing::TempHome;

namespace {

/// A pipe of which the test reads as much as it wants.
class Pipe final {
  public:
    Pipe() { EXPECT_EQ(pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK), 0); }
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] std::optional<std::size_t> write(std::string_view bytes) const {
        pollfd waiting{.fd = ends_[1], .events = POLLOUT, .revents = 0};
        poll(&waiting, 1, 1);
        const ssize_t count = ::write(ends_[1], bytes.data(), bytes.size());
        return count < 0 ? 0 : static_cast<std::size_t>(count);
    }

    /// The next line, as soon as it is there.
    std::string line() {
        std::string line;
        for (;;) {
            pollfd waiting{.fd = ends_[0], .events = POLLIN, .revents = 0};
            poll(&waiting, 1, -1);
            char next = 0;
            if (read(ends_[0], &next, 1) == 1) {
                if (next == '\n') {
                    return line;
                }
                line += next;
            }
        }
    }

  private:
    std::array<int, 2> ends_{};
};

} // namespace

TEST(Outbox, LetsACleanupEndAndTheHomeGoThoughTheClientNeverReads) {
    // Progress was written while the home's lock was held: a client that did not read kept it for ever.
    const TempHome home;
    const std::string wheel = home.file(".cache/uv/wheel", 3000000);
    Pipe pipe;
    Outbox outbox([&](std::string_view bytes) { return pipe.write(bytes); });
    tarvo::mcp::Server server(
        {.version = "1", .instructions = "Hi."},
        offeringsOf(std::make_shared<tarvo::mcp::Workspace>(home.path()), tarvo::mcp::Offer::everything),
        [&](const std::string& line, Line kind) { return outbox.put(line, kind); });
    server.receive(
        requestLine(1, "initialize",
                    R"("protocolVersion":"2025-11-25","capabilities":{"elicitation":{}},"clientInfo":{})"));
    pipe.line();
    server.receive(requestLine(2, "tools/call", R"("name":"propose_cleanup","arguments":{})"));
    const std::string plan = at(lumo::parseJson(pipe.line()).value(), "result/structuredContent/plan");
    // From here on nobody reads any more.
    std::size_t taken = 0;
    while (outbox.waitForRoom()) {
        server.receive(requestLine(3, "tools/list", ""));
        ++taken;
    }
    EXPECT_LT(taken, 200U) << "memory is bounded";
    server.receive(requestLine(4, "tools/call",
                               R"("name":"clean","arguments":{"plan":")" + plan +
                                   R"("},"_meta":{"progressToken":"t"})"));
    while (std::filesystem::exists(wheel)) {
        server.receive(R"({"jsonrpc":"2.0","id":"tarvo-1","result":{"action":"accept"}})");
        std::this_thread::yield();
    }
    server.end();
    EXPECT_TRUE(lumo::HomeLock::take(lumo::PathGuard(home.path()),
                                     {.program = "another", .now = lumo::platform::now()}));
    outbox.close();
}

TEST(Outbox, KeepsTheOrderAndDropsOnlyProgressThatWouldWait) {
    std::string written;
    bool isTaking = false;
    std::mutex mutex;
    std::condition_variable turned;
    Outbox outbox([&](std::string_view bytes) -> std::optional<std::size_t> {
        std::unique_lock lock(mutex);
        turned.wait(lock, [&] { return isTaking; });
        written += bytes.substr(0, 2); // A piece at a time.
        return std::min<std::size_t>(2, bytes.size());
    });
    EXPECT_TRUE(outbox.put("first", Line::needed));
    EXPECT_TRUE(outbox.put("progress", Line::droppable));
    EXPECT_TRUE(outbox.put("second", Line::needed));
    {
        const std::scoped_lock lock(mutex);
        isTaking = true;
    }
    turned.notify_all();
    outbox.close();
    EXPECT_EQ(written, "first\nsecond\n");
}

TEST(Outbox, TakesNothingForAClientThatIsGone) {
    Outbox outbox([](std::string_view) { return std::optional<std::size_t>(); });
    outbox.put("a", Line::needed);
    while (outbox.put("a", Line::needed)) {
        std::this_thread::yield();
    }
    EXPECT_FALSE(outbox.waitForRoom());
}
