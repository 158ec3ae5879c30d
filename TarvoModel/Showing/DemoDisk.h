#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Explaining/FolderEvidence.h"
#include "LumoCore/History/DiskSnapshot.h"
#include "LumoCore/Scanning/FolderContents.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Showing/HeldItem.h"

#include <string>
#include <string_view>
#include <vector>

/// A made-up computer of the system it runs on, to look at the application without showing one's own disk and
/// for its pictures. Nothing of it exists: no function here reads or writes anything, and its paths must
/// never be acted upon. The same moment gives the same disk.
namespace tarvo::DemoDisk {

constexpr std::string_view home(lumo::System system = lumo::currentSystem()) {
    return system == lumo::System::macos ? "/Users/demo" : "/home/demo";
}

/// What its full scan finds: something of every category and safety, projects old and new, and folders that
/// no rule knows.
lumo::ScanReport report(lumo::Date now, lumo::Language language = lumo::currentLanguage(),
                        lumo::System system = lumo::currentSystem());

/// The plan for that report, as a window shows it. One browser is open, one project was changed today.
std::vector<lumo::PlanEntry> entries(const lumo::ScanReport& report,
                                     lumo::Language language = lumo::currentLanguage());

/// What yesterday's scan found, with which the report is compared to tell what grew.
lumo::DiskSnapshot yesterday(const lumo::ScanReport& report, lumo::System system = lumo::currentSystem());

/// What the scans of some weeks found, oldest first: the last two are yesterday's and the report.
std::vector<lumo::DiskSnapshot> snapshots(const lumo::ScanReport& report,
                                          lumo::System system = lumo::currentSystem());

/// The log of the cleanups of these weeks: of what they deleted and set aside, one agent's and a failure.
std::vector<lumo::CleanupOutcome> history(const lumo::ScanReport& report,
                                          lumo::Language language = lumo::currentLanguage(),
                                          lumo::System system = lumo::currentSystem());

/// What is still held of that log, in the batches below.
std::vector<HeldItem> heldItems(const std::vector<lumo::CleanupOutcome>& history, lumo::Date now,
                                lumo::System system = lumo::currentSystem());

/// What earlier cleanups set aside, oldest first.
std::vector<lumo::Holding::Batch> held(lumo::Date now, lumo::System system = lumo::currentSystem());

/// What is known of the unclassified folders. One has none yet, so that there is something to explain.
std::vector<lumo::Explanation> explanations(lumo::Date now, lumo::Language language = lumo::currentLanguage(),
                                            lumo::System system = lumo::currentSystem());

/// What is in a folder of the report, or in a folder that such a listing names; nothing for a file and any
/// other path. It adds up to what the folder takes; sizes are the same in both languages.
lumo::FolderContents::Listing contents(const std::string& path,
                                       lumo::Language language = lumo::currentLanguage(),
                                       lumo::System system = lumo::currentSystem());

/// The same for all paths of one thing. Several are listed themselves, as `FolderContents::list` does.
lumo::FolderContents::Listing contents(const std::vector<std::string>& paths,
                                       lumo::Language language = lumo::currentLanguage(),
                                       lumo::System system = lumo::currentSystem());

/// Puts all that such listings name into a tree of the home, and the large files of the inventories.
void fill(lumo::NamedTree& tree, lumo::Date now, lumo::Language language = lumo::currentLanguage(),
          lumo::System system = lumo::currentSystem());

/// What could be known of a folder that such a listing names.
lumo::FolderEvidence evidence(const std::string& path, lumo::Language language = lumo::currentLanguage(),
                              lumo::System system = lumo::currentSystem());

/// What a cleanup of the actions would come to, for the made-up celebration.
std::vector<lumo::CleanupOutcome> outcomes(const std::vector<lumo::CleanupAction>& actions, lumo::Date now);

/// What the banner says, and the answer to whoever tries to clean.
std::string notice(lumo::Language language = lumo::currentLanguage(),
                   lumo::System system = lumo::currentSystem());

} // namespace tarvo::DemoDisk
