#include "Platform/ZipListing.h"

#include <sys/stat.h>
#include <unzip.h>

#include <cerrno>
#include <memory>
#include <optional>

namespace lumo::platform {

namespace {

struct CloseZip {
    void operator()(void* archive) const { unzClose(archive); }
};

EntryKind kindOfMode(mode_t mode) {
    if (S_ISLNK(mode)) {
        return EntryKind::link;
    }
    // Archives from elsewhere know no modes; what they hold are files.
    return mode == 0 || S_ISREG(mode) ? EntryKind::file : EntryKind::other;
}

/// The entry that the archive stands at; its name is kept in the given text.
std::optional<ZipEntry> currentEntry(unzFile archive, std::string& name) {
    unz_file_info64 status = {};
    if (unzGetCurrentFileInfo64(archive, &status, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
        return std::nullopt;
    }
    name.resize(status.size_filename);
    if (unzGetCurrentFileInfo64(archive, nullptr, name.data(), status.size_filename, nullptr, 0, nullptr,
                                0) != UNZ_OK) {
        return std::nullopt;
    }
    // In archives made on Unix the upper half of the attributes is the mode (PKWARE's
    // APPNOTE, 4.4.2, 4.4.15).
    constexpr unsigned systemShift = 8;
    constexpr unsigned unixSystem = 3;
    constexpr unsigned modeShift = 16;
    const bool isFromUnix = (status.version >> systemShift) == unixSystem;
    const auto mode = isFromUnix ? static_cast<mode_t>(status.external_fa >> modeShift) : 0;
    ZipEntry entry{.name = name, .kind = kindOfMode(mode)};
    if (entry.name.ends_with('/')) {
        entry.name.remove_suffix(1);
        entry.kind = EntryKind::folder;
    }
    entry.bytes = static_cast<std::int64_t>(status.uncompressed_size);
    entry.checksum = static_cast<std::uint32_t>(status.crc);
    return entry;
}

} // namespace

SystemResult<void> visitZip(const std::string& path,
                            const std::function<bool(const ZipEntry& entry)>& visitor) {
    const std::unique_ptr<void, CloseZip> archive(unzOpen64(path.c_str()));
    if (!archive) {
        return failed(EBADMSG);
    }
    std::string name;
    int state = unzGoToFirstFile(archive.get());
    for (; state == UNZ_OK; state = unzGoToNextFile(archive.get())) {
        const std::optional<ZipEntry> entry = currentEntry(archive.get(), name);
        if (!entry) {
            return failed(EBADMSG);
        }
        if (!visitor(*entry)) {
            return {};
        }
    }
    return state == UNZ_END_OF_LIST_OF_FILE ? SystemResult<void>() : failed(EBADMSG);
}

} // namespace lumo::platform
