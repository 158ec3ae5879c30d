#include "TarvoModel/Exploring/Explorer.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <tuple>
#include <utility>

namespace tarvo {

using lumo::EntryIndex;
using lumo::NamedEntry;
using lumo::NamedTree;
namespace EntryTraits = lumo::EntryTraits;

namespace {

constexpr std::array<std::int64_t, 3> ages{183, 365, 730}; // In days.

/// True when the first comes before the other. Names decide between equals, and numbers of entries where a
/// tree that was read from elsewhere has a name twice: the order is the same each time.
bool comesFirst(ExplorerOrder order, const NamedEntry& left, const NamedEntry& right) {
    const auto by = [&](const NamedEntry& entry) -> std::int64_t {
        switch (order) {
        case ExplorerOrder::size:
            return entry.sums.bytes;
        case ExplorerOrder::date:
            return entry.sums.modified;
        case ExplorerOrder::items:
            return entry.sums.items;
        case ExplorerOrder::name:
            break;
        }
        return 0;
    };
    const std::int64_t first = by(left);
    const std::int64_t second = by(right);
    return first != second ? first > second
                           : std::tie(left.name, left.index) < std::tie(right.name, right.index);
}

} // namespace

RowsRead readRows(const NamedTree& tree, const RowsWanted& wanted) {
    RowsRead read{.wanted = wanted,
                  .rows = wanted.changedBefore
                              ? tree.entriesChangedBefore(wanted.folder, *wanted.changedBefore)
                              : tree.entriesOf(wanted.folder)};
    if (!wanted.filter.empty()) {
        const std::string letters = lumo::folded(wanted.filter);
        std::erase_if(read.rows, [&](const NamedEntry& entry) {
            return lumo::folded(entry.name).find(letters) == std::string::npos;
        });
    }
    std::ranges::sort(read.rows, [&](const NamedEntry& left, const NamedEntry& right) {
        return comesFirst(wanted.order, left, right);
    });
    for (const NamedEntry& row : read.rows) {
        read.largestBytes = std::max(read.largestBytes, row.sums.bytes);
        read.bytes = lumo::saturatedSum(read.bytes, row.sums.bytes);
    }
    return read;
}

Explorer::Explorer(std::shared_ptr<NamedTree> tree, ReadElsewhere readElsewhere)
    : tree_(std::move(tree)), readElsewhere_(std::move(readElsewhere)) {
    show(NamedTree::root);
}

NamedEntry Explorer::folder() const {
    return tree_->entry(folder_);
}

void Explorer::show(EntryIndex folder) {
    folder_ = folder;
    path_ = tree_->pathOf(folder);
    putCursorAt(0);
    filter_.clear();
    read();
}

const NamedEntry* Explorer::current() const {
    return cursor_ < rows().size() ? &rows()[cursor_] : nullptr;
}

double Explorer::share(const NamedEntry& entry) const {
    const std::int64_t all = folder().sums.bytes;
    return all > 0 ? std::min(1.0, static_cast<double>(entry.sums.bytes) / static_cast<double>(all)) : 0;
}

double Explorer::barShare(const NamedEntry& entry) const {
    const std::int64_t most = shown_.largestBytes;
    return most > 0 ? static_cast<double>(entry.sums.bytes) / static_cast<double>(most) : 0;
}

RowsWanted Explorer::wanted() const {
    return {.folder = folder_,
            .order = order_,
            .filter = filter_,
            .changedBefore = olderThanDays_ ? std::optional(changedBefore_) : std::nullopt};
}

void Explorer::read() {
    isReading_ = readElsewhere_ && readElsewhere_(wanted());
    if (!isReading_) {
        take(tarvo::readRows(*tree_, wanted()));
    } else if (shown_.wanted.folder != folder_) {
        shown_ = {.wanted = wanted(), .rows = {}};
    }
}

void Explorer::take(RowsRead read) {
    if (read.wanted != wanted()) {
        return;
    }
    isReading_ = false;
    const NamedEntry* before = current();
    std::optional<EntryIndex> kept = std::exchange(cursorOn_, std::nullopt);
    if (!kept && before != nullptr && cursor_ > 0 && shown_.wanted.folder == folder_) {
        kept = before->index;
    }
    shown_ = std::move(read);
    cursor_ = std::min(cursor_, rows().empty() ? 0 : rows().size() - 1);
    if (kept) {
        putCursorOn(*kept);
    }
}

void Explorer::refresh() {
    forgetGone();
    read();
    tree_->askForNews();
}

void Explorer::forgetGone() {
    std::erase_if(marked_, [&](EntryIndex entry) { return !tree_->holds(entry); });
    markedBytes_.reset();
    if (!tree_->holds(folder_)) {
        show(folderNear(path_));
    }
}

EntryIndex Explorer::folderNear(const std::string& path) const {
    std::string around = path;
    std::optional<EntryIndex> found = tree_->entryAt(around);
    while (!found && !around.empty()) {
        around = lumo::parentOf(around);
        found = tree_->entryAt(around);
    }
    return found.value_or(NamedTree::root);
}

void Explorer::goOnIn(std::shared_ptr<NamedTree> tree) {
    const std::vector<std::string> marked = tree_->pathsOf(std::vector(marked_.begin(), marked_.end()));
    const NamedEntry* at = current();
    const std::string cursorAt = at != nullptr ? tree_->pathOf(at->index) : std::string();
    const std::string before = std::exchange(path_, {});
    const std::string filter = filter_;
    shown_ = {}; // Its names are the other tree's.
    tree_ = std::move(tree);
    const std::vector<EntryIndex> still = tree_->entriesAt(marked);
    marked_ = {still.begin(), still.end()};
    markedBytes_.reset();
    show(folderNear(before));
    if (path_ == before && !filter.empty()) {
        setFilter(filter);
    }
    if (const auto same = tree_->entryAt(cursorAt); same && path_ == before) {
        putCursorOn(*same);
    }
}

void Explorer::putCursorOn(EntryIndex entry) {
    if (isReading_) {
        cursorOn_ = entry;
        return;
    }
    const auto row = std::ranges::find(rows(), entry, &NamedEntry::index);
    if (row != rows().end()) {
        cursor_ = static_cast<std::size_t>(row - rows().begin());
    }
}

void Explorer::putCursorAt(std::size_t row) {
    cursor_ = row;
    cursorOn_.reset();
}

void Explorer::moveBy(std::ptrdiff_t rows) {
    moveTo(
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(cursor_) + rows)));
}

