#pragma once

#include "LumoCore/Basics/Language.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// How far long work has come, for a line and a bar beside it.
namespace tarvo {

struct Progress {
    std::string text;            ///< Empty while there is nothing to tell.
    std::optional<double> share; ///< Of all there is to do, from 0 to 1; absent while that is not known.

    friend bool operator==(const Progress&, const Progress&) = default;
};

/// One action of a cleanup, with what it was estimated to free.
struct CleanupStep {
    std::string id; ///< The action's.
    std::string title;
    std::int64_t bytes = 0;

    friend bool operator==(const CleanupStep&, const CleanupStep&) = default;
};

/// While the action at that place is in hand: which one it is, and the bytes of those before it.
Progress cleaningProgress(const std::vector<CleanupStep>& steps, std::size_t at,
                          lumo::Language language = lumo::currentLanguage());

/// While so many entries and bytes have been measured of about as many as expected; 0 for no idea. More than
/// expected is never all: the end is told by the result.
Progress scanningProgress(std::int64_t entries, std::int64_t bytes, std::int64_t expectedBytes,
                          lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
