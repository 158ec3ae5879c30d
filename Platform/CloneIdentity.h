#pragma once

#include "Platform/TreeWalk.h"

#include <optional>

namespace lumo::platform {

/// The identity that a file's copy-on-write clones share, when the file system knows one and the file has at
/// least one clone. `device` is the file's own.
std::optional<FileIdentity> cloneFamily(const char* path, std::int32_t device);

} // namespace lumo::platform
