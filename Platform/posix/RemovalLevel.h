#pragma once

#include "Platform/Descriptor.h"
#include "Platform/FolderStatus.h"
#include "Platform/SystemError.h"
#include "Platform/posix/RemovalCrew.h"

#include <dirent.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::platform {

enum class Rights { asTheyAre, addedWhereOwn };

struct OpenedFolder {
    Descriptor descriptor;
    FolderStatus status;
};

/// Opens a real folder by a name in another one.
SystemResult<OpenedFolder> openAsItIs(int parent, const char* name);

/// The same for a folder whose rights may have to be added first. Nothing is added on another mount.
SystemResult<OpenedFolder> openWithOwnerRights(int parent, const char* name, const FolderStatus& onMountOf);

/// A folder on the way from the item to where a removal is, and which of its entries are still to be taken.
class RemovalLevel final {
  public:
    RemovalLevel(std::string folderName, const FolderStatus& folderStatus)
        : name(std::move(folderName)), status(folderStatus) {}
    /// Only those entries of a folder.
    explicit RemovalLevel(RemovalPart& part)
        : status(part.status), part_(std::move(part.folder)), pending_(std::move(part.entries)) {}

    /// Starts to read the folder from its beginning. 0, or why it cannot.
    int list(Descriptor folder);
    void listAgain();
    /// Gives its descriptor up, since it is needed further down.
    void close() { listing_.reset(); }
    [[nodiscard]] bool isOpen() const { return descriptor() >= 0; }
    [[nodiscard]] int descriptor() const { return listing_ ? dirfd(listing_.get()) : part_.number(); }

    /// The next entry; none at the end, and where reading fails. The reason is 0 or given to `failure`.
    std::optional<EntryName> next(int& failure);
    /// Entries that another thread gave back; they come next.
    void putBack(std::vector<EntryName> entries) { pending_ = std::move(entries); }
    /// So many of the next entries, for another thread: half of what is known to be left, if that is less.
    std::vector<EntryName> share(std::size_t most, int& failure);

    void remember(std::string_view entry);
    /// What became of entries that another thread took.
    void add(const RemovalPart& part);
    void moveResultTo(RemovalPart& part);

    std::string name;
    FolderStatus status;
    std::vector<std::shared_ptr<RemovalPart>> parts = {}; ///< With other threads.
    int listings = 1;
    bool hasRemoved = false; ///< Since this listing began.
    bool hasFailed = false;

  private:
    struct CloseListing {
        void operator()(DIR* listing) const { closedir(listing); }
    };

    void begin();
    [[nodiscard]] bool wasStuck(std::string_view entry) const;

    std::unique_ptr<DIR, CloseListing> listing_; ///< None for a part, and while it is closed.
    Descriptor part_;
    std::vector<EntryName> pending_;
    std::vector<std::size_t>
        stuck_;                   ///< Hashes of the names that could not be removed: there may be millions.
    std::size_t stuckBefore_ = 0; ///< So many of them, in order, are from earlier listings.
    bool hasBegun_ = false;       ///< This listing has been read from.
    bool hasEnded_ = false;
};

} // namespace lumo::platform
