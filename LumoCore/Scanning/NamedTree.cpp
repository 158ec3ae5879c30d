#include "LumoCore/Scanning/NamedTree.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace lumo {

namespace {

constexpr std::int64_t mostBytes = std::int64_t{1} << 55;
constexpr std::size_t nodesAPiece = 4096;
constexpr std::size_t bytesAPiece = std::size_t{1} << 18;
/// Names begin at multiples of this, so that 32 bits reach twice as far.
constexpr std::size_t nameStep = 2;
/// Before a name stands its length, in one byte, or this and the length in two.
constexpr std::size_t longName = 0xFF;
constexpr std::size_t longestName = 0xFFFF;
/// How many names are looked for among those that were kept: in most homes two of three names are one of a
/// few
/// ("index.js", "package.json").
constexpr std::size_t rememberedNames = 16384;
/// How many entries are looked at before whoever waits for the lock may have it, some tenths of a
/// millisecond.
constexpr std::size_t looksAPiece = 8192;

auto orderOf(const platform::FileIdentity& file) {
    return std::tuple(file.device, file.object);
}

/// The names of each file together, which stand one after the other.
template <class Name>
std::vector<std::span<Name>> byFile(std::span<Name> names) {
    std::vector<std::span<Name>> files;
    while (!names.empty()) {
        const auto end =
            std::ranges::find_if(names, [&](const Name& name) { return name.file != names.front().file; });
        files.push_back(names.first(static_cast<std::size_t>(end - names.begin())));
        names = names.subspan(files.back().size());
    }
    return files;
}

} // namespace

EntrySums& EntrySums::operator+=(const EntrySums& other) {
    // Both are at most the most, so that their sum fits.
    bytes = std::min(bytes + std::min(other.bytes, mostBytes), mostBytes);
    items += other.items;
    modified = std::max(modified, other.modified);
    return *this;
}

/// An entry as it is kept. Brothers and sisters are a list, the last found first.
struct NamedTree::Node {
    std::uint32_t name = 0;
    EntryIndex parent = noEntry;
    EntryIndex next = noEntry;
    EntryIndex firstBelow = noEntry;
    std::uint64_t bytesAndTraits = 0; ///< The traits in the lowest 8 bits.
    std::uint32_t items = 0;
    std::uint32_t modified = 0;

    [[nodiscard]] std::int64_t bytes() const { return static_cast<std::int64_t>(bytesAndTraits >> 8U); }
    [[nodiscard]] std::uint8_t traits() const { return static_cast<std::uint8_t>(bytesAndTraits); }
    [[nodiscard]] EntrySums sums() const { return {bytes(), items, modified}; }

    void set(const EntrySums& sums, std::uint8_t traits) {
        const auto kept = static_cast<std::uint64_t>(std::clamp<std::int64_t>(sums.bytes, 0, mostBytes));
        bytesAndTraits = (kept << 8U) | traits;
        items = sums.items;
        modified = sums.modified;
    }
    [[nodiscard]] bool is(std::uint8_t trait) const { return (traits() & trait) != 0; }
    void give(std::uint8_t trait) { bytesAndTraits |= trait; }
    void take(std::uint8_t trait) { bytesAndTraits &= ~std::uint64_t{trait}; }
    void grow(const EntrySums& more) {
        EntrySums all = sums();
        set(all += more, traits());
    }
    void shrink(const EntrySums& less) {
        set({bytes() - less.bytes, items - std::min(items, less.items), modified}, traits());
    }
};

EntryIndex TreeBatch::add(Place parent, std::string_view name, const EntrySums& sums, std::uint8_t traits,
                          std::int64_t length) {
    entries.push_back({.parent = parent,
                       .nameAt = static_cast<std::uint32_t>(names.size()),
                       .nameBytes = static_cast<std::uint32_t>(name.size()),
                       .sums = sums,
                       .traits = traits,
                       .length = length});
    names += name;
    return static_cast<EntryIndex>(entries.size() - 1);
}

void TreeBatch::clear() {
    names.clear();
    entries.clear();
    changes.clear();
    linked.clear();
}

NamedTree::NamedTree(std::string rootPath, Lengths lengths)
    : lengths_(lengths), remembered_(rememberedNames) {
    static_assert(sizeof(Node) == 32);
    const platform::Locked locked(mutex_);
    append(noEntry, rootPath, {}, EntryTraits::folder, 0);
}

NamedTree::~NamedTree() = default;

