#include "TarvoApp/App/Settings.h"

#include "LumoCore/Basics/Language.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <utility>

namespace tarvo {

Settings::Settings(const std::string& home, Keeping keeping, QObject* parent)
    : QObject(parent), home_(home), keeping_(keeping), preferences_(Preferences::load(home)), writing_(1) {}

Settings::~Settings() {
    writing_.finish();
}

QStringList Settings::protectedFolders() const {
    QStringList folders;
    for (const std::string& folder : value<std::vector<std::string>>("carpetasProtegidas")) {
        folders.push_back(shown(folder));
    }
    return folders;
}

void Settings::protect(const QString& folder) {
    protectPath(bytesOf(folder));
}

void Settings::protectPath(const std::string& path) {
    if (const auto trouble = preferences_.problem()) {
        // Folders that cannot be read now would be lost.
        emit failed(shown(*trouble));
        return;
    }
    auto paths = value<std::vector<std::string>>("carpetasProtegidas");
    if (path.starts_with('/') && std::ranges::find(paths, path) == paths.end()) {
        paths.push_back(path);
        store("carpetasProtegidas", lumo::encode(paths));
    }
}

void Settings::unprotect(int index) {
    auto paths = value<std::vector<std::string>>("carpetasProtegidas");
    if (index >= 0 && index < static_cast<int>(paths.size())) {
        paths.erase(paths.begin() + index);
        store("carpetasProtegidas", lumo::encode(paths));
    }
}

QString Settings::problem() const {
    return shown(preferences_.problem().value_or(""));
}

QString Settings::words(std::string_view key) const {
    return shown(value<std::string>(key));
}

void Settings::changeWords(std::string_view key, const QString& wanted) {
    if (words(key) != wanted) {
        store(key, wanted.isEmpty() ? std::nullopt : std::optional(lumo::encode(bytesOf(wanted))));
    }
}

std::optional<lumo::Date> Settings::moment(std::string_view key) const {
    const std::optional<lumo::JsonValue> stored = preferences_.value(*preferenceKey(key));
    const auto date = stored ? lumo::decode<lumo::Date>(*stored) : lumo::failure("absent");
    return date ? std::optional(*date) : std::nullopt;
}

void Settings::store(std::string_view name, std::optional<lumo::JsonValue> value) {
    const PreferenceKey& key = *preferenceKey(name);
    if (!preferences_.hold(key, value)) {
        emit failed(shown(lumo::text("ese valor no sirve", "that value is not valid")));
        emit changed();
        return;
    }
    emit changed();
    if (keeping_ == Keeping::inMemory) {
        return;
    }
    ++unwritten_;
    writing_.start([this, &key, value = std::move(value)](const std::stop_token&) -> Background::Apply {
        // Another program may have stored something since ours was read.
        const auto stored = Preferences::load(home_).store(key, value);
        return [this, reason = stored ? std::string() : stored.error().message] { written(reason); };
    });
}

void Settings::written(const std::string& reason) {
    --unwritten_;
    if (!reason.empty()) {
        emit failed(shown(reason));
    }
    reload();
}

void Settings::reload() {
    if (unwritten_ > 0 || keeping_ == Keeping::inMemory) {
        return;
    }
    Preferences stored = Preferences::load(home_);
    if (stored != preferences_) {
        preferences_ = std::move(stored);
        emit changed();
    }
}

} // namespace tarvo
