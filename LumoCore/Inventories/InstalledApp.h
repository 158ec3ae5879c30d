#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Inventories/DesktopEntry.h"

#include <array>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo {

/// An installed application: a bundle, or on Linux also a desktop entry.
struct InstalledApp {
    std::string name;
    std::string bundleID; ///< "com.google.Chrome"; of a desktop entry its id.
    std::string path;     ///< Of the bundle (ending in ".app") or of the desktop file.
    /// File name of the program that a desktop entry starts, where that tells which it is; not stored.
    std::string program = {};

    static constexpr auto fields =
        std::tuple{field("name", &InstalledApp::name), field("bundleID", &InstalledApp::bundleID),
                   field("path", &InstalledApp::path)};

    /// Words that never identify an application when a folder's name is compared with one.
    static constexpr std::array<std::string_view, 24> genericTokens{
        "com",   "org",     "net",    "io",      "ai",       "app",       "apps",    "mac",
        "macos", "desktop", "agent",  "helper",  "install",  "installer", "updater", "update",
        "data",  "cache",   "caches", "support", "launcher", "electron",  "shipit",  "group"};

    /// The normal forms, longer than 2 characters, of the name, of the file's name and of the identifier's
    /// last part.
    [[nodiscard]] std::vector<std::string> aliases() const;

    /// What a sentence calls the application: a bundle by its file's name, a desktop entry by its own.
    [[nodiscard]] std::string_view spokenName() const;

    /// The application that a folder of that name belongs to, as far as the name tells: by its identifier,
    /// else by an alias, else by a word that an alias contains; each time the first in the list. A leading
    /// point of the name does not count.
    static std::optional<InstalledApp> related(std::string_view folderName,
                                               const std::vector<InstalledApp>& apps);

    /// Everything installed: the bundles of "/Applications", then those of the user's own, then desktop
    /// entries. What cannot be read is left out.
    static std::vector<InstalledApp> scan(const std::string& home);

    /// The same for whoever has read the desktop entries already.
    static std::vector<InstalledApp> scan(const std::string& home, const std::vector<DesktopEntry>& entries);

    /// The bundles in the roots and one level of folders below them, in the order they are found.
    static std::vector<InstalledApp> bundlesIn(const std::vector<std::string>& roots);

    /// The bundle at the path; absent when it has no readable identifier.
    static std::optional<InstalledApp> read(const std::string& path);

    /// Lower case, letters and numbers only.
    static std::string normalize(std::string_view text);

    friend bool operator==(const InstalledApp&, const InstalledApp&) = default;
};

/// The applications and desktop entries of this machine, read when somebody first asks and kept from then on:
/// for one command or one pass of a window. May be asked by several threads at once.
class InstalledApps final {
  public:
    explicit InstalledApps(std::string home) : home_(std::move(home)) {}

    const std::vector<DesktopEntry>& entries() const;
    /// What `InstalledApp::scan` gives.
    const std::vector<InstalledApp>& apps() const;

  private:
    void read() const;

    const std::string home_;
    mutable std::once_flag isRead_;
    mutable std::vector<DesktopEntry> entries_;
    mutable std::vector<InstalledApp> apps_;
};

} // namespace lumo
