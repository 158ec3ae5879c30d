#include "LumoCore/Cleanup/HeldItem.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/UniqueID.h"

#include <algorithm>

namespace lumo::HeldItem {

namespace {

/// What stands between a home and a batch, with its slashes.
const std::string& wayToBatches() {
    static const std::string way = OwnFiles::holding("") + "/";
    return way;
}

} // namespace

std::string_view placeInRoot(std::string_view inTrash) {
    const std::size_t way = inTrash.rfind(wayToBatches());
    if (way == std::string_view::npos) {
        return {};
    }
    const std::string_view place = inTrash.substr(way + wayToBatches().size());
    return std::ranges::count(place, '/') == 1 && isSpeltOut(place) ? place : std::string_view();
}

std::optional<TrashedItem> ofThisHome(const TrashedItem& item, const std::string& home) {
    const std::string_view place = placeInRoot(item.inTrash);
    if (place.empty()) {
        return std::nullopt;
    }
    const std::size_t length = item.inTrash.size() - place.size() - wayToBatches().size();
    const std::string_view spelling = std::string_view(item.inTrash).substr(0, length);
    if (spelling == home) {
        return item;
    }
    constexpr std::size_t idLength = 36;
    if (spelling.empty() || !isUniqueID(fileName(place).substr(0, idLength))) {
        return std::nullopt;
    }
    TrashedItem ours{.original = item.original, .inTrash = home + wayToBatches() + std::string(place)};
    if (isInside(item.original, spelling)) {
        ours.original = home + item.original.substr(length);
    }
    return ours;
}

} // namespace lumo::HeldItem