NamedTree::Node& NamedTree::node(EntryIndex index) const {
    return nodes_[index / nodesAPiece][index % nodesAPiece];
}

std::uint32_t NamedTree::keep(std::string_view name) {
    // No system has longer names; a root's path is cut nowhere near this.
    name = name.substr(0, longestName);
    std::uint32_t& remembered = remembered_[std::hash<std::string_view>()(name) % rememberedNames];
    if (!names_.empty() && nameAt(remembered) == name) {
        return remembered;
    }
    const std::size_t lengthBytes = name.size() < longName ? 1 : 3;
    const std::size_t needed = (lengthBytes + name.size() + nameStep - 1) / nameStep * nameStep;
    if (names_.size() * bytesAPiece - namesUsed_ < needed) {
        namesUsed_ = names_.size() * bytesAPiece;
        names_.push_back(std::make_unique_for_overwrite<char[]>(bytesAPiece));
    }
    char* place = names_.back().get() + namesUsed_ % bytesAPiece;
    *place = static_cast<char>(std::min(name.size(), longName));
    if (lengthBytes > 1) {
        const auto length = static_cast<std::uint16_t>(name.size());
        std::memcpy(place + 1, &length, sizeof length);
    }
    std::memcpy(place + lengthBytes, name.data(), name.size());
    remembered = static_cast<std::uint32_t>(namesUsed_ / nameStep);
    namesUsed_ += needed;
    return remembered;
}

std::string_view NamedTree::nameAt(std::uint32_t place) const {
    const std::size_t at = std::size_t{place} * nameStep;
    const char* kept = names_[at / bytesAPiece].get() + at % bytesAPiece;
    std::size_t length = static_cast<unsigned char>(*kept++);
    if (length == longName) {
        std::uint16_t written = 0;
        std::memcpy(&written, kept, sizeof written);
        length = written;
        kept += sizeof written;
    }
    return {kept, length};
}

EntryIndex NamedTree::append(EntryIndex parent, std::string_view name, const EntrySums& sums,
                             std::uint8_t traits, std::int64_t length) {
    if (count_ % nodesAPiece == 0) {
        nodes_.push_back(std::make_unique<Node[]>(nodesAPiece));
        if (lengths_ == Lengths::kept) {
            lengthsOf_.push_back(std::make_unique<std::int64_t[]>(nodesAPiece));
        }
    }
    const EntryIndex index = count_++;
    Node& made = node(index);
    made.name = keep(name);
    made.set(sums, traits);
    if (parent != noEntry) {
        Node& around = node(parent);
        made.parent = parent;
        made.next = std::exchange(around.firstBelow, index);
    }
    if (lengths_ == Lengths::kept) {
        lengthsOf_[index / nodesAPiece][index % nodesAPiece] = length;
    }
    return index;
}

EntryIndex NamedTree::add(TreeBatch& batch) {
    const platform::Locked locked(mutex_);
    const EntryIndex base = count_;
    for (const TreeBatch::Found& found : batch.entries) {
        const EntryIndex made = append(found.parent.index + (found.parent.isInBatch ? base : 0),
                                       std::string_view(batch.names).substr(found.nameAt, found.nameBytes),
                                       found.sums, found.traits, found.length);
        if (node(made).is(EntryTraits::unreadable)) {
            tellUnreadable(made);
        }
    }
    for (const TreeBatch::Change& change : batch.changes) {
        if (change.reachesUp) {
            growAround(change.entry, change.sums);
        } else {
            node(change.entry).grow(change.sums);
        }
    }
    for (const TreeBatch::Name& name : batch.linked) {
        const EntryIndex entry = name.entry.index + (name.entry.isInBatch ? base : 0);
        node(entry).give(EntryTraits::hasNames);
        linked_.push_back({.file = name.file, .bytes = name.bytes, .entry = entry, .links = name.links});
        isLinkedSorted_ = false;
    }
    batch.clear();
    return base;
}

void NamedTree::growAround(EntryIndex index, const EntrySums& sums) {
    for (EntryIndex above = node(index).parent; above != noEntry; above = node(above).parent) {
        node(above).grow(sums);
    }
}

void NamedTree::shrinkAround(EntryIndex index, const EntrySums& sums) {
    for (EntryIndex above = node(index).parent; above != noEntry; above = node(above).parent) {
        node(above).shrink(sums);
    }
}

void NamedTree::sortLinked() {
    if (!isLinkedSorted_) {
        std::ranges::sort(linked_, {}, [](const LinkedName& name) {
            return std::tuple_cat(orderOf(name.file), std::tuple(name.entry));
        });
        isLinkedSorted_ = true;
    }
}

