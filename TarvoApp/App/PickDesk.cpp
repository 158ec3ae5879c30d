#include "TarvoApp/App/PickDesk.h"

#include "LumoCore/Basics/Path.h"
#include "Platform/Folder.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <utility>

namespace tarvo {

PickDesk::PickDesk(const Ground& ground, std::string home, QObject* parent)
    : QObject(parent), ground_(ground), home_(std::move(home)), folder_(home_) {}

void PickDesk::begin(const QString& ending) {
    ending_ = bytesOf(ending);
    look(home_);
}

void PickDesk::enter(const QString& key) {
    look(pathOf(idOf(key)));
}

void PickDesk::leave() {
    look(std::string(lumo::parentOf(folder_)));
}

void PickDesk::look(std::string folder) {
    folder_ = std::move(folder);
    entries_.clear();
    isBusy_ = true;
    emit changed();
    ground_.background.start([this, folder = folder_, ending = ending_,
                              number = ++looks_](const std::stop_token& end) -> Background::Apply {
        std::vector<Entry> entries;
        for (std::string& name : lumo::platform::namesIn(folder.empty() ? "/" : folder)) {
            if (end.stop_requested()) {
                break;
            }
            const bool isFolder = lumo::platform::isFolderThroughLinks(lumo::joined(folder, name));
            const bool isWanted = isFolder || (!ending.empty() && name.ends_with(ending));
            if (isWanted && !name.starts_with('.')) {
                entries.push_back({.name = std::move(name), .isFolder = isFolder});
            }
        }
        std::ranges::sort(entries, [](const Entry& left, const Entry& right) {
            return std::pair(!left.isFolder, left.name) < std::pair(!right.isFolder, right.name);
        });
        return [this, entries, number] {
            if (number == looks_) {
                entries_ = entries;
                isBusy_ = false;
                emit changed();
            }
        };
    });
}

std::string PickDesk::pathOf(std::string_view name) const {
    return lumo::joined(folder_, name);
}

std::string PickDesk::fileNamed(const QString& name) const {
    const std::string file = bytesOf(QString(name).remove(fromTheLeft).trimmed()); // As it is on the disk.
    return file.ends_with(ending_) ? file : file + ending_;
}

QUrl PickDesk::here() const {
    return urlOf(folder_.empty() ? "/" : folder_);
}

QUrl PickDesk::placeOf(const QString& key) const {
    return urlOf(pathOf(idOf(key)));
}

QUrl PickDesk::placeNamed(const QString& name) const {
    return urlOf(pathOf(fileNamed(name)));
}

bool PickDesk::isTaken(const QString& name) const {
    const std::string wanted = fileNamed(name);
    return std::ranges::find(entries_, wanted, &Entry::name) != entries_.end();
}

QString PickDesk::folder() const {
    return folder_.empty() ? QStringLiteral("/") : shown(lumo::abbreviated(folder_, home_));
}

QVariantList PickDesk::entries() const {
    QVariantList list;
    for (const Entry& entry : entries_) {
        list.push_back(QVariantMap{
            {"name", shown(entry.name)}, {"key", keyOf(entry.name)}, {"isFolder", entry.isFolder}});
    }
    return list;
}

} // namespace tarvo
