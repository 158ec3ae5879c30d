#pragma once

#include "Platform/Descriptor.h"
#include "Platform/Folder.h"
#include "Platform/FolderStatus.h"
#include "Platform/SystemError.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Acting on exactly what was meant. A path is a promise that anybody may break between two looks: a folder
/// on the way becomes a link, and the act lands elsewhere. So the way is opened step by step, and what is
/// done afterwards is done to a name in an open folder.
namespace lumo::platform {

/// A name in an open folder. Something may stand there or not.
struct Place {
    Descriptor folder;      ///< Good for resolving names in it, not for listing it.
    std::string folderPath; ///< Where the folder was found; without links below the base folder.
    std::string name;       ///< One component; never empty, "." or "..".

    [[nodiscard]] std::string path() const { return folderPath + "/" + name; }
};

/// A folder that was opened once and beneath which everything else is found.
class BaseFolder final {
  public:
    /// Opens a folder; links on the way to it are followed. Fails with EINVAL for a path that is not
    /// absolute.
    static SystemResult<BaseFolder> open(const std::string& path);

    /// Opens the folder that stands at the place: a real one, since a link there fails with ELOOP.
    static SystemResult<BaseFolder> openAt(const Place& place);

    /// The place of a path relative to this folder. Links on the way are followed as long as they stay in it,
    /// and fail with EXDEV when they leave it; the last component is never followed. Empty components, "."
    /// and ".." fail with EINVAL. Missing folders on the way fail as missing.
    [[nodiscard]] SystemResult<Place> place(std::string_view relative) const;

    /// The place of a path whose folders must all be real ones.
    [[nodiscard]] SystemResult<Place> placeWithoutLinks(std::string_view relative) const;

    /// The same; missing folders on the way are made with that mode.
    [[nodiscard]] SystemResult<Place> placeWithFolders(std::string_view relative, unsigned mode) const;

    /// The names in the folder without "." and "..", in no order.
    [[nodiscard]] SystemResult<std::vector<std::string>> names() const;

    /// Takes from everybody but its owner the right to look into the folder, where it is this user's.
    void makePrivate() const;

    /// The folder's path without links.
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    Descriptor folder_;
    std::string path_;
};

/// What stands at the place.
SystemResult<EntryKind> kindAt(const Place& place);

/// What stands at the place; a link stands for itself.
SystemResult<FolderIdentity> identityAt(const Place& place);

/// One thing on the disk, told apart from all that ever have its name.
struct EntryIdentity {
    FolderIdentity entry;
    EntryKind kind = EntryKind::other;
    /// When it was made, in ns since 1970; 0 where the file system does not tell. A new entry often has the
    /// inode of the one that was there before.
    std::int64_t born = 0;

    friend bool operator==(const EntryIdentity&, const EntryIdentity&) = default;
};

/// The same, and which one it is.
SystemResult<EntryIdentity> entryAt(const Place& place);

/// The place's folder and every folder above it, innermost first, as they are now.
SystemResult<std::vector<FolderIdentity>> foldersAround(const Place& place);

/// What stands at an absolute path, links followed, and every folder above it, innermost first; empty when
/// nothing does.
std::vector<FolderIdentity> identitiesUpFrom(const std::string& path);

/// The user that owns a folder, links followed.
SystemResult<unsigned> ownerOf(const std::string& folder);

/// The user whose rights this process has.
unsigned currentUser();

/// Makes a folder at the place. One that is there already is fine; a link or anything else fails with
/// ENOTDIR.
SystemResult<void> makeFolderAt(const Place& place, unsigned mode);

/// Gives what stands at `from` the place `to`, in one step that never replaces anything: a taken place fails
/// with EEXIST, another volume with EXDEV.
SystemResult<void> moveWithoutReplacing(const Place& from, const Place& to);

/// Removes an empty folder.
SystemResult<void> removeEmptyFolder(const Place& place);

} // namespace lumo::platform
