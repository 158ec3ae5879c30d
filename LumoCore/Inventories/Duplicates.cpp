#include "LumoCore/Inventories/Duplicates.h"

#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Inventories/UserFiles.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "Platform/QuietFile.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <span>
#include <tuple>
#include <utility>

namespace lumo::Duplicates {

namespace {

using platform::Digest;
using platform::FilesFound;
using platform::FileStatus;
using platform::QuietFile;

constexpr InventoryKind kind = InventoryKind::duplicates;
constexpr std::string_view between = "//"; // No path that is spelt out has it.
constexpr std::int64_t usualMinimum = 1000000;
constexpr std::size_t mostBeside = 8; ///< Files that are read beside each other; threads have as many each.

/// A file of a group whose bytes are equal, with all its names.
struct Copy {
    std::vector<std::string> names;
    FileStatus status = {}; ///< Once it was opened.
};

/// What an id says.
struct Pair {
    std::string gone;
    std::string kept;
};

std::optional<Pair> pairIn(std::string_view id, std::string_view home) {
    const std::string_view prefix = idPrefixOf(kind);
    const std::size_t middle = id.find(between, prefix.size());
    if (!id.starts_with(prefix) || middle == std::string_view::npos) {
        return std::nullopt;
    }
    auto gone = pathFromID(id.substr(prefix.size(), middle - prefix.size()), home);
    auto kept = pathFromID(id.substr(middle + between.size()), home);
    return gone && kept && *gone != *kept ? std::optional(Pair{std::move(*gone), std::move(*kept)})
                                          : std::nullopt;
}

DetailItem itemOf(const Copy& copy, const std::string& kept, const InventoryQuery& query) {
    const std::string& path = copy.names.front();
    std::string detail = Words{"Igual que {}, que se queda", "The same as {}, which stays"}.in(
        query.language, abbreviated(kept, query.home));
    if (copy.names.size() > 1) {
        detail += "; " + otherNamesText(copy.names, query.home, query.language);
    }
    DetailItem item = itemToSetAside(std::string(idPrefixOf(kind)) + pathInID(path, query.home) +
                                         std::string(between) + pathInID(kept, query.home),
                                     std::string(fileName(path)), copy.names, copy.status.allocatedBytes,
                                     std::move(detail));
    item.kept = kept;
    return item;
}

/// One search for files that are there more than once.
class Search final {
  public:
    explicit Search(const InventoryQuery& query)
        : query_(query), own_(query), found_(own_.search(query.minimumBytes.value_or(usualMinimum))),
          places_(HomePlaces::ofThisMachine(query.home)),
          untidy_{places_.path("~/Downloads"), places_.path("~/Desktop")} {}

    Inventory run() {
        Inventory inventory{.kind = kind};
        inventory.miss(found_);
        const std::vector<Candidate> candidates = alike();
        std::vector<std::span<const Candidate>> groups = groupsIn(candidates);
        std::ranges::sort(groups, {},
                          [&](std::span<const Candidate> group) { return fileOf(group.front()).object; });
        std::mutex mutex;
        parallelFor(groups.size(), query_.stop, [&](std::size_t index) {
            std::vector<DetailItem> items = itemsOf(groups[index]);
            const std::lock_guard lock(mutex);
            std::ranges::move(items, std::back_inserter(inventory.items));
        });
        sortLargestFirst(inventory.items);
        return inventory;
    }

  private:
    /// A file that may be as long as another one, by its number, and what its first and last blocks come to.
    struct Candidate {
        std::uint32_t file = 0;
        bool isReadable = false;
        std::uint64_t ends = 0;
    };

    [[nodiscard]] const FilesFound::File& fileOf(const Candidate& candidate) const {
        return found_.files()[candidate.file];
    }

    /// The files that have a length in common with another file.
    [[nodiscard]] std::vector<Candidate> sameLength() const {
        std::vector<Candidate> all(found_.files().size());
        for (std::uint32_t index = 0; index < all.size(); ++index) {
            all[index].file = index;
        }
        const auto bytesOf = [&](const Candidate& candidate) { return fileOf(candidate).bytes; };
        std::ranges::sort(all, {}, bytesOf);
        // In place, since there may be a million.
        std::size_t kept = 0;
        for (std::size_t first = 0; first < all.size();) {
            std::size_t end = first + 1;
            while (end < all.size() && bytesOf(all[end]) == bytesOf(all[first])) {
                ++end;
            }
            if (end - first > 1 && bytesOf(all[first]) > 0) {
                std::copy(all.begin() + static_cast<std::ptrdiff_t>(first),
                          all.begin() + static_cast<std::ptrdiff_t>(end),
                          all.begin() + static_cast<std::ptrdiff_t>(kept));
                kept += end - first;
            }
            first = end;
        }
        all.resize(kept);
        return all;
    }

