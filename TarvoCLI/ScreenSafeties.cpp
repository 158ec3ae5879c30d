#include "TarvoCLI/ScreenSafeties.h"

#include "TarvoModel/Exploring/SettingAside.h"

#include <utility>

namespace tarvo {

using lumo::EntryIndex;

ScreenSafeties::ScreenSafeties(std::shared_ptr<const lumo::NamedTree> tree, std::string home)
    : tree_(std::move(tree)), home_(std::move(home)) {}

std::optional<lumo::Safety> ScreenSafeties::of(const lumo::NamedEntry& entry) {
    const auto [found, isNew] = known_.try_emplace(entry.index);
    if (isNew) {
        asked_.push_back(entry.index);
        if (const auto before = before_.find(entry.index); before != before_.end()) {
            found->second = before->second;
        }
    }
    return found->second;
}

bool ScreenSafeties::find(std::chrono::milliseconds patience) {
    bool isMoreKnown = false;
    for (;;) {
        if (finding_.valid()) {
            if (finding_.wait_for(patience) != std::future_status::ready) {
                return isMoreKnown;
            }
            for (const auto& [entry, safety] : finding_.get()) {
                // What was asked again meanwhile is looked at once more.
                if (const auto known = known_.find(entry); known != known_.end()) {
                    isMoreKnown = isMoreKnown || known->second != safety;
                    known->second = safety;
                }
            }
        }
        if (asked_.empty()) {
            return isMoreKnown;
        }
        finding_ = std::async(std::launch::async,
                              [this, entries = std::exchange(asked_, {})] { return found(entries); });
    }
}

void ScreenSafeties::askAgain() {
    before_ = std::exchange(known_, {});
    asked_.clear();
}

ScreenSafeties::Safeties ScreenSafeties::found(const std::vector<EntryIndex>& entries) {
    if (!certain_) {
        certain_ = std::make_unique<CertainPlaces>(home_);
    }
    std::map<std::string, EntryIndex> paths;
    std::vector<lumo::UnclassifiedItem> items;
    for (const EntryIndex entry : entries) {
        std::string path = tree_->pathOf(entry);
        if (!onlyLookedAt(path, home_)) {
            items.push_back({.path = path, .usage = {}});
            items.back().usage.allocatedBytes = tree_->entry(entry).sums.bytes;
            paths.emplace(std::move(path), entry);
        }
    }
    Safeties safeties;
    for (const auto& [path, safety] : certain_->safetiesOf(items)) {
        safeties.emplace(paths.at(path), safety);
    }
    for (const EntryIndex entry : entries) {
        safeties.try_emplace(entry); // Of which nothing is certain any more.
    }
    return safeties;
}

} // namespace tarvo
