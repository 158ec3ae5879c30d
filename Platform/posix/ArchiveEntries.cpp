#include "Platform/ArchiveEntries.h"

#include "Platform/QuietFile.h"

#include <archive.h>
#include <archive_entry.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace lumo::platform {

namespace {

struct FreeReader {
    void operator()(archive* reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, FreeReader>;

/// The file behind a reader, and where in it the next bytes are.
struct Source {
    QuietFile file;
    std::int64_t offset = 0;
    std::array<char, std::size_t{64} * 1024> piece = {};
};

la_ssize_t readPiece(archive* reader, void* source, const void** bytes) {
    auto& from = *static_cast<Source*>(source);
    const SystemResult<std::size_t> count = from.file.read(from.offset, from.piece);
    if (!count) {
        archive_set_error(reader, count.error().code, "cannot be read");
        return ARCHIVE_FATAL;
    }
    from.offset += static_cast<std::int64_t>(*count);
    *bytes = from.piece.data();
    return static_cast<la_ssize_t>(*count);
}

la_int64_t skipBytes(archive* /*reader*/, void* source, la_int64_t request) {
    static_cast<Source*>(source)->offset += request;
    return request;
}

la_int64_t seekTo(archive* /*reader*/, void* source, la_int64_t offset, int whence) {
    auto& from = *static_cast<Source*>(source);
    const std::int64_t start = whence == SEEK_SET   ? 0
                               : whence == SEEK_CUR ? from.offset
                                                    : from.file.status().bytes;
    std::int64_t target = 0;
    if (__builtin_add_overflow(start, offset, &target) || target < 0) {
        return ARCHIVE_FATAL;
    }
    from.offset = target;
    return target;
}

/// Only what people download: every further parser is one more that strangers' bytes get to, and each takes
/// its time and memory for every archive.
Reader newReader() {
    Reader reader(archive_read_new());
    if (reader) {
        for (const auto support : {archive_read_support_filter_gzip, archive_read_support_filter_bzip2,
                                   archive_read_support_filter_xz, archive_read_support_filter_zstd,
                                   archive_read_support_format_zip, archive_read_support_format_tar,
                                   archive_read_support_format_7zip, archive_read_support_format_rar,
                                   archive_read_support_format_rar5, archive_read_support_format_ar}) {
            support(reader.get());
        }
    }
    return reader;
}

int systemCodeOf(archive* reader) {
    const int code = archive_errno(reader);
    return code > 0 ? code : EILSEQ;
}

/// A reader of the file; the source must outlive it.
SystemResult<Reader> opened(Source& source) {
    Reader reader = newReader();
    if (!reader) {
        return failed(ENOMEM);
    }
    archive_read_set_callback_data(reader.get(), &source);
    archive_read_set_read_callback(reader.get(), readPiece);
    archive_read_set_skip_callback(reader.get(), skipBytes);
    archive_read_set_seek_callback(reader.get(), seekTo);
    if (archive_read_open1(reader.get()) != ARCHIVE_OK) {
        return failed(systemCodeOf(reader.get()));
    }
    return reader;
}

ArchiveEntry entryFrom(archive_entry* entry) {
    ArchiveEntry made;
    // Without a locale names that are marked as Unicode come in that form alone.
    const char* path = archive_entry_pathname(entry);
    path = path != nullptr ? path : archive_entry_pathname_utf8(entry);
    made.path = path != nullptr ? path : "";
    switch (archive_entry_filetype(entry)) {
    case AE_IFREG:
        made.kind = EntryKind::file;
        break;
    case AE_IFDIR:
        made.kind = EntryKind::folder;
        break;
    case AE_IFLNK:
        made.kind = EntryKind::link;
        break;
    default:
        break;
    }
    if (archive_entry_size_is_set(entry) != 0) {
        made.bytes = archive_entry_size(entry);
    }
    return made;
}

SystemResult<std::string> bytesOfEntry(archive* reader, std::size_t mostBytes) {
    std::string bytes;
    std::array<char, std::size_t{16} * 1024> piece;
    for (;;) {
        const la_ssize_t count = archive_read_data(reader, piece.data(), piece.size());
        if (count < 0) {
            return failed(systemCodeOf(reader));
        }
        if (count == 0) {
            return bytes;
        }
        bytes.append(piece.data(), static_cast<std::size_t>(count));
        if (bytes.size() > mostBytes) {
            return failed(EFBIG);
        }
    }
}

SystemResult<std::string> firstMeant(archive* reader, const EntryPredicate& isMeant, std::size_t mostBytes) {
    constexpr int mostEntries = 10000;
    for (int count = 0; count < mostEntries; ++count) {
        archive_entry* entry = nullptr;
        const int result = archive_read_next_header(reader, &entry);
        if (result == ARCHIVE_EOF) {
            return failed(ENOENT);
        }
        if (result < ARCHIVE_WARN) {
            return failed(systemCodeOf(reader));
        }
        if (isMeant(entryFrom(entry).path)) {
            return bytesOfEntry(reader, mostBytes);
        }
    }
    return failed(ENOENT);
}

} // namespace

SystemResult<void> visitArchive(const std::string& path,
                                const std::function<bool(const ArchiveEntry& entry)>& visitor,
                                const std::stop_token& stop) {
    SystemResult<QuietFile> file = QuietFile::open(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    Source source{.file = std::move(*file)};
    const SystemResult<Reader> reader = opened(source);
    if (!reader) {
        return std::unexpected(reader.error());
    }
    for (;;) {
        if (stop.stop_requested()) {
            return failed(ECANCELED);
        }
        archive_entry* entry = nullptr;
        const int result = archive_read_next_header(reader->get(), &entry);
        if (result == ARCHIVE_EOF) {
            return {};
        }
        if (result < ARCHIVE_WARN) {
            return failed(systemCodeOf(reader->get()));
        }
        if (!visitor(entryFrom(entry))) {
            return {};
        }
    }
}

SystemResult<std::string> entryOfArchive(const std::string& path, const EntryPredicate& isMeant,
                                         std::size_t mostBytes) {
    SystemResult<QuietFile> file = QuietFile::open(path);
    if (!file) {
        return std::unexpected(file.error());
    }
    Source source{.file = std::move(*file)};
    const SystemResult<Reader> reader = opened(source);
    return reader ? firstMeant(reader->get(), isMeant, mostBytes) : std::unexpected(reader.error());
}

SystemResult<std::string> entryOfArchiveIn(std::string_view bytes, const EntryPredicate& isMeant,
                                           std::size_t mostBytes) {
    const Reader reader = newReader();
    if (!reader) {
        return failed(ENOMEM);
    }
    if (archive_read_open_memory(reader.get(), bytes.data(), bytes.size()) != ARCHIVE_OK) {
        return failed(systemCodeOf(reader.get()));
    }
    return firstMeant(reader.get(), isMeant, mostBytes);
}

} // namespace lumo::platform
