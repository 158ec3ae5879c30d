#include "Platform/ToolCommand.h"

#include "Platform/Clock.h"
#include "Platform/Descriptor.h"
#include "Platform/Environment.h"
#include "Platform/SystemError.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>

namespace lumo::platform {

namespace {

constexpr int notStartedStatus = 127;
constexpr int lostStatus = 255;
constexpr int signalStatus = 128;
/// Seconds that background processes may keep the output open, and that a tool has to end when asked to.
constexpr double grace = 2;

ToolRun notStarted(std::string reason) {
    return {.status = notStartedStatus, .output = std::move(reason)};
}

/// The beginning and the end of a text of any length.
class BoundedText final {
  public:
    void append(std::string_view bytes) {
        const std::size_t room = mostHead - std::min(head_.size(), mostHead);
        head_ += bytes.substr(0, room);
        tail_ += bytes.substr(std::min(room, bytes.size()));
        // Cutting only at twice the length moves each byte once at the most.
        if (tail_.size() >= 2 * mostTail) {
            cut();
        }
    }

    std::string take() {
        cut();
        if (isCut_) {
            head_ += head_.ends_with('\n') ? "…\n" : "\n…\n";
        }
        return std::move(head_) + tail_;
    }

  private:
    static constexpr std::size_t mostHead = std::size_t{64} * 1024;
    static constexpr std::size_t mostTail = std::size_t{1024} * 1024;

    void cut() {
        if (tail_.size() > mostTail) {
            tail_.erase(0, tail_.size() - mostTail);
            isCut_ = true;
        }
    }

    std::string head_;
    std::string tail_;
    bool isCut_ = false;
};

/// What the system's launcher takes besides the words: where the streams lead and how signals are set.
class LaunchSettings final {
  public:
    LaunchSettings(int output, const std::string& folder) {
        note(posix_spawn_file_actions_init(&streams_));
        note(posix_spawnattr_init(&attributes_));
        // The input comes last: the pipe may have got its number when this process has none itself.
        note(posix_spawn_file_actions_adddup2(&streams_, output, STDOUT_FILENO));
        note(posix_spawn_file_actions_adddup2(&streams_, output, STDERR_FILENO));
        note(posix_spawn_file_actions_addopen(&streams_, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        // Tools read settings from the folder they are started in, such as a project's own.
        note(posix_spawn_file_actions_addchdir_np(&streams_, folder.c_str()));
        sigset_t signals;
        sigfillset(&signals);
        note(posix_spawnattr_setsigdefault(&attributes_, &signals));
        sigemptyset(&signals);
        note(posix_spawnattr_setsigmask(&attributes_, &signals));
        // A session of its own has no terminal to ask on, and is a group that can be ended as a whole.
        note(posix_spawnattr_setflags(&attributes_,
                                      POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK));
    }
    ~LaunchSettings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&streams_);
    }
    LaunchSettings(const LaunchSettings&) = delete;
    LaunchSettings& operator=(const LaunchSettings&) = delete;

