#include "LumoCore/Cleanup/ArchiveStaging.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/UniqueID.h"
#include "Platform/LogFile.h"
#include "Platform/Removal.h"

#include <utility>
#include <vector>

namespace lumo {

using platform::Place;
using platform::SystemResult;

namespace {

constexpr std::string_view mark = ".tarvo.nuevo-"; ///< Before a unique name.

/// A line of the file that says where archives are being made.
struct Note {
    std::string folder;

    static constexpr auto fields = std::tuple{field("folder", &Note::folder)};
};

SystemResult<std::vector<std::string>> notedFolders(const std::string& notes) {
    std::vector<std::string> folders;
    const auto read = platform::visitLines(notes, mostJsonBytes, [&](std::string_view line) {
        if (Result<Note> note = decodeJson<Note>(line)) {
            folders.push_back(std::move(note->folder));
        }
    });
    return read ? SystemResult<std::vector<std::string>>(std::move(folders)) : std::unexpected(read.error());
}

/// Anybody may have written into the notes: nothing but a folder that only we name like this is touched.
bool isOurs(const std::string& folder) {
    const std::string_view name = fileName(folder);
    return name.starts_with(mark) && isUniqueID(name.substr(mark.size()));
}

/// True when nothing is left of it that we may remove.
bool isGone(const std::string& folder, const PathGuard& guard) {
    if (!isOurs(folder)) {
        return true;
    }
    const SystemResult<Place> place = guard.place(folder);
    if (!place) {
        // What cannot be reached now, because something on the way leads elsewhere, may be tomorrow.
        return place.error().isMissing() || !isInside(folder, guard.home());
    }
    return platform::removeTree(*place).has_value();
}

} // namespace

SystemResult<ArchiveStaging> ArchiveStaging::make(const PathGuard& guard, const std::string& folder) {
    const std::string path = folder + "/" + std::string(mark) + uniqueID();
    const auto noted = platform::appendLines(OwnFiles::archiving(guard.home()),
                                             dumpJson(encode(Note{path}), JsonLayout::line) + "\n");
    if (!noted) {
        return std::unexpected(noted.error());
    }
    ArchiveStaging staging(guard, path);
    const SystemResult<Place> place = guard.place(path);
    const SystemResult<void> made =
        place ? platform::makeFolderAt(*place, 0700) : std::unexpected(place.error());
    return made ? SystemResult<ArchiveStaging>(std::move(staging)) : std::unexpected(made.error());
}

ArchiveStaging::ArchiveStaging(ArchiveStaging&& other) noexcept
    : guard_(std::exchange(other.guard_, nullptr)), path_(std::move(other.path_)) {}

ArchiveStaging::~ArchiveStaging() {
    if (guard_ != nullptr) {
        sweep(*guard_);
    }
}

SystemResult<Place> ArchiveStaging::archivePlace() const {
    return guard_->place(archivePath());
}

void ArchiveStaging::sweep(const PathGuard& guard) {
    const std::string notes = OwnFiles::archiving(guard.home());
    if (!platform::kindOf(notes)) {
        return;
    }
    const SystemResult<std::vector<std::string>> folders = notedFolders(notes);
    if (!folders) {
        return; // What cannot be read now may still name something.
    }
    bool isAllGone = true;
    for (const std::string& folder : *folders) {
        isAllGone = isGone(folder, guard) && isAllGone;
    }
    if (isAllGone) {
        // A note that stays names a folder that is gone: the next sweep finds nothing to do.
        (void)platform::cutBack(notes, 0);
    }
}

} // namespace lumo