void NamedTree::chargeLinked() {
    const platform::Locked locked(mutex_);
    sortLinked();
    for (const auto names : byFile(std::span(linked_))) {
        chargeGroup(names);
    }
}

void NamedTree::chargeLast(std::string folder) {
    const platform::Locked locked(mutex_);
    chargedLast_ = std::move(folder);
}

void NamedTree::chargeGroup(std::span<LinkedName> names) {
    LinkedName* wanted = nullptr;
    std::pair<bool, std::string> first; // The last folder comes after all others.
    for (LinkedName& name : names) {
        if (!isHeld(name.entry)) {
            name.isCharged = false; // Its bytes went with it.
            continue;
        }
        std::pair<bool, std::string> its;
        if (names.size() > 1) {
            its.second = path(name.entry);
            its.first = !chargedLast_.empty() && isInside(its.second, chargedLast_);
        }
        if (wanted == nullptr || its < first) {
            wanted = &name;
            first = std::move(its);
        }
    }
    for (LinkedName& name : names) {
        if (name.isCharged == (&name == wanted)) {
            continue;
        }
        name.isCharged = !name.isCharged;
        const EntrySums sums{.bytes = name.bytes};
        if (name.isCharged) {
            node(name.entry).grow(sums);
            growAround(name.entry, sums);
        } else {
            node(name.entry).shrink(sums);
            shrinkAround(name.entry, sums);
        }
    }
}

void NamedTree::waive(platform::FileIdentity file) {
    const platform::Locked locked(mutex_);
    for (LinkedName& name : linked_) {
        if (name.file == file && !name.isCharged) {
            name.bytes = 0;
        }
    }
}

void NamedTree::detach(EntryIndex entry) {
    const platform::Locked locked(mutex_);
    Node& taken = node(entry);
    if (taken.parent == noEntry) {
        return;
    }
    EntrySums all = taken.sums();
    all.items += 1;
    shrinkAround(entry, all);
    EntryIndex* toIt = &node(taken.parent).firstBelow;
    while (*toIt != entry) {
        toIt = &node(*toIt).next;
    }
    *toIt = taken.next;
    taken.next = noEntry;
    settleAround(entry, std::exchange(taken.parent, noEntry));
}

void NamedTree::markUnreadable(EntryIndex entry) {
    const platform::Locked locked(mutex_);
    node(entry).give(EntryTraits::unreadable);
    tellUnreadable(entry);
}

/// Tells the folders around an entry that cannot be read.
void NamedTree::tellUnreadable(EntryIndex index) {
    EntryIndex above = node(index).parent;
    for (; above != noEntry && !node(above).is(EntryTraits::holdsUnreadable); above = node(above).parent) {
        node(above).give(EntryTraits::holdsUnreadable);
    }
}

/// After an entry was taken out of the folder: that, and those around it, may hold nothing unreadable any
/// more, and what changed last in them may be something older.
void NamedTree::settleAround(EntryIndex taken, EntryIndex folder) {
    bool mayBeReadable = node(taken).is(EntryTraits::unreadable | EntryTraits::holdsUnreadable);
    bool mayBeOlder = node(taken).modified != 0;
    for (; folder != noEntry && (mayBeReadable || mayBeOlder); folder = node(folder).parent) {
        Node& settled = node(folder);
        mayBeOlder = mayBeOlder && settled.modified == node(taken).modified;
        std::uint32_t modified = 0;
        for (EntryIndex below = settled.firstBelow; below != noEntry && (mayBeReadable || mayBeOlder);
             below = node(below).next) {
            const Node& left = node(below);
            mayBeReadable = mayBeReadable && !left.is(EntryTraits::unreadable | EntryTraits::holdsUnreadable);
            modified = std::max(modified, left.modified);
            mayBeOlder = mayBeOlder && modified < node(taken).modified;
        }
        if (mayBeReadable) {
            settled.take(EntryTraits::holdsUnreadable);
        }
        if (mayBeOlder) {
            settled.modified = modified;
        }
    }
}

NamedEntry NamedTree::read(EntryIndex index) const {
    const Node& kept = node(index);
    return {.index = index,
            .parent = kept.parent,
            .name = nameAt(kept.name),
            .sums = kept.sums(),
            .traits = kept.traits()};
}

NamedEntry NamedTree::entry(EntryIndex index) const {
    const platform::Locked locked(mutex_);
    return read(index);
}

