#include "TarvoModel/Photos/PhotoReading.h"

#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Inventories/Inventories.h"

#include <utility>

namespace tarvo {

PhotosRead readPhotos(const std::string& folder, const Desk& desk, const LookAt& lookAt,
                      const PhotoWatch& watch) {
    lumo::InventoryQuery query{.home = desk.home,
                               .now = desk.now(),
                               .folders = {folder.empty() ? lumo::picturesFolder(desk.home) : folder},
                               .minimumBytes = 1,
                               .stop = watch.stop};
    lumo::PicturesFound found = lumo::findPictures(query);
    PhotosRead read{.photos = {}, .chapters = {}, .unreadableCount = found.unreadableCount};
    for (lumo::Picture& picture : found.pictures) {
        std::string id = picture.id;
        read.photos.push_back({.picture = std::move(picture), .look = {}, .id = std::move(id)});
    }
    const auto copies = lumo::Inventories::find(lumo::InventoryKind::duplicates, query).items;
    read.chapters = chaptersOf(read.photos, copies);
    if (watch.onListed) {
        watch.onListed(read);
    }
    lumo::parallelFor(read.photos.size(), watch.stop, [&](std::size_t at) {
        Photo& photo = read.photos[at];
        if (!photo.picture.isFilm) {
            photo.look = lookAt(photo.picture.path);
        }
        if (watch.looked != nullptr) {
            ++*watch.looked;
        }
    });
    read.chapters = chaptersOf(read.photos, copies);
    return read;
}

} // namespace tarvo
