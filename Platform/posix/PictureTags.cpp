#include "Platform/PictureTags.h"

#include "Platform/QuietFile.h"

#include <libexif/exif-data.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace lumo::platform {

namespace {

/// A segment of a JPEG file, in which the tags lie, has no more; it comes first, or behind another small one.
constexpr std::size_t mostBytes = std::size_t{128} * 1024;
constexpr std::string_view jpegMark = "\xFF\xD8\xFF";

} // namespace

std::optional<std::string> takenTextIn(const std::string& beginning) {
    if (!beginning.starts_with(jpegMark)) {
        return std::nullopt;
    }
    const std::unique_ptr<ExifData, decltype(&exif_data_unref)> tags(
        exif_data_new_from_data(reinterpret_cast<const unsigned char*>(beginning.data()),
                                static_cast<unsigned int>(std::min(beginning.size(), mostBytes))),
        exif_data_unref);
    const ExifEntry* const taken =
        tags ? exif_content_get_entry(tags->ifd[EXIF_IFD_EXIF], EXIF_TAG_DATE_TIME_ORIGINAL) : nullptr;
    if (taken == nullptr || taken->format != EXIF_FORMAT_ASCII || taken->data == nullptr) {
        return std::nullopt;
    }
    const std::string_view text(reinterpret_cast<const char*>(taken->data), taken->size);
    return std::string(text.substr(0, text.find('\0')));
}

std::optional<std::string> takenTextOfPicture(const std::string& path) {
    const SystemResult<std::string> beginning = quietBeginning(path, mostBytes);
    return beginning ? takenTextIn(*beginning) : std::nullopt;
}

} // namespace lumo::platform
