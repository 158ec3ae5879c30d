#pragma once

#include "LumoCore/Inventories/DetailItem.h"
#include "Platform/FileSearch.h"
#include "Platform/QuietFile.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// The files that are the user's own and nobody else's: outside hidden folders, projects, the libraries of
/// other programs (photographs, virtual machines, backups, games), programs themselves, what a rule claims,
/// and our own folders. The one place that walks for the inventories of single files.
class UserFiles final {
  public:
    /// Looks up what the rules claim in the home now.
    explicit UserFiles(const InventoryQuery& query);

    /// Those of at least that many bytes in the folders of the query, or in the home. Of the files with
    /// several names all are found.
    [[nodiscard]] platform::FilesFound search(std::int64_t minimumBytes) const;

    /// True when the path may be one of them, by its name and its folders alone. What lies outside the home
    /// is nobody else's.
    [[nodiscard]] bool mayHold(std::string_view path) const;

    /// All names of the file at the path, that one first; none when it has more of them than can be found
    /// among the user's own files, since taking some would free nothing.
    [[nodiscard]] std::vector<std::string> namesOf(const std::string& path,
                                                   const platform::FileStatus& status) const;

  private:
    /// The same of a folder in one that may.
    [[nodiscard]] bool mayEnter(const std::string& path, std::string_view name) const;
    [[nodiscard]] bool isClaimed(std::string_view path) const;

    const InventoryQuery& query_;
    std::set<std::string, std::less<>> claimed_; ///< Absolute.
};

/// "also called ~/Videos/film.mov, ~/old.mov", of the names after the first; empty when the file has but one.
/// All of them go with it, and who takes one of them for a spare copy must know.
std::string otherNamesText(const std::vector<std::string>& names, std::string_view home, Language language);

/// "film", "disk image" and so on, by the extension of the name.
std::string kindOfFile(std::string_view name, Language language);

} // namespace lumo
