#include "Tests/faults/Child.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <ctime>

namespace tarvo::faults {

namespace {

std::vector<char*> pointersOf(Words& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::string contentOf(int descriptor) {
    std::string content;
    std::array<char, 65536> buffer;
    for (ssize_t count = 0;
         (count = pread(descriptor, buffer.data(), buffer.size(), static_cast<off_t>(content.size()))) > 0;) {
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return content;
}

} // namespace

Child::Child(const Words& words, const Words& environment)
    : output_(memfd_create("output", MFD_CLOEXEC)), error_(memfd_create("error", MFD_CLOEXEC)) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output_, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error_, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    Words all = words;
    Words variables = environment;
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

Ended Child::wait(std::chrono::microseconds limit) {
    Ended ended{.exitCode = 127};
    if (process_ <= 0) {
        return ended;
    }
    pollfd handle{static_cast<int>(syscall(SYS_pidfd_open, process_, 0)), POLLIN, 0};
    const timespec time{limit.count() / 1'000'000, limit.count() % 1'000'000 * 1000};
    if (ppoll(&handle, 1, &time, nullptr) == 0) {
        ended.hasHung = true;
        kill(-process_, SIGKILL);
    }
    close(handle.fd);
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    ended.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ended.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    ended.output = contentOf(output_);
    ended.error = contentOf(error_);
    return ended;
}

} // namespace tarvo::faults
