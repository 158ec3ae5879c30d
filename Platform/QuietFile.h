#pragma once

#include "LumoCore/Basics/Timestamp.h"
#include "Platform/Descriptor.h"
#include "Platform/SystemError.h"
#include "Platform/TreeWalk.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

/// Looking at and into files so that they do not look opened afterwards: when a file was last opened tells
/// what is forgotten, and whoever looks for that must not be the one who opened it.
namespace lumo::platform {

/// What a regular file is and when it was used.
struct FileStatus {
    FileIdentity identity;
    std::int64_t bytes = 0; ///< The length.
    std::int64_t allocatedBytes = 0;
    std::uint64_t links = 1; ///< Names that it has.
    Timestamp modified = {};
    /// When it was last opened; absent on volumes that do not keep that.
    std::optional<Timestamp> opened = {};

    /// True when nothing says that the file was touched between the two looks; opening it does not count.
    [[nodiscard]] bool isAsIn(const FileStatus& other) const {
        return identity == other.identity && bytes == other.bytes && modified == other.modified;
    }
};

/// The status of the regular file at the path; a link is not followed. Fails with EINVAL for anything else.
SystemResult<FileStatus> statusOfFile(const std::string& path);

/// A regular file that is read. The time of the last opening is left alone or put back.
class QuietFile final {
  public:
    /// A link fails, what is no regular file fails with EINVAL, and a FIFO never blocks.
    static SystemResult<QuietFile> open(const std::string& path);

    QuietFile(QuietFile&&) noexcept = default;
    QuietFile& operator=(QuietFile&&) noexcept = delete;
    ~QuietFile();

    [[nodiscard]] const FileStatus& status() const { return status_; }
    /// As many bytes from there as the buffer takes; fewer at the end of the file.
    [[nodiscard]] SystemResult<std::size_t> read(std::int64_t offset, std::span<char> buffer) const;
    /// The file will be read from its beginning to its end.
    void announceReading() const;
    /// The open file, for asking the system about it.
    [[nodiscard]] int number() const { return descriptor_.number(); }

  private:
    QuietFile(Descriptor descriptor, FileStatus status, bool leavesTrace)
        : descriptor_(std::move(descriptor)), status_(status), leavesTrace_(leavesTrace) {}

    Descriptor descriptor_;
    FileStatus status_;
    bool leavesTrace_ = false;
};

/// True when the two are kept in the same blocks of the volume, as copies are that were made by reference
/// (`cp --reflink`): taking one of them frees nothing. False where the system does not tell.
bool shareBlocks(const QuietFile& left, const QuietFile& right);

/// The first bytes of a file, or all of one that has no more.
SystemResult<std::string> quietBeginning(const std::string& path, std::size_t mostBytes);

using Digest = std::array<std::uint64_t, 2>;

/// A 128-bit digest (XXH3) by which files can be told apart. Not made against somebody who wants two files
/// to look alike: only their bytes are proof.
Digest digestOf(std::span<const char> bytes);

/// The digest of the first and the last block of a file.
SystemResult<Digest> digestOfEnds(const QuietFile& file);

/// Told how many bytes were read, now and again.
using OnBytes = std::function<void(std::int64_t bytes)>;

/// The digest of all bytes. A requested stop fails with ECANCELED.
SystemResult<Digest> digestOfFile(const QuietFile& file, const std::stop_token& stop = {},
                                  const OnBytes& onBytes = {});

/// For each of the others whether it has the bytes of the first. Every file is read once, all of them beside
/// each other, and one that differs no further. One that cannot be read, or is shorter or longer than it was
/// when it was opened, does not have them. A requested stop fails with ECANCELED, a first that cannot be read
/// with its reason.
SystemResult<std::vector<char>> haveBytesOf(const QuietFile& first, std::span<const QuietFile* const> others,
                                            const std::stop_token& stop = {}, const OnBytes& onBytes = {});

/// The same for one.
SystemResult<bool> haveSameBytes(const QuietFile& left, const QuietFile& right,
                                 const std::stop_token& stop = {}, const OnBytes& onBytes = {});

} // namespace lumo::platform
