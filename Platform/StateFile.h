#pragma once

#include "Platform/SystemError.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// Small files that are read and replaced whole.
namespace lumo::platform {

/// The bytes of a regular file. A larger one than `limit` fails with EFBIG, anything that is no regular file
/// with EINVAL; a FIFO never blocks.
SystemResult<std::string> readWhole(const std::string& path, std::size_t limit);

/// All that can be read from an open descriptor, up to `limit` bytes; more fails with EFBIG.
SystemResult<std::string> readDescriptor(int descriptor, std::size_t limit);

/// Replaces the file by a synced temporary one beside it, so that a reader sees the old or the new bytes and
/// nothing else; it keeps its mode if it is there. A link is followed, so that the file it points at is
/// replaced. What is there and is no regular file is left alone and fails with EINVAL.
SystemResult<void> replaceWhole(const std::string& path, std::string_view bytes, unsigned mode = 0600);

/// Takes bytes that follow those before; false once they cannot be written, and no more are wanted.
using TakePiece = std::function<bool(std::string_view piece)>;

/// The same for what is too long to be in memory as a whole: `produce` hands it on piece by piece. When it
/// answers false the file stays as it was, and that fails with the reason why a piece was not taken, else
/// with ECANCELED.
SystemResult<void> replaceInPieces(const std::string& path,
                                   const std::function<bool(const TakePiece& take)>& produce,
                                   unsigned mode = 0600);

/// Writes the bytes into a synced temporary file beside the path and returns its path; on failure there is
/// none. What is to be set on the open file besides its mode, `prepare` sets before the sync.
SystemResult<std::string>
writeTemporary(const std::string& path, std::string_view bytes, unsigned mode,
               const std::function<SystemResult<void>(int descriptor)>& prepare = {});

/// Removes the temporary files in the folder that replacements left whose process is gone: all of them, or
/// those beside the file of that name.
void sweepTemporaries(const std::string& folder, std::string_view file = {});

/// True when the folder holds such a file, of whichever process.
bool hasTemporaries(const std::string& folder);

/// Makes the folder and those on the way to it, for the user alone. One that is there already is left as it
/// is.
SystemResult<void> makePrivateFolder(const std::string& folder);

/// Gives the file another name in its folder without replacing anything.
SystemResult<void> renameAside(const std::string& path, const std::string& newPath);

} // namespace lumo::platform
