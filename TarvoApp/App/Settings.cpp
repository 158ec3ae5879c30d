#include "TarvoApp/App/Settings.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/Scanner.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/SettingChange.h"

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
    for (const std::string& folder : value(preference::protectedFolders)) {
        folders.push_back(shown(lumo::abbreviated(folder, home_)));
    }
    return folders;
}

void Settings::protect(const QString& folder) {
    protectPaths({bytesOf(folder)});
}

void Settings::protectPaths(const std::vector<std::string>& paths) {
    changeFolders([paths](std::vector<std::string>& folders) {
        for (const std::string& path : paths) {
            if (path.starts_with('/') && std::ranges::find(folders, path) == folders.end()) {
                folders.push_back(path);
            }
        }
    });
}

void Settings::unprotect(int index) {
    const auto folders = value(preference::protectedFolders);
    if (index >= 0 && index < static_cast<int>(folders.size())) {
        changeFolders([path = folders[static_cast<std::size_t>(index)]](std::vector<std::string>& list) {
            std::erase(list, path);
        });
    }
}

void Settings::changeFolders(const std::function<void(std::vector<std::string>&)>& change) {
    if (const auto trouble = preferences_.problem()) {
        // Folders that cannot be read now would be lost.
        emit failed(shown(*trouble));
        return;
    }
    // Of the list that is stored by then, which may have folders that are not known here.
    write(preference::protectedFolders, [change](const Preferences& preferences) {
        auto folders = preferences.value(preference::protectedFolders);
        change(folders);
        return Preferences::asJson(folders);
    });
}

QString Settings::problem() const {
    return shown(preferences_.problem().value_or(""));
}

QString Settings::words(const std::optional<std::string>& text) {
    return shown(text.value_or(""));
}

std::optional<std::string> Settings::textIn(const QString& words) {
    return words.isEmpty() ? std::nullopt : std::optional(bytesOf(words));
}

void Settings::write(const Preference& key,
                     const std::function<std::optional<lumo::JsonValue>(const Preferences&)>& valueIn,
                     Telling telling) {
    const std::optional<lumo::JsonValue> value = valueIn(preferences_);
    if (!preferences_.hold(key, value)) {
        emit failed(shown(lumo::Words{"ese valor no sirve", "that value is not valid"}.in()));
        emit changed();
        return;
    }
    emit changed();
    if (keeping_ == Keeping::inMemory) {
        return;
    }
    ++unwritten_;
    writing_.start([this, &key, value, valueIn, telling](const std::stop_token&) -> Background::Apply {
        const auto stored = changeSetting(key, valueIn, home_);
        return [this, &key, value, telling, now = Preferences::load(home_),
                reason = stored ? std::string() : stored.error().message] {
            written(key, value, reason, telling, now);
        };
    });
}

void Settings::written(const Preference& key, const std::optional<lumo::JsonValue>& value,
                       const std::string& reason, Telling telling, const Preferences& now) {
    --unwritten_;
    if (reason.empty()) {
        unstored_.erase(&key);
    } else {
        unstored_.insert_or_assign(&key, value);
        if (telling == Telling::user) {
            emit failed(shown(reason));
        }
    }
    takeOver(now);
    emit stored();
}

void Settings::reload() {
    if (keeping_ == Keeping::inMemory) {
        return;
    }
    writing_.start([this](const std::stop_token&) -> Background::Apply {
        if (!lumo::Scanner::canList(home_)) {
            return [] {}; // What is stored cannot be seen now, which is no wish for anything else.
        }
        return [this, stored = Preferences::load(home_)] { takeOver(stored); };
    });
}

void Settings::takeOver(Preferences stored) {
    if (unwritten_ > 0) {
        return; // What was read may be older than what is shown; the last one written reads again.
    }
    // What could not be written counts as long as the application runs: a date that is forgotten would have
    // the full disk told every minute.
    for (const auto& [key, value] : unstored_) {
        stored.hold(*key, value);
    }
    if (stored != preferences_) {
        preferences_ = std::move(stored);
        emit changed();
    }
}

} // namespace tarvo