EntrySums NamedTree::sumsBefore(EntryIndex top, std::uint32_t moment) const {
    EntrySums sums;
    for (EntryIndex at = top;; at = node(at).next) {
        while (node(at).modified >= moment && node(at).firstBelow != noEntry) {
            at = node(at).firstBelow;
        }
        if (node(at).modified != 0 && node(at).modified < moment) {
            sums += node(at).sums();
            sums.items += at == top ? 0 : 1;
        }
        while (at != top && node(at).next == noEntry) {
            at = node(at).parent;
        }
        if (at == top) {
            return sums;
        }
    }
}

std::vector<NamedEntry> NamedTree::collected(EntryIndex folder, std::optional<std::uint32_t> moment) const {
    std::vector<NamedEntry> entries;
    std::vector<NamedEntry> piece;
    EntryIndex below = noEntry;
    for (bool isBegun = false; !isBegun || below != noEntry;) {
        {
            const platform::Locked locked(mutex_);
            // What was taken out of the tree meanwhile no longer leads on: from the beginning, then.
            if (!isBegun || node(below).parent != folder) {
                entries.clear();
                below = node(folder).firstBelow;
                isBegun = true;
            }
            std::size_t looked = 0;
            for (; below != noEntry && looked < looksAPiece; below = node(below).next) {
                NamedEntry entry = read(below);
                looked += moment ? std::size_t{entry.sums.items} + 1 : 1;
                if (moment) {
                    entry.sums = sumsBefore(below, *moment);
                }
                if (!moment || entry.sums.modified != 0) {
                    piece.push_back(entry);
                }
            }
        }
        // Whoever waits for the lock gets it meanwhile.
        entries.insert(entries.end(), piece.begin(), piece.end());
        piece.clear();
    }
    return entries;
}

std::vector<NamedEntry> NamedTree::entriesOf(EntryIndex folder) const {
    return collected(folder, std::nullopt);
}

std::vector<NamedEntry> NamedTree::entriesChangedBefore(EntryIndex folder, std::uint32_t moment) const {
    return collected(folder, moment);
}

bool NamedTree::hasMoreThan(EntryIndex folder, std::size_t entries) const {
    const platform::Locked locked(mutex_);
    if (node(folder).items <= entries) {
        return false;
    }
    EntryIndex below = node(folder).firstBelow;
    for (; below != noEntry && entries > 0; below = node(below).next) {
        --entries;
    }
    return below != noEntry;
}

std::optional<EntryIndex> NamedTree::entryNamed(EntryIndex folder, std::string_view name) const {
    const platform::Locked locked(mutex_);
    for (EntryIndex below = node(folder).firstBelow; below != noEntry; below = node(below).next) {
        if (nameAt(node(below).name) == name) {
            return below;
        }
    }
    return std::nullopt;
}

std::optional<EntryIndex> NamedTree::entryAt(std::string_view path) const {
    std::string_view top = entry(root).name;
    if (path == top) {
        return root;
    }
    top.remove_suffix(top.ends_with('/') ? 1 : 0);
    if (!isInside(path, top)) {
        return std::nullopt;
    }
    std::optional<EntryIndex> found = root;
    for (const std::string_view name : components(path.substr(top.size()))) {
        found = found ? entryNamed(*found, name) : std::nullopt;
    }
    return found;
}

std::vector<EntryIndex> NamedTree::entriesAt(std::span<const std::string> paths) const {
    std::map<std::string_view, std::unordered_set<std::string_view>> wanted;
    for (const std::string& path : paths) {
        const std::string_view around = parentOf(path);
        wanted[around.empty() ? "/" : around].insert(fileName(path));
    }
    std::vector<EntryIndex> found;
    for (const auto& [folder, names] : wanted) {
        const std::optional<EntryIndex> around = entryAt(folder);
        const platform::Locked locked(mutex_);
        for (EntryIndex below = around ? node(*around).firstBelow : noEntry; below != noEntry;
             below = node(below).next) {
            if (names.contains(nameAt(node(below).name))) {
                found.push_back(below);
            }
        }
    }
    return found;
}

std::string NamedTree::path(EntryIndex index) const {
    std::vector<std::string_view> names;
    for (EntryIndex at = index; at != noEntry; at = node(at).parent) {
        names.push_back(nameAt(node(at).name));
    }
    std::string whole(names.back());
    names.pop_back();
    for (; !names.empty(); names.pop_back()) {
        whole += whole.ends_with('/') ? "" : "/";
        whole += names.back();
    }
    return whole;
}

