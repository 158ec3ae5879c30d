#include "LumoCore/Inventories/InstalledApp.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"
#include "Platform/PropertyList.h"

namespace lumo {

namespace {

constexpr std::string_view bundleExtension = ".app";

void appendBundle(const std::string& path, std::vector<InstalledApp>& apps) {
    if (auto app = InstalledApp::read(path)) {
        apps.push_back(std::move(*app));
    }
}

} // namespace

std::vector<std::string> InstalledApp::aliases() const {
    constexpr std::size_t shortest = 3;
    const std::string_view lastPart = std::string_view(bundleID).substr(bundleID.rfind('.') + 1);
    std::vector<std::string> forms{normalize(name), normalize(fileStem(path)), normalize(lastPart)};
    std::erase_if(forms, [](const std::string& form) { return characterCount(form) < shortest; });
    return forms;
}

std::vector<InstalledApp> InstalledApp::scan(const std::string& home) {
    std::vector<InstalledApp> apps = bundlesIn({"/Applications", home + "/Applications"});
    for (const DesktopEntry& entry : desktopEntriesIn(desktopDataFolders(home))) {
        apps.push_back({entry.name, entry.id, entry.path});
    }
    return apps;
}

std::vector<InstalledApp> InstalledApp::bundlesIn(const std::vector<std::string>& roots) {
    std::vector<InstalledApp> apps;
    for (const std::string& root : roots) {
        for (const std::string& entry : Scanner::children(root)) {
            if (entry.ends_with(bundleExtension)) {
                appendBundle(entry, apps);
            } else if (platform::kindOf(entry) == platform::EntryKind::folder) {
                for (const std::string& below : Scanner::children(entry)) {
                    if (below.ends_with(bundleExtension)) {
                        appendBundle(below, apps);
                    }
                }
            }
        }
    }
    return apps;
}

std::optional<InstalledApp> InstalledApp::read(const std::string& path) {
    const auto strings = platform::readPropertyListStrings(path + "/Contents/Info.plist");
    if (!strings) {
        return std::nullopt;
    }
    const auto identifier = strings->find("CFBundleIdentifier");
    if (identifier == strings->end() || identifier->second.empty()) {
        return std::nullopt;
    }
    for (const char* key : {"CFBundleDisplayName", "CFBundleName"}) {
        if (const auto name = strings->find(key); name != strings->end()) {
            return InstalledApp{name->second, identifier->second, path};
        }
    }
    return InstalledApp{std::string(fileStem(path)), identifier->second, path};
}

std::string InstalledApp::normalize(std::string_view text) {
    return lettersAndDigits(text);
}

} // namespace lumo
