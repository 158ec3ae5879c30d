#include "Tests/support/Child.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <thread>
#include <utility>

namespace tarvo::testing {

namespace {

std::string contentOf(int descriptor) {
    std::string content;
    std::array<char, 65536> buffer;
    for (ssize_t count = 0;
         (count = pread(descriptor, buffer.data(), buffer.size(), static_cast<off_t>(content.size()))) > 0;) {
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return content;
}

Arguments wordsOf(const std::string& program, const Arguments& arguments) {
    Arguments words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

void setEnd(Ran& ran, pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    ran.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ran.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

std::vector<char*> pointersOf(Arguments& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

Child::Child(const Arguments& words, const Arguments& environment)
    : output_(memfd_create("output", MFD_CLOEXEC)), error_(memfd_create("error", MFD_CLOEXEC)) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output_, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error_, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    Arguments all = words;
    Arguments variables = environment;
    if (posix_spawnp(&process_, all.front().c_str(), &actions, &attributes, pointersOf(all).data(),
                     pointersOf(variables).data()) != 0) {
        process_ = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
}

Child::~Child() {
    if (process_ > 0) {
        wait(std::chrono::microseconds(0));
    }
    close(output_);
    close(error_);
}

void Child::signal(int number) const {
    if (process_ > 0) {
        kill(process_, number);
    }
}

Ran Child::wait(std::chrono::microseconds limit) {
    Ran ran{.exitCode = 127};
    if (process_ <= 0) {
        return ran;
    }
    pollfd handle{static_cast<int>(syscall(SYS_pidfd_open, process_, 0)), POLLIN, 0};
    const timespec time{limit.count() / 1'000'000, limit.count() % 1'000'000 * 1000};
    if (ppoll(&handle, 1, &time, nullptr) == 0) {
        ran.hasHung = true;
        kill(-process_, SIGKILL);
    }
    close(handle.fd);
    setEnd(ran, std::exchange(process_, -1));
    ran.output = contentOf(output_);
    ran.error = contentOf(error_);
    return ran;
}

Ran runProgram(const std::string& program, const Arguments& arguments, const Arguments& environment) {
    return Child(wordsOf(program, arguments), environment).wait(std::chrono::minutes(10));
}

Ran runOnTerminal(const std::string& program, const Arguments& arguments, const Arguments& environment,
                  std::string_view typed) {
    int terminal = -1;
    int itsEnd = -1;
    Ran ran;
    if (openpty(&terminal, &itsEnd, nullptr, nullptr, nullptr) != 0) {
        return ran;
    }
    fcntl(terminal, F_SETFD, FD_CLOEXEC);
    const pid_t child = fork();
    if (child == 0) {
        // It controls nobody: when the leader of a session ends, what its terminal still holds is lost.
        setsid();
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            dup2(itsEnd, stream);
        }
        close(itsEnd);
        Arguments words = wordsOf(program, arguments);
        Arguments variables = environment;
        execve(program.c_str(), pointersOf(words).data(), pointersOf(variables).data());
        _exit(127);
    }
    // The terminal keeps it until the program reads.
    if (child >= 0 && write(terminal, typed.data(), typed.size()) >= 0) {
        // The last words of a program can be lost when nobody has its end open any more. So that stays open,
        // and a mark behind those words says that all was read.
        constexpr char mark = '\x1e';
        std::thread waiting([&] {
            setEnd(ran, child);
            (void)!write(itsEnd, &mark, 1);
        });
        std::array<char, 4096> buffer = {};
        for (ssize_t count = 0;
             !ran.output.ends_with(mark) && (count = read(terminal, buffer.data(), buffer.size())) > 0;) {
            ran.output.append(buffer.data(), static_cast<std::size_t>(count));
        }
        waiting.join();
        ran.output.erase(std::min(ran.output.size(), ran.output.rfind(mark)));
    }
    close(itsEnd);
    close(terminal);
    return ran;
}

Ran answerOnTerminal(const std::string& program, const Arguments& arguments, const Arguments& environment,
                     std::string_view question, const std::function<std::string()>& answer) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        Arguments words = wordsOf(program, arguments);
        Arguments variables = environment;
        execve(program.c_str(), pointersOf(words).data(), pointersOf(variables).data());
        _exit(127);
    }
    Ran ran;
    bool isAnswered = false;
    std::array<char, 4096> buffer = {};
    for (ssize_t count = 0; (count = read(terminal, buffer.data(), buffer.size())) > 0;) {
        ran.output.append(buffer.data(), static_cast<std::size_t>(count));
        if (!isAnswered && ran.output.find(question) != std::string::npos) {
            isAnswered = true;
            const std::string typed = answer();
            if (write(terminal, typed.data(), typed.size()) < 0) {
                break;
            }
        }
    }
    close(terminal);
    setEnd(ran, child);
    return ran;
}

std::string tarvoProgram() {
    return TARVO_PROGRAM;
}

} // namespace tarvo::testing
