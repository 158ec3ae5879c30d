#include "Platform/LockFile.h"

#include "Platform/Clock.h"
#include "Platform/StateFile.h"
#include "Platform/TreeTally.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace lumo::platform {

namespace {

constexpr std::size_t mostContent = 4096;

SystemResult<void> lock(int descriptor, std::chrono::milliseconds patience) {
    using namespace std::chrono_literals;
    const double end = monotonicSeconds() + std::chrono::duration<double>(patience).count();
    while (untilNotInterrupted([&] { return flock(descriptor, LOCK_EX | LOCK_NB); }) != 0) {
        if (errno != EWOULDBLOCK || monotonicSeconds() >= end) {
            return failed(errno);
        }
        std::this_thread::sleep_for(20ms);
    }
    return {};
}

} // namespace

SystemResult<LockFile> LockFile::take(const std::string& path, std::chrono::milliseconds patience) {
    constexpr int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    LockFile taken;
    bool isNew = false;
    taken.file_ = Descriptor(open(path.c_str(), flags));
    if (!taken.file_.isOpen() && errno == ENOENT) {
        isNew = true;
        taken.file_ = Descriptor(open(path.c_str(), flags | O_CREAT, 0600));
    }
    if (!taken.file_.isOpen()) {
        return failed(errno);
    }
    if (const auto locked = lock(taken.file_.number(), patience); !locked) {
        return std::unexpected(locked.error());
    }
    struct stat status = {};
    if (fstat(taken.file_.number(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    if (!isNew) {
        taken.lastTouched_ = modificationDateOf(status);
    }
    return taken;
}

SystemResult<LockFile> LockFile::takeFolder(const std::string& folder, std::chrono::milliseconds patience) {
    LockFile taken;
    taken.file_ = Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!taken.file_.isOpen()) {
        return failed(errno);
    }
    if (const auto locked = lock(taken.file_.number(), patience); !locked) {
        return std::unexpected(locked.error());
    }
    return taken;
}

std::string LockFile::content() const {
    if (lseek(file_.number(), 0, SEEK_SET) != 0) {
        return {};
    }
    return readDescriptor(file_.number(), mostContent).value_or(std::string());
}

void LockFile::write(std::string_view bytes) const {
    // Who holds the lock is told on a best effort; a full disk must not keep anybody from cleaning.
    (void)!ftruncate(file_.number(), 0);
    (void)!pwrite(file_.number(), bytes.data(), bytes.size(), 0);
    futimens(file_.number(), nullptr);
}

} // namespace lumo::platform
