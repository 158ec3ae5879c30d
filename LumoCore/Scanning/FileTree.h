#pragma once

#include "LumoCore/Scanning/HardLinkRegistry.h"
#include "LumoCore/Scanning/Usage.h"
#include "Platform/TreeWalk.h"

#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

/// Measuring files and folders: the one source of every size that is shown or compared.
namespace lumo::FileTree {

/// Whom a measurement tells how far it is, and who may end it early.
struct Watch {
    platform::WalkProgress* progress = nullptr;
    std::stop_token stop = {};
};

/// What the file or folder takes on disk. Shared files are charged to the first measurement of the registry
/// that reaches them. Never fails: what cannot be read is counted, a missing path is one unreadable entry.
/// After a stop the result is incomplete.
Usage measure(const std::string& path, HardLinkRegistry& registry, const Watch& watch = {});

/// The same for many paths at once, in their order; the work is shared between threads.
std::vector<Usage> measureAll(const std::vector<std::string_view>& paths, HardLinkRegistry& registry,
                              const Watch& watch = {});

/// What a walk needs to charge shared files once.
platform::WalkContext contextOf(HardLinkRegistry& registry, const Watch& watch);

/// The measured part of a walk's sums.
Usage usageOf(const platform::TreeSums& sums);

} // namespace lumo::FileTree
