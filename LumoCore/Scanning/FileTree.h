#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Scanning/HardLinkRegistry.h"
#include "LumoCore/Scanning/NamedSize.h"
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

/// The same for many paths at once, in their order; the work is shared between threads. Of several that share
/// a file the first is charged.
std::vector<Usage> measureAll(const std::vector<std::string_view>& paths, HardLinkRegistry& registry,
                              const Watch& watch = {});

/// The same of requests, whose trees may be known or be kept.
std::vector<Usage> measureAll(std::span<const platform::TreeRequest> requests, HardLinkRegistry& registry,
                              const Watch& watch);

/// How many children and how many extensions a breakdown lists.
inline constexpr std::size_t mostListed = 1000;

/// A folder's sums and those of its parts; both lists largest first.
struct Breakdown {
    Usage usage;
    /// The largest entries of the folder, each with everything below it. A file that is charged where another
    /// name of it stands is there with 0 bytes.
    std::vector<NamedSize> children;
    /// What the regular files with each extension take, lower-cased: what follows the last point of a name,
    /// that not being its first character. Files without one, and those with extensions that are not listed,
    /// are each one entry, named so in the interface language.
    std::vector<NamedSize> extensions;

    static constexpr auto fields =
        std::tuple{field("usage", &Breakdown::usage), field("children", &Breakdown::children),
                   field("extensions", &Breakdown::extensions)};
    friend bool operator==(const Breakdown&, const Breakdown&) = default;
};

/// The same measurement as `measure` makes with a registry of its own, in about the same time, with its
/// parts.
Breakdown breakdown(const std::string& path, const Watch& watch = {}, Language language = currentLanguage());

/// The breakdown that a walk yields.
Breakdown breakdownOf(const platform::TreeBreakdown& tree, Language language = currentLanguage());

/// What a walk needs to charge shared files once.
platform::WalkContext contextOf(HardLinkRegistry& registry, const Watch& watch);

/// The measured part of a walk's sums.
Usage usageOf(const platform::TreeSums& sums);

} // namespace lumo::FileTree
