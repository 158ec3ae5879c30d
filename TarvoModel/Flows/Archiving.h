#pragma once

#include "LumoCore/Cleanup/Archiver.h"
#include "TarvoModel/Flows/Desk.h"

#include <cstdint>
#include <optional>
#include <string>

/// Replacing an item by its archive.
namespace tarvo {

/// Why the item may not be archived, for the user; absent when it may. The path is one of `pathMeant`.
std::optional<std::string> archiveRefusal(const std::string& path, const Desk& desk);

/// A verified archive, and what became of its original.
struct Archived {
    std::string archive;
    std::int64_t archiveBytes = 0;
    lumo::CleanupOutcome outcome; ///< Failed when the original could not be set aside.
};

/// Why there is no archive; the original is where it was then.
struct NotArchived {
    std::string reason; ///< For the user, in the interface language.
    bool isInterrupted = false;
};

/// Archives the item and sets the original aside, unless the preferences of that moment protect it.
std::expected<Archived, NotArchived> archive(const std::string& path, const Desk& desk,
                                             const lumo::Archiver::ArchiveControl& control);

} // namespace tarvo
