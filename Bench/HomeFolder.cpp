#include "HomeFolder.h"

#include "StopProgram.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvo::bench {

namespace {

// A fixed day instead of the clock, or two runs would differ.
constexpr std::int64_t newestSecond = 1'767'225'600; // 2026-01-01T00:00:00Z
constexpr std::int64_t secondsADay = 86'400;

constexpr int newFileFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
constexpr std::size_t rememberedFiles = 256;

std::int64_t usualSize(SplitMix& random) {
    const std::int64_t kind = random.below(100);
    if (kind < 10) {
        return 0;
    }
    if (kind < 72) {
        return random.between(1, 4096);
    }
    return kind < 90 ? random.between(4097, 8192) : random.between(8193, 16384);
}

} // namespace

HomeState::HomeState(int root, std::int64_t files, std::uint64_t seed)
    : random(seed), rootDescriptor(root), left(files) {
    linkSources.reserve(rememberedFiles);
    for (char& byte : content) {
        byte = static_cast<char>(random.next() & 0xffU);
    }
}

Allowance::Allowance(HomeState& state, std::int64_t files)
    : state_(state), withheld_(std::max<std::int64_t>(0, state.left - files)) {
    state_.left -= withheld_;
}

Folder::Folder(HomeState& state) : state_(state) {
    descriptor_ = ::fcntl(state.rootDescriptor, F_DUPFD_CLOEXEC, 0);
    if (descriptor_ < 0) {
        stopOnFailedCall("the home");
    }
    setAge(0);
}

Folder::Folder(Folder& parent, std::string_view name)
    : state_(parent.state_), path_(parent.pathOf(name)), time_(parent.time_) {
    const std::string entry(name);
    if (::mkdirat(parent.descriptor_, entry.c_str(), 0755) != 0) {
        stopOnFailedCall(path_);
    }
    descriptor_ =
        ::openat(parent.descriptor_, entry.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor_ < 0) {
        stopOnFailedCall(path_);
    }
}

Folder::~Folder() {
    setTimesOf(descriptor_);
    ::close(descriptor_);
}

void Folder::setAge(std::int64_t days) {
    time_ = newestSecond - days * secondsADay;
}

void Folder::emptyFolder(std::string_view name) {
    const Folder empty(*this, name);
}

void Folder::file(std::string_view name, std::int64_t size) {
    const std::string entry(name);
    if (!takeOne() || becomesLink(entry)) {
        return;
    }
    const int file = ::openat(descriptor_, entry.c_str(), newFileFlags, 0644);
    if (file < 0) {
        stopOnFailedCall(pathOf(entry));
    }
    // Every file starts differently, so that files of one size are not all the same file to whoever compares.
    const std::uint64_t stamp = state_.random.next();
    std::memcpy(state_.content.data(), &stamp, sizeof stamp);
    for (std::int64_t rest = size; rest > 0;) {
        const auto piece = std::min<std::size_t>(state_.content.size(), static_cast<std::size_t>(rest));
        const ssize_t written = ::write(file, state_.content.data(), piece);
        if (written <= 0) {
            stopOnFailedCall(pathOf(entry));
        }
        rest -= written;
    }
    setTimesOf(file);
    ::close(file);
    remember(entry);
}

void Folder::smallFile(std::string_view name) {
    file(name, usualSize(state_.random));
}

void Folder::smallFiles(std::int64_t count, std::string_view stem, std::string_view ending) {
    for (std::int64_t number = 0; number < count && hasRoom(); ++number) {
        smallFile(fmt::format("{}{}{}", stem, number, ending));
    }
}

void Folder::sparseFile(std::string_view name, std::int64_t apparentSize) {
    if (!takeOne()) {
        return;
    }
    const std::string entry(name);
    const int file = ::openat(descriptor_, entry.c_str(), newFileFlags, 0644);
    if (file < 0 || ::ftruncate(file, apparentSize) != 0 ||
        ::pwrite(file, state_.content.data(), 4096, apparentSize - 4096) != 4096) {
        stopOnFailedCall(pathOf(entry));
    }
    setTimesOf(file);
    ::close(file);
}

void Folder::hardLink(std::string_view existing, std::string_view name) {
    if (takeOne()) {
        linkFrom(descriptor_, std::string(existing), std::string(name));
    }
}

void Folder::symbolicLink(std::string_view target, std::string_view name) {
    if (!takeOne()) {
        return;
    }
    const std::string entry(name);
    const timespec time{.tv_sec = someSecond(), .tv_nsec = 0};
    const std::array<timespec, 2> times{time, time};
    if (::symlinkat(std::string(target).c_str(), descriptor_, entry.c_str()) != 0 ||
        ::utimensat(descriptor_, entry.c_str(), times.data(), AT_SYMLINK_NOFOLLOW) != 0) {
        stopOnFailedCall(pathOf(entry));
    }
}

std::string Folder::pathOf(std::string_view name) const {
    return path_.empty() ? std::string(name) : path_ + "/" + std::string(name);
}

bool Folder::takeOne() {
    if (state_.left <= 0) {
        return false;
    }
    --state_.left;
    return true;
}

bool Folder::becomesLink(const std::string& name) {
    if (!state_.random.chance(10)) {
        return false;
    }
    if (state_.random.chance(500) && !lastFile_.empty()) {
        linkFrom(descriptor_, lastFile_, name);
        return true;
    }
    if (state_.linkSources.empty()) {
        return false;
    }
    const auto chosen = state_.random.below(static_cast<std::int64_t>(state_.linkSources.size()));
    linkFrom(state_.rootDescriptor, state_.linkSources[static_cast<std::size_t>(chosen)], name);
    return true;
}

void Folder::linkFrom(int sourceFolder, const std::string& source, const std::string& name) {
    if (::linkat(sourceFolder, source.c_str(), descriptor_, name.c_str(), 0) != 0) {
        stopOnFailedCall(pathOf(name));
    }
}

void Folder::remember(const std::string& name) {
    lastFile_ = name;
    // A slow exchange keeps sources from rooms written long before, so that links cross from one package
    // cache or project into another.
    if (state_.linkSources.size() < rememberedFiles) {
        if (state_.random.chance(50)) {
            state_.linkSources.push_back(pathOf(name));
        }
    } else if (state_.random.chance(5)) {
        const auto slot = state_.random.below(static_cast<std::int64_t>(rememberedFiles));
        state_.linkSources[static_cast<std::size_t>(slot)] = pathOf(name);
    }
}

void Folder::setTimesOf(int descriptor) {
    const timespec time{.tv_sec = someSecond(), .tv_nsec = state_.random.below(1'000'000'000)};
    const std::array<timespec, 2> times{time, time};
    if (::futimens(descriptor, times.data()) != 0) {
        stopOnFailedCall(path_);
    }
}

std::int64_t Folder::someSecond() {
    return time_ - state_.random.below(20 * secondsADay);
}

std::string hexName(SplitMix& random, std::size_t digits) {
    std::string name;
    while (name.size() < digits) {
        name += fmt::format("{:016x}", random.next());
    }
    name.resize(digits);
    return name;
}

} // namespace tarvo::bench
