#include "TarvoApp/App/EntrySafeties.h"

#include <string>
#include <utility>

namespace tarvo {

using lumo::EntryIndex;

EntrySafeties::EntrySafeties(const Ground& ground, const TickedDesk& ticked, QObject* parent)
    : QObject(parent), ground_(ground), ticked_(ticked) {
    asking_.setSingleShot(true);
    connect(&asking_, &QTimer::timeout, this, &EntrySafeties::findNext);
    connect(&ticked, &TickedDesk::planChanged, this, &EntrySafeties::askAgain);
}

void EntrySafeties::take(std::shared_ptr<const lumo::NamedTree> tree) {
    tree_ = std::move(tree);
    known_.clear();
    asked_.clear();
}

std::optional<lumo::Safety> EntrySafeties::of(const lumo::NamedEntry& entry) {
    const auto [found, isNew] = known_.try_emplace(entry.index);
    if (isNew) {
        asked_.push_back(entry.index);
        asking_.start();
    }
    return found->second;
}

void EntrySafeties::askAgain() {
    // What was said stays until there is something else to say.
    asked_.clear();
    std::erase_if(known_, [&](const auto& known) { return !tree_->holds(known.first); });
    for (const auto& known : known_) {
        asked_.push_back(known.first);
    }
    asking_.start();
}

void EntrySafeties::findNext() {
    // One at a time: the other threads are for what somebody waits for.
    if (isFinding_) {
        return;
    }
    std::map<std::string, EntryIndex> paths;
    std::vector<lumo::FolderContents::Item> items;
    while (!asked_.empty() && items.size() < DiskMap::mostEntries) {
        const EntryIndex index = asked_.back();
        asked_.pop_back();
        lumo::FolderContents::Item& item = items.emplace_back();
        item.path = tree_->pathOf(index);
        item.bytes = tree_->entry(index).sums.bytes;
        paths.emplace(item.path, index);
    }
    if (items.empty()) {
        return;
    }
    isFinding_ = true;
    ground_.background.start(
        [this, paths, items, tree = tree_, rows = ticked_.rows(),
         know = ground_.services.folders.know](const std::stop_token&) -> Background::Apply {
            return [this, paths, tree, known = DiskMap::knownEntries(items, rows, know)] {
                isFinding_ = false;
                if (tree == tree_) {
                    for (const auto& [path, index] : paths) {
                        const auto found = known.find(path);
                        known_[index] = found != known.end() ? found->second.safety : std::nullopt;
                    }
                    emit changed();
                }
                findNext(); // Of those that are left.
            };
        });
}

} // namespace tarvo
