#include "LumoCore/Cleanup/Mover.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/UniqueID.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"

#include <cerrno>

namespace lumo {

using platform::BaseFolder;
using platform::Place;
using platform::SystemError;
using platform::SystemResult;

Mover::Mover(const PathGuard& guard, std::string batch)
    : guard_(guard), batch_(std::move(batch)), intents_(OwnFiles::intents(guard.home())) {}

std::string Mover::heldName(std::string_view name) {
    constexpr std::size_t mostBytes = 255;
    const std::string beginning = uniqueID() + "-";
    return beginning + std::string(cutToBytes(name, mostBytes - beginning.size()));
}

SystemResult<std::vector<std::string>> Mover::reserve(const CleanupAction& action,
                                                      const std::vector<std::string>& originals) {
    if (!guard_.base()) {
        return std::unexpected(SystemError{EXDEV});
    }
    if (!folder_) {
        const SystemResult<BaseFolder> root = ApplicationFolders::makeHolding(*guard_.base());
        if (!root) {
            return std::unexpected(root.error());
        }
        SystemResult<BaseFolder> batch =
            ApplicationFolders::makePrivateFolder(*root, std::string(fileName(batch_)));
        if (!batch) {
            return std::unexpected(batch.error());
        }
        folder_ = std::move(*batch);
    }
    std::vector<std::string> places;
    std::vector<Intent> intents;
    for (const std::string& original : originals) {
        places.push_back(batch_ + "/" + heldName(fileName(original)));
        intents.push_back({action.id, action.title, original, places.back()});
    }
    if (const auto announced = intents_.announce(intents); !announced) {
        return std::unexpected(announced.error());
    }
    return places;
}

SystemResult<void> Mover::move(const Place& from, const std::string& reserved) const {
    const SystemResult<Place> to = folder_->placeWithoutLinks(fileName(reserved));
    return to ? platform::moveWithoutReplacing(from, *to) : std::unexpected(to.error());
}

void Mover::settle() {
    // What cannot be taken back now is found to be in the log by the next recovery.
    (void)intents_.retire();
}

} // namespace lumo
