#pragma once

#include "Platform/TreeWalk.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

/// Regular files below folders by their names, for whoever looks for single files among very many.
namespace lumo::platform {

/// The files that a search met. Names are kept once and folders by number, since there may be a million.
class FilesFound final {
  public:
    struct File {
        std::int64_t bytes = 0; ///< The length.
        std::uint64_t object = 0;
        std::uint32_t folder = 0; ///< For `pathOf`.
        std::uint32_t name = 0;
    };

    [[nodiscard]] std::span<const File> files() const { return files_; }
    [[nodiscard]] std::string pathOf(const File& file) const;
    /// True for two names of one file.
    [[nodiscard]] bool isSame(const File& left, const File& right) const;

    std::int64_t unreadableCount = 0;  ///< Folders that could not be listed.
    std::vector<std::string> unlisted; ///< The first of them that were met, in ascending byte order.

    /// What the search calls: a folder becomes known by its number, and files go into it. Only one thread
    /// may.
    std::uint32_t addFolder(std::string path, std::int32_t device);
    void addFile(std::uint32_t folder, std::string_view name, std::int64_t bytes, std::uint64_t object);

  private:
    struct Folder {
        std::string path;
        std::int32_t device = 0;
    };

    std::vector<File> files_;
    std::vector<Folder> folders_;
    std::string names_; ///< Each followed by a NUL.
};

/// What is looked for, and where.
struct FileSearch {
    std::vector<std::string> roots = {};
    std::int64_t minimumBytes = 0; ///< Shorter files are passed over.
    /// Whether a folder below a root is entered; called from several threads at once. All are when empty.
    std::function<bool(const std::string& path, std::string_view name)> enters = {};
    /// What the names in a folder say against it: then neither its files nor the folders in it count. Not
    /// asked of the roots themselves; called from several threads at once.
    std::function<bool(std::span<const std::string_view> names)> refuses = {};
};

/// The files in no particular order. Links are not followed, and neither other volumes nor what is mounted
/// below a root are entered; a folder that is reached by two roots is searched once. Returns early once a
/// stop is requested. `progress` counts the entries that were looked at. Looking leaves no trace in the times
/// of folders that are the user's own.
FilesFound searchFiles(const FileSearch& search, WalkProgress* progress = nullptr,
                       const std::stop_token& stop = {});

} // namespace lumo::platform
