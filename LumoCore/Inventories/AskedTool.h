#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <chrono>
#include <expected>
#include <string>
#include <vector>

namespace lumo {

/// Why a tool gave no answer.
struct NoAnswer {
    bool isMissing = false; ///< It is not installed.
    std::string reason;     ///< For the user.
    std::string said = {};  ///< Of one that failed, in its own words and language; else empty.
};

/// How long a tool may take to tell what it has.
inline constexpr std::chrono::milliseconds toolPatience{5000};

/// What the tool prints, read to its end. One that takes longer than that, or that is still at it when the
/// query is stopped, is ended, with all that it started.
std::expected<std::string, NoAnswer> askTool(const std::vector<std::string>& words,
                                             const InventoryQuery& query,
                                             std::chrono::milliseconds patience = toolPatience);

/// The JSON in an answer: what a tool warns of stands on lines around it.
std::string_view jsonIn(std::string_view answer);

} // namespace lumo
