#include "TarvoModel/Photos/PhotoReading.h"

#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Inventories/Inventories.h"

#include <map>
#include <string_view>
#include <utility>

namespace tarvo {

namespace {

std::map<std::string_view, const Photo*> byPath(const std::vector<Photo>& photos) {
    std::map<std::string_view, const Photo*> paths;
    for (const Photo& photo : photos) {
        paths.emplace(photo.picture.path, &photo);
    }
    return paths;
}

} // namespace

PhotosRead readPhotos(const std::string& folder, const Desk& desk, const LookAt& lookAt,
                      const PhotoWatch& watch) {
    lumo::InventoryQuery query{.home = desk.home,
                               .now = desk.now(),
                               .folders = {folder.empty() ? lumo::picturesFolder(desk.home) : folder},
                               .minimumBytes = 1,
                               .stop = watch.stop};
    lumo::PicturesFound found = lumo::findPictures(query);
    PhotosRead read{.photos = {},
                    .chapters = {},
                    .unreadableCount = found.unreadableCount,
                    .unknownCount = 0,
                    .folder = query.folders.front()};
    const std::map<std::string_view, const Photo*> before = byPath(watch.before);
    std::vector<std::size_t> unknown;
    for (lumo::Picture& picture : found.pictures) {
        const auto known = before.find(picture.path);
        const bool isSame = known != before.end() && known->second->picture == picture;
        if (!isSame && !picture.isFilm) {
            unknown.push_back(read.photos.size());
        }
        std::string id = picture.id;
        read.photos.push_back({.picture = std::move(picture),
                               .look = isSame ? known->second->look : std::nullopt,
                               .id = std::move(id)});
    }
    read.unknownCount = unknown.size();
    const auto copies = lumo::Inventories::find(lumo::InventoryKind::duplicates, query).items;
    read.chapters = chaptersOf(read.photos, copies);
    if (watch.onListed) {
        watch.onListed(read);
    }
    lumo::parallelFor(unknown.size(), watch.stop, [&](std::size_t at) {
        Photo& photo = read.photos[unknown[at]];
        photo.look = lookAt(photo.picture.path);
        if (watch.looked != nullptr) {
            ++*watch.looked;
        }
    });
    read.unknownCount = 0;
    read.chapters = chaptersOf(read.photos, copies);
    return read;
}

} // namespace tarvo
