#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "Platform/Clock.h"
#include "Platform/LockFile.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// When somebody was in a home, on both clocks.
struct LockVisit {
    Date wall;
    std::string boot; ///< See platform::BootMoment.
    std::int64_t bootSeconds = 0;

    static constexpr auto fields =
        std::tuple{field("wall", &LockVisit::wall), field("boot", &LockVisit::boot),
                   field("bootSeconds", &LockVisit::bootSeconds)};
};

/// What stands in the lock file.
struct LockNote {
    std::string holder;              ///< The program that has the lock, or had it last.
    std::optional<Date> purgePutOff; ///< Nothing is purged before.
    /// The purge was put off for an absence and has not been made up for: the next absence is no reason.
    std::optional<bool> isPurgeDue;
    std::optional<LockVisit> lastVisit;

    static constexpr auto fields =
        std::tuple{field("holder", &LockNote::holder), field("purgePutOff", &LockNote::purgePutOff),
                   field("isPurgeDue", &LockNote::isPurgeDue), field("lastVisit", &LockNote::lastVisit)};
};

/// The right to change one home folder: at most one program has it at a time, and whoever gets it finds the
/// home in order.
class HomeLock final {
  public:
    /// Who asks, for others to be told, and how long it waits for another program.
    struct Request {
        std::string program;
        std::chrono::milliseconds patience{};
        Date now;
        std::optional<platform::BootMoment> boot = platform::bootMoment();
    };

    HomeLock(HomeLock&& other) noexcept = default;
    HomeLock& operator=(HomeLock&& other) noexcept = delete;
    /// What the log is still owed is tried once more before the lock ends.
    ~HomeLock();

    /// Takes the lock and puts right what a program that died left behind. Fails in words for the user when
    /// the home is none, belongs to somebody else and this is root, or another program is at work.
    static Result<HomeLock> take(const PathGuard& guard, const Request& request);

    /// True when root would change a home that is somebody else's.
    static bool isForeign(const std::string& home);
    /// What is said then.
    static std::string foreignText();

    /// False when the clock cannot be trusted with ending anything for good. Nothing is purged for an hour
    /// after it ran ahead of the one that is never set by more than an hour (`clockDrift`), or differs from
    /// it by more than that since the last visit of the same run of the machine, or says that nobody was here
    /// for more than 30 days. The last is a reason once: the next visit after that hour may purge, however
    /// late it comes.
    [[nodiscard]] bool mayPurge(Date now, std::chrono::seconds clockDrift);

    /// What the log owes and could not be given; see Recovery.
    [[nodiscard]] const std::vector<CleanupOutcome>& unlogged() const { return unlogged_; }

  private:
    HomeLock() = default;
    void beginVisit(const Request& request);

    std::string homePath_;
    Date now_;
    std::optional<platform::LockFile> file_; ///< Absent on a disk too full to make it.
    std::optional<platform::LockFile> home_;
    LockNote note_;
    std::vector<CleanupOutcome> unlogged_;
};

} // namespace lumo
