#pragma once

#include "LumoCore/Basics/Language.h"
#include "TarvoModel/Showing/DiskMap.h"
#include "TarvoModel/Showing/Rows.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What somebody has asked to see of the rows, in the list and on the map alike.
namespace tarvo {

/// How the rows are sorted within their groups.
enum class RowOrder {
    size, ///< The largest first.
    name, ///< Whatever its case and accents.
    date, ///< What has not changed for longest first; what nobody knows it of comes last, the largest first.
};

/// What the rows are narrowed to, and how they are sorted.
struct RowView {
    std::string searched = {};          ///< The words; empty for none.
    std::optional<RowGroup> group = {}; ///< The only one; absent for all.
    RowOrder order = RowOrder::size;
    std::optional<lumo::InventoryKind> kind =
        {}; ///< Its items; absent for what the scan found, see `rowsFor`.

    friend bool operator==(const RowView&, const RowView&) = default;

    /// True where nothing keeps a row, or its tile, out of sight.
    [[nodiscard]] bool isWide() const { return searched.empty() && !group && !kind; }
};

/// The rows of the view's kind and group, whatever is searched for: what it can show at all. A search in no
/// group and of no kind is one of everything.
std::vector<Row> rowsFor(const RowView& view, const std::vector<Row>& rows);

/// The rows that are shown so. The rows given are group by group, the largest first.
std::vector<Row> rowsIn(const RowView& view, const std::vector<Row>& rows);

/// Which tiles, and which entries in them, keep their light while the rows are narrowed: those of the rows
/// that are shown, and in a folder those whose names, or whose safety, match. Absent when all do, as they do
/// where none would.
std::optional<std::set<std::string>> litTiles(const RowView& view, const std::vector<Tile>& tiles,
                                              const std::vector<Row>& rows);

/// The ids from one row to another, whichever comes first, as they are shown; none when one of them is not.
std::vector<std::string> idsBetween(const std::string& from, const std::string& to,
                                    const std::vector<Row>& rows);

/// What is said of several rows that are chosen together: how many they are, and how many of those that can
/// be ticked are. Empty for none.
std::string chosenText(std::size_t rows, std::size_t tickable, std::size_t ticked,
                       lumo::Language language = lumo::currentLanguage());

/// The row that the path belongs to, the innermost of several; none when there is none.
const Row* rowWith(const std::string& path, const std::vector<Row>& rows);

} // namespace tarvo
