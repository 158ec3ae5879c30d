#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"

#include <atomic>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {
class ArchivedTree;
}

/// Replaces something of the user's that is rarely used by a zip beside it: the archive is made and checked
/// completely, and only then the original is set aside for some days. The home's lock must be held for all
/// that changes something.
namespace lumo::Archiver {

/// What archiving would come to.
struct Estimate {
    std::int64_t bytes = 0;           ///< Lengths of the files now.
    std::int64_t compressedBytes = 0; ///< What the archive will take.

    static constexpr auto fields =
        std::tuple{field("bytes", &Estimate::bytes), field("compressedBytes", &Estimate::compressedBytes)};
    friend bool operator==(const Estimate&, const Estimate&) = default;
};

/// Of the action that sets an archived original aside; its path follows.
inline constexpr std::string_view idPrefix = "archivar:";

/// How many files an estimate reads, and how much of each.
inline constexpr std::size_t usualSamples = 64;
inline constexpr std::int64_t usualSampleBytes = std::int64_t{1024} * 1024;

enum class ArchiveProblem { notEnoughSpace, failed, notVerified, interrupted };

/// Why there is no archive. The original is where it was, and nothing is left of the archive.
struct ArchiveError {
    ArchiveProblem problem = ArchiveProblem::failed;
    std::int64_t neededBytes = 0; ///< Where there is not enough space.
    std::string detail;           ///< What stood in the way, for the user; may be empty.

    [[nodiscard]] std::string errorDescription(Language language = currentLanguage()) const;
};

enum class ArchivePhase { looking, compressing, checking };

/// How far an archive is, for whoever shows it.
struct ArchiveProgress {
    std::atomic<ArchivePhase> phase = ArchivePhase::looking;
    std::atomic<std::int64_t> writtenBytes = 0; ///< Of the archive.
    std::atomic<std::int64_t> checkedBytes = 0; ///< Of the item.
};

/// How archiving is watched and ended.
struct ArchiveControl {
    std::int64_t expectedBytes = 0; ///< As estimated; with less space than that nothing is begun.
    ArchiveProgress* progress = nullptr;
    std::stop_token stop = {};
};

/// True when the folder at that path in the home is one of the user's main ones, by the names that systems
/// give them or by what the user's settings say, or holds one: what is in it may go, itself it stays. Looks
/// at the settings.
bool isMainFolder(const std::string& path, const std::string& home, System system = currentSystem());

/// Why the item may not be archived, in words for the user; absent when it may.
std::optional<std::string> refusal(const std::string& path, const std::string& home,
                                   Language language = currentLanguage(), System system = currentSystem());

/// Reads up to that many of the files that may shrink, those that hold most of the bytes before others and
/// spread over the tree, and at most that many bytes of each; the same tree gives the same answer. Beyond
/// 300 000 files the tree is not looked at. What cannot be read counts as a file that does not shrink.
Estimate estimate(const std::string& path, std::size_t samples = usualSamples,
                  std::int64_t sampleBytes = usualSampleBytes, const std::stop_token& stop = {});

/// The first free name beside the item: "Name.zip", "Name (2).zip" and so on. A name that would be too long
/// is cut.
std::string destination(const std::string& path);

/// An archive, and what it was made of.
struct Archive {
    std::string path; ///< The destination that was wanted, or the next free name when that was taken.
    std::shared_ptr<const ArchivedTree> original;
};

/// Makes the archive and checks it against the item: every entry can be unpacked; names, kinds, lengths and
/// contents are the item's, which did not change meanwhile. What a zip cannot hold does not verify.
std::expected<Archive, ArchiveError> archive(const std::string& path, const std::string& destination,
                                             const PathGuard& guard, const ArchiveControl& control = {});

/// Sets the archived original aside in a batch of its own and logs it; `estimatedBytes` is what it takes on
/// disk, and the caller an agent that asked for it. Where it lies now it is compared a last time: one that
/// was saved into meanwhile goes back, its archive goes, and the outcome is failed. The one outcome.
std::vector<CleanupOutcome> setAside(const Archive& archive, const std::string& title,
                                     std::int64_t estimatedBytes, const PathGuard& guard, Date now,
                                     const std::optional<std::string>& caller = {});

} // namespace lumo::Archiver
