#include "Platform/ZipListing.h"

#include <sys/stat.h>
#include <zip.h>

#include <cerrno>
#include <memory>
#include <optional>

namespace lumo::platform {

namespace {

struct CloseZip {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

EntryKind kindOfMode(mode_t mode) {
    if (S_ISLNK(mode)) {
        return EntryKind::link;
    }
    // Archives from elsewhere know no modes; what they hold are files.
    return mode == 0 || S_ISREG(mode) ? EntryKind::file : EntryKind::other;
}

std::optional<ZipEntry> entryAt(zip_t* archive, zip_uint64_t index) {
    const char* name = zip_get_name(archive, index, ZIP_FL_ENC_RAW);
    zip_stat_t status;
    zip_stat_init(&status);
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (name == nullptr || zip_stat_index(archive, index, ZIP_FL_ENC_RAW, &status) != 0 ||
        zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) {
        return std::nullopt;
    }
    constexpr unsigned modeShift = 16; // The upper half of the attributes, in archives made on Unix.
    const mode_t mode = system == ZIP_OPSYS_UNIX ? attributes >> modeShift : 0;
    ZipEntry entry{.name = name, .kind = kindOfMode(mode)};
    if (entry.name.ends_with('/')) {
        entry.name.remove_suffix(1);
        entry.kind = EntryKind::folder;
    }
    entry.bytes = static_cast<std::int64_t>(status.size);
    entry.checksum = status.crc;
    return entry;
}

} // namespace

SystemResult<void> visitZip(const std::string& path,
                            const std::function<bool(const ZipEntry& entry)>& visitor) {
    const std::unique_ptr<zip_t, CloseZip> archive(zip_open(path.c_str(), ZIP_RDONLY, nullptr));
    if (!archive) {
        return std::unexpected(SystemError{EBADMSG});
    }
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index) {
        const std::optional<ZipEntry> entry = entryAt(archive.get(), static_cast<zip_uint64_t>(index));
        if (!entry) {
            return std::unexpected(SystemError{EBADMSG});
        }
        if (!visitor(*entry)) {
            break;
        }
    }
    return {};
}

} // namespace lumo::platform
