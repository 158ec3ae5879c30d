#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Date.h"
#include "Platform/SystemError.h"

#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// Something of the user's that was set aside.
struct TrashedItem {
    std::string original; ///< The absolute path it had.
    std::string inTrash;  ///< Its path in a batch of the holding area.

    static constexpr auto fields =
        std::tuple{field("original", &TrashedItem::original), field("inTrash", &TrashedItem::inTrash)};
    friend bool operator==(const TrashedItem&, const TrashedItem&) = default;
};

enum class CleanupStatus { done, failed };

template <>
struct EnumNames<CleanupStatus> {
    static constexpr std::array<std::string_view, 2> values{"done", "failed"};
};

/// What became of one action. One line of the cleanup log.
struct CleanupOutcome {
    std::string id;    ///< The action's.
    std::string title; ///< The action's.
    CleanupStatus status = CleanupStatus::done;
    std::optional<std::string> message; ///< For the user, in the language of the time.
    std::int64_t freedBytes = 0;        ///< Free on disk now.
    std::int64_t trashedBytes = 0;      ///< In the holding area, not free yet.
    /// What can be put back, also after a failure; absent when there is nothing.
    std::optional<std::vector<TrashedItem>> restorable;
    Date date; ///< When the action ended.
    /// The agent that asked for it, by the name it gives itself; absent for the user's own cleanups.
    std::optional<std::string> caller;
    /// In the log: the cleanup that it belongs to, the same in all its lines and in no others. Absent in
    /// older logs, and of what a cleanup that was killed still owed.
    std::optional<std::string> cleanup = {};
    /// What the system said of the item at which it failed; absent after other failures, and not kept in the
    /// log.
    std::optional<platform::SystemError> cause = {};

    static constexpr auto fields = std::tuple{field("id", &CleanupOutcome::id),
                                              field("title", &CleanupOutcome::title),
                                              field("status", &CleanupOutcome::status),
                                              field("message", &CleanupOutcome::message),
                                              field("freedBytes", &CleanupOutcome::freedBytes),
                                              field("trashedBytes", &CleanupOutcome::trashedBytes),
                                              field("restorable", &CleanupOutcome::restorable),
                                              field("date", &CleanupOutcome::date),
                                              field("caller", &CleanupOutcome::caller),
                                              field("cleanup", &CleanupOutcome::cleanup)};
    friend bool operator==(const CleanupOutcome&, const CleanupOutcome&) = default;
};

/// How handling several items went: each that failed has its own text.
struct TrashOperationResult {
    std::int64_t done = 0; ///< Items handled.
    std::vector<std::string> failures;

    static constexpr auto fields = std::tuple{field("done", &TrashOperationResult::done),
                                              field("failures", &TrashOperationResult::failures)};
    friend bool operator==(const TrashOperationResult&, const TrashOperationResult&) = default;
};

} // namespace lumo
