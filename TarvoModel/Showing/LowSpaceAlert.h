#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "TarvoModel/Showing/Notification.h"

#include <chrono>
#include <cstdint>
#include <optional>

/// The warning that the disk is nearly full: once a day at most, and again only after there was clearly more
/// space in between.
namespace tarvo::LowSpaceAlert {

/// How far above the threshold the space must rise before an alert that was sent is forgotten. In between
/// nothing happens, so that a disk that hovers around the threshold does not nag.
inline constexpr std::int64_t gap = 2000000000;

/// An alert sent less long ago is not repeated.
inline constexpr std::chrono::seconds interval{86400};

/// What is known at one look.
struct Look {
    std::optional<std::int64_t> freeBytes; ///< Absent when the system does not say.
    std::int64_t thresholdGB = 10;
    std::optional<lumo::Date> sent; ///< When the last alert was sent, unless forgotten since.
    std::int64_t recoverable = 0;   ///< See `CleanupPlanner::safeRecoverableBytes`.
    lumo::Date now;
};

/// What is to be done: nothing when both are silent.
struct Decision {
    bool forgetsDate = false;                 ///< The stored date goes.
    std::optional<Notification> notification; ///< Is sent, and `now` stored once somebody shows it.

    friend bool operator==(const Decision&, const Decision&) = default;
};

Decision decide(const Look& look, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo::LowSpaceAlert
