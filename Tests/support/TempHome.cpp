#include "Tests/support/TempHome.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tarvo::testing {

namespace {

void require(bool holds, const std::string& what) {
    if (!holds) {
        std::perror(what.c_str());
        std::abort();
    }
}

void makeFoldersFor(const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
}

} // namespace

TempHome::TempHome() {
    const char* parent = std::getenv("TMPDIR");
    std::string shape = std::string(parent != nullptr ? parent : "/tmp") + "/tarvo-home-XXXXXX";
    require(mkdtemp(shape.data()) != nullptr, shape);
    path_ = shape;
    require(chmod(path_.c_str(), 0755) == 0, path_);
}

TempHome::~TempHome() {
    // Deeper trees than the standard library removes are made on purpose, so the system's own tool does it.
    const Ran removed = runProgram(
        "/bin/sh", {"-c", "chmod -R u+rwx \"$0\" 2>/dev/null; rm -rf \"$0\"", path_}, {"PATH=/usr/bin:/bin"});
    require(removed.exitCode == 0, "rm -rf " + path_ + ": " + removed.error);
}

std::string TempHome::path(std::string_view name) const {
    return path_ + "/" + std::string(name);
}

std::string TempHome::folder(std::string_view name) const {
    std::filesystem::create_directories(path(name));
    return path(name);
}

std::string TempHome::file(std::string_view name, std::size_t bytes) const {
    return fileWith(name, std::string(bytes, 'x'));
}

std::string TempHome::fileWith(std::string_view name, std::string_view content) const {
    makeFoldersFor(path(name));
    std::ofstream file(path(name), std::ios::binary);
    file << content;
    file.close();
    require(file.good(), path(name));
    return path(name);
}

std::string TempHome::sparseFile(std::string_view name, std::int64_t length) const {
    const std::string made = file(name);
    require(truncate(made.c_str(), length) == 0, made);
    return made;
}

std::string TempHome::link(std::string_view name, std::string_view target) const {
    makeFoldersFor(path(name));
    require(symlink(std::string(target).c_str(), path(name).c_str()) == 0, path(name));
    return path(name);
}

std::string TempHome::hardLink(std::string_view name, std::string_view existing) const {
    makeFoldersFor(path(name));
    require(::link(path(existing).c_str(), path(name).c_str()) == 0, path(name));
    return path(name);
}

std::string TempHome::fifo(std::string_view name) const {
    makeFoldersFor(path(name));
    require(mkfifo(path(name).c_str(), 0644) == 0, path(name));
    return path(name);
}

void TempHome::setModified(std::string_view name, std::int64_t seconds) const {
    const std::array<timespec, 2> times{timespec{seconds, 0}, timespec{seconds, 0}};
    require(utimensat(AT_FDCWD, path(name).c_str(), times.data(), AT_SYMLINK_NOFOLLOW) == 0, path(name));
}

void TempHome::setMode(std::string_view name, unsigned mode) const {
    require(chmod(path(name).c_str(), static_cast<mode_t>(mode)) == 0, path(name));
}

std::int64_t allocatedBytes(const std::string& path) {
    struct stat status = {};
    require(lstat(path.c_str(), &status) == 0, path);
    return std::int64_t{status.st_blocks} * 512;
}

Outcome inChild(const std::function<Outcome()>& work) {
    const pid_t child = fork();
    require(child >= 0, "fork");
    if (child == 0) {
        _exit(static_cast<int>(work()));
    }
    int status = 0;
    require(waitpid(child, &status, 0) == child, "waitpid");
    for (const Outcome outcome : {Outcome::held, Outcome::notPossible}) {
        if (WIFEXITED(status) && WEXITSTATUS(status) == static_cast<int>(outcome)) {
            return outcome;
        }
    }
    return Outcome::failed;
}

Outcome asOrdinaryUser(const std::string& home, const std::function<bool()>& work) {
    return inChild([&] {
        constexpr uid_t nobody = 65534;
        const bool isOrdinary =
            geteuid() != 0 || (lchown(home.c_str(), nobody, nobody) == 0 && setgroups(0, nullptr) == 0 &&
                               setgid(nobody) == 0 && setuid(nobody) == 0);
        if (!isOrdinary) {
            return Outcome::notPossible;
        }
        return work() ? Outcome::held : Outcome::failed;
    });
}

namespace {

[[noreturn]] void become(const std::string& program, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& environment) {
    const auto pointersOf = [](std::vector<std::string>& words) {
        std::vector<char*> pointers;
        for (std::string& word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        return pointers;
    };
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = environment;
    execve(program.c_str(), pointersOf(words).data(), pointersOf(variables).data());
    _exit(127);
}

[[noreturn]] void becomeChild(const std::string& program, const std::vector<std::string>& arguments,
                              const std::vector<std::string>& environment, int output, int error) {
    const int input = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    become(program, arguments, environment);
}

/// Reads both pipes until they end, so that a full one never blocks the program.
void drain(int output, int error, Ran& ran) {
    std::array<pollfd, 2> pipes{pollfd{output, POLLIN, 0}, pollfd{error, POLLIN, 0}};
    const std::array<std::string*, 2> texts{&ran.output, &ran.error};
    while (pipes[0].fd >= 0 || pipes[1].fd >= 0) {
        require(poll(pipes.data(), pipes.size(), -1) >= 0, "poll");
        for (std::size_t index = 0; index < pipes.size(); ++index) {
            if (pipes[index].revents == 0) {
                continue;
            }
            std::array<char, 65536> buffer;
            const ssize_t count = read(pipes[index].fd, buffer.data(), buffer.size());
            if (count <= 0) {
                close(pipes[index].fd);
                pipes[index].fd = -1;
            } else {
                texts[index]->append(buffer.data(), static_cast<std::size_t>(count));
            }
        }
    }
}

} // namespace

Ran runProgram(const std::string& program, const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment) {
    std::array<int, 2> output = {};
    std::array<int, 2> error = {};
    require(pipe2(output.data(), O_CLOEXEC) == 0 && pipe2(error.data(), O_CLOEXEC) == 0, "pipe2");
    const pid_t child = fork();
    require(child >= 0, "fork");
    if (child == 0) {
        becomeChild(program, arguments, environment, output[1], error[1]);
    }
    close(output[1]);
    close(error[1]);
    Ran ran;
    drain(output[0], error[0], ran);
    int status = 0;
    require(waitpid(child, &status, 0) == child, "waitpid");
    ran.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return ran;
}

Ran runOnTerminal(const std::string& program, const std::vector<std::string>& arguments,
                  const std::vector<std::string>& environment, std::string_view typed) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    require(child >= 0, "forkpty");
    if (child == 0) {
        become(program, arguments, environment);
    }
    // The terminal keeps it until the program reads.
    require(write(terminal, typed.data(), typed.size()) == static_cast<ssize_t>(typed.size()), "write");
    Ran ran;
    std::array<char, 4096> buffer = {};
    for (ssize_t count = 0; (count = read(terminal, buffer.data(), buffer.size())) > 0;) {
        ran.output.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(terminal);
    int status = 0;
    require(waitpid(child, &status, 0) == child, "waitpid");
    ran.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return ran;
}

std::string tarvoProgram() {
    return TARVO_PROGRAM;
}

} // namespace tarvo::testing
