#include "TarvoApp/App/PhotoList.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Date.h"
#include "TarvoApp/App/QtText.h"

#include <fmt/format.h>

#include <utility>

namespace tarvo {

namespace {

QString factsOf(const Photo& photo) {
    std::string facts = lumo::ByteFormat::string(photo.picture.bytes);
    if (photo.look) {
        facts += fmt::format(" · {}×{}", photo.look->width, photo.look->height);
    }
    return shown(facts + " · " + lumo::dayText(photo.picture.taken));
}

} // namespace

PhotoList::PhotoList(const std::set<std::string>& chosen, QObject* parent)
    : KeyedList(parent), chosen_(chosen) {}

void PhotoList::show(std::vector<PhotoEntry> entries) {
    takeOver(std::move(entries));
    emit countChanged();
}

QVariant PhotoList::data(const QModelIndex& index, int role) const {
    return index.isValid() ? read(index.row(), role) : QVariant();
}

QVariant PhotoList::read(int row, int role) const {
    static const PhotoEntry none;
    const PhotoEntry& entry = row >= 0 && row < count() ? entries()[static_cast<std::size_t>(row)] : none;
    const lumo::Picture& picture = entry.photo.picture;
    switch (role) {
    case sourceRole:
        return pictureAddress(picture.path);
    case keyRole:
        return keyOf(picture.path);
    case nameRole:
        return shown(entry.name);
    case factsRole:
        return factsOf(entry.photo);
    case filmRole:
        return picture.isFilm;
    case groupRole:
        return entry.group;
    case firstRole:
        return entry.isFirst;
    case proposedRole:
        return entry.isProposed;
    case chosenRole:
        return chosen_.contains(picture.path);
    default:
        return {};
    }
}

QHash<int, QByteArray> PhotoList::roleNames() const {
    return {
        {sourceRole, "source"},  {keyRole, "key"},     {nameRole, "name"},     {factsRole, "facts"},
        {filmRole, "isFilm"},    {groupRole, "group"}, {firstRole, "isFirst"}, {proposedRole, "isProposed"},
        {chosenRole, "isChosen"}};
}

QString pictureAddress(const std::string& path) {
    return QStringLiteral("image://photos/") + QString::fromLatin1(QByteArray::fromStdString(path).toHex());
}

std::string pathOfPicture(const QString& id) {
    return QByteArray::fromHex(id.toLatin1()).toStdString();
}

} // namespace tarvo
