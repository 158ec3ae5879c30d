#include "TarvoModel/Showing/HeldItem.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/UniqueID.h"

#include <string_view>

namespace tarvo {

std::string heldIDOf(const lumo::TrashedItem& item) {
    constexpr std::size_t idCharacters = 36; // A UUID's, with which its name there begins.
    const std::string_view id = lumo::fileName(item.inTrash).substr(0, idCharacters);
    return lumo::isUniqueID(id) ? std::string(id) : std::string();
}

} // namespace tarvo
