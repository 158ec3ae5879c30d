#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

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

void TempHome::folders(std::initializer_list<std::string_view> names) const {
    std::ranges::for_each(names, [this](std::string_view name) { folder(name); });
}

void TempHome::files(std::initializer_list<std::string_view> names, std::size_t bytes) const {
    std::ranges::for_each(names, [&](std::string_view name) { file(name, bytes); });
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

std::string TempHome::program(std::string_view name, std::string_view script) const {
    fileWith(name, "#!/bin/sh\n" + std::string(script) + "\n");
    setMode(name, 0755);
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

void expectHeld(Outcome outcome) {
    if (outcome == Outcome::notPossible) {
        GTEST_SKIP() << "no rights to mount or to change the user here";
    }
    EXPECT_EQ(outcome, Outcome::held);
}

std::string contentOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(text).str();
}

Arguments wordsIn(std::string_view text) {
    std::istringstream words{std::string(text)};
    return {std::istream_iterator<std::string>(words), {}};
}

} // namespace tarvo::testing
