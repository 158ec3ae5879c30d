#pragma once

#include "LumoCore/Cleanup/PathGuard.h"
#include "Platform/Place.h"

#include <string>

namespace lumo {

/// The hidden folder beside an item in which its archive is made. The tool and its own temporary files stay
/// in it until the archive is verified, so one removal takes all of it back. Where it is has been written
/// down, durably, before it is made: a process that dies leaves a folder that the next one finds.
class ArchiveStaging final {
  public:
    /// Makes it in the folder. Fails when it cannot be written down or made; then nothing is left.
    static platform::SystemResult<ArchiveStaging> make(const PathGuard& guard, const std::string& folder);

    /// Removes it and what it holds.
    ~ArchiveStaging();
    ArchiveStaging(ArchiveStaging&& other) noexcept;
    ArchiveStaging& operator=(ArchiveStaging&&) = delete;
    ArchiveStaging(const ArchiveStaging&) = delete;
    ArchiveStaging& operator=(const ArchiveStaging&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string archivePath() const { return path_ + "/" + archiveName; }
    [[nodiscard]] platform::SystemResult<platform::Place> archivePlace() const;

    /// Removes all that were left. Those that cannot be removed are found again the next time.
    static void sweep(const PathGuard& guard);

  private:
    static constexpr const char* archiveName = "archivo.zip";

    ArchiveStaging(const PathGuard& guard, std::string path) : guard_(&guard), path_(std::move(path)) {}

    const PathGuard* guard_; ///< Absent once it was given away.
    std::string path_;
};

} // namespace lumo
