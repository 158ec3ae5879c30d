#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Showing/Shared.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The rows of the main list: all that a scan found worth showing, in the order in which it is shown.
namespace tarvo {

/// The list's groups, from what needs no thought to what nobody has looked at yet.
enum class RowGroup { safe, review, keep, unclassified };

/// One line of the list and one tile of the map.
struct Row {
    std::string id;    ///< The plan entry's; a kept finding's rule; "sin:" + path of an unclassified folder.
    SharedText title;  ///< As it may be shown: names from the disk without stray bytes.
    SharedText detail; ///< What it is, or where it lies; one sentence or one path.
    std::int64_t bytes = 0;
    std::optional<lumo::Safety> safety; ///< Absent for an unclassified folder.
    RowGroup group = RowGroup::safe;
    std::optional<std::string> skipReason; ///< Why it cannot be ticked now, although it has an entry.
    SharedPaths paths;                     ///< Absolute: what the row stands for on disk.
    std::int64_t files = 0;                ///< Regular files; 0 where nobody has counted them.
    /// Of a project's artifacts that of its own files; absent where nobody knows.
    std::optional<lumo::Date> lastChange = {};
    std::optional<lumo::InventoryKind> kind = {}; ///< Of what a closer look found; absent for the scan's.
    std::optional<std::string> kept = {};         ///< Of a duplicate: the path of the copy that stays.
    std::optional<std::string> command = {};      ///< What an administrator can run instead.
    bool hasTile = true;                          ///< False where another tile covers it, or it has no path.

    friend bool operator==(const Row&, const Row&) = default;
};

/// The rows of a report with its plan: a row for each entry, each finding that is kept and each unclassified
/// folder. Group by group, the largest first. Entries that the report knows nothing of have their measured
/// paths and no detail. What is set aside is none of them: it is the user's own, and told of apart.
std::vector<Row> rowsOf(const lumo::ScanReport& report, const std::vector<lumo::PlanEntry>& entries,
                        lumo::Language language = lumo::currentLanguage());

/// The same rows, where each folder that no rule knows says first what is known of it.
std::vector<Row> withWhatIsKnown(std::vector<Row> rows,
                                 const std::map<std::string, lumo::Explanation>& explanations);

/// True when both stand below one head in the list: of one group, or of one kind of items.
bool haveOneHead(const Row& one, const Row& other);

/// What is above the row and those that it stands with.
std::string headOf(const Row& row, lumo::Language language = lumo::currentLanguage());

/// Where the list has things of that safety.
RowGroup groupOf(lumo::Safety safety);

/// The group's word above its rows.
std::string groupTitle(RowGroup group, lumo::Language language = lumo::currentLanguage());

/// The bytes of a group's rows, items aside.
std::int64_t bytesOf(RowGroup group, const std::vector<Row>& rows);

/// What the group's rows come to, for a person: what can be ticked of them, and what is held back now.
std::string groupAmount(RowGroup group, const std::vector<Row>& rows,
                        lumo::Language language = lumo::currentLanguage());

/// The same of all rows that stand with that one.
std::string amountWith(const Row& row, const std::vector<Row>& rows,
                       lumo::Language language = lumo::currentLanguage());

/// What so many entries that could not be read mean for the amounts; empty for none.
std::string unreadableText(std::int64_t count, lumo::Language language = lumo::currentLanguage());

/// The rows whose title, detail or paths hold the words searched for, whatever their case and accents; all
/// of them while nothing is searched for.
std::vector<Row> rowsMatching(std::string_view searched, const std::vector<Row>& rows);

} // namespace tarvo
