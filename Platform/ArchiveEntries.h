#pragma once

#include "Platform/Folder.h"
#include "Platform/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

/// What is in archives (zip, 7z, rar, ar, and tar, plain or by gzip, bzip2, xz or zstd), without unpacking
/// them. Whoever made an archive may have put anything into its names and lengths. Archives are left looking
/// unopened.
namespace lumo::platform {

struct ArchiveEntry {
    std::string path; ///< As it stands in the archive: bytes, perhaps absolute or with "..".
    EntryKind kind = EntryKind::other;
    std::optional<std::int64_t> bytes; ///< The length of a file, where the archive tells it.
};

/// Hands the entries to the visitor, in the archive's order, until one answers false. Fails where there is no
/// archive, where it breaks off, and with ECANCELED after a requested stop. Where there is no directory of
/// the entries, everything before one must be read to get to it.
SystemResult<void> visitArchive(const std::string& path,
                                const std::function<bool(const ArchiveEntry& entry)>& visitor,
                                const std::stop_token& stop = {});

/// The bytes of the first entry whose path the predicate accepts, at most that many; more fails with EFBIG
/// and no such entry as missing. The second one looks into an archive in memory.
using EntryPredicate = std::function<bool(std::string_view path)>;
SystemResult<std::string> entryOfArchive(const std::string& path, const EntryPredicate& isMeant,
                                         std::size_t mostBytes);
SystemResult<std::string> entryOfArchiveIn(std::string_view bytes, const EntryPredicate& isMeant,
                                           std::size_t mostBytes);

} // namespace lumo::platform
