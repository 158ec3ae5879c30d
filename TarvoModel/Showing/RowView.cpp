#include "TarvoModel/Showing/RowView.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace tarvo {

using lumo::FolderContents::Item;

namespace {

/// Where the row's head stands: items of inventories come kind by kind, below the groups of what was scanned.
std::pair<int, int> headPlace(const Row& row) {
    return row.kind ? std::pair(1, static_cast<int>(*row.kind)) : std::pair(0, static_cast<int>(row.group));
}

/// Sorts by what each row is known by there; equal ones keep their order.
template <class Key, class KeyOf>
std::vector<Row> sortedBy(std::vector<Row> rows, KeyOf keyOf) {
    std::vector<std::tuple<std::pair<int, int>, Key, std::size_t>> order;
    order.reserve(rows.size());
    for (std::size_t at = 0; at < rows.size(); ++at) {
        order.emplace_back(headPlace(rows[at]), keyOf(rows[at]), at);
    }
    std::ranges::sort(order);
    std::vector<Row> sorted;
    sorted.reserve(rows.size());
    for (const auto& [head, key, at] : order) {
        sorted.push_back(std::move(rows[at]));
    }
    return sorted;
}

std::vector<Row> sortedIn(RowOrder order, std::vector<Row> rows) {
    switch (order) {
    case RowOrder::name:
        return sortedBy<std::string>(std::move(rows), [](const Row& row) { return lumo::folded(row.title); });
    case RowOrder::date:
        return sortedBy<std::pair<bool, lumo::Date>>(std::move(rows), [](const Row& row) {
            return std::pair(!row.lastChange, row.lastChange.value_or(lumo::Date()));
        });
    case RowOrder::size:
        break;
    }
    return rows;
}

bool isOfGroup(const RowView& view, const std::optional<lumo::Safety>& safety) {
    return !view.group || *view.group == (safety ? groupOf(*safety) : RowGroup::unclassified);
}

/// Adds what keeps its light of a tile in a folder that was opened.
void addLitInside(const RowView& view, const Tile& tile, std::set<std::string>& lit) {
    if (!isOfGroup(view, tile.safety)) {
        return;
    }
    const std::string words = lumo::folded(view.searched);
    const auto holds = [&](const std::string& name) {
        return lumo::folded(name).find(words) != std::string::npos;
    };
    const bool isAll = holds(tile.label);
    for (const Item& child : tile.children) {
        if (isAll || holds(child.name)) {
            lit.insert(DiskMap::insideID(child.path));
            lit.insert(tile.id);
        }
    }
    if (isAll) {
        lit.insert(tile.id);
    }
}

/// The rows whose tiles keep their light. Single items have tiles among the others, of the same colors,
/// though the list shows them apart.
std::vector<Row> litRows(const RowView& view, const std::vector<Row>& rows) {
    std::vector<Row> kept;
    std::ranges::copy_if(rows, std::back_inserter(kept), [&](const Row& row) {
        return (!view.kind || row.kind == view.kind) && (!view.group || row.group == *view.group);
    });
    return rowsMatching(view.searched, kept);
}

} // namespace

std::vector<Row> rowsFor(const RowView& view, const std::vector<Row>& rows) {
    // Whoever searches does not know which list a thing is in.
    const bool isAll = !view.kind && !view.group && !view.searched.empty();
    std::vector<Row> kept;
    std::ranges::copy_if(rows, std::back_inserter(kept), [&](const Row& row) {
        return (isAll || row.kind == view.kind) && (!view.group || row.group == *view.group);
    });
    return kept;
}

std::vector<Row> rowsIn(const RowView& view, const std::vector<Row>& rows) {
    return sortedIn(view.order, rowsMatching(view.searched, rowsFor(view, rows)));
}

std::optional<std::set<std::string>> litTiles(const RowView& view, const std::vector<Tile>& tiles,
                                              const std::vector<Row>& rows) {
    if (view.isWide()) {
        return std::nullopt;
    }
    std::set<std::string> matching;
    for (const Row& row : litRows(view, rows)) {
        if (row.hasTile) {
            matching.insert(row.id);
        }
    }
    std::set<std::string> lit;
    bool isInside = false;
    for (const Tile& tile : tiles) {
        if (tile.kind == Tile::Kind::inside) {
            isInside = true;
            addLitInside(view, tile, lit);
        } else if (matching.erase(tile.id) > 0) {
            lit.insert(tile.id);
        }
    }
    if (!isInside && !matching.empty()) {
        lit.insert(std::string(TileID::others)); // The rows that have no tile of their own.
    }
    return lit.empty() ? std::nullopt : std::optional(std::move(lit));
}

std::vector<std::string> idsBetween(const std::string& from, const std::string& to,
                                    const std::vector<Row>& rows) {
    auto first = std::ranges::find(rows, from, &Row::id);
    auto last = std::ranges::find(rows, to, &Row::id);
    if (first == rows.end() || last == rows.end()) {
        return {};
    }
    if (last < first) {
        std::swap(first, last);
    }
    std::vector<std::string> ids;
    std::transform(first, last + 1, std::back_inserter(ids), [](const Row& row) { return row.id; });
    return ids;
}

std::string chosenText(std::size_t rows, std::size_t tickable, std::size_t ticked, lumo::Language language) {
    if (rows == 0) {
        return {};
    }
    const auto number = [](std::size_t count) { return std::to_string(count); };
    if (rows == 1) {
        return tickable == 0 ? lumo::Words{"1 fila elegida · no se puede marcar",
                                           "1 row chosen · it cannot be selected"}
                                   .in(language)
               : ticked == 0
                   ? lumo::Words{"1 fila elegida · Espacio la marca", "1 row chosen · Space selects it"}.in(
                         language)
                   : lumo::Words{"1 fila elegida · Espacio la desmarca", "1 row chosen · Space deselects it"}
                         .in(language);
    }
    if (tickable == 0) {
        return lumo::Words{"{} filas elegidas · ninguna se puede marcar",
                           "{} rows chosen · none can be selected"}
            .in(language, number(rows));
    }
    return lumo::Words{"{} filas elegidas · {} de {} marcadas · Espacio las marca o desmarca",
                       "{} rows chosen · {} of {} selected · Space selects or deselects them"}
        .in(language, number(rows), number(ticked), number(tickable));
}

const Row* rowWith(const std::string& path, const std::vector<Row>& rows) {
    const Row* innermost = nullptr;
    std::size_t longest = 0;
    for (const Row& row : rows) {
        for (const std::string& place : row.paths) {
            if (lumo::isInside(path, place) && (innermost == nullptr || place.size() > longest)) {
                innermost = &row;
                longest = place.size();
            }
        }
    }
    return innermost;
}

} // namespace tarvo