std::string NamedTree::pathOf(EntryIndex index) const {
    const platform::Locked locked(mutex_);
    return path(index);
}

std::vector<std::string> NamedTree::pathsOf(std::span<const EntryIndex> entries) const {
    const platform::Locked locked(mutex_);
    std::vector<std::string> paths;
    for (const EntryIndex entry : entries) {
        paths.push_back(path(entry));
    }
    return paths;
}

bool NamedTree::isHeld(EntryIndex index) const {
    while (index != root && index != noEntry) {
        index = node(index).parent;
    }
    return index == root;
}

bool NamedTree::holds(EntryIndex index) const {
    const platform::Locked locked(mutex_);
    return isHeld(index);
}

bool NamedTree::isBelow(EntryIndex index, std::span<const EntryIndex> entries) const {
    for (; index != noEntry; index = node(index).parent) {
        if (std::ranges::binary_search(entries, index)) {
            return true;
        }
    }
    return false;
}

std::vector<NamedTree::LinkedName> NamedTree::linkedIn(std::vector<EntryIndex> entries) const {
    std::ranges::sort(entries);
    std::vector<LinkedName> going;
    for (const LinkedName& name : linked_) {
        if (isBelow(name.entry, entries)) {
            going.push_back(name);
        }
    }
    std::ranges::sort(going, {}, [](const LinkedName& name) { return orderOf(name.file); });
    return going;
}

std::int64_t NamedTree::freedWithout(std::span<const EntryIndex> entries) const {
    const platform::Locked locked(mutex_);
    std::int64_t freed = 0;
    for (const EntryIndex entry : entries) {
        freed += node(entry).bytes();
    }
    const std::vector<LinkedName> going = linkedIn({entries.begin(), entries.end()});
    for (const auto names : byFile(std::span(going))) {
        const bool isCharged = std::ranges::any_of(names, &LinkedName::isCharged);
        if (isCharged && names.size() < names.front().links) {
            freed -= names.front().bytes;
        }
    }
    return freed;
}

std::int64_t NamedTree::keptWithout(std::span<const EntryIndex> entries,
                                    std::optional<EntryIndex> besides) const {
    const platform::Locked locked(mutex_);
    const std::vector<LinkedName> going = linkedIn({entries.begin(), entries.end()});
    const std::vector<LinkedName> alongside = besides ? linkedIn({*besides}) : std::vector<LinkedName>();
    std::int64_t kept = 0;
    for (const auto names : byFile(std::span(going))) {
        const auto others =
            std::ranges::equal_range(alongside, orderOf(names.front().file), {},
                                     [](const LinkedName& name) { return orderOf(name.file); });
        if (names.size() + others.size() < names.front().links) {
            kept += names.front().bytes;
        }
    }
    return kept;
}

NamedTree::Visited NamedTree::visited(EntryIndex index, std::span<const LinkedName> linked) const {
    Visited shown;
    shown.entry = read(index);
    shown.ownBytes = shown.entry.sums.bytes;
    for (EntryIndex below = node(index).firstBelow; below != noEntry; below = node(below).next) {
        shown.ownBytes -= node(below).bytes();
    }
    if (lengths_ == Lengths::kept) {
        shown.length = lengthsOf_[index / nodesAPiece][index % nodesAPiece];
    }
    const auto name = std::ranges::lower_bound(linked, index, {}, &LinkedName::entry);
    if (name != linked.end() && name->entry == index) {
        shown.file = name->file;
        shown.links = name->links;
        shown.fileBytes = name->bytes;
    }
    return shown;
}

void NamedTree::visit(const std::function<bool(const Visited&)>& enter,
                      const std::function<bool(const NamedEntry&)>& leave) const {
    const platform::Locked locked(mutex_);
    std::vector<LinkedName> linked = linked_;
    std::ranges::sort(linked, {}, &LinkedName::entry);
    EntryIndex at = root;
    while (enter(visited(at, linked))) {
        if (node(at).firstBelow != noEntry) {
            at = node(at).firstBelow;
            continue;
        }
        for (;;) {
            const NamedEntry left = read(at);
            if (left.is(EntryTraits::folder) && !leave(left)) {
                return;
            }
            if (at == root) {
                return;
            }
            if (node(at).next != noEntry) {
                at = node(at).next;
                break;
            }
            at = node(at).parent;
        }
    }
}

} // namespace lumo
