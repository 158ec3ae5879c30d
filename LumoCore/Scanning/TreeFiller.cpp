#include "LumoCore/Scanning/TreeFiller.h"

#include <algorithm>

namespace lumo {

namespace {

constexpr std::size_t entriesABatch = 256;

} // namespace

void TreeFiller::begin(EntryIndex folder, std::int64_t ownBytes) {
    around_.push_back({.place = {folder, false}, .found = {.bytes = ownBytes}});
}

void TreeFiller::enter(std::string_view name, const EntrySums& own, std::uint8_t traits,
                       std::int64_t length) {
    around_.back().found.items += 1;
    const EntryIndex index = batch_.add(around_.back().place, name, {},
                                        static_cast<std::uint8_t>(traits | EntryTraits::folder), length);
    around_.push_back({.place = {index, true}, .found = own});
    handOverNowAndThen();
}

void TreeFiller::leave() {
    const Open left = around_.back();
    around_.pop_back();
    grow(left, around_.empty() ? nullptr : &around_.back());
    handOverNowAndThen();
}

void TreeFiller::add(std::string_view name, const EntrySums& sums, std::uint8_t traits, std::int64_t length,
                     const std::optional<SharedFile>& shared) {
    Open& folder = around_.back();
    const EntryIndex index = batch_.add(folder.place, name, sums, traits, length);
    EntrySums all = sums;
    all.items += 1;
    folder.found += all;
    if (shared) {
        note({index, true}, *shared);
    }
    handOverNowAndThen();
}

void TreeFiller::grow(EntryIndex entry, const EntrySums& sums, const std::optional<SharedFile>& shared) {
    batch_.changes.push_back({entry, sums, false});
    batch_.changes.push_back({entry, sums, true});
    if (shared) {
        note({entry, false}, *shared);
    }
}

void TreeFiller::markUnreadable() {
    const TreeBatch::Place place = around_.back().place;
    if (place.isInBatch) {
        std::uint8_t& traits = batch_.entries[place.index].traits;
        traits = static_cast<std::uint8_t>(traits | EntryTraits::unreadable);
    } else {
        tree_.markUnreadable(place.index);
    }
}

void TreeFiller::note(TreeBatch::Place place, const SharedFile& shared) {
    batch_.linked.push_back(
        {.entry = place, .file = shared.file, .bytes = shared.bytes, .links = shared.links});
}

EntryIndex TreeFiller::folderAt(std::size_t level) {
    handOver();
    return around_[std::min(level, around_.size() - 1)].place.index;
}

/// Adds to the folder what was found in it. The folders around one that the tree has grow there: it may have
/// been taken out meanwhile, and then they must not.
void TreeFiller::grow(const Open& folder, Open* around) {
    if (folder.place.isInBatch) {
        batch_.entries[folder.place.index].sums += folder.found;
        around->found += folder.found;
    } else if (folder.found != EntrySums()) {
        grow(folder.place.index, folder.found);
    }
}

void TreeFiller::handOverNowAndThen() {
    if (batch_.entries.size() >= entriesABatch || tree_.newsAsked() != newsTold_) {
        handOver();
    }
}

void TreeFiller::handOver() {
    newsTold_ = tree_.newsAsked();
    for (std::size_t level = around_.size(); level > 0; --level) {
        grow(around_[level - 1], level > 1 ? &around_[level - 2] : nullptr);
        around_[level - 1].found = {};
    }
    if (batch_.isEmpty()) {
        return;
    }
    const EntryIndex base = tree_.add(batch_);
    for (Open& folder : around_) {
        if (folder.place.isInBatch) {
            folder.place = {base + folder.place.index, false};
        }
    }
}

} // namespace lumo
