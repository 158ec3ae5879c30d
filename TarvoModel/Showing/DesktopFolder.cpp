#include "TarvoModel/Showing/DesktopFolder.h"

#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/Folder.h"

namespace tarvo {

std::string desktopFolder(const std::string& home) {
    std::string usual = home + "/Desktop";
    return lumo::platform::isFolderThroughLinks(usual)
               ? usual
               : lumo::HomePlaces::ofThisMachine(home).path("~/Desktop");
}

} // namespace tarvo
