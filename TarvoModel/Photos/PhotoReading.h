#pragma once

#include "TarvoModel/Flows/Desk.h"
#include "TarvoModel/Photos/PhotoReview.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// From a folder of pictures to what is reviewed.
namespace tarvo {

struct PhotosRead {
    std::vector<Photo> photos;
    std::vector<PhotoChapter> chapters; ///< By the places of these photos.
    std::int64_t unreadableCount = 0;   ///< Folders that could not be listed.
    std::size_t unknownCount = 0;       ///< Pictures that have yet to be looked at.
    std::string folder = {};            ///< The one that was read.
};

/// What a picture looks like; absent for what cannot be read as one. Called on several threads at once.
using LookAt = std::function<std::optional<Look>(const std::string& path)>;

struct PhotoWatch {
    /// What can be shown before the pictures have been looked at, which takes long: months and copies. Called
    /// on the thread that reads.
    std::function<void(const PhotosRead&)> onListed = {};
    std::atomic<std::size_t>* looked = nullptr; ///< Counts the pictures that were looked at.
    std::vector<Photo> before = {}; ///< Read earlier: what has not changed since is not looked at again.
    std::stop_token stop = {};
};

/// Reads the folder, or the home's pictures where it is empty. After a stop the answer is incomplete.
PhotosRead readPhotos(const std::string& folder, const Desk& desk, const LookAt& lookAt,
                      const PhotoWatch& watch = {});

} // namespace tarvo
