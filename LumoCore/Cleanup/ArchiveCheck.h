#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/Archiver.h"
#include "Platform/TreeListing.h"

#include <atomic>
#include <expected>
#include <stop_token>
#include <string>
#include <vector>

namespace lumo {

/// What an item looked like before it was archived, to compare the archive and the item itself with later.
class ArchivedTree final {
  public:
    /// Lists the item. What cannot be read, and what no zip can hold, is an error that names it.
    static std::expected<ArchivedTree, Archiver::ArchiveError> of(const std::string& path,
                                                                  const std::stop_token& stop);

    /// Fails unless the archive holds exactly these entries with the bytes that the item's files have now.
    /// Adds up what it has compared in `done`, where there is one.
    [[nodiscard]] std::expected<void, Archiver::ArchiveError>
    isIn(const std::string& archive, const std::stop_token& stop, std::atomic<std::int64_t>* done) const;

    /// Fails unless the item is as it was.
    [[nodiscard]] std::expected<void, Archiver::ArchiveError> isUnchanged(const std::stop_token& stop) const {
        return isUnchangedAt(path_, stop);
    }

    /// The same after it was moved to another path.
    [[nodiscard]] std::expected<void, Archiver::ArchiveError>
    isUnchangedAt(const std::string& path, const std::stop_token& stop) const;

    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    explicit ArchivedTree(std::string path) : path_(std::move(path)) {}

    /// Fails with the first entry that was not seen.
    [[nodiscard]] std::expected<void, Archiver::ArchiveError> areAll(const std::vector<bool>& isSeen) const;
    [[nodiscard]] const platform::ListedEntry* find(std::string_view path) const;
    [[nodiscard]] std::string absolute(std::string_view path) const;

    std::string path_;
    std::vector<platform::ListedEntry> entries_; ///< Ascending by path.
};

} // namespace lumo
