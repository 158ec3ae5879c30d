#include "LumoCore/History/SnapshotStore.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "Platform/StateFile.h"

#include <algorithm>

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

} // namespace

SnapshotStore::SnapshotStore(const std::string& home) : path_(OwnFiles::snapshots(home)) {}

platform::SystemResult<std::vector<DiskSnapshot>> SnapshotStore::read() const {
    const auto bytes = platform::readWhole(path_, mostJsonBytes);
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
    return platform::replaceWhole(path_, dumpJson(encode(*snapshots), JsonLayout::line) + "\n");
}

} // namespace lumo
