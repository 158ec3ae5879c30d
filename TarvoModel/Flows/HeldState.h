#pragma once

#include "LumoCore/Cleanup/Holding.h"
#include "TarvoModel/Flows/Desk.h"
#include "TarvoModel/Showing/HeldItem.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

/// What is set aside, and ending it for good.
namespace tarvo {

struct HeldState {
    std::vector<lumo::Holding::Batch> batches; ///< Oldest first.
    std::vector<HeldItem> items;               ///< In the order in which they were set aside.
    /// Something of it can be asked for. Whether it can go back, only trying tells: what stands in its place
    /// now may be gone a moment later.
    bool canUndo = false;
    std::optional<std::string> historyProblem = {}; ///< Why nothing is known of the items; the batches are.

    friend bool operator==(const HeldState&, const HeldState&) = default;
};

/// Changes nothing and needs no lock. A failure says why it cannot be looked at.
lumo::Result<HeldState> heldState(const Desk& desk);

/// The held item with the id, in the outcomes of the log.
std::optional<lumo::TrashedItem> heldItemNamed(const std::string& id,
                                               const std::vector<lumo::CleanupOutcome>& outcomes,
                                               const lumo::PathGuard& guard);

/// Removes for good the batches that were agreed to. One that is not as it was then stays, with a failure.
lumo::Result<lumo::Holding::Emptied> emptyAgreed(const std::vector<lumo::Holding::Batch>& agreed,
                                                 const Desk& desk);

/// Removes for good all that is set aside, whatever it is by now.
lumo::Result<lumo::Holding::Emptied> emptyAll(const Desk& desk);

struct Expired {
    lumo::Holding::Emptied emptied;
    bool isPutOff = false; ///< The clock cannot be trusted with ending anything now.
};

/// Removes what is past its days.
lumo::Result<Expired> emptyExpired(const Desk& desk);

/// The same before a scan, which it must never fail or hold up: when another program is at work, the home is
/// somebody else's or cannot be written, the bytes freed are 0. `clockDrift` is how far the wall clock ran
/// ahead of one that is never set, as far as the program has seen. Leaves no trace where nothing is held.
std::int64_t purgeExpired(const Desk& desk, std::chrono::seconds clockDrift);

} // namespace tarvo
