#pragma once

#include "LumoCore/Inventories/Installed.h"
#include "LumoCore/Scanning/FileTree.h"
#include "LumoCore/Scanning/FolderLocation.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumo {

/// What was measured of one folder, and all that an explanation of it may rest on.
struct FolderEvidence {
    std::string path;        ///< Absolute.
    std::string displayPath; ///< The same with "~" for the home folder.
    FolderLocation location = FolderLocation::other;
    Usage usage;
    std::vector<NamedSize> largestEntries; ///< Entries of the folder, largest first, 8 at most.
    std::vector<NamedSize> fileTypes;      ///< Bytes by extension, largest first, 5 at most.
    std::optional<InstalledApp> relatedApp;
    bool isAppleComponent = false;                    ///< By its name a part of macOS; never on Linux.
    std::optional<std::string> uninstalledOwner = {}; ///< What left the folder behind, where that is known.

    static constexpr auto fields = std::tuple{field("path", &FolderEvidence::path),
                                              field("displayPath", &FolderEvidence::displayPath),
                                              field("location", &FolderEvidence::location),
                                              field("usage", &FolderEvidence::usage),
                                              field("largestEntries", &FolderEvidence::largestEntries),
                                              field("fileTypes", &FolderEvidence::fileTypes),
                                              field("relatedApp", &FolderEvidence::relatedApp),
                                              field("isAppleComponent", &FolderEvidence::isAppleComponent),
                                              field("uninstalledOwner", &FolderEvidence::uninstalledOwner)};

    /// Measures the folder and looks for its application among what is installed. Never fails: what cannot
    /// be read is counted in the usage. Incomplete after a stop.
    static FolderEvidence gather(const std::string& path, const std::string& home, const Installed& installed,
                                 const FileTree::Watch& watch = {}, Language language = currentLanguage(),
                                 System system = currentSystem());

    /// The same for many folders, one after the other, with what is installed now. `onBegin` is told
    /// which one is next, counted from 0. After a stop the rest is missing.
    static std::vector<FolderEvidence> gatherAll(const std::vector<std::string>& paths,
                                                 const std::string& home, const FileTree::Watch& watch = {},
                                                 const std::function<void(std::size_t)>& onBegin = {});

    /// The path's last component.
    [[nodiscard]] std::string_view folderName() const;

    /// The name that sentences use when no application is related: that of whoever the folder belongs to.
    [[nodiscard]] std::string_view ownersName(System system = currentSystem()) const;

    /// What sentences call the related application.
    [[nodiscard]] std::optional<std::string> appName() const;

    /// The facts as lines of text: the only thing that a model is shown of the folder. Names are as
    /// `printable` writes them, so that none can begin a line of its own.
    [[nodiscard]] std::string promptDescription(Date now, Language language = currentLanguage(),
                                                System system = currentSystem()) const;

    friend bool operator==(const FolderEvidence&, const FolderEvidence&) = default;
};

} // namespace lumo