    [[nodiscard]] int problem() const { return problem_; }
    [[nodiscard]] const posix_spawn_file_actions_t* streams() const { return &streams_; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

  private:
    void note(int code) { problem_ = problem_ != 0 ? problem_ : code; }

    posix_spawn_file_actions_t streams_ = {};
    posix_spawnattr_t attributes_ = {};
    int problem_ = 0;
};

/// The texts as the system's launcher takes them; good as long as they are.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// True for variables that lead a tool away from the home in hand. Whether they still point to what was shown
/// cannot be told from here, so none of them is passed on.
bool leadsElsewhere(std::string_view name) {
    constexpr std::array<std::string_view, 27> names{"HOME",
                                                     "PATH",
                                                     "PIP_CACHE_DIR",
                                                     "PIP_CONFIG_FILE",
                                                     "PYTHONUSERBASE",
                                                     "PNPM_HOME",
                                                     "HF_HOME",
                                                     "HF_HUB_CACHE",
                                                     "TORCH_HOME",
                                                     "GRADLE_USER_HOME",
                                                     "CARGO_HOME",
                                                     "RUSTUP_HOME",
                                                     "GOPATH",
                                                     "GOMODCACHE",
                                                     "GOCACHE",
                                                     "CCACHE_DIR",
                                                     "CONDA_PKGS_DIRS",
                                                     "CONDA_ENVS_PATH",
                                                     "BUN_INSTALL",
                                                     "DOCKER_CONFIG",
                                                     "DOCKER_HOST",
                                                     "DOCKER_CONTEXT",
                                                     "OLLAMA_MODELS",
                                                     "OLLAMA_HOST",
                                                     "HOMEBREW_CACHE",
                                                     "HOMEBREW_LOGS",
                                                     "HOMEBREW_TEMP"};
    constexpr std::array<std::string_view, 4> beginnings{"UV_", "YARN_", "BUN_INSTALL_", "PNPM_CONFIG_"};
    constexpr std::string_view ofNpm = "npm_config_"; // Read in any case.
    const bool isOfNpm =
        std::ranges::equal(name.substr(0, ofNpm.size()), ofNpm,
                           [](unsigned char c, unsigned char lower) { return std::tolower(c) == lower; });
    return isOfNpm || (name.starts_with("XDG_") && name.ends_with("_HOME")) ||
           std::ranges::find(names, name) != names.end() ||
           std::ranges::any_of(beginnings, [&](std::string_view each) { return name.starts_with(each); });
}

/// This process's variables for a tool of that home, with the places where tools install themselves added to
/// the search path: an application that the desktop started has not read the user's shell settings.
std::vector<std::string> variablesFor(const std::string& home, const std::vector<std::string>& more) {
    std::vector<std::string> variables = environmentVariables();
    std::erase_if(variables, [](std::string_view variable) {
        return leadsElsewhere(variable.substr(0, variable.find('=')));
    });
    variables.push_back("HOME=" + home);
    variables.push_back("PATH=" + home + "/.local/bin:" + home +
                        "/.bun/bin:/opt/homebrew/bin:/usr/local/bin:" +
                        environmentVariable("PATH").value_or("/usr/bin:/bin"));
    variables.insert(variables.end(), more.begin(), more.end());
    return variables;
}

/// The number of the started process.
SystemResult<pid_t> launch(const std::vector<std::string>& arguments, const std::string& home,
                           const std::vector<std::string>& variablesBesides, int output) {
    const LaunchSettings settings(output, home);
    if (settings.problem() != 0) {
        return std::unexpected(SystemError{settings.problem()});
    }
    std::vector<std::string> words{"env"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = variablesFor(home, variablesBesides);
    pid_t leader = 0;
    const int problem = posix_spawn(&leader, "/usr/bin/env", settings.streams(), settings.attributes(),
                                    pointersTo(words).data(), pointersTo(variables).data());
    return problem == 0 ? SystemResult<pid_t>(leader) : std::unexpected(SystemError{problem});
}

/// Programs inherit that the ends of children are ignored. The system then forgets how they ended, and gives
/// their numbers away while we may still want to send them a signal.
void noticeEndsOfChildren() {
    struct sigaction action = {};
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &action, nullptr);
    }
}

/// A started tool, which leads a group of its own, until it and its output have ended.
class StartedTool final {
  public:
    StartedTool(pid_t leader, Descriptor output, std::stop_token stop)
        : leader_(leader), output_(std::move(output)), stop_(std::move(stop)) {}

    ToolRun finish() {
        while (!isOver()) {
            readOrWait();
            noteEnd();
            if (stop_.stop_requested()) {
                end();
            }
        }
        run_.output = text_.take();
        return std::move(run_);
    }

  private:
    [[nodiscard]] bool isOver() const {
        const double now = monotonicSeconds();
        if (!endedAt_ || (output_.isOpen() && now < *endedAt_ + grace)) {
            return false;
        }
        return !askedAt_ || isSettled_;
    }

