#include "Platform/Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>

namespace lumo::platform {

namespace {

volatile std::sig_atomic_t interrupts = 0;

int descriptorOf(Stream stream) {
    switch (stream) {
    case Stream::input:
        return STDIN_FILENO;
    case Stream::output:
        return STDOUT_FILENO;
    case Stream::error:
        break;
    }
    return STDERR_FILENO;
}

} // namespace

bool isTerminal(Stream stream) {
    return isatty(descriptorOf(stream)) == 1;
}

std::size_t terminalColumns(Stream stream) {
    winsize size = {};
    if (ioctl(descriptorOf(stream), TIOCGWINSZ, &size) != 0) {
        return 0;
    }
    return size.ws_col;
}

bool writeAll(Stream stream, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptorOf(stream), bytes.data(), bytes.size());
        if (written < 0 && (errno != EINTR || wasInterrupted())) {
            return false;
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

std::optional<std::size_t> writeWhatFits(Stream stream, std::string_view bytes,
                                         std::chrono::milliseconds patience) {
    pollfd waiting{.fd = descriptorOf(stream), .events = POLLOUT, .revents = 0};
    const int ready = poll(&waiting, 1, static_cast<int>(patience.count()));
    if (wasInterrupted() || (ready < 0 && errno != EINTR)) {
        return std::nullopt;
    }
    if (ready <= 0) {
        return 0;
    }
    // A pipe that is ready takes this much at least, so that the call does not wait.
    const ssize_t written =
        write(descriptorOf(stream), bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
    if (written < 0) {
        return errno == EINTR || errno == EAGAIN ? std::optional<std::size_t>(0) : std::nullopt;
    }
    return static_cast<std::size_t>(written);
}

std::optional<std::string> readLine() {
    constexpr std::size_t mostBytes = 4096;
    std::string line;
    for (;;) {
        char next = 0;
        const ssize_t count = read(STDIN_FILENO, &next, 1);
        if (count < 0 && errno == EINTR && !wasInterrupted()) {
            continue;
        }
        if (count < 0 || (count == 0 && line.empty())) {
            return std::nullopt;
        }
        if (count == 0 || next == '\n') {
            return line;
        }
        if (line.size() < mostBytes) {
            line.push_back(next);
        }
    }
}

void ignoreBrokenPipes() {
    std::signal(SIGPIPE, SIG_IGN);
}

namespace {

void note(int signal) {
    struct sigaction action = {};
    action.sa_handler = [](int) { interrupts = interrupts + 1; };
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

} // namespace

void noteInterrupts() {
    note(SIGINT);
    note(SIGTERM);
}

void noteHangups() {
    note(SIGHUP);
}

int interruptCount() {
    return interrupts;
}

bool wasInterrupted() {
    return interrupts != 0;
}

} // namespace lumo::platform
