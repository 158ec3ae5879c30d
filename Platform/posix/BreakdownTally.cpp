#include "Platform/BreakdownTally.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <utility>

namespace lumo::platform {

namespace {

/// A tally that holds more sums than this keeps the larger half.
constexpr std::size_t mostExtensions = 4096;

/// Larger ones first; equal ones by name, so that the same ones are kept in whichever order they come.
bool comesFirst(const TreePart& left, const TreePart& right) {
    return left.allocatedBytes != right.allocatedBytes ? left.allocatedBytes > right.allocatedBytes
                                                       : left.name < right.name;
}

/// What follows the last point of a name, which must not be its first character; otherwise nothing.
std::string_view extensionOf(std::string_view fileName) {
    const std::size_t point = fileName.rfind('.');
    return point == std::string_view::npos || point == 0 ? std::string_view() : fileName.substr(point + 1);
}

char lowerCased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

LargestParts LargestParts::fresh() const {
    LargestParts parts(most_);
    parts.smallestBytes_ = smallestBytes_;
    parts.smallestName_ = smallestName_;
    return parts;
}

bool LargestParts::leavesOut(std::string_view name, std::int64_t bytes) {
    if (bytes > smallestBytes_ || (bytes == smallestBytes_ && name <= smallestName_)) {
        return false;
    }
    ++parts_.restCount;
    parts_.restBytes = checkedSum(parts_.restBytes, bytes);
    return true;
}

void LargestParts::add(std::string_view name, std::int64_t bytes, bool isFolder) {
    if (!leavesOut(name, bytes)) {
        add(TreePart{.name = std::string(name), .allocatedBytes = bytes, .isFolder = isFolder, .parts = {}});
    }
}

void LargestParts::add(TreePart part) {
    if (leavesOut(part.name, part.allocatedBytes)) {
        return;
    }
    parts_.largest.push_back(std::move(part));
    if (parts_.largest.size() >= 2 * most_) {
        cut();
    }
}

void LargestParts::add(LargestParts other) {
    parts_.restCount += other.parts_.restCount;
    parts_.restBytes = checkedSum(parts_.restBytes, other.parts_.restBytes);
    for (TreePart& part : other.parts_.largest) {
        add(std::move(part));
    }
}

void LargestParts::cut() {
    if (parts_.largest.size() <= most_) {
        return;
    }
    const auto end = parts_.largest.begin() + static_cast<std::ptrdiff_t>(most_);
    std::ranges::nth_element(parts_.largest, end - 1, comesFirst);
    smallestBytes_ = (end - 1)->allocatedBytes;
    smallestName_ = (end - 1)->name;
    parts_.restCount += parts_.largest.end() - end;
    for (auto part = end; part != parts_.largest.end(); ++part) {
        parts_.restBytes = checkedSum(parts_.restBytes, part->allocatedBytes);
    }
    parts_.largest.erase(end, parts_.largest.end());
}

TreeParts LargestParts::take() {
    cut();
    std::ranges::sort(parts_.largest, comesFirst);
    return std::move(parts_);
}

void ExtensionTally::add(std::string_view fileName, std::int64_t bytes) {
    extension_.assign(extensionOf(fileName));
    std::ranges::transform(extension_, extension_.begin(), lowerCased);
    addTo(extension_, bytes);
}

void ExtensionTally::add(const ExtensionTally& other) {
    for (const auto& [extension, bytes] : other.sums_) {
        addTo(extension, bytes);
    }
    otherBytes_ = checkedSum(otherBytes_, other.otherBytes_);
}

void ExtensionTally::addTo(std::string_view extension, std::int64_t bytes) {
    if (last_ == nullptr || last_->first != extension) {
        auto found = sums_.find(extension);
        if (found == sums_.end()) {
            if (sums_.size() >= mostExtensions) {
                cut();
            }
            found = sums_.emplace(extension, 0).first;
        }
        last_ = &*found;
    }
    last_->second = checkedSum(last_->second, bytes);
}

void ExtensionTally::cut() {
    std::vector<Sums::iterator> order;
    order.reserve(sums_.size());
    for (auto sum = sums_.begin(); sum != sums_.end(); ++sum) {
        // Files without an extension are a group of their own, however small.
        if (!sum->first.empty()) {
            order.push_back(sum);
        }
    }
    const auto middle = order.begin() + static_cast<std::ptrdiff_t>(order.size() / 2);
    std::ranges::nth_element(order, middle, [](const auto& left, const auto& right) {
        return left->second != right->second ? left->second > right->second : left->first < right->first;
    });
    for (auto sum = middle; sum != order.end(); ++sum) {
        otherBytes_ = checkedSum(otherBytes_, (*sum)->second);
        sums_.erase(*sum);
    }
    last_ = nullptr;
}

void ExtensionTally::addTo(TreeBreakdown& breakdown) const {
    for (const auto& [extension, bytes] : sums_) {
        breakdown.extensions.push_back({extension, bytes});
    }
    std::ranges::sort(breakdown.extensions, {}, &ExtensionSum::extension);
    breakdown.otherExtensionsBytes = otherBytes_;
}

LargestParts& Branch::parts() {
    if (!entries) {
        entries = std::make_unique<LargestParts>(mostParts);
    }
    return *entries;
}

std::optional<LargestParts> Branch::freshParts() const {
    if (mostParts == 0) {
        return std::nullopt;
    }
    return entries ? entries->fresh() : LargestParts(mostParts);
}

void Branch::addBytes(std::int64_t bytes) {
    allocatedBytes = checkedSum(allocatedBytes, bytes);
}

void Branch::join(std::unique_ptr<Branch> ended) {
    if (ended->waitsForLinks) {
        waiting.push_back(std::move(ended));
    } else {
        joinNow(*ended);
    }
}

void Branch::joinNow(Branch& ended) {
    // First, since what waited in the folder adds to its bytes.
    TreeParts below = ended.take();
    addBytes(ended.allocatedBytes);
    parts().add({.name = std::move(ended.name),
                 .allocatedBytes = ended.allocatedBytes,
                 .isFolder = true,
                 .parts = std::move(below)});
}

TreeParts Branch::take() {
    for (const std::unique_ptr<Branch>& ended : std::exchange(waiting, {})) {
        joinNow(*ended);
    }
    return entries ? entries->take() : TreeParts();
}

void LinkedParts::meet(FileIdentity file, std::string path, Branch& branch, bool isPart) {
    for (Branch* above = &branch; above != nullptr && !above->waitsForLinks; above = above->parent) {
        above->waitsForLinks = true;
    }
    Name name{std::move(path), &branch, isPart};
    Name& first = first_[file];
    if (first.branch == nullptr) {
        first = std::move(name);
        return;
    }
    if (name.path < first.path) {
        std::swap(name, first);
    }
    name.leaveOut();
}

void LinkedParts::Name::leaveOut() const {
    if (isPart) {
        branch->parts().add(fileName(path), 0, false);
    }
}

void LinkedParts::settle(FileIdentity file, std::optional<std::int64_t> bytes, ExtensionTally& extensions) {
    const Name& name = first_.at(file);
    if (!bytes) {
        name.leaveOut();
        return;
    }
    name.branch->addBytes(*bytes);
    if (name.isPart) {
        name.branch->parts().add(fileName(name.path), *bytes, false);
    }
    extensions.add(fileName(name.path), *bytes);
}

} // namespace lumo::platform
