#pragma once

#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Inventories/Packages.h"
#include "LumoCore/Rules/Locator.h"

#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// Installers and archives in the downloads folder, and which of them have done their work.
namespace lumo::Installers {

/// All of them; ids are "instalador:" and the file's path. What was used is safe to delete.
Inventory find(const InventoryQuery& query);

/// The installers of those ids as they are now, in whichever folders and in that order; none for what is
/// none.
std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query);

/// No longer archives than these are judged where there is more to do than that.
inline constexpr std::int64_t mostBytesByTheWay = 100'000'000;

/// Finds those that rules' locators mean, for one look at one home: what is in a folder is judged once,
/// however many rules ask. May be called from several threads at once, which wait for each other. After a
/// stop what was not judged yet passes for unused.
InstallersFinder finder(const std::stop_token& stop = {});

/// Tells what was used. Reads the list of packages when it is first needed. May be asked from several
/// threads.
class Judge final {
  public:
    static constexpr std::int64_t usualArchiveBytes = 2'000'000'000;

    /// Archives that have no list of what is in them are only judged when they are no longer than that.
    explicit Judge(std::string home, std::string systemRoot = {},
                   std::int64_t mostArchiveBytes = usualArchiveBytes)
        : home_(std::move(home)), systemRoot_(std::move(systemRoot)), mostArchiveBytes_(mostArchiveBytes) {}

    /// Why the file at the path is no longer needed, in one line: the package in it is installed in this or a
    /// newer version, the application it names is installed, or every file in it stands unpacked beside it
    /// with its length. Absent when that is not certain.
    [[nodiscard]] std::optional<std::string> useOf(const std::string& path, Language language);

  private:
    [[nodiscard]] std::optional<std::string> useOfPackage(const std::string& path, Language language);
    [[nodiscard]] std::optional<std::string> useOfFlatpak(const std::string& path, Language language) const;

    std::string home_;
    std::string systemRoot_;
    std::int64_t mostArchiveBytes_;
    std::once_flag arePackagesRead_;
    std::map<std::string, Package, std::less<>> packages_;
};

} // namespace lumo::Installers