    /// Those of them that also begin and end alike, in the order of their lengths and ends; names of one file
    /// beside each other. What cannot be read is nobody's copy.
    [[nodiscard]] std::vector<Candidate> alike() const {
        std::vector<Candidate> candidates = sameLength();
        // By the number of the file, which is nearly as the disk holds them: in any other order it would seek
        // for each.
        std::ranges::sort(candidates, {},
                          [&](const Candidate& candidate) { return fileOf(candidate).object; });
        parallelFor(candidates.size(), query_.stop, [&](std::size_t index) {
            const auto file = QuietFile::open(found_.pathOf(fileOf(candidates[index])));
            const auto digest = file ? digestOfEnds(*file) : platform::failed(EINVAL);
            candidates[index].isReadable = digest.has_value();
            candidates[index].ends = digest ? digest->front() ^ digest->back() : 0;
        });
        std::erase_if(candidates, [](const Candidate& candidate) { return !candidate.isReadable; });
        std::ranges::sort(candidates, {}, [&](const Candidate& candidate) {
            return std::tuple(fileOf(candidate).bytes, candidate.ends, fileOf(candidate).object,
                              candidate.file);
        });
        return candidates;
    }

    [[nodiscard]] std::vector<std::span<const Candidate>> groupsIn(std::span<const Candidate> all) const {
        std::vector<std::span<const Candidate>> groups;
        for (std::size_t first = 0; first < all.size();) {
            std::size_t end = first + 1;
            while (end < all.size() && all[end].ends == all[first].ends &&
                   fileOf(all[end]).bytes == fileOf(all[first]).bytes) {
                ++end;
            }
            if (end - first > 1) {
                groups.push_back(all.subspan(first, end - first));
            }
            first = end;
        }
        return groups;
    }

    /// The files of a group, each with all its names.
    [[nodiscard]] std::vector<Copy> copiesIn(std::span<const Candidate> group) const {
        std::vector<Copy> copies;
        for (std::size_t first = 0; first < group.size();) {
            Copy copy;
            std::size_t end = first;
            for (; end < group.size() && found_.isSame(fileOf(group[first]), fileOf(group[end])); ++end) {
                std::string path = found_.pathOf(fileOf(group[end]));
                if (own_.mayHold(path)) {
                    copy.names.push_back(std::move(path));
                }
            }
            first = end;
            std::ranges::sort(copy.names);
            if (!copy.names.empty()) {
                copies.push_back(std::move(copy));
            }
        }
        return copies;
    }

    [[nodiscard]] std::vector<DetailItem> itemsOf(std::span<const Candidate> group) const {
        std::vector<DetailItem> items;
        for (std::vector<Copy>& copies : equalIn(copiesIn(group))) {
            std::ranges::sort(copies, {}, [this](const Copy& copy) { return tidiness(copy); });
            const std::string& kept = copies.front().names.front();
            for (const Copy& copy : std::span(copies).subspan(1)) {
                // Where other names of the file stay, nothing is freed.
                const bool isWhole = copy.names.size() == copy.status.links;
                if (isWhole && query_.asksFor(copy.status.allocatedBytes, copy.status.modified)) {
                    items.push_back(itemOf(copy, kept, query_));
                }
            }
        }
        return items;
    }

    /// The copies in groups of equal bytes. A handful is read beside each other; of more a digest tells first
    /// which are worth that.
    [[nodiscard]] std::vector<std::vector<Copy>> equalIn(std::vector<Copy> copies) const {
        if (copies.size() <= mostBeside) {
            return equalBeside(std::move(copies));
        }
        std::map<Digest, std::vector<Copy>> byDigest;
        for (Copy& copy : copies) {
            const auto file = QuietFile::open(copy.names.front());
            const auto digest = file ? digestOfFile(*file, query_.stop, onBytes()) : platform::failed(EINVAL);
            if (digest) {
                byDigest[*digest].push_back(std::move(copy));
            }
        }
        std::vector<std::vector<Copy>> equal;
        for (auto& [digest, same] : byDigest) {
            std::ranges::move(equalBeside(std::move(same)), std::back_inserter(equal));
        }
        return equal;
    }

    [[nodiscard]] std::vector<std::vector<Copy>> equalBeside(std::vector<Copy> copies) const {
        std::vector<std::vector<Copy>> equal;
        while (copies.size() > 1) {
            std::vector<Copy> group;
            std::vector<Copy> others;
            takeEqual(copies, group, others);
            if (group.size() > 1) {
                equal.push_back(std::move(group));
            }
            copies = std::move(others);
        }
        return equal;
    }

    /// Sorts the copies into those with the bytes of the first and the others, which are fewer by one at
    /// least. What cannot be read, and what only refers to the blocks of the first, is in neither.
    void takeEqual(std::vector<Copy>& copies, std::vector<Copy>& group, std::vector<Copy>& others) const {
        const auto first = QuietFile::open(copies.front().names.front());
        if (!first) {
            others.assign(std::make_move_iterator(copies.begin() + 1), std::make_move_iterator(copies.end()));
            return;
        }
        copies.front().status = first->status();
        for (std::size_t begin = 1; begin < copies.size(); begin += mostBeside) {
            const std::size_t count = std::min(mostBeside, copies.size() - begin);
            sortBeside(*first, std::span(copies).subspan(begin, count), group, others);
        }
        group.push_back(std::move(copies.front()));
    }

