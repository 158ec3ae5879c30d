#include "ChildProcess.h"

#include "StopProgram.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvo::bench {

namespace {

/// Where a child's standard output and standard error go; the input is always empty.
class Redirection final {
  public:
    Redirection() {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    ~Redirection() { ::posix_spawn_file_actions_destroy(&actions_); }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

    void toNowhere() {
        ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    void to(int descriptor) {
        ::posix_spawn_file_actions_adddup2(&actions_, descriptor, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, descriptor, STDERR_FILENO);
    }
    const posix_spawn_file_actions_t* actions() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

/// The child's process id; 0 when it could not be started, with the reason in `errno`.
pid_t start(const std::vector<std::string>& command, const Redirection& redirection) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    errno = ::posix_spawn(&child, arguments[0], redirection.actions(), nullptr, arguments.data(), environ);
    return errno == 0 ? child : 0;
}

double millisecondsNow() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

std::string howItFailed(int status) {
    if (WIFSIGNALED(status)) {
        return fmt::format("ended by signal {}", WTERMSIG(status));
    }
    const int code = WEXITSTATUS(status);
    return code == 0 ? std::string() : fmt::format("exit status {}", code);
}

} // namespace

std::optional<std::string> findProgram(const std::string& name) {
    if (name.find('/') != std::string::npos) {
        return ::access(name.c_str(), X_OK) == 0 ? std::optional(name) : std::nullopt;
    }
    const char* folders = std::getenv("PATH");
    std::istringstream rest(folders == nullptr ? "" : folders);
    for (std::string folder; std::getline(rest, folder, ':');) {
        const std::string file = folder + "/" + name;
        if (::access(file.c_str(), X_OK) == 0) {
            return file;
        }
    }
    return std::nullopt;
}

RunOutcome timedRun(const std::vector<std::string>& command) {
    Redirection redirection;
    redirection.toNowhere();
    RunOutcome outcome;
    const double began = millisecondsNow();
    const pid_t child = start(command, redirection);
    if (child == 0) {
        outcome.failure = std::strerror(errno);
        return outcome;
    }
    int status = 0;
    rusage usage{};
    while (::wait4(child, &status, 0, &usage) < 0) {
        if (errno != EINTR) {
            stopOnFailedCall(command.front());
        }
    }
    outcome.milliseconds = millisecondsNow() - began;
    outcome.peakMebibytes = static_cast<double>(usage.ru_maxrss) / 1024;
    outcome.failure = howItFailed(status);
    return outcome;
}

std::string printedBy(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        stopOnFailedCall("a pipe");
    }
    Redirection redirection;
    redirection.to(ends[1]);
    const pid_t child = start(command, redirection);
    ::close(ends[1]);
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t length = 0; (length = ::read(ends[0], buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
    ::close(ends[0]);
    if (child != 0) {
        ::waitpid(child, nullptr, 0);
    }
    return text;
}

} // namespace tarvo::bench
