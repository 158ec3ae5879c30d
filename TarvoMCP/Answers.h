#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Scanning/FolderContents.h"
#include "TarvoMCP/Page.h"
#include "TarvoMCP/Workspace.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the tools give back: records that are small enough for a model to read.
namespace tarvo::mcp {

struct AnalyzedItem {
    std::string id;
    std::string name;
    lumo::Safety safety = lumo::Safety::keep;
    std::int64_t bytes = 0;
    std::string explanation;
    std::vector<std::string> paths; ///< The first few.
    std::int64_t morePaths = 0;

    static constexpr auto fields = std::tuple{lumo::field("id", &AnalyzedItem::id),
                                              lumo::field("name", &AnalyzedItem::name),
                                              lumo::field("safety", &AnalyzedItem::safety),
                                              lumo::field("bytes", &AnalyzedItem::bytes),
                                              lumo::field("explanation", &AnalyzedItem::explanation),
                                              lumo::field("paths", &AnalyzedItem::paths),
                                              lumo::field("morePaths", &AnalyzedItem::morePaths)};
};

struct AnalyzedProject {
    std::string name;
    std::int64_t bytes = 0;
    std::int64_t recoverableBytes = 0;
    std::optional<lumo::Date> lastCodeChange;

    static constexpr auto fields =
        std::tuple{lumo::field("name", &AnalyzedProject::name), lumo::field("bytes", &AnalyzedProject::bytes),
                   lumo::field("recoverableBytes", &AnalyzedProject::recoverableBytes),
                   lumo::field("lastCodeChange", &AnalyzedProject::lastCodeChange)};
};

struct UnknownFolder {
    std::string path;
    std::int64_t bytes = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("path", &UnknownFolder::path), lumo::field("bytes", &UnknownFolder::bytes)};
};

/// A page of each list of a report, without what only a program needs.
struct Analysis {
    std::string home;
    bool isQuick = false;
    std::int64_t totalBytes = 0;       ///< Of the disk.
    std::int64_t availableBytes = 0;   ///< Of the disk.
    std::int64_t recoverableBytes = 0; ///< The one number of all faces.
    std::int64_t reviewBytes = 0;
    std::int64_t keepBytes = 0;
    std::vector<AnalyzedItem> items;
    More moreItems;
    std::vector<AnalyzedProject> projects;
    More moreProjects;
    std::vector<UnknownFolder> unknownFolders;
    More moreUnknownFolders;
    std::int64_t unreadable = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("home", &Analysis::home),
                   lumo::field("quick", &Analysis::isQuick),
                   lumo::field("totalBytes", &Analysis::totalBytes),
                   lumo::field("availableBytes", &Analysis::availableBytes),
                   lumo::field("recoverableBytes", &Analysis::recoverableBytes),
                   lumo::field("reviewBytes", &Analysis::reviewBytes),
                   lumo::field("keepBytes", &Analysis::keepBytes),
                   lumo::field("items", &Analysis::items),
                   lumo::field("moreItems", &Analysis::moreItems),
                   lumo::field("projects", &Analysis::projects),
                   lumo::field("moreProjects", &Analysis::moreProjects),
                   lumo::field("unknownFolders", &Analysis::unknownFolders),
                   lumo::field("moreUnknownFolders", &Analysis::moreUnknownFolders),
                   lumo::field("unreadable", &Analysis::unreadable)};
};
Analysis analysisOf(const lumo::ScanReport& report, bool isQuick, std::int64_t recoverableBytes,
                    const Page& page);

struct ListedEntry {
    std::string name;
    std::string path; ///< Empty for what stands for all smaller ones.
    std::int64_t bytes = 0;
    bool isDirectory = false;
    std::optional<std::vector<lumo::NamedSize>> inside; ///< The largest things in a folder.

    static constexpr auto fields = std::tuple{
        lumo::field("name", &ListedEntry::name), lumo::field("path", &ListedEntry::path),
        lumo::field("bytes", &ListedEntry::bytes), lumo::field("isDirectory", &ListedEntry::isDirectory),
        lumo::field("inside", &ListedEntry::inside)};
};

/// What the files with one extension take.
struct ExtensionSize {
    std::string name;
    std::int64_t bytes = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("name", &ExtensionSize::name), lumo::field("bytes", &ExtensionSize::bytes)};
};

struct FolderAnswer {
    std::string path;
    std::int64_t bytes = 0;
    std::int64_t files = 0;
    std::int64_t unreadable = 0;
    std::vector<std::string>
        skipped; ///< Folders that were opened through, since they hold nearly everything.
    std::vector<ListedEntry> items;
    More moreItems;
    std::vector<ExtensionSize> extensions;

