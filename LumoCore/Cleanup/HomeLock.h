#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "Platform/LockFile.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// What stands in the lock file.
struct LockNote {
    std::string holder;              ///< The program that has the lock, or had it last.
    std::optional<Date> purgePutOff; ///< Nothing is purged before.

    static constexpr auto fields =
        std::tuple{field("holder", &LockNote::holder), field("purgePutOff", &LockNote::purgePutOff)};
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
    };

    /// Takes the lock and puts right what a program that died left behind. Fails in words for the user when
    /// the home is none, belongs to somebody else and this is root, or another program is at work.
    static Result<HomeLock> take(const PathGuard& guard, const Request& request);

    /// True when root would change a home that is somebody else's.
    static bool isForeign(const std::string& home);
    /// What is said then.
    static std::string foreignText();

    /// False when the clock cannot be trusted with ending anything for good: it ran ahead of the one that is
    /// never set by more than an hour (`clockDrift`), or it says that nobody has been here for more than 30
    /// days. Then nothing is purged for an hour.
    [[nodiscard]] bool mayPurge(Date now, std::chrono::seconds clockDrift);

    /// What the log owes and could not be given; see Recovery.
    [[nodiscard]] const std::vector<CleanupOutcome>& unlogged() const { return unlogged_; }

  private:
    std::optional<platform::LockFile> file_; ///< Absent on a disk too full to make it.
    std::optional<platform::LockFile> home_;
    LockNote note_;
    std::vector<CleanupOutcome> unlogged_;
};

} // namespace lumo
