#pragma once

#include "TarvoApp/App/AppModel.h"
#include "Tests/support/TempHome.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tarvo::testing {

/// An application without windows on a home of its own, whose clock, disk and desktop a test tells what to
/// be. Passing time takes none.
class AppStory {
  public:
    explicit AppStory(const RunMode& mode = {});

    /// The application; made when it is first asked for, with what the home holds then.
    AppModel& app();
    /// Ends the application as closing it does. Asking for it again starts another one.
    void quit() { app_.reset(); }

    /// Lets the application go on until that is true; false when it is not after a long time.
    bool waitUntil(const std::function<bool()>& isTrue);
    /// Until nothing goes on any more.
    bool waitUntilIdle();

    /// One look of the monitor, and all that comes of it.
    bool lookAround();

    void pass(std::chrono::seconds time);
    /// Sets the clock, without any time passing.
    void setClockAhead(std::chrono::seconds time);
    [[nodiscard]] lumo::Date now() const;
    /// What the disk is said to have free, whatever it has.
    void setFree(std::int64_t bytes);

    /// A cache of that many bytes which recreates itself, and a folder of the user's that needs a look.
    void addCache(std::size_t bytes);
    void addOwn(std::size_t bytes);
    [[nodiscard]] bool hasCache() const;
    [[nodiscard]] bool hasOwn() const;

    /// The ids of their rows.
    static constexpr const char* cacheKey = "npx-cache";
    static constexpr const char* ownKey = "whisper";

    TempHome home;
    AppServices services; ///< To be changed before the application is first asked for.
    std::vector<Notification> notices;
    bool showsNotices = true; ///< False for a desktop without a notification service.

  private:
    mutable std::mutex mutex_;
    lumo::Date now_;
    std::chrono::seconds set_{0};
    std::int64_t free_ = 500'000'000'000;
    std::unique_ptr<AppModel> app_;
};

} // namespace tarvo::testing
