#pragma once

#include "LumoCore/Basics/Timestamp.h"
#include "Platform/FolderStatus.h"
#include "Platform/SystemError.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Questions about single paths and folders. Names and paths are bytes. A final symbolic link is not followed
/// unless an operation says so.
namespace lumo::platform {

enum class EntryKind { folder, file, link, other };

/// What stands at the path itself, absent when nothing does or its status cannot be read.
std::optional<EntryKind> kindOf(const std::string& path);

/// When what stands at the path itself was last changed; absent when its status cannot be read.
std::optional<Timestamp> modificationDate(const std::string& path);

/// Tells what stands at a path from anything else that may stand there later, and its own status now from a
/// changed one: a folder's changes with every entry directly in it. All zero when there is nothing to be
/// seen.
struct EntryMark {
    FolderIdentity object = {};
    std::int64_t changedSeconds = 0;
    std::int64_t changedNanoseconds = 0;

    friend bool operator==(const EntryMark&, const EntryMark&) = default;
};
EntryMark markOf(const std::string& path);

/// True when it is certain that nothing stands at the path. What cannot be looked at may be there.
bool isMissing(const std::string& path);

/// True when the path, with links followed, is a folder.
bool isFolderThroughLinks(const std::string& path);

/// True when the path, with links followed, is a regular file that this user may run.
bool isProgram(const std::string& path);

/// The names in a folder, or in one that a link leads to, without "." and "..", in ascending byte order;
/// nothing when it cannot be listed.
std::vector<std::string> namesIn(const std::string& folder);

/// True when the path, with links followed, is a folder that can be listed.
bool canList(const std::string& folder);

/// True when a regular file directly in the folder is a compiled program: some of its permission bits let it
/// be run, and it begins as the ELF format wants it. What cannot be read holds none.
bool holdsCompiledProgram(const std::string& folder);

/// Hands every name in the folder and its kind to the visitor, in the order of the disk.
/// Returns the folder's status, absent when the folder cannot be opened or is a link. A visitor that returns
/// false ends the visit.
std::optional<FolderStatus>
visitFolder(const std::string& folder,
            const std::function<bool(std::string_view name, EntryKind kind)>& visitor);

/// Where a symbolic link points, exactly as it is written in it; absent for anything else.
std::optional<std::string> linkTarget(const std::string& path);

/// The path made absolute against the working directory, without ".", ".." and doubled or final slashes, so
/// that it can be compared with others as text. One with ".." must exist; links in it are resolved then.
SystemResult<std::string> absolutePath(const std::string& path);

/// What becomes of a link in the last place of a path.
enum class FinalLink { followed, kept };

/// The path made absolute against the working directory, without ".", "..", doubled or final slashes, with
/// all links resolved that stand on the way, and the last one where that is asked. What does not exist, and
/// what stands behind a link that leads nowhere, keeps its name.
SystemResult<std::string> resolvedPath(const std::string& path, FinalLink last);

/// Where an existing path really leads, all links followed; absolute.
SystemResult<std::string> withoutLinks(const std::string& path);

/// True when the paths are spelled alike, or lead to the same place that is there.
bool isSamePlace(const std::string& left, const std::string& right);

} // namespace lumo::platform
