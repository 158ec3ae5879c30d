#include "Tests/support/TerminalRun.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utmp.h>

#include <array>
#include <chrono>
#include <cstring>

namespace tarvo::testing {

namespace {

constexpr std::string_view script =
    R"(set -m; ulimit -c 0; "$@"; echo "ended:$?"; read line; fg; echo "ended:$?"; read line)";

} // namespace

TerminalRun::TerminalRun(const std::string& program, const Arguments& arguments, const Arguments& environment,
                         unsigned short columns, unsigned short rows) {
    const winsize size{.ws_row = rows, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    if (openpty(&terminal_, &itsEnd_, nullptr, nullptr, &size) != 0) {
        ADD_FAILURE() << "no terminal";
        return;
    }
    fcntl(terminal_, F_SETFD, FD_CLOEXEC);
    tcgetattr(itsEnd_, &before_);
    Arguments words{"/bin/sh", "-c", std::string(script), "sh", program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    Arguments variables = environment;
    std::vector<char*> itsWords = pointersOf(words);
    std::vector<char*> itsVariables = pointersOf(variables);
    shell_ = fork();
    if (shell_ == 0) {
        login_tty(dup(itsEnd_));
        close(itsEnd_);
        execve("/bin/sh", itsWords.data(), itsVariables.data());
        _exit(127);
    }
}

TerminalRun::~TerminalRun() {
    signal(SIGKILL);
    kill(shell_, SIGKILL);
    waitpid(shell_, nullptr, 0);
    close(itsEnd_);
    close(terminal_);
}

void TerminalRun::type(std::string_view keys) const {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

void TerminalRun::resize(unsigned short columns, unsigned short rows) const {
    const winsize size{.ws_row = rows, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    EXPECT_EQ(ioctl(terminal_, TIOCSWINSZ, &size), 0);
}

void TerminalRun::signal(int number) const {
    // Under a shell with jobs the program is a group of its own, the one that the terminal listens to.
    const pid_t group = tcgetpgrp(terminal_);
    if (group > 0) {
        kill(-group, number);
    }
}

std::string TerminalRun::waitFor(std::string_view text) {
    const auto end = std::chrono::steady_clock::now() + hangLimit;
    std::array<char, 4096> buffer = {};
    for (std::size_t found = 0; (found = shown_.find(text)) == std::string::npos;) {
        pollfd waiting{.fd = terminal_, .events = POLLIN, .revents = 0};
        poll(&waiting, 1, 100);
        const ssize_t count =
            (waiting.revents & POLLIN) != 0 ? read(terminal_, buffer.data(), buffer.size()) : 0;
        shown_.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(0, count)));
        if (count <= 0 && std::chrono::steady_clock::now() > end) {
            ADD_FAILURE() << "never shown: " << text << "\nbut: " << ::testing::PrintToString(shown_);
            return std::exchange(shown_, {});
        }
    }
    const std::size_t length = shown_.find(text) + text.size();
    std::string seen = shown_.substr(0, length);
    shown_.erase(0, length);
    return seen;
}

std::string TerminalRun::waitForEnd(int code) {
    return waitFor("ended:" + std::to_string(code) + "\r\n");
}

bool TerminalRun::isSetAsBefore() const {
    termios now = {};
    tcgetattr(itsEnd_, &now);
    return now.c_iflag == before_.c_iflag && now.c_oflag == before_.c_oflag &&
           now.c_cflag == before_.c_cflag && now.c_lflag == before_.c_lflag &&
           std::memcmp(now.c_cc, before_.c_cc, sizeof now.c_cc) == 0;
}

} // namespace tarvo::testing
