#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/Scanning/FolderContents.h"
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

    static constexpr auto fields = std::tuple{lumo::field("id", &AnalyzedItem::id),
                                              lumo::field("name", &AnalyzedItem::name),
                                              lumo::field("safety", &AnalyzedItem::safety),
                                              lumo::field("bytes", &AnalyzedItem::bytes),
                                              lumo::field("explanation", &AnalyzedItem::explanation),
                                              lumo::field("paths", &AnalyzedItem::paths)};
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

/// A report without what only a program needs; the longest lists are cut.
struct Analysis {
    std::string home;
    bool isQuick = false;
    std::int64_t totalBytes = 0;     ///< Of the disk.
    std::int64_t availableBytes = 0; ///< Of the disk.
    std::int64_t safeBytes = 0;
    std::int64_t reviewBytes = 0;
    std::int64_t keepBytes = 0;
    std::vector<AnalyzedItem> items;
    std::vector<AnalyzedProject> projects;
    std::int64_t moreProjects = 0;
    std::vector<UnknownFolder> unknownFolders;
    std::int64_t moreUnknownFolders = 0;
    std::int64_t unreadable = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("home", &Analysis::home),
                   lumo::field("quick", &Analysis::isQuick),
                   lumo::field("totalBytes", &Analysis::totalBytes),
                   lumo::field("availableBytes", &Analysis::availableBytes),
                   lumo::field("safeBytes", &Analysis::safeBytes),
                   lumo::field("reviewBytes", &Analysis::reviewBytes),
                   lumo::field("keepBytes", &Analysis::keepBytes),
                   lumo::field("items", &Analysis::items),
                   lumo::field("projects", &Analysis::projects),
                   lumo::field("moreProjects", &Analysis::moreProjects),
                   lumo::field("unknownFolders", &Analysis::unknownFolders),
                   lumo::field("moreUnknownFolders", &Analysis::moreUnknownFolders),
                   lumo::field("unreadable", &Analysis::unreadable)};
};
Analysis analysisOf(const lumo::ScanReport& report, bool isQuick);

struct FolderAnswer {
    std::string path;
    std::int64_t bytes = 0;
    std::int64_t files = 0;
    std::int64_t unreadable = 0;
    std::vector<std::string>
        skipped; ///< Folders that were opened through, since they hold nearly everything.
    std::vector<lumo::FolderContents::Item> items;
    std::int64_t moreItems = 0;
    std::vector<lumo::NamedSize> extensions;

    static constexpr auto fields = std::tuple{lumo::field("path", &FolderAnswer::path),
                                              lumo::field("bytes", &FolderAnswer::bytes),
                                              lumo::field("files", &FolderAnswer::files),
                                              lumo::field("unreadable", &FolderAnswer::unreadable),
                                              lumo::field("skipped", &FolderAnswer::skipped),
                                              lumo::field("items", &FolderAnswer::items),
                                              lumo::field("moreItems", &FolderAnswer::moreItems),
                                              lumo::field("extensions", &FolderAnswer::extensions)};
};
FolderAnswer contentsOf(const std::string& path, const lumo::FileTree::Breakdown& breakdown,
                        const lumo::FolderContents::Listing& listing);

/// What would become of something in a cleanup.
enum class Fate { deletedAtOnce, setAside, byItsOwnTool };

struct ProposedItem {
    std::string id;
    std::string title;
    lumo::Safety safety = lumo::Safety::keep;
    std::int64_t bytes = 0;
    Fate fate = Fate::setAside;
    std::optional<std::string> blockedBecause;

    static constexpr auto fields = std::tuple{lumo::field("id", &ProposedItem::id),
                                              lumo::field("title", &ProposedItem::title),
                                              lumo::field("safety", &ProposedItem::safety),
                                              lumo::field("bytes", &ProposedItem::bytes),
                                              lumo::field("fate", &ProposedItem::fate),
                                              lumo::field("blockedBecause", &ProposedItem::blockedBecause)};
};

struct Proposal {
    std::string plan; ///< The handle.
    std::vector<ProposedItem> items;
    std::int64_t totalBytes = 0;
    std::int64_t deletedAtOnceBytes = 0;
    std::int64_t setAsideBytes = 0;
    std::int64_t byItsOwnToolBytes = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("plan", &Proposal::plan),
                   lumo::field("items", &Proposal::items),
                   lumo::field("totalBytes", &Proposal::totalBytes),
                   lumo::field("deletedAtOnceBytes", &Proposal::deletedAtOnceBytes),
                   lumo::field("setAsideBytes", &Proposal::setAsideBytes),
                   lumo::field("byItsOwnToolBytes", &Proposal::byItsOwnToolBytes)};
};
Proposal proposalOf(const ProposedPlan& plan);
Fate fateOf(const lumo::CleanupAction& action);

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
    std::vector<ListedItem> items; ///< In the order in which they were set aside.
    std::int64_t bytes = 0;        ///< Of everything in the holding area.

    static constexpr auto fields =
        std::tuple{lumo::field("items", &HeldItems::items), lumo::field("bytes", &HeldItems::bytes)};
};

/// What the log says was set aside and the holding area still has. Fails in words for the user.
lumo::Result<HeldItems> heldItems(const Desk& desk);

} // namespace tarvo::mcp

namespace lumo {

template <>
struct EnumNames<tarvo::mcp::Fate> {
    static constexpr std::array<std::string_view, 3> values{"deletedAtOnce", "setAside", "byItsOwnTool"};
};

} // namespace lumo