    static constexpr auto fields = std::tuple{lumo::field("path", &FolderAnswer::path),
                                              lumo::field("bytes", &FolderAnswer::bytes),
                                              lumo::field("files", &FolderAnswer::files),
                                              lumo::field("unreadable", &FolderAnswer::unreadable),
                                              lumo::field("skipped", &FolderAnswer::skipped),
                                              lumo::field("items", &FolderAnswer::items),
                                              lumo::field("moreItems", &FolderAnswer::moreItems),
                                              lumo::field("extensions", &FolderAnswer::extensions)};
};
/// What stands for the smaller entries of a large folder comes last, however much they take together.
FolderAnswer contentsOf(const std::string& path, const lumo::FileTree::Breakdown& breakdown,
                        const lumo::FolderContents::Listing& listing, const Page& page);

/// A page of what grew.
struct GrowthAnswer {
    std::optional<lumo::Date> since;
    std::vector<lumo::GrowthItem> items;
    More moreItems;

    static constexpr auto fields =
        std::tuple{lumo::field("since", &GrowthAnswer::since), lumo::field("items", &GrowthAnswer::items),
                   lumo::field("moreItems", &GrowthAnswer::moreItems)};
};

/// One thing that a closer look found.
struct FoundItem {
    std::string id;
    std::string name;
    std::optional<std::string> path;
    std::int64_t bytes = 0;
    std::string detail;
    lumo::Safety safety = lumo::Safety::review;
    std::optional<std::string> kept;           ///< Of a duplicate, the copy that stays.
    std::optional<std::string> blockedBecause; ///< Why it cannot be cleaned from here.

    static constexpr auto fields = std::tuple{
        lumo::field("id", &FoundItem::id),         lumo::field("name", &FoundItem::name),
        lumo::field("path", &FoundItem::path),     lumo::field("bytes", &FoundItem::bytes),
        lumo::field("detail", &FoundItem::detail), lumo::field("safety", &FoundItem::safety),
        lumo::field("kept", &FoundItem::kept),     lumo::field("blockedBecause", &FoundItem::blockedBecause)};
};

/// A page of what one closer look found.
struct FoundItems {
    std::string kind;             ///< Its name; which there are the tool's arguments say.
    std::vector<FoundItem> items; ///< Largest first.
    More moreItems;
    std::int64_t bytes = 0;                 ///< Of all that can be cleaned from here.
    std::int64_t blockedBytes = 0;          ///< Of all that cannot.
    std::optional<std::string> unavailable; ///< Why nothing can be told.
    std::int64_t unreadable = 0;

    static constexpr auto fields = std::tuple{lumo::field("kind", &FoundItems::kind),
                                              lumo::field("items", &FoundItems::items),
                                              lumo::field("moreItems", &FoundItems::moreItems),
                                              lumo::field("bytes", &FoundItems::bytes),
                                              lumo::field("blockedBytes", &FoundItems::blockedBytes),
                                              lumo::field("unavailable", &FoundItems::unavailable),
                                              lumo::field("unreadable", &FoundItems::unreadable)};
};
FoundItems foundItemsOf(const lumo::Inventory& inventory, const Page& page);

/// What would become of something in a cleanup; what recreates itself is deleted at once, whoever does it.
enum class Fate { deletedAtOnce, setAside, byItsOwnTool };

struct ProposedItem {
    std::string id;
    std::string title;
    lumo::Safety safety = lumo::Safety::keep;
    std::int64_t bytes = 0;
    Fate fate = Fate::setAside;

    static constexpr auto fields =
        std::tuple{lumo::field("id", &ProposedItem::id), lumo::field("title", &ProposedItem::title),
                   lumo::field("safety", &ProposedItem::safety), lumo::field("bytes", &ProposedItem::bytes),
                   lumo::field("fate", &ProposedItem::fate)};
};

/// All that is held back for one reason.
struct BlockedItems {
    std::string reason;
    std::int64_t count = 0;
    std::int64_t bytes = 0;
    std::vector<std::string> ids; ///< The first few.

    static constexpr auto fields =
        std::tuple{lumo::field("reason", &BlockedItems::reason), lumo::field("count", &BlockedItems::count),
                   lumo::field("bytes", &BlockedItems::bytes), lumo::field("ids", &BlockedItems::ids)};
};

