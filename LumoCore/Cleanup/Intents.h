#pragma once

#include "LumoCore/Basics/Codec.h"
#include "Platform/SystemError.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// A move into the holding area that is about to happen.
struct Intent {
    std::string actionID;
    std::string title;
    std::string original; ///< Where the item is.
    std::string inTrash;  ///< Where it will be.

    static constexpr auto fields =
        std::tuple{field("actionID", &Intent::actionID), field("title", &Intent::title),
                   field("original", &Intent::original), field("inTrash", &Intent::inTrash)};
    friend bool operator==(const Intent&, const Intent&) = default;
};

/// Where things of the user's come from is written down, durably, before they move: a process that dies
/// between the move and the log line leaves an item whose origin would be known to nobody. The file of
/// intents is empty or missing except while an action is under way.
class IntentFile final {
  public:
    explicit IntentFile(std::string path) : path_(std::move(path)) {}

    /// Writes down all moves of one action. Fails with E2BIG when the action's log line would be too long to
    /// be read again; on failure nothing was added.
    platform::SystemResult<void> announce(const std::vector<Intent>& intents);

    /// Takes back what every `announce` since the last retiring wrote, once the log lines of all these
    /// actions are durable.
    platform::SystemResult<void> retire();

    /// What is announced; torn lines were never acted on and are passed over.
    [[nodiscard]] platform::SystemResult<std::vector<Intent>> pending() const;

    /// Takes back everything but those.
    [[nodiscard]] platform::SystemResult<void> keepOnly(const std::vector<Intent>& intents) const;

  private:
    std::string path_;
    std::optional<std::int64_t> lengthBefore_; ///< Of the first `announce` that is not retired.
};

} // namespace lumo
