#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// A picture or film of the user's own.
struct Picture {
    std::string id; ///< As the inventory of large files has it, whatever its size.
    std::string path;
    std::int64_t bytes = 0; ///< Allocated.
    /// When it was taken as the camera says, else its last change.
    Date taken = {};
    bool isDatedByCamera = false;
    bool isFilm = false;
    bool isScreenshot = false; ///< By its name or its folder's.

    friend bool operator==(const Picture&, const Picture&) = default;
};

struct PicturesFound {
    std::vector<Picture> pictures; ///< By path.
    std::int64_t unreadableCount = 0;
};

/// Where the home's pictures usually are; absolute.
std::string picturesFolder(const std::string& home);

/// The pictures and films below the folders of the query among the user's own files. One with several names
/// is found once. After a stop the list is incomplete.
PicturesFound findPictures(const InventoryQuery& query);

/// True for a name that programs give to a picture of the screen, in the languages that desktops speak.
bool isNameOfScreenshot(std::string_view name);

} // namespace lumo
