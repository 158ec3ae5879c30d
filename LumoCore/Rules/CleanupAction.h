#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Rules/Rule.h"

#include <string>
#include <variant>
#include <vector>

namespace lumo {

/// The ways in which an action frees space. In JSON an object with the case as its one member.
namespace method {

/// Each path itself is removed or set aside.
struct TrashItems {
    static constexpr std::string_view caseName = "trashItems";
    std::vector<std::string> paths;
    static constexpr auto fields = std::tuple{field("_0", &TrashItems::paths)};
    friend bool operator==(const TrashItems&, const TrashItems&) = default;
};

/// Everything directly inside each folder is removed or set aside; the folder stays.
struct TrashContents {
    static constexpr std::string_view caseName = "trashContents";
    std::vector<std::string> folders;
    static constexpr auto fields = std::tuple{field("_0", &TrashContents::folders)};
    friend bool operator==(const TrashContents&, const TrashContents&) = default;
};

/// The program, which is the first word, is run with the others.
struct Command {
    static constexpr std::string_view caseName = "command";
    std::vector<std::string> words;
    static constexpr auto fields = std::tuple{field("_0", &Command::words)};
    friend bool operator==(const Command&, const Command&) = default;
};

/// The local copies go; the files stay in the cloud.
struct EvictFromICloud {
    static constexpr std::string_view caseName = "evictFromICloud";
    std::vector<std::string> paths;
    static constexpr auto fields = std::tuple{field("_0", &EvictFromICloud::paths)};
    friend bool operator==(const EvictFromICloud&, const EvictFromICloud&) = default;
};

} // namespace method

using Method =
    std::variant<method::TrashItems, method::TrashContents, method::Command, method::EvictFromICloud>;

/// One thing that a cleanup does.
struct CleanupAction {
    std::string id;    ///< The rule's, or "proyecto:" + project + "/" + artifact.
    std::string title; ///< Shown to the user.
    Safety safety = Safety::keep;
    std::int64_t estimatedBytes = 0; ///< Allocated bytes at the time of the scan.
    Method method;
    std::vector<std::string> measuredPaths;    ///< What is measured again afterwards. Absolute.
    std::vector<std::string> fallbackContents; ///< Emptied when a command fails.

    static constexpr auto fields = std::tuple{field("id", &CleanupAction::id),
                                              field("title", &CleanupAction::title),
                                              field("safety", &CleanupAction::safety),
                                              field("estimatedBytes", &CleanupAction::estimatedBytes),
                                              field("method", &CleanupAction::method),
                                              field("measuredPaths", &CleanupAction::measuredPaths),
                                              field("fallbackContents", &CleanupAction::fallbackContents)};
    friend bool operator==(const CleanupAction&, const CleanupAction&) = default;
};

} // namespace lumo