struct Proposal {
    std::string plan; ///< The handle.
    std::vector<ProposedItem> items;
    More moreItems;
    std::vector<BlockedItems> blocked; ///< Largest first.
    More moreBlocked;
    std::int64_t totalBytes = 0;
    std::int64_t deletedAtOnceBytes = 0;
    std::int64_t setAsideBytes = 0;
    std::int64_t byItsOwnToolBytes = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("plan", &Proposal::plan),
                   lumo::field("items", &Proposal::items),
                   lumo::field("moreItems", &Proposal::moreItems),
                   lumo::field("blocked", &Proposal::blocked),
                   lumo::field("moreBlocked", &Proposal::moreBlocked),
                   lumo::field("totalBytes", &Proposal::totalBytes),
                   lumo::field("deletedAtOnceBytes", &Proposal::deletedAtOnceBytes),
                   lumo::field("setAsideBytes", &Proposal::setAsideBytes),
                   lumo::field("byItsOwnToolBytes", &Proposal::byItsOwnToolBytes)};
};
Proposal proposalOf(const ProposedPlan& plan, const Page& page);
Fate fateOf(const lumo::CleanupAction& action);

/// What became of one thing in a cleanup.
struct CleanedItem {
    std::string id;
    std::string title;
    lumo::CleanupStatus status = lumo::CleanupStatus::done;
    std::optional<std::string> message;
    std::int64_t freedBytes = 0;
    std::int64_t setAsideBytes = 0;
    lumo::Date date;

    static constexpr auto fields = std::tuple{lumo::field("id", &CleanedItem::id),
                                              lumo::field("title", &CleanedItem::title),
                                              lumo::field("status", &CleanedItem::status),
                                              lumo::field("message", &CleanedItem::message),
                                              lumo::field("freedBytes", &CleanedItem::freedBytes),
                                              lumo::field("setAsideBytes", &CleanedItem::setAsideBytes),
                                              lumo::field("date", &CleanedItem::date)};
};
CleanedItem cleanedItem(const lumo::CleanupOutcome& outcome);

/// What was agreed to and was not done.
struct LeftItem {
    std::string id;
    std::string title;
    std::string reason;

    static constexpr auto fields =
        std::tuple{lumo::field("id", &LeftItem::id), lumo::field("title", &LeftItem::title),
                   lumo::field("reason", &LeftItem::reason)};
};

/// What came of a cleanup; of a plan, or of all that the log tells.
struct CleaningAnswer {
    std::optional<std::string> plan;
    std::vector<CleanedItem> outcomes; ///< Failures first.
    More moreOutcomes;
    std::vector<LeftItem> leftOut; ///< The first few.
    std::int64_t moreLeftOut = 0;
    std::int64_t freedBytes = 0;
    std::int64_t setAsideBytes = 0;

    static constexpr auto fields = std::tuple{lumo::field("plan", &CleaningAnswer::plan),
                                              lumo::field("outcomes", &CleaningAnswer::outcomes),
                                              lumo::field("moreOutcomes", &CleaningAnswer::moreOutcomes),
                                              lumo::field("leftOut", &CleaningAnswer::leftOut),
                                              lumo::field("moreLeftOut", &CleaningAnswer::moreLeftOut),
                                              lumo::field("freedBytes", &CleaningAnswer::freedBytes),
                                              lumo::field("setAsideBytes", &CleaningAnswer::setAsideBytes)};
};
CleaningAnswer cleaningAnswer(const std::string& plan, const Cleaned& cleaned, const Page& page);
/// The same in a few lines.
std::string cleanedText(const CleaningAnswer& answer, const Page& page);
/// What is said of its fields.
FieldWords cleaningWords();
/// Said of a handle that is nobody's.
std::string noSuchPlan();
/// The newest first.
CleaningAnswer historyAnswer(std::vector<lumo::CleanupOutcome> outcomes, const Page& page);

/// Something that can be put back.
struct ListedItem {
    std::string id; ///< From its name in the holding area.
    std::string original;
    lumo::Date expires;

    static constexpr auto fields =
        std::tuple{lumo::field("id", &ListedItem::id), lumo::field("original", &ListedItem::original),
                   lumo::field("expires", &ListedItem::expires)};
};

struct HeldItems {
    std::vector<ListedItem> items; ///< The newest first.
    std::int64_t moreItems = 0;
    std::int64_t bytes = 0; ///< Of everything in the holding area.

    static constexpr auto fields =
        std::tuple{lumo::field("items", &HeldItems::items), lumo::field("moreItems", &HeldItems::moreItems),
                   lumo::field("bytes", &HeldItems::bytes)};
};

/// What the log says was set aside and the holding area still has. Fails in words for the user.
lumo::Result<HeldItems> heldItems(const Desk& desk);
HeldItems heldPage(HeldItems held, const Page& page);

} // namespace tarvo::mcp

namespace lumo {

template <>
struct EnumNames<tarvo::mcp::Fate> {
    static constexpr std::array<std::string_view, 3> values{"deletedAtOnce", "setAside", "byItsOwnTool"};
};

} // namespace lumo