void Explorer::moveTo(std::size_t row) {
    putCursorAt(std::min(row, rows().empty() ? 0 : rows().size() - 1));
}

bool Explorer::enter() {
    const NamedEntry* entry = current();
    if (entry == nullptr || !entry->is(EntryTraits::folder)) {
        return false;
    }
    show(entry->index);
    return true;
}

bool Explorer::leave() {
    const EntryIndex around = folder().parent;
    if (around == lumo::noEntry) {
        return false;
    }
    goTo(folder_);
    return true;
}

void Explorer::goTo(EntryIndex entry) {
    const EntryIndex around = tree_->entry(entry).parent;
    show(around == lumo::noEntry ? NamedTree::root : around);
    putCursorOn(entry);
}

void Explorer::setOrder(ExplorerOrder order) {
    order_ = order;
    putCursorAt(0);
    read();
}

void Explorer::setFilter(const std::string& letters) {
    filter_ = letters;
    putCursorAt(0);
    read();
}

void Explorer::setOlderThan(std::optional<std::int64_t> days, lumo::Date now) {
    olderThanDays_ = days;
    const auto moment = std::chrono::floor<std::chrono::seconds>(now) - std::chrono::days(days.value_or(0));
    changedBefore_ = static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(moment.time_since_epoch().count(), 0, 0xFFFFFFFF));
    putCursorAt(0);
    read();
}

bool Explorer::holdsNewer(EntryIndex entry) const {
    return olderThanDays_ && tree_->entry(entry).sums.modified >= changedBefore_;
}

void Explorer::protect(NeverTouched never) {
    never_ = std::move(never);
    std::erase_if(marked_, [this](EntryIndex entry) { return whyNotMarked(entry).has_value(); });
    markedBytes_.reset();
}

std::vector<std::string> Explorer::inQuestion() const {
    std::vector<std::string> paths = tree_->pathsOf(std::vector(marked_.begin(), marked_.end()));
    paths.insert(paths.end(), never_.leadThere.begin(), never_.leadThere.end());
    return paths;
}

bool Explorer::isProtected(EntryIndex entry) const {
    if (never_.folders.empty()) {
        return false;
    }
    const std::string path = tree_->pathOf(entry);
    return never_.leadThere.contains(path) ||
           std::ranges::any_of(never_.folders,
                               [&](const std::string& folder) { return lumo::isInside(path, folder); });
}

std::optional<std::string> Explorer::whyNotMarked(EntryIndex entry) const {
    const bool isHeldBack = isProtected(entry);
    if (!isHeldBack && (never_.folders.empty() ||
                        !lumo::CleanupPlanner::touchesProtected({tree_->pathOf(entry)}, never_.folders))) {
        return std::nullopt;
    }
    return lumo::revealed(tree_->entry(entry).name) + ": " +
           (isHeldBack ? lumo::CleanupPlanner::protectedReason()
                       : lumo::Words{"contiene una carpeta protegida en Ajustes",
                                     "it holds a folder protected in Settings"}
                             .in());
}

