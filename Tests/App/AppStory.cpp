#include "Tests/App/AppStory.h"

#include "Platform/Clock.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

namespace tarvo::testing {

namespace {

constexpr std::string_view cacheFile = ".npm/_npx/tool";
constexpr std::string_view ownFile = ".cache/whisper/model";

/// A file that takes so much on disk without anybody writing it.
void reserve(const std::string& path, std::size_t bytes) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    (void)::posix_fallocate(file, 0, static_cast<off_t>(bytes));
    ::close(file);
}

} // namespace

AppStory::AppStory(const RunMode& mode)
    : services(AppServices::ofThisMachine(home.path(), mode)), now_(lumo::platform::now()) {
    services.desk.now = [this] { return now(); };
    services.steadySeconds = [this] {
        const std::scoped_lock lock(mutex_);
        return std::chrono::duration<double>((now_ - set_).time_since_epoch()).count();
    };
    services.desk.boot = [this] {
        return lumo::platform::BootMoment{.boot = "story",
                                          .seconds = static_cast<std::int64_t>(services.steadySeconds())};
    };
    services.volumeInfo = [this](const std::string&) {
        const std::scoped_lock lock(mutex_);
        return lumo::VolumeInfo{.totalBytes = 1'000'000'000'000, .availableBytes = free_};
    };
    services.notify = [this](const Notification& notification, const std::function<void()>& whenTaken) {
        if (!showsNotices) {
            return;
        }
        notices.push_back(notification);
        if (whenTaken) {
            whenTaken();
        }
    };
    if (!mode.isDemo) {
        // What this machine has is no business of a story's.
        services.look = [](lumo::InventoryKind kind, const std::stop_token&) {
            return CloserLook{.found = {.kind = kind}};
        };
    }
    services.mountedVolumes = [] { return std::vector<Volume>(); };
}

AppModel& AppStory::app() {
    if (!app_) {
        app_ = std::make_unique<AppModel>(services);
    }
    return *app_;
}

bool AppStory::waitUntil(const std::function<bool()>& isTrue) {
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    // Wakes the loop where nothing else does.
    QTimer beat;
    beat.start(1);
    while (!isTrue()) {
        if (clock.elapsed() > 60'000) {
            return false;
        }
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool AppStory::waitUntilIdle() {
    return waitUntil([this] { return !app().activity()->isBusy(); });
}

bool AppStory::lookAround() {
    app().monitor()->look();
    return waitUntil([this] { return !app().monitor()->isLooking() && !app().activity()->isBusy(); });
}

void AppStory::pass(std::chrono::seconds time) {
    const std::scoped_lock lock(mutex_);
    now_ += time;
}

void AppStory::setClockAhead(std::chrono::seconds time) {
    const std::scoped_lock lock(mutex_);
    now_ += time;
    set_ += time;
}

lumo::Date AppStory::now() const {
    const std::scoped_lock lock(mutex_);
    return now_;
}

void AppStory::setFree(std::int64_t bytes) {
    const std::scoped_lock lock(mutex_);
    free_ = bytes;
}

void AppStory::addCache(std::size_t bytes) {
    home.folder(".npm/_npx");
    reserve(home.path(cacheFile), bytes);
}

void AppStory::addOwn(std::size_t bytes) {
    home.folder(".cache/whisper");
    reserve(home.path(ownFile), bytes);
}

bool AppStory::hasCache() const {
    return std::filesystem::exists(home.path(cacheFile));
}

bool AppStory::hasOwn() const {
    return std::filesystem::exists(home.path(ownFile));
}

} // namespace tarvo::testing