    /// Takes one piece of output, or lets a moment pass when there is none.
    void readOrWait() {
        constexpr int longestPause = 50;
        pause_ = output_.isOpen() ? longestPause : std::min(2 * pause_, longestPause);
        pollfd pipe = {.fd = output_.number(), .events = POLLIN, .revents = 0};
        if (poll(&pipe, 1, pause_) <= 0) {
            return;
        }
        std::array<char, 65536> buffer;
        const ssize_t length = read(output_.number(), buffer.data(), buffer.size());
        if (length > 0) {
            text_.append({buffer.data(), static_cast<std::size_t>(length)});
        } else if (length == 0 || errno != EINTR) {
            output_ = Descriptor();
            pause_ = 1; // A tool closes its output when it ends, so it is about to.
        }
    }

    void noteEnd() {
        int status = 0;
        const pid_t ended = endedAt_ ? 0 : waitpid(leader_, &status, WNOHANG);
        if (ended == leader_) {
            run_.status = WIFSIGNALED(status) ? signalStatus + WTERMSIG(status) : WEXITSTATUS(status);
            endedAt_ = monotonicSeconds();
        } else if (ended < 0 && errno == ECHILD) {
            run_.status = lostStatus;
            endedAt_ = monotonicSeconds();
        }
    }

    /// Asks the group to end; makes it when it has not done so in time.
    void end() {
        if (!askedAt_) {
            if (!endedAt_ && kill(-leader_, SIGTERM) == 0) {
                askedAt_ = monotonicSeconds();
                run_.wasEndedByUs = true;
            }
        } else if (!isSettled_ && endedAt_ && kill(-leader_, 0) != 0) {
            // A group's number stays taken while it has members; from now on it may become somebody else's.
            isSettled_ = true;
        } else if (!isSettled_ && monotonicSeconds() >= *askedAt_ + grace) {
            kill(-leader_, SIGKILL);
            isSettled_ = true;
        }
    }

    pid_t leader_;
    Descriptor output_;
    std::stop_token stop_;
    BoundedText text_;
    ToolRun run_;
    int pause_ = 0;                 ///< Milliseconds.
    std::optional<double> endedAt_; ///< When the leader had ended, on the clock that is never set.
    std::optional<double> askedAt_; ///< When the group was asked to end.
    bool isSettled_ = false;        ///< Nobody in the group is left, or all were made to end.
};

} // namespace

ToolRun runTool(const std::vector<std::string>& arguments, const std::string& home, std::stop_token stop,
                const std::vector<std::string>& variables) {
    // The launcher would take such a word for an option or a variable of its own.
    if (arguments.empty() || arguments.front().starts_with('-') ||
        arguments.front().find('=') != std::string::npos) {
        return notStarted("not the name of a tool: " + (arguments.empty() ? "" : arguments.front()));
    }
    if (stop.stop_requested()) {
        return {.status = signalStatus + SIGTERM, .wasEndedByUs = true};
    }
    noticeEndsOfChildren();
    std::array<int, 2> ends = {};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return notStarted(SystemError{errno}.reason());
    }
    Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const SystemResult<pid_t> leader = launch(arguments, home, variables, writing.number());
    // The output only ends when nobody holds the other side any more.
    writing = Descriptor();
    return leader ? StartedTool(*leader, std::move(reading), std::move(stop)).finish()
                  : notStarted(leader.error().reason());
}

ToolRun runToolInTime(const std::vector<std::string>& arguments, const std::string& home,
                      std::chrono::milliseconds patience, const std::stop_token& stop) {
    std::stop_source ending;
    const std::stop_callback stopped(stop, [&] { ending.request_stop(); });
    const std::jthread timer([&](const std::stop_token& isOver) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any over;
        over.wait_for(lock, isOver, patience, [] { return false; });
        if (!isOver.stop_requested()) {
            ending.request_stop();
        }
    });
    return runTool(arguments, home, ending.get_token());
}

} // namespace lumo::platform
