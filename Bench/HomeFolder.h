#pragma once

#include "SplitMix.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::bench {

/// What all folders of one generated home share.
struct HomeState {
    /// `root` is an open descriptor of the home; it stays the caller's.
    HomeState(int root, std::int64_t files, std::uint64_t seed);

    SplitMix random;
    int rootDescriptor;
    std::int64_t left;                    ///< Files that may still be written; see `Allowance`.
    std::vector<std::string> linkSources; ///< Paths below the home of regular files, to link to later.
    std::array<char, 65536> content{};
};

/// Lets the code in its scope write at most `files` files. What it leaves goes back to the scope around it,
/// so a share never has to be met exactly for the total to come out right.
class Allowance final {
  public:
    Allowance(HomeState& state, std::int64_t files);
    ~Allowance() { state_.left += withheld_; }
    Allowance(const Allowance&) = delete;
    Allowance& operator=(const Allowance&) = delete;

  private:
    HomeState& state_;
    std::int64_t withheld_;
};

/// One folder being filled. Its times are set when it goes out of scope, since every entry written into it
/// moves them; folders inside it must be gone by then. Whatever is no folder takes one file off the
/// allowance and is silently left out when that is used up, so loops ask `hasRoom`.
class Folder final {
  public:
    /// The home itself.
    explicit Folder(HomeState& state);
    /// A new folder in `parent`, which must outlive it.
    Folder(Folder& parent, std::string_view name);
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    HomeState& state() { return state_; }
    SplitMix& random() { return state_.random; }
    bool hasRoom() const { return state_.left > 0; }

    /// From here on this folder and what is created in it is about `days` days old.
    void setAge(std::int64_t days);

    /// A folder with nothing in it.
    void emptyFolder(std::string_view name);
    /// A regular file; about one in a hundred becomes a hard link to one written earlier.
    void file(std::string_view name, std::int64_t size);
    /// A regular file of the size most files have: 0 to 16 KiB.
    void smallFile(std::string_view name);
    /// `count` small files named by `stem`, a number and `ending`.
    void smallFiles(std::int64_t count, std::string_view stem, std::string_view ending);
    /// A file that claims `apparentSize` bytes and holds one written block at its end.
    void sparseFile(std::string_view name, std::int64_t apparentSize);
    /// A further name for a file of this folder.
    void hardLink(std::string_view existing, std::string_view name);
    /// The link is written whether or not `target` exists.
    void symbolicLink(std::string_view target, std::string_view name);

  private:
    std::string pathOf(std::string_view name) const;
    bool takeOne();
    bool becomesLink(const std::string& name);
    void linkFrom(int sourceFolder, const std::string& source, const std::string& name);
    void remember(const std::string& name);
    void setTimesOf(int descriptor);
    std::int64_t someSecond();

    HomeState& state_;
    std::string path_; ///< Below the home; empty for the home.
    int descriptor_ = -1;
    std::int64_t time_ = 0; ///< Seconds since 1970.
    std::string lastFile_;
};

/// `digits` random lower-case hexadecimal digits, 16 or fewer at a time.
std::string hexName(SplitMix& random, std::size_t digits);

} // namespace tarvo::bench
