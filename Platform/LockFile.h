#pragma once

#include "LumoCore/Basics/Timestamp.h"
#include "Platform/Descriptor.h"
#include "Platform/SystemError.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace lumo::platform {

/// An advisory lock that ends with its owner or its process, whichever comes first. Children that run other
/// programs do not inherit it. What is in the file is free to use by whoever holds it.
class LockFile final {
  public:
    /// Takes the lock, making the file (0600) if there is none, and waits for another holder that long. Fails
    /// with EWOULDBLOCK while somebody else holds it.
    static SystemResult<LockFile> take(const std::string& path, std::chrono::milliseconds patience);

    /// The same on a folder that is there: for when the disk is too full to make a file.
    static SystemResult<LockFile> takeFolder(const std::string& folder, std::chrono::milliseconds patience);

    /// When the file was last written before it was taken; absent when it is new or a folder.
    [[nodiscard]] const std::optional<Timestamp>& lastTouched() const { return lastTouched_; }

    /// The file's bytes; empty when they cannot be read.
    [[nodiscard]] std::string content() const;

    /// Replaces the file's bytes and marks it as touched now. Not synced: it matters while we live.
    void write(std::string_view bytes) const;

  private:
    Descriptor file_;
    std::optional<Timestamp> lastTouched_;
};

} // namespace lumo::platform
