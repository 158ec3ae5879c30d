#include "FirstShown.h"

#include "StopProgram.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvo::bench {

double millisecondsUntilShown(const std::vector<std::string>& command, std::string_view text) {
    using Clock = std::chrono::steady_clock;
    constexpr int patience = 60'000;
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    ::setenv("TERM", "xterm-256color", 1);
    ::setenv("LC_ALL", "C.UTF-8", 1);
    const winsize size{.ws_row = 30, .ws_col = 100, .ws_xpixel = 0, .ws_ypixel = 0};
    int terminal = -1;
    const Clock::time_point begun = Clock::now();
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    if (child < 0) {
        stopOnFailedCall("a terminal");
    }
    std::string shown;
    std::array<char, 65536> buffer{};
    while (shown.find(text) == std::string::npos) {
        pollfd waiting{.fd = terminal, .events = POLLIN, .revents = 0};
        const ssize_t length =
            ::poll(&waiting, 1, patience) > 0 ? ::read(terminal, buffer.data(), buffer.size()) : -1;
        if (length <= 0) {
            stopProgram(command.front() + ": never showed what was waited for");
        }
        shown.append(buffer.data(), static_cast<std::size_t>(length));
    }
    const std::chrono::duration<double, std::milli> took = Clock::now() - begun;
    ::kill(child, SIGKILL);
    ::close(terminal);
    ::waitpid(child, nullptr, 0);
    return took.count();
}

} // namespace tarvo::bench
