#include "LumoCore/Cleanup/ArchiveCheck.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/FileContent.h"
#include "Platform/ZipListing.h"

#include <algorithm>
#include <cerrno>
#include <optional>

namespace lumo {

using Archiver::ArchiveError;
using Archiver::ArchiveProblem;
using platform::EntryKind;
using platform::ListedEntry;
using platform::SystemResult;
using platform::ZipEntry;

namespace {

ArchiveError interrupted() {
    return {.problem = ArchiveProblem::interrupted};
}

ArchiveError about(ArchiveProblem problem, std::string_view path, std::string_view reason) {
    return {.problem = problem, .detail = std::string(path) + ": " + std::string(reason)};
}

ArchiveError different(std::string_view path) {
    return about(ArchiveProblem::notVerified, path,
                 Words{"cambió mientras se archivaba", "it changed while being archived"}.in());
}

/// Names in a zip have their length in two bytes.
constexpr std::size_t mostNameBytes = 65535;

/// What keeps the entry out of any zip.
std::optional<ArchiveError> obstacle(const ListedEntry& entry) {
    if (entry.problem) {
        return about(ArchiveProblem::failed, entry.path, reasonText(*entry.problem));
    }
    if (entry.kind == EntryKind::other) {
        return about(ArchiveProblem::notVerified, entry.path,
                     Words{"no es un archivo, una carpeta ni un enlace, y eso no cabe en un zip",
                           "it is no file, folder or link, which a zip cannot hold"}
                         .in());
    }
    if (entry.path.size() >= mostNameBytes) {
        return about(
            ArchiveProblem::notVerified, entry.path,
            Words{"el nombre es demasiado largo para un zip", "the name is too long for a zip"}.in());
    }
    return std::nullopt;
}

/// The checksum of what an archive keeps for the entry: a link's content is its target.
SystemResult<std::uint32_t> checksumOf(const std::string& path, EntryKind kind, const std::stop_token& stop) {
    if (kind == EntryKind::file) {
        return platform::checksumOfFile(path, stop);
    }
    if (kind == EntryKind::folder) {
        return platform::checksumOf({});
    }
    const std::optional<std::string> target = platform::linkTarget(path);
    return target ? SystemResult<std::uint32_t>(platform::checksumOf(*target))
                  : std::unexpected(platform::SystemError{EINVAL});
}

} // namespace

std::expected<ArchivedTree, ArchiveError> ArchivedTree::of(const std::string& path,
                                                           const std::stop_token& stop) {
    ArchivedTree tree(path);
    std::optional<ArchiveError> problem;
    const auto walked = platform::visitTree(path, [&](const ListedEntry& entry) {
        problem = obstacle(entry);
        tree.entries_.push_back(entry);
        return !problem && !stop.stop_requested();
    });
    if (stop.stop_requested()) {
        return std::unexpected(interrupted());
    }
    if (problem || !walked) {
        return std::unexpected(
            problem ? *problem : about(ArchiveProblem::failed, fileName(path), reasonText(walked.error())));
    }
    std::ranges::sort(tree.entries_, {}, &ListedEntry::path);
    return tree;
}

const ListedEntry* ArchivedTree::find(std::string_view path) const {
    const auto found = std::ranges::lower_bound(
        entries_, path, {}, [](const ListedEntry& entry) { return std::string_view(entry.path); });
    return found != entries_.end() && found->path == path ? &*found : nullptr;
}

std::string ArchivedTree::absolute(std::string_view path) const {
    return joined(parentOf(path_), path);
}

std::expected<void, ArchiveError> ArchivedTree::isIn(const std::string& archive, const std::stop_token& stop,
                                                     std::atomic<std::int64_t>* done) const {
    std::vector<bool> isSeen(entries_.size());
    std::optional<std::string> wrong;
    const auto check = [&](const ZipEntry& zipped) {
        const ListedEntry* entry = find(zipped.name);
        const auto index = static_cast<std::size_t>(entry == nullptr ? 0 : entry - entries_.data());
        const bool isFirst = entry != nullptr && !isSeen[index];
        const bool isSame = isFirst && zipped.kind == entry->kind &&
                            (entry->kind != EntryKind::file || zipped.bytes == entry->bytes) &&
                            checksumOf(absolute(entry->path), entry->kind, stop) == zipped.checksum;
        if (!isSame) {
            wrong = std::string(zipped.name);
            return false;
        }
        isSeen[index] = true;
        if (done != nullptr) {
            *done += entry->bytes;
        }
        return !stop.stop_requested();
    };
    const auto read = platform::visitZip(archive, check);
    if (stop.stop_requested()) {
        return std::unexpected(interrupted());
    }
    if (!read) {
        return std::unexpected(ArchiveError{.problem = ArchiveProblem::notVerified});
    }
    if (wrong) {
        return std::unexpected(different(*wrong));
    }
    return areAll(isSeen);
}

std::expected<void, ArchiveError> ArchivedTree::areAll(const std::vector<bool>& isSeen) const {
    const auto left = std::ranges::find(isSeen, false);
    if (left != isSeen.end()) {
        const ListedEntry& entry = entries_[static_cast<std::size_t>(left - isSeen.begin())];
        return std::unexpected(about(ArchiveProblem::notVerified, entry.path,
                                     Words{"no está en el archivo", "it is not in the archive"}.in()));
    }
    return {};
}

std::expected<void, ArchiveError> ArchivedTree::isUnchangedAt(const std::string& path,
                                                              const std::stop_token& stop) const {
    const std::size_t ownName = fileName(path).size();
    std::size_t count = 0;
    std::optional<std::string> changed;
    const auto walked = platform::visitTree(path, [&](ListedEntry entry) {
        // The paths begin with the item's own name, and it may have another one by now.
        entry.path.replace(0, ownName, fileName(path_));
        const ListedEntry* before = find(entry.path);
        if (before == nullptr || *before != entry) {
            changed = entry.path;
        }
        ++count;
        return !changed && !stop.stop_requested();
    });
    if (stop.stop_requested()) {
        return std::unexpected(interrupted());
    }
    if (changed || !walked || count != entries_.size()) {
        return std::unexpected(different(changed.value_or(std::string(fileName(path_)))));
    }
    return {};
}

} // namespace lumo