    void sortBeside(const QuietFile& first, std::span<Copy> copies, std::vector<Copy>& group,
                    std::vector<Copy>& others) const {
        std::vector<QuietFile> files;
        std::vector<Copy*> opened;
        for (Copy& copy : copies) {
            if (auto file = QuietFile::open(copy.names.front())) {
                copy.status = file->status();
                files.push_back(std::move(*file));
                opened.push_back(&copy);
            }
        }
        std::vector<const QuietFile*> pointers;
        std::ranges::transform(files, std::back_inserter(pointers),
                               [](const QuietFile& file) { return &file; });
        const auto isSame = haveBytesOf(first, pointers, query_.stop, onBytes());
        for (std::size_t index = 0; isSame && index < files.size(); ++index) {
            if ((*isSame)[index] == 0) {
                others.push_back(std::move(*opened[index]));
            } else if (!shareBlocks(first, files[index])) {
                group.push_back(std::move(*opened[index]));
            }
        }
    }

    [[nodiscard]] platform::OnBytes onBytes() const {
        return [this](std::int64_t bytes) {
            if (query_.progress != nullptr) {
                query_.progress->bytes += bytes;
            }
        };
    }

    /// The smallest stays.
    [[nodiscard]] std::tuple<bool, std::size_t, Date, std::string> tidiness(const Copy& copy) const {
        const std::string& path = copy.names.front();
        const bool isUntidy =
            std::ranges::any_of(untidy_, [&](const std::string& folder) { return isInside(path, folder); });
        return {isUntidy, components(path).size(), copy.status.modified, path};
    }

    const InventoryQuery& query_;
    UserFiles own_;
    FilesFound found_;
    HomePlaces places_;
    std::vector<std::string> untidy_;
};

std::string noLongerSame(const Pair& pair, const InventoryQuery& query) {
    return Words{"{} ya no es igual que {}", "{} is no longer the same as {}"}.in(
        query.language, abbreviated(pair.gone, query.home), abbreviated(pair.kept, query.home));
}

} // namespace

Inventory find(const InventoryQuery& query) {
    return Search(query).run();
}

namespace {

/// True when the two are different files of one length that begin and end alike.
bool seemSame(const platform::SystemResult<QuietFile>& left, const platform::SystemResult<QuietFile>& right) {
    if (!left || !right || left->status().identity == right->status().identity ||
        left->status().bytes != right->status().bytes) {
        return false;
    }
    const auto ends = digestOfEnds(*left);
    return ends && ends == digestOfEnds(*right) && !shareBlocks(*left, *right);
}

} // namespace

std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query) {
    const UserFiles own(query);
    std::vector<DetailItem> items;
    for (const std::string& id : ids) {
        const auto pair = pairIn(id, query.home);
        if (!pair || !own.mayHold(pair->gone) || !own.mayHold(pair->kept)) {
            continue;
        }
        const auto gone = QuietFile::open(pair->gone);
        if (!seemSame(gone, QuietFile::open(pair->kept))) {
            continue;
        }
        const Copy copy{.names = own.namesOf(pair->gone, gone->status()), .status = gone->status()};
        if (!copy.names.empty()) {
            items.push_back(itemOf(copy, pair->kept, query));
        }
    }
    return items;
}

std::optional<std::string> regret(const CleanupAction& action, const std::vector<std::string>& heldPaths,
                                  const InventoryQuery& query) {
    const auto pair = pairIn(action.id, query.home);
    const bool areSame = pair && std::ranges::all_of(heldPaths, [&](const std::string& path) {
                             return seemSame(QuietFile::open(path), QuietFile::open(pair->kept));
                         });
    return areSame ? std::nullopt
                   : std::optional(Words{"la copia que se queda ha cambiado mientras tanto",
                                         "the copy that stays has changed meanwhile"}
                                       .in(query.language));
}

std::optional<std::string> keptBy(const std::string& id, const std::string& home) {
    const auto pair = pairIn(id, home);
    return pair ? std::optional(pair->kept) : std::nullopt;
}

std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query) {
    const auto pair = pairIn(action.id, query.home);
    const auto* taken = std::get_if<method::TrashItems>(&action.method);
    if (!pair || taken == nullptr) {
        return Words{"no se sabe qué copia se queda", "it is not known which copy stays"}.in(query.language);
    }
    const auto kept = QuietFile::open(pair->kept);
    if (!kept) {
        return Words{"{}, la copia que se queda, ya no está", "{}, the copy that stays, is no longer there"}
            .in(query.language, abbreviated(pair->kept, query.home));
    }
    for (const std::string& path : taken->paths) {
        const auto gone = QuietFile::open(path);
        if (!gone && gone.error().isMissing()) {
            continue; // Then there is nothing to take.
        }
        const bool isOther = gone && gone->status().identity != kept->status().identity &&
                             gone->status().bytes == kept->status().bytes;
        const auto same = isOther ? haveSameBytes(*gone, *kept, query.stop) : platform::failed(EINVAL);
        if (!same || !*same) {
            return noLongerSame(*pair, query);
        }
    }
    return std::nullopt;
}

} // namespace lumo::Duplicates
