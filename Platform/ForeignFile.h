#pragma once

#include "Platform/SystemError.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

/// Settings files that belong to another program, which may be at work on them.
namespace lumo::platform {

/// What is to stand in the file instead of its present bytes, which are absent when there is no file. Absent
/// leaves everything alone. May be asked several times.
using ForeignEdit = std::function<std::optional<std::string>(const std::optional<std::string>& present)>;

/// Replaces the content of the file by what `edit` makes of it. A reader sees the old or the new bytes and
/// nothing else; mode and owner stay, and where the path is a link, the file that it leads to is replaced.
/// A missing file is made for the user alone, and so are missing folders on the way to it.
///
/// Before a file that is there is replaced, its bytes are kept at `backup`, whole, with the same mode and
/// owner, instead of an earlier backup.
///
/// The file is read again right before it is replaced. When it is not as it was, everything begins anew; a
/// file that never comes to rest fails with ESTALE. Nothing is written when `edit` gives back what was there.
/// What cannot be read, may not be written (EACCES), is larger than `limit` (EFBIG), is no regular file
/// (EINVAL, EISDIR) or belongs to a group that it cannot be given back to (EPERM) fails and stays as it is.
SystemResult<void> rewriteForeign(const std::string& path, const std::string& backup, std::size_t limit,
                                  const ForeignEdit& edit);

/// Removes what a rewriting of that file left whose process is gone.
void sweepForeign(const std::string& path, const std::string& backup);

} // namespace lumo::platform
