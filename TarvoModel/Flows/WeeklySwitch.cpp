#include "TarvoModel/Flows/WeeklySwitch.h"

#include "LumoCore/Basics/Words.h"
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

std::string timerStateText(WeeklyTimer::State state, lumo::Language language) {
    using lumo::Words;
    switch (state) {
    case WeeklyTimer::State::none:
        return Words{
            "Sin temporizador: solo la hace la ventana mientras está abierta. Para tenerlo: tarvo semanal "
            "activar",
            "Without a timer: only the window does it, while it is open. To have one: tarvo weekly on"}
            .in(language);
    case WeeklyTimer::State::broken:
        return Words{
            "El programa que pone en marcha ya no está en su sitio. Para arreglarlo: tarvo semanal activar",
            "The program that is started is no longer in its place. To mend that: tarvo weekly on"}
            .in(language);
    case WeeklyTimer::State::set:
        break;
    }
    return Words{"Se mira cada día que tengas la sesión abierta; en un servidor, también sin ella con "
                 "«loginctl enable-linger».",
                 "It is looked at every day on which you are logged in; on a server, without that too after "
                 "“loginctl enable-linger”."}
        .in(language);
}

} // namespace tarvo
