#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/Preferences.h"
#include "TarvoModel/Showing/Notification.h"
#include "TarvoModel/Showing/Phase.h"
#include "TarvoModel/Showing/RunMode.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The cleanup that runs by itself once a week when the user wants it, and takes only what recreates itself.
namespace tarvo::WeeklyCleanup {

inline constexpr std::chrono::seconds interval{604800};

/// Less than this together is not worth running for.
inline constexpr std::int64_t smallestGain = 200000000;

/// What is stored of the last run.
struct Record {
    std::optional<lumo::Date> last;    ///< When it began: stored before anything is cleaned.
    std::optional<std::int64_t> bytes; ///< What it freed; 0 when there was too little to do.

    friend bool operator==(const Record&, const Record&) = default;
};

Record storedRecord(const Preferences& preferences);

/// What decides whether it runs.
struct Situation {
    bool isOn = false;
    RunMode mode;
    Phase phase;
    bool hasReport = false;
    std::optional<lumo::Date> last;
    lumo::Date now;
};

/// True when it is to run now.
bool isDue(const Situation& situation);

/// A report older than this is not relied on: the cleanup is for what has gathered until now. Long enough for
/// the monitor to come round once more after the scan.
inline constexpr std::chrono::seconds reportLife{120};

/// True when the home is scanned before it runs.
bool needsScan(const std::optional<lumo::Date>& lastScan, lumo::Date now);

/// True when the user wants it and it is time, by what is stored: for whoever has no window.
bool isWanted(const Preferences& preferences, lumo::Date now);

/// When it is time for the next: not before `now`.
lumo::Date next(const Record& record, lumo::Date now);

/// What of a fresh plan it carries out: the safe entries that nothing holds back. None when they add up to
/// too little, and then 0 is stored as what it freed.
std::vector<lumo::CleanupAction> actions(const std::vector<lumo::PlanEntry>& entries);

/// Carries it out by such a plan: under the home's lock it is made sure that it is still wanted and due, its
/// beginning is stored, what is worth it cleaned, and what it freed stored in the end. A failure says why it
/// could not begin; then nothing is stored, and it may be tried again. On a disk too full to store anything
/// it runs all the same; whoever called remembers then.
lumo::Result<Cleaned> run(const PlanRequest& request, const Desk& desk, const CleanupWatch& watch);

/// The same because the user says so, wanted and due or not; the week begins anew.
lumo::Result<Cleaned> runAtOnce(const PlanRequest& request, const Desk& desk, const CleanupWatch& watch);

/// What the user is told afterwards in the window and by the desktop; absent when nothing was freed.
std::optional<std::string> notice(std::int64_t freed, lumo::Language language = lumo::currentLanguage());
std::optional<Notification> notification(std::int64_t freed,
                                         lumo::Language language = lumo::currentLanguage());

/// The line in the settings: when it runs next and what the last run freed; absent while it is off.
std::optional<std::string> autoCleanStatus(bool isOn, const Record& record, lumo::Date now,
                                           lumo::Language language = lumo::currentLanguage());

} // namespace tarvo::WeeklyCleanup
