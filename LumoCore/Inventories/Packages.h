#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace lumo {

/// A package as Debian's package manager lists it.
struct Package {
    enum class State {
        installed,
        removed, ///< Its settings are still there.
        other,
    };
    State state = State::other;
    std::string version = {};
    std::int64_t installedBytes = 0; ///< As its maker says.

    friend bool operator==(const Package&, const Package&) = default;
};

/// The packages in the manager's list (dpkg's "status") by their names; of one that is there for several
/// architectures the installed one with the newest version.
std::map<std::string, Package, std::less<>> packagesInStatus(std::string_view status);

/// The list of this machine, or of the one whose files stand below the root; empty where there is none.
std::map<std::string, Package, std::less<>> packagesOfSystem(const std::string& root = {});

/// A field of the first paragraph of such a text ("Version"); empty when there is none.
std::string_view controlField(std::string_view paragraph, std::string_view name);

/// Below 0 when the left version comes before the right one, above 0 when after, in Debian's order: epochs,
/// numbers as numbers, "~" before everything else.
int compareVersions(std::string_view left, std::string_view right);

} // namespace lumo
