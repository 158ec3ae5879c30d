#include "TarvoModel/Flows/WeeklySwitch.h"

#include "Platform/Environment.h"
#include "TarvoModel/Flows/SettingChange.h"

namespace tarvo {

namespace {

lumo::Result<WeeklySwitch> stored(const Desk& desk, bool on) {
    const auto changed = changeSetting(
        preference::autoCleanWeekly, [&](const Preferences&) { return Preferences::asJson(on); }, desk.home);
    if (!changed) {
        return std::unexpected(changed.error());
    }
    return WeeklySwitch{.preferences = changed->preferences, .timerProblem = {}};
}

} // namespace

lumo::Result<WeeklySwitch> setWeeklyCleanup(const Desk& desk, bool on, TimerWish wish,
                                            const WeeklyTimer::Asking& asking) {
    if (!on) {
        auto off = stored(desk, false);
        if (const auto removed = off ? WeeklyTimer::remove(desk.home, asking) : lumo::Result<void>();
            !removed) {
            off->timerProblem = removed.error().message;
        }
        return off;
    }
    const bool hadTimer = WeeklyTimer::state(desk.home) == WeeklyTimer::State::set;
    const auto timer = WeeklyTimer::set(desk.home, lumo::platform::commandBesideProgram(), asking);
    if (!timer && wish == TimerWish::needed) {
        return std::unexpected(timer.error());
    }
    auto switched = stored(desk, true);
    if (!switched && timer && !hadTimer) {
        (void)WeeklyTimer::remove(desk.home, asking);
    }
    if (switched && !timer) {
        switched->timerProblem = timer.error().message;
    }
    return switched;
}

} // namespace tarvo
