#pragma once

#include <optional>
#include <string>

/// What cameras write into their pictures (Exif).
namespace lumo::platform {

/// When the picture at the path was taken, by the camera's clock: "2025:03:14 09:30:05". Absent when nothing
/// is said, or that is no JPEG file. Looking leaves no trace.
std::optional<std::string> takenTextOfPicture(const std::string& path);

/// The same of the first bytes of such a file.
std::optional<std::string> takenTextIn(const std::string& beginning);

} // namespace lumo::platform
