#pragma once

#include "LumoCore/Scanning/NamedTree.h"

#include <optional>
#include <string_view>
#include <vector>

namespace lumo {

/// A name of a file that has several, as its status tells.
struct SharedFile {
    platform::FileIdentity file;
    std::int64_t bytes = 0; ///< What the file takes.
    std::uint32_t links = 0;
};

/// Fills a named tree with what one thread finds, depth first. It keeps what it has until there is enough of
/// it, or somebody wants to see news, and hands that over together with what the folders around have grown
/// by.
class TreeFiller final {
  public:
    explicit TreeFiller(NamedTree& tree) : tree_(tree) {}
    ~TreeFiller() { handOver(); }
    TreeFiller(const TreeFiller&) = delete;
    TreeFiller& operator=(const TreeFiller&) = delete;

    /// Goes on in a folder that the tree has, as the outermost, with its own bytes where these are not
    /// counted yet.
    void begin(EntryIndex folder, std::int64_t ownBytes = 0);
    /// A new folder in the innermost one; from then on that is the innermost. It has its own bytes.
    void enter(std::string_view name, const EntrySums& own, std::uint8_t traits = 0, std::int64_t length = 0);
    void leave();
    /// An entry in the innermost folder. A shared file brings no bytes of its own.
    void add(std::string_view name, const EntrySums& sums, std::uint8_t traits, std::int64_t length,
             const std::optional<SharedFile>& shared = {});
    /// What an entry without anything around it takes, which the tree has already.
    void grow(EntryIndex entry, const EntrySums& sums, const std::optional<SharedFile>& shared = {});
    /// The innermost folder, or the rest of it, could not be read; or an entry that the tree has.
    void markUnreadable();
    void markUnreadable(EntryIndex entry) { tree_.markUnreadable(entry); }

    [[nodiscard]] std::size_t depth() const { return around_.size(); }
    /// The number that the folder has which so many entered ones lie around; hands over what there is.
    [[nodiscard]] EntryIndex folderAt(std::size_t level);
    void handOver();

  private:
    /// A folder that the thread is in.
    struct Open {
        TreeBatch::Place place;
        EntrySums found = {}; ///< In it and below, and not handed over yet.
    };

    void grow(const Open& folder, Open* around);
    void note(TreeBatch::Place place, const SharedFile& shared);
    void handOverNowAndThen();

    NamedTree& tree_;
    std::vector<Open> around_; ///< The outermost first, which is never in the batch.
    TreeBatch batch_;
    std::uint32_t newsTold_ = 0;
};

} // namespace lumo
