#include "TarvoModel/Showing/ItemRows.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoModel/Showing/CleanupTexts.h"

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

/// What is known of the item, after where it lies if its name alone does not say which one it is.
std::string detailOf(const DetailItem& item, const std::vector<std::string>& paths, const std::string& home) {
    const std::string folder = folderOfNamesake(item.name, paths, home);
    return lumo::printable(folder + (folder.empty() || item.detail.empty() ? "" : " · ") + item.detail);
}

Row rowOf(const DetailItem& item, lumo::InventoryKind kind, const std::string& home) {
    const auto* const moved = std::get_if<lumo::method::TrashItems>(&item.action.method);
    std::vector<std::string> paths = moved != nullptr ? moved->paths : std::vector<std::string>();
    if (paths.empty() && item.path) {
        paths.push_back(*item.path);
    }
    return {.id = item.id,
            .title = lumo::printable(item.name),
            .detail = detailOf(item, paths, home),
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

void count(const DetailItem& item, KindSums& sums) {
    ++sums.items;
    std::int64_t& sum = item.blockedBecause ? sums.blocked : sums.tickable;
    sum = lumo::checkedSum(sum, item.bytes);
}

std::string copiesText(std::size_t count, Language language) {
    const std::string duplicates = lumo::titleOf(lumo::InventoryKind::duplicates, language);
    return count == 0   ? std::string()
           : count == 1 ? Words{"1 archivo más se ve en «{}», como copia o como el que se queda",
                                "1 more file is under “{}”, as a copy or as the one that stays"}
                              .in(language, duplicates)
                        : Words{"{} archivos más se ven en «{}», como copia o como el que se queda",
                                "{} more files are under “{}”, as a copy or as the one that stays"}
                              .in(language, count, duplicates);
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

ShownItems shownItems(const std::vector<Inventory>& inventories, const std::string& home) {
    ShownItems items;
    std::set<std::string> ids;
    for (const Inventory& inventory : inventories) {
        for (const DetailItem& item : inventory.items) {
            if (ids.insert(item.id).second) {
                items.entries.push_back({item.action, item.blockedBecause});
                items.rows.push_back(rowOf(item, inventory.kind, home));
                count(item, items.sums[static_cast<std::size_t>(inventory.kind)]);
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

KindLine kindLine(const Inventory* found, const KindSums& sums, LookState state, Language language) {
    KindLine line;
    if (sums.tickable > 0) {
        line.amount = lumo::ByteFormat::string(sums.tickable, language);
    }
    if (state == LookState::going) {
        line.note = Words{"mirando…", "looking…"}.in(language);
    } else if (found == nullptr) {
        line.note = state == LookState::unwanted ? Words{"púlsalo para buscar", "press to look"}.in(language)
                                                 : Words{"en espera", "waiting"}.in(language);
    } else if (found->unavailable) {
        line.note = Words{"no se puede saber", "cannot be told"}.in(language);
    } else if (sums.items == 0) {
        line.note = Words{"nada", "nothing"}.in(language);
    } else if (sums.blocked > 0) {
        line.note = (line.amount.empty() ? Words{"{} desde aquí no", "{} not from here"}
                                         : Words{"y {} desde aquí no", "and {} not from here"})
                        .in(language, lumo::ByteFormat::string(sums.blocked, language));
    }
    return line;
}

std::string kindNote(const Inventory* found, const KindSums& sums, LookState state, const std::string& home,
                     Language language) {
    if (found == nullptr) {
        return state == LookState::unwanted
                   ? Words{"Aún no se ha mirado", "Not looked at yet"}.in(language)
                   : Words{"Mirando… puede tardar", "Looking… this may take a while"}.in(language);
    }
    if (found->unavailable) {
        return lumo::capitalized(lumo::printable(*found->unavailable));
    }
    std::string note = sums.items > 0 || sums.copies > 0
                           ? std::string()
                           : Words{"No hay nada de esto", "There is nothing of this"}.in(language);
    for (const std::string& more : {copiesText(sums.copies, language), unreadText(*found, home, language)}) {
        note += (note.empty() || more.empty() ? "" : " · ") + more;
    }
    return note;
}

} // namespace tarvo
