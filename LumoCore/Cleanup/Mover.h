#pragma once

#include "LumoCore/Cleanup/Intents.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/Rules/CleanupAction.h"
#include "Platform/Place.h"

#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// Sets the items of a cleanup aside in one batch folder, in three steps for each action: reserve a place for
/// every item and write the moves down, move them, settle once the log knows them.
class Mover final {
  public:
    /// The batch is a folder in the holding root, made when the first item needs it.
    Mover(const PathGuard& guard, std::string batch);

    /// The places in the holding area for the items with those original paths, in their order. Nothing has
    /// moved when this fails.
    platform::SystemResult<std::vector<std::string>> reserve(const CleanupAction& action,
                                                             const std::vector<std::string>& originals);

    /// Moves what stands at the place to one that was reserved. Never copies, never replaces.
    platform::SystemResult<void> move(const platform::Place& from, const std::string& reserved) const;

    /// The log lines of all actions so far are durable. Harmless when nothing was reserved. Without it the
    /// intents stay for the next recovery.
    void settle();

    /// A name for something set aside: unique, and at most 255 bytes; a longer one is cut between characters.
    static std::string heldName(std::string_view name);

  private:
    const PathGuard& guard_;
    std::string batch_;
    std::optional<platform::BaseFolder> folder_;
    IntentFile intents_;
};

} // namespace lumo
