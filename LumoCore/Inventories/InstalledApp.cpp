#include "LumoCore/Inventories/InstalledApp.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"
#include "Platform/PropertyList.h"

#include <algorithm>
#include <functional>

namespace lumo {

namespace {

constexpr std::string_view bundleExtension = ".app";

void appendBundle(const std::string& path, std::vector<InstalledApp>& apps) {
    if (auto app = InstalledApp::read(path)) {
        apps.push_back(std::move(*app));
    }
}

/// The same identifier, or one that the other begins with: "com.foo.bar.agent" belongs to "com.foo.bar".
bool isSameOrBelow(std::string_view identifier, std::string_view other) {
    return identifier.starts_with(other) &&
           (identifier.size() == other.size() || identifier[other.size()] == '.');
}

/// Words of a folder's name that may tell whose it is.
std::vector<std::string> tellingWords(std::string_view name) {
    constexpr std::size_t shortest = 4;
    std::vector<std::string> telling = words(name);
    std::erase_if(telling, [](const std::string& word) {
        return characterCount(word) < shortest ||
               std::ranges::find(InstalledApp::genericTokens, word) != InstalledApp::genericTokens.end();
    });
    return telling;
}

bool isNamedBy(const InstalledApp& app, const std::vector<std::string>& words) {
    return std::ranges::any_of(app.aliases(), [&](const std::string& alias) {
        return std::ranges::any_of(words, [&](const std::string& word) { return alias.contains(word); });
    });
}

std::optional<InstalledApp> firstOf(const std::vector<InstalledApp>& apps,
                                    const std::function<bool(const InstalledApp&)>& matches) {
    const auto found = std::ranges::find_if(apps, matches);
    return found != apps.end() ? std::optional(*found) : std::nullopt;
}

} // namespace

std::string_view InstalledApp::spokenName() const {
    return path.ends_with(bundleExtension) ? fileStem(path) : std::string_view(name);
}

std::optional<InstalledApp> InstalledApp::related(std::string_view folderName,
                                                  const std::vector<InstalledApp>& apps) {
    const std::string sought = lowerCased(folderName.substr(folderName.starts_with('.') ? 1 : 0));
    if (sought.contains('.')) {
        auto byIdentifier = firstOf(apps, [&](const InstalledApp& app) {
            const std::string identifier = lowerCased(app.bundleID);
            return isSameOrBelow(sought, identifier) || isSameOrBelow(identifier, sought);
        });
        if (byIdentifier) {
            return byIdentifier;
        }
    }
    const std::string form = normalize(sought);
    auto byAlias = firstOf(apps, [&](const InstalledApp& app) {
        const std::vector<std::string> aliases = app.aliases();
        return std::ranges::find(aliases, form) != aliases.end();
    });
    if (byAlias) {
        return byAlias;
    }
    const std::vector<std::string> words = tellingWords(sought);
    return firstOf(apps, [&](const InstalledApp& app) { return isNamedBy(app, words); });
}

std::vector<std::string> InstalledApp::aliases() const {
    constexpr std::size_t shortest = 3;
    const std::string_view lastPart = std::string_view(bundleID).substr(bundleID.rfind('.') + 1);
    std::vector<std::string> forms{normalize(name), normalize(fileStem(path)), normalize(lastPart)};
    std::erase_if(forms, [](const std::string& form) { return characterCount(form) < shortest; });
    return forms;
}

const std::vector<DesktopEntry>& InstalledApps::entries() const {
    read();
    return entries_;
}

const std::vector<InstalledApp>& InstalledApps::apps() const {
    read();
    return apps_;
}

void InstalledApps::read() const {
    std::call_once(isRead_, [this] {
        entries_ = desktopEntriesIn(desktopDataFolders(home_));
        apps_ = InstalledApp::scan(home_, entries_);
    });
}

std::vector<InstalledApp> InstalledApp::scan(const std::string& home) {
    return scan(home, desktopEntriesIn(desktopDataFolders(home)));
}

std::vector<InstalledApp> InstalledApp::scan(const std::string& home,
                                             const std::vector<DesktopEntry>& entries) {
    std::vector<InstalledApp> apps = bundlesIn({"/Applications", home + "/Applications"});
    for (const DesktopEntry& entry : entries) {
        apps.push_back({entry.name, entry.id, entry.path, entry.program});
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
    static constexpr auto keys =
        std::to_array<const char*>({"CFBundleIdentifier", "CFBundleDisplayName", "CFBundleName"});
    const auto strings = platform::readPropertyListStrings(path + "/Contents/Info.plist", keys);
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
