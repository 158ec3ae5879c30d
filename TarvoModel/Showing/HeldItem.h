#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"

#include <string>

namespace tarvo {

/// Something that can be put back.
struct HeldItem {
    std::string id; ///< Stays the same while it is held; empty for what no cleanup of ours named.
    std::string original;
    std::string batch;         ///< The path of the batch it lies in.
    bool isIncomplete = false; ///< An emptying that failed removed parts of it.

    friend bool operator==(const HeldItem&, const HeldItem&) = default;
};

/// The id under which an item of the log is held, or was.
std::string heldIDOf(const lumo::TrashedItem& item);

} // namespace tarvo
