#pragma once

#include <optional>
#include <string_view>

namespace lumo {

/// The program that a hidden folder of a Linux home, or one in a folder that many programs share, belongs to,
/// by the name alone and whether or not the program is found installed; absent for a name that is not known.
/// A leading point and capitals do not count.
std::optional<std::string_view> knownOwner(std::string_view folderName);

} // namespace lumo
