#pragma once

#include "TarvoModel/Flows/Preferences.h"

#include <set>
#include <string>
#include <vector>

namespace tarvo {

/// What no cleanup takes, as whoever explores has to know it before anything is marked.
struct NeverTouched {
    std::vector<std::string> folders = {}; ///< Absolute, and spelt as the home is.
    /// Of the paths that were asked about those that are spelt otherwise, and still lead to such a folder: a
    /// link, or where one is mounted once more.
    std::set<std::string> leadThere = {};

    friend bool operator==(const NeverTouched&, const NeverTouched&) = default;
};

/// Looks up what the preferences protect, and which of these absolute paths a cleanup would refuse for it:
/// the same guard decides. Reads the disk, and may be called on any thread.
NeverTouched neverTouched(const Preferences& preferences, const std::string& home,
                          const std::vector<std::string>& paths = {});

} // namespace tarvo
