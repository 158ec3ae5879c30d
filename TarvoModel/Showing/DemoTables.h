#pragma once

#include "LumoCore/Basics/System.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/FreeingAction.h"
#include "LumoCore/Rules/Rule.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// What the made-up computers consist of: one row a thing, sizes in megabytes, paths with "~" for the home
/// folder.
namespace tarvo::DemoDisk {

using lumo::Words;

struct FindingRow {
    std::string_view rule;
    std::int64_t megabytes = 0;
    std::int64_t grown = 0;                    ///< Since yesterday.
    std::vector<std::string_view> places = {}; ///< Where the rule's locator is a search; else its own path.
};

struct ArtifactRow {
    std::string_view name;
    std::int64_t megabytes = 0;
    std::int64_t grown = 0;
};

struct ProjectRow {
    Words name;                    ///< Relative to the home folder.
    std::int64_t ownMegabytes = 0; ///< Besides its artifacts.
    int daysAgo = 0;               ///< Of the last change.
    std::vector<ArtifactRow> artifacts;
};

/// What an explanation says.
struct ExplanationRow {
    Words whatItIs = {};         ///< Without it the rule of thumb says all of it, from what is in the folder.
    std::string_view owner = {}; ///< Empty when nobody knows.
    lumo::Safety safety = lumo::Safety::review;
    std::optional<lumo::Safety> suggested = {}; ///< By a model; absent when it was a rule of thumb.
    Words reason = {};
    Words howToFree = {};
    std::optional<lumo::FreeingAction> action = {}; ///< That the model chose: says how to free, and the note.
    Words note = {};
};

struct UnclassifiedRow {
    std::string_view path;
    std::int64_t megabytes = 0;
    std::int64_t grown = 0;
    std::optional<ExplanationRow> explanation = {};
};

/// Something in a made-up folder; without parts it is a file.
struct PartRow {
    std::string_view name;
    int share = 1; ///< Of the folder it is in, relative to those beside it.
    std::vector<PartRow> parts = {};
};

/// What folders hold. They are known by their rule, by the name of an artifact, by the path of an
/// unclassified folder or, for all rules that have none of their own, by the name of their category.
struct FolderRow {
    std::string_view of;
    std::vector<PartRow> parts;
};

/// A path of the tables, "~/" before it or not. On Linux the user's own folders have names in the language of
/// the desktop.
std::string named(std::string_view path, lumo::Language language, lumo::System system);

/// Those of a Mac. Its folders are also what is shown of a Linux folder that has none of its own.
std::span<const FindingRow> macFindingRows();
std::span<const ProjectRow> macProjectRows();
std::span<const UnclassifiedRow> macUnclassifiedRows();
std::span<const FolderRow> macFolderRows();

std::span<const FindingRow> linuxFindingRows();
std::span<const ProjectRow> linuxProjectRows();
std::span<const UnclassifiedRow> linuxUnclassifiedRows();
std::span<const FolderRow> linuxFolderRows();

inline std::span<const FindingRow> findingRows(lumo::System system) {
    return system == lumo::System::macos ? macFindingRows() : linuxFindingRows();
}
inline std::span<const ProjectRow> projectRows(lumo::System system) {
    return system == lumo::System::macos ? macProjectRows() : linuxProjectRows();
}
inline std::span<const UnclassifiedRow> unclassifiedRows(lumo::System system) {
    return system == lumo::System::macos ? macUnclassifiedRows() : linuxUnclassifiedRows();
}

} // namespace tarvo::DemoDisk
