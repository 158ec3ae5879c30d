#include "TarvoModel/Showing/ItemRows.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace tarvo {

using lumo::DetailItem;
using lumo::Inventory;
using lumo::Language;
using lumo::Words;

namespace {

Row rowOf(const DetailItem& item, lumo::InventoryKind kind) {
    const auto* const moved = std::get_if<lumo::method::TrashItems>(&item.action.method);
    std::vector<std::string> paths = moved != nullptr ? moved->paths : std::vector<std::string>();
    if (paths.empty() && item.path) {
        paths.push_back(*item.path);
    }
    return {.id = item.id,
            .title = lumo::printable(item.name),
            .detail = lumo::printable(item.detail),
            .bytes = item.bytes,
            .safety = item.safety,
            .group = groupOf(item.safety),
            .skipReason = item.blockedBecause,
            .paths = std::move(paths),
            .kind = kind,
            .kept = item.kept,
            .command = item.blockedBecause ? lumo::commandIn(*item.blockedBecause) : std::nullopt};
}

/// Paths of rows, which outlive this; thousands are asked about one after the other.
class Places {
  public:
    /// True when the path is one of these, in one of these, or holds one.
    [[nodiscard]] bool touch(std::string_view path) const {
        for (std::string_view folder = path; folder.size() > 1; folder = lumo::parentOf(folder)) {
            if (all_.contains(folder)) {
                return true;
            }
        }
        return holders_.contains(path);
    }
    /// Makes room for so many rows.
    void expect(std::size_t rows) {
        all_.reserve(rows);
        holders_.reserve(rows);
    }
    void add(const SharedPaths& paths) {
        for (const std::string& path : paths) {
            all_.insert(path);
            // What holds one holder is known with it.
            for (std::string_view folder = lumo::parentOf(path);
                 folder.size() > 1 && holders_.insert(folder).second; folder = lumo::parentOf(folder)) {
            }
        }
    }

  private:
    std::unordered_set<std::string_view> all_;
    std::unordered_set<std::string_view> holders_; ///< The folders above those.
};

std::int64_t bytesOf(const Inventory& inventory, bool isBlocked) {
    std::int64_t sum = 0;
    for (const DetailItem& item : inventory.items) {
        sum = lumo::checkedSum(sum, item.blockedBecause.has_value() == isBlocked ? item.bytes : 0);
    }
    return sum;
}

} // namespace

std::string unreadText(const Inventory& inventory, const std::string& home, Language language) {
    constexpr std::size_t mostNamed = 3;
    constexpr std::size_t mostColumns = 160;
    const std::int64_t count = inventory.unreadableCount;
    if (count == 0) {
        return {};
    }
    std::string text =
        count == 1 ? Words{"1 sitio no se ha podido mirar", "1 place could not be looked at"}.in(language)
                   : Words{"{} sitios no se han podido mirar", "{} places could not be looked at"}.in(
                         language, count);
    const std::vector<lumo::UnreadPlace> places = inventory.unread.value_or(std::vector<lumo::UnreadPlace>());
    for (std::size_t index = 0; index < std::min(places.size(), mostNamed); ++index) {
        text += (index == 0 ? ": " : "; ") +
                lumo::shortened(lumo::printable(lumo::abbreviated(places[index].path, home)), mostColumns);
        text += places[index].reason.empty() ? "" : " (" + places[index].reason + ")";
    }
    return places.size() > mostNamed ? text + Words{"; y otros", "; and others"}.in(language) : text;
}

ShownItems shownItems(const std::vector<Inventory>& inventories) {
    ShownItems items;
    std::set<std::string> ids;
    for (const Inventory& inventory : inventories) {
        for (const DetailItem& item : inventory.items) {
            if (ids.insert(item.id).second) {
                items.entries.push_back({item.action, item.blockedBecause});
                items.rows.push_back(rowOf(item, inventory.kind));
            }
        }
    }
    return items;
}

void giveTiles(std::span<Row> items, std::span<const Row> others, const std::string& home) {
    if (items.empty()) {
        return;
    }
    Places covered;
    covered.expect(items.size() + others.size());
    for (const Row& row : others) {
        covered.add(row.paths);
    }
    for (Row& item : items) {
        item.hasTile = !item.paths.empty() && std::ranges::all_of(item.paths, [&](const std::string& path) {
            return lumo::isInside(path, home) && !covered.touch(path);
        });
        if (item.hasTile) {
            covered.add(item.paths);
        }
    }
}

std::int64_t tickableBytes(const Inventory& inventory) {
    return bytesOf(inventory, false);
}

std::int64_t blockedBytes(const Inventory& inventory) {
    return bytesOf(inventory, true);
}

KindLine kindLine(const Inventory* found, LookState state, Language language) {
    KindLine line;
    if (found != nullptr && tickableBytes(*found) > 0) {
        line.amount = lumo::ByteFormat::string(tickableBytes(*found), language);
    }
    if (state == LookState::going) {
        line.note = Words{"mirando…", "looking…"}.in(language);
    } else if (found == nullptr) {
        line.note = state == LookState::unwanted ? Words{"púlsalo para buscar", "press to look"}.in(language)
                                                 : Words{"en espera", "waiting"}.in(language);
    } else if (found->unavailable) {
        line.note = Words{"no se puede saber", "cannot be told"}.in(language);
    } else if (found->items.empty()) {
        line.note = Words{"nada", "nothing"}.in(language);
    } else if (const std::int64_t blocked = blockedBytes(*found); blocked > 0) {
        line.note = (line.amount.empty() ? Words{"{} desde aquí no", "{} not from here"}
                                         : Words{"y {} desde aquí no", "and {} not from here"})
                        .in(language, lumo::ByteFormat::string(blocked, language));
    }
    return line;
}

std::string kindNote(const Inventory* found, LookState state, const std::string& home, Language language) {
    if (found == nullptr) {
        return state == LookState::unwanted
                   ? Words{"Aún no se ha mirado", "Not looked at yet"}.in(language)
                   : Words{"Mirando… puede tardar", "Looking… this may take a while"}.in(language);
    }
    if (found->unavailable) {
        return lumo::capitalized(lumo::printable(*found->unavailable));
    }
    std::string unread = unreadText(*found, home, language);
    if (!found->items.empty()) {
        return unread;
    }
    return Words{"No hay nada de esto", "There is nothing of this"}.in(language) +
           (unread.empty() ? "" : " · " + unread);
}

} // namespace tarvo
