#pragma once

#include "Platform/Descriptor.h"

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo::platform {

/// A folder that was listed, and what its tree has already been charged for it.
struct FoundFolder {
    dev_t device = 0;
    ino_t inode = 0;
    std::int64_t bytes = 0;
    bool isUndated = false; ///< Files in it do not date the tree.
};

/// The folders that one thread is in, the outermost first, with those in them that it has still to open. It
/// holds the outermost and the innermost ones open, never more than it may; what lies between is found again
/// by ".." on the way back. Names are put together to paths for those who ask, but nothing is opened by a
/// whole path, so depth has no limit.
class FolderStack final {
  public:
    /// The descriptors it may hold, one more for a moment; at least 2.
    explicit FolderStack(std::size_t mostOpen) : mostOpen_(mostOpen) {}
    ~FolderStack() { clear(); }
    FolderStack(const FolderStack&) = delete;
    FolderStack& operator=(const FolderStack&) = delete;

    /// Starts in that folder. The stack is empty before.
    void begin(Descriptor folder, std::string path, const FoundFolder& found);

    [[nodiscard]] bool isEmpty() const { return levels_.empty(); }
    [[nodiscard]] std::size_t count() const { return levels_.size(); }
    /// Of the innermost; -1 when it could not be found again.
    [[nodiscard]] int descriptor() const { return levels_.back().descriptor; }
    [[nodiscard]] const FoundFolder& innermost() const { return levels_.back().folder; }
    /// The absolute path of the innermost; ends with a slash.
    [[nodiscard]] const std::string& path() const { return path_; }

    /// Keeps a folder in the innermost one for later.
    void note(std::string_view name, const FoundFolder& folder);

    struct Opened {
        std::string name;
        FoundFolder folder;
        bool isReadable;
    };

    /// Opens the folder noted last in the innermost one, and goes into it when it can be read. None when
    /// nothing is left there.
    std::optional<Opened> enterNext();

    /// Back to the folder around the innermost, of which nothing is left to open.
    void leave();

    /// Leaves all folders at once, whatever is left in them.
    void clear();

    struct Given {
        Descriptor descriptor;
        std::string path; ///< Ends with a slash.
        std::string name;
        FoundFolder folder;
        std::size_t level; ///< How many folders lie around the one that holds it.
    };

    /// Gives up the outermost folder that can be opened at once, unless nothing would be left to do here.
    std::optional<Given> giveAway();

    /// Opens a folder by a name that is no link. When the process is out of descriptors those that this stack
    /// can spare go first, and then it waits a little for others to close theirs.
    Descriptor open(int base, const char* name);

  private:
    struct Unopened {
        FoundFolder folder;
        std::size_t name; ///< Where it starts in `names_`.
    };
    struct Level {
        FoundFolder folder;
        int descriptor = -1;
        std::size_t pathLength = 0;    ///< Of the path up to it.
        std::size_t firstUnopened = 0; ///< Its own follow, up to those of the next level.
        std::size_t nextToGive = 0;    ///< Those before have been given away.
        std::size_t firstName = 0;
    };

    /// Makes one of the first folders noted in a level the first, and opens it; not open when none can be.
    Descriptor openFirstReadable(std::size_t level);
    void push(Descriptor descriptor, const FoundFolder& folder);
    [[nodiscard]] std::size_t endOfUnopened(std::size_t level) const;
    /// Closes descriptors between the outermost and the innermost levels until so many are open.
    void closeDownTo(std::size_t most);
    /// A level that is closed, through the descriptor of the folder in it that was left, or by the names from
    /// the outermost one.
    [[nodiscard]] Descriptor findAgain(std::size_t level, int below) const;
    [[nodiscard]] Descriptor descendTo(std::size_t level) const;

    const std::size_t mostOpen_;
    std::vector<Level> levels_;
    std::size_t firstOpen_ = 1; ///< All levels from this one on are open, and the outermost.
    std::vector<Unopened> unopened_;
    std::size_t unopenedCount_ = 0; ///< Without those given away.
    std::string names_;             ///< Of those noted in the open levels, each with a zero byte.
    std::string path_;
};

} // namespace lumo::platform