std::optional<std::string> Explorer::toggleMark() {
    const NamedEntry* entry = current();
    if (entry == nullptr) {
        return std::nullopt;
    }
    markedBytes_.reset();
    if (marked_.erase(entry->index) > 0) {
        return std::nullopt;
    }
    auto reason = whyNotMarked(entry->index);
    if (!reason) {
        marked_.insert(entry->index);
    }
    return reason;
}

void Explorer::mark(EntryIndex entry) {
    marked_.insert(entry);
    markedBytes_.reset();
}

void Explorer::clearMarks() {
    marked_.clear();
    markedBytes_.reset();
}

std::vector<EntryIndex> Explorer::chosen() const {
    if (marked_.empty()) {
        const NamedEntry* entry = current();
        return entry != nullptr ? std::vector{entry->index} : std::vector<EntryIndex>();
    }
    std::vector<EntryIndex> outermost;
    for (const EntryIndex entry : marked_) {
        EntryIndex above = tree_->entry(entry).parent;
        while (above != lumo::noEntry && !marked_.contains(above)) {
            above = tree_->entry(above).parent;
        }
        if (above == lumo::noEntry) {
            outermost.push_back(entry);
        }
    }
    return outermost;
}

std::int64_t Explorer::markedBytes() const {
    if (!markedBytes_) {
        markedBytes_ = marked_.empty() ? 0 : tree_->freedWithout(chosen());
    }
    return *markedBytes_;
}

std::optional<std::int64_t> nextAge(std::optional<std::int64_t> days) {
    const auto next = std::ranges::upper_bound(ages, days.value_or(0));
    return next != ages.end() ? std::optional(*next) : std::nullopt;
}

std::string ageText(std::int64_t days, lumo::Language language) {
    switch (days) {
    case ages[0]:
        return lumo::Words{"sin cambios en 6 meses", "unchanged for 6 months"}.in(language);
    case ages[1]:
        return lumo::Words{"sin cambios en 1 año", "unchanged for 1 year"}.in(language);
    case ages[2]:
        return lumo::Words{"sin cambios en 2 años", "unchanged for 2 years"}.in(language);
    case 1:
        return lumo::Words{"sin cambios en 1 día", "unchanged for 1 day"}.in(language);
    default:
        return lumo::Words{"sin cambios en {} días", "unchanged for {} days"}.in(language, days);
    }
}

std::string markedText(const Explorer& explorer) {
    if (explorer.markCount() == 0) {
        return {};
    }
    const std::string bytes = lumo::ByteFormat::string(explorer.markedBytes());
    return explorer.markCount() == 1
               ? lumo::Words{"1 marcado: {}", "1 marked: {}"}.with(bytes)
               : lumo::Words{"{} marcados: {}", "{} marked: {}"}.with(explorer.markCount(), bytes);
}

void dropMissing(NamedTree& tree, const std::vector<std::string>& paths) {
    for (std::string path : paths) {
        if (!lumo::platform::isMissing(path)) {
            continue;
        }
        // With all that was around it, up to the root folder, which has no name here.
        for (std::string_view around = lumo::parentOf(path);
             !around.empty() && lumo::platform::isMissing(std::string(around));
             around = lumo::parentOf(path)) {
            path.resize(around.size());
        }
        const auto entry = tree.entryAt(path);
        if (entry && *entry != NamedTree::root) {
            tree.detach(*entry);
        }
    }
    tree.chargeLinked();
}

void measureAnew(NamedTree& tree, const std::string& path, const std::stop_token& stop) {
    const auto parent = tree.entryAt(lumo::parentOf(path).empty() ? "/" : lumo::parentOf(path));
    const auto before = tree.entryAt(path);
    const auto kind = lumo::platform::kindOf(path);
    if (!parent || before == NamedTree::root) {
        return;
    }
    if (before) {
        tree.detach(*before);
    }
    if (kind) {
        const std::uint8_t traits = *kind == lumo::platform::EntryKind::folder ? EntryTraits::folder
                                    : *kind == lumo::platform::EntryKind::link ? EntryTraits::link
                                    : *kind == lumo::platform::EntryKind::file ? std::uint8_t{0}
                                                                               : EntryTraits::special;
        lumo::TreeBatch batch;
        batch.add({*parent, false}, lumo::fileName(path), {}, traits);
        batch.changes.push_back({*parent, {.items = 1}, false});
        batch.changes.push_back({*parent, {.items = 1}, true});
        const EntryIndex made = tree.add(batch);
        lumo::measureInto(tree, path, made, nullptr, stop);
    } else {
        tree.chargeLinked();
    }
}

} // namespace tarvo
