#include "LumoCore/History/SnapshotStore.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <ranges>
#include <string_view>
#include <utility>

namespace lumo {

namespace {

/// No scan writes a negative size, and differences with one need not fit in 64 bits.
bool isSound(const DiskSnapshot& snapshot) {
    return std::ranges::all_of(snapshot.sizes, [](const auto& entry) { return entry.second >= 0; });
}

std::vector<DiskSnapshot> snapshotsIn(std::string_view bytes) {
    const Result<JsonValue> document = parseJson(bytes);
    const auto* list = document ? std::get_if<JsonValue::Array>(&document->value) : nullptr;
    std::vector<DiskSnapshot> snapshots;
    if (list == nullptr) {
        return snapshots;
    }
    for (const JsonValue& element : *list) {
        Result<DiskSnapshot> snapshot = decode<DiskSnapshot>(element);
        if (snapshot && isSound(*snapshot)) {
            snapshots.push_back(std::move(*snapshot));
        }
    }
    return snapshots;
}

/// How many snapshots always fit: growth needs a baseline.
constexpr std::size_t fewestSnapshots = 8;

std::string textOf(const DiskSnapshot& snapshot) {
    return dumpJson(encode(snapshot), JsonLayout::line);
}

/// Keeps that many items, the largest ones.
void keepLargest(DiskSnapshot& snapshot, std::size_t count) {
    std::vector<std::pair<std::int64_t, std::string>> items;
    for (const auto& [id, size] : snapshot.sizes) {
        items.emplace_back(size, id);
    }
    std::ranges::sort(items, std::greater());
    for (std::size_t index = count; index < items.size(); ++index) {
        snapshot.sizes.erase(items[index].second);
    }
    std::erase_if(snapshot.names, [&](const auto& name) { return !snapshot.sizes.contains(name.first); });
}

/// The snapshot as it is stored, in that many bytes.
std::string fittingText(DiskSnapshot snapshot, std::size_t mostBytes) {
    std::string text = textOf(snapshot);
    while (text.size() > mostBytes) {
        // By the average length, and somewhat fewer each time: names are not all of one length.
        const std::size_t count = snapshot.sizes.size() * mostBytes / text.size();
        keepLargest(snapshot, count - count / 16);
        text = textOf(snapshot);
    }
    return text;
}

/// The list of the last snapshots, as many as fit.
std::string fittingList(const std::vector<DiskSnapshot>& snapshots, std::size_t mostBytes) {
    std::vector<std::string> texts;
    std::size_t bytes = std::string_view("[]\n").size();
    for (const DiskSnapshot& snapshot : snapshots | std::views::reverse) {
        texts.push_back(fittingText(snapshot, mostBytes / fewestSnapshots - 1));
        bytes += texts.back().size() + 1;
        if (bytes > mostBytes) {
            texts.pop_back();
            break;
        }
    }
    std::string list = "[";
    for (const std::string& text : texts | std::views::reverse) {
        list += (list.size() > 1 ? "," : "") + text;
    }
    return list + "]\n";
}

} // namespace

SnapshotStore::SnapshotStore(const std::string& home, std::size_t mostBytes)
    : path_(OwnFiles::snapshots(home)), mostBytes_(mostBytes) {}

platform::SystemResult<std::vector<DiskSnapshot>> SnapshotStore::read() const {
    const auto bytes = platform::readWhole(path_, mostBytes_);
    if (!bytes && !bytes.error().isMissing()) {
        return std::unexpected(bytes.error());
    }
    return bytes ? snapshotsIn(*bytes) : std::vector<DiskSnapshot>();
}

std::vector<DiskSnapshot> SnapshotStore::load() const {
    return read().value_or(std::vector<DiskSnapshot>());
}

platform::SystemResult<void> SnapshotStore::append(const DiskSnapshot& snapshot, std::size_t keep) const {
    auto snapshots = read();
    // Nothing that is written here gets that large, and whatever it is, it would end the history for good.
    if (!snapshots && snapshots.error().code == EFBIG) {
        snapshots.emplace();
    }
    if (!snapshots) {
        return std::unexpected(snapshots.error());
    }
    snapshots->push_back(snapshot);
    if (snapshots->size() > keep) {
        snapshots->erase(snapshots->begin(), snapshots->end() - static_cast<std::ptrdiff_t>(keep));
    }
    if (const auto made = platform::makePrivateFolder(std::string(parentOf(path_))); !made) {
        return made;
    }
    return platform::replaceWhole(path_, fittingList(*snapshots, mostBytes_));
}

} // namespace lumo
