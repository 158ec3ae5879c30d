#include "LumoCore/Cleanup/ApplicationFolders.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Rules/HomePlaces.h"

namespace lumo::ApplicationFolders {

using platform::BaseFolder;
using platform::Place;
using platform::SystemResult;

namespace {

constexpr const char* supportParent = "Library/Application Support";
constexpr const char* cachesParent = "Library/Caches";
constexpr const char* ownName = "TarvoAI";
constexpr const char* holdingName = "Apartado";
constexpr const char* stagingName = "vaciando";

SystemResult<BaseFolder> openIn(const BaseFolder& parent, const std::string& relative) {
    const SystemResult<Place> place = parent.place(relative);
    return place ? BaseFolder::openAt(*place) : std::unexpected(place.error());
}

SystemResult<BaseFolder> openIn(const SystemResult<BaseFolder>& parent, const std::string& relative) {
    return parent ? openIn(*parent, relative) : std::unexpected(parent.error());
}

/// Makes the folder at the place if there is none, for the user alone, and opens it.
SystemResult<BaseFolder> makeAt(const SystemResult<Place>& place) {
    if (!place) {
        return std::unexpected(place.error());
    }
    SystemResult<BaseFolder> folder = BaseFolder::openAt(*place);
    if (!folder && folder.error().isMissing()) {
        if (const auto made = platform::makeFolderAt(*place, 0700); !made) {
            return std::unexpected(made.error());
        }
        folder = BaseFolder::openAt(*place);
    }
    if (folder) {
        folder->makePrivate();
    }
    return folder;
}

/// "TarvoAI" in a folder of the home that may itself have to be made, as other programs make it.
SystemResult<BaseFolder> makeOwn(const BaseFolder& home, const std::string& parent) {
    constexpr unsigned usual = 0755;
    return makeAt(home.placeWithFolders(parent + "/" + ownName, usual));
}

SystemResult<BaseFolder> makeIn(const SystemResult<BaseFolder>& parent, const std::string& name) {
    return parent ? makePrivateFolder(*parent, name) : std::unexpected(parent.error());
}

} // namespace

std::string claudeDesktopSettings(const std::string& home, System system) {
    const std::string parent = system == System::macos ? joined(home, supportParent)
                                                       : HomePlaces::ofThisMachine(home).path("~/.config");
    return parent + "/Claude/claude_desktop_config.json";
}

std::string claudeDesktopBackup(const std::string& home) {
    return claudeDesktopSettings(home) + ".antes-de-tarvo";
}

SystemResult<BaseFolder> openSupport(const BaseFolder& home) {
    return openIn(home, std::string(supportParent) + "/" + ownName);
}

SystemResult<BaseFolder> openHolding(const BaseFolder& home) {
    return openIn(openSupport(home), holdingName);
}

SystemResult<BaseFolder> openStaging(const BaseFolder& home) {
    return openIn(openIn(home, std::string(cachesParent) + "/" + ownName), stagingName);
}

SystemResult<BaseFolder> makeSupport(const BaseFolder& home) {
    return makeOwn(home, supportParent);
}

SystemResult<BaseFolder> makeHolding(const BaseFolder& home) {
    return makeIn(makeSupport(home), holdingName);
}

SystemResult<BaseFolder> makeStaging(const BaseFolder& home) {
    return makeIn(makeOwn(home, cachesParent), stagingName);
}

SystemResult<BaseFolder> makePrivateFolder(const BaseFolder& parent, const std::string& name) {
    return makeAt(parent.placeWithoutLinks(name));
}

} // namespace lumo::ApplicationFolders
