#pragma once

#include "TarvoModel/Flows/Desk.h"
#include "TarvoModel/Flows/Preferences.h"
#include "TarvoModel/Flows/WeeklyTimer.h"

#include <optional>
#include <string>

/// The one switch of the weekly cleanup, whichever face shows it.
namespace tarvo {

/// What a timer is to whoever turns the weekly cleanup on.
enum class TimerWish {
    needed,  ///< Without one nothing would ever start it: then it stays off.
    welcome, ///< A window does it, too, while it is open.
};

struct WeeklySwitch {
    Preferences preferences;                 ///< As they are stored now.
    std::optional<std::string> timerProblem; ///< Why the timer is not as the switch is.
};

/// Turns it on or off: the preference, which alone decides, and the timer that starts it without a window. A
/// process killed in between leaves at worst a timer whose runs do nothing. Asks systemd and so may take some
/// seconds; for a thread of its own. A failure says in the interface language why everything is as it was.
lumo::Result<WeeklySwitch> setWeeklyCleanup(const Desk& desk, bool on, TimerWish wish,
                                            const WeeklyTimer::Asking& asking = {});

/// What there is to know of a timer in that state while the cleanup is on, in a sentence.
std::string timerStateText(WeeklyTimer::State state, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
