#pragma once

#include "Platform/LinkedFiles.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What a walk keeps while it breaks a tree down: shared by all walkers, so that they cannot differ in it.
namespace lumo::platform {

/// How many entries are kept of a folder that many levels below the root; with 0 its entries are no parts.
inline std::size_t mostPartsAt(std::size_t level, const BreakdownLimits& limits) {
    return level == 0 ? limits.mostParts : level == 1 ? limits.mostPartsBelow : 0;
}

/// The largest parts out of any number of them, in the memory of twice as many as are kept.
class LargestParts final {
  public:
    explicit LargestParts(std::size_t most) : most_(most) {}

    /// One with nothing in it, to be added to this one later: what has no chance here has none there.
    [[nodiscard]] LargestParts fresh() const;

    /// Cheap for what is too small to be kept.
    void add(std::string_view name, std::int64_t bytes, bool isFolder);
    void add(TreePart part);
    void add(LargestParts other);

    [[nodiscard]] TreeParts take();

  private:
    /// Counts a part that is too small with the rest, and tells that it did.
    bool leavesOut(std::string_view name, std::int64_t bytes);
    void cut();

    std::size_t most_;
    std::int64_t smallestBytes_ = -1; ///< Of the smallest that was kept when parts were last left out.
    std::string smallestName_;
    TreeParts parts_; ///< In no order until they are taken.
};

/// What files take by their extensions.
class ExtensionTally final {
  public:
    void add(std::string_view fileName, std::int64_t bytes);
    void add(const ExtensionTally& other);

    void addTo(TreeBreakdown& breakdown) const;

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    using Sums = std::unordered_map<std::string, std::int64_t, Hash, std::equal_to<>>;

    void addTo(std::string_view extension, std::int64_t bytes);
    void cut();

    Sums sums_;
    std::int64_t otherBytes_ = 0;
    Sums::value_type* last_ = nullptr; ///< The sum added to last: neighbours mostly share their extension.
    std::string extension_;            ///< Kept for its memory.
};

/// A folder near the root of a tree, until all of it has been read. There may be very many of these.
struct Branch {
    Branch* parent = nullptr; ///< None for the root.
    std::string name;
    std::size_t level = 0; ///< How many folders lie around it in the tree.
    std::size_t mostParts = 0;
    /// Threads that are in it or will be, and folders in it that have not joined it yet.
    std::size_t claims = 0;
    std::int64_t allocatedBytes = 0;            ///< Without the parts that have not joined it yet.
    std::unique_ptr<LargestParts> entries = {}; ///< None before the first, and where entries are no parts.
    /// Files with several names lie below: what the folder takes is known when all of these are settled.
    bool waitsForLinks = false;
    std::vector<std::unique_ptr<Branch>> waiting = {}; ///< Folders in it that have been read and wait so.

    /// The parts in it, to be added to.
    LargestParts& parts();
    /// What a thread begins with in it; none where entries are no parts.
    [[nodiscard]] std::optional<LargestParts> freshParts() const;
    void addBytes(std::int64_t bytes);

    /// Counts a folder in it, of which all has been read, as a part.
    void join(std::unique_ptr<Branch> ended);
    /// Everything in it, once nothing waits any more.
    [[nodiscard]] TreeParts take();

  private:
    void joinNow(Branch& ended);
};

/// Which name of each file with several counts in a breakdown: the first of its paths in byte order, however
/// the walk comes to them.
class LinkedParts final {
  public:
    /// Notes a name of the file, with the branch that it lies in. In a folder whose entries are parts the
    /// file is one, too.
    void meet(FileIdentity file, std::string path, Branch& branch, bool isPart);

    /// Charges the file to the name that counts; without bytes to none. Each file is to be settled once.
    void settle(FileIdentity file, std::optional<std::int64_t> bytes, ExtensionTally& extensions);

  private:
    struct Name {
        std::string path;
        Branch* branch = nullptr;
        bool isPart = false;

        void leaveOut() const;
    };
    std::unordered_map<FileIdentity, Name, HashOfIdentity> first_;
};

} // namespace lumo::platform
