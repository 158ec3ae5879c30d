#pragma once

#include "Platform/Folder.h"
#include "Platform/SystemError.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace lumo::platform {

/// One entry in the directory of a zip.
struct ZipEntry {
    std::string_view name; ///< The bytes as they stand in it; a folder's without the final slash.
    EntryKind kind = EntryKind::other;
    std::int64_t bytes = 0;     ///< Unpacked.
    std::uint32_t checksum = 0; ///< As `checksumOfFile` computes it.
};

/// Hands every entry to the visitor, in the order of the archive, until one answers false. The name is good
/// during the call alone. Fails with EBADMSG for what is no zip that can be read.
SystemResult<void> visitZip(const std::string& path,
                            const std::function<bool(const ZipEntry& entry)>& visitor);

} // namespace lumo::platform
