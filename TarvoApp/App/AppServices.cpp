#include "TarvoApp/App/AppServices.h"

#include "LumoCore/Explaining/HeuristicExplainer.h"
#include "LumoCore/Explaining/KnownPlaces.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Clock.h"
#include "Platform/Environment.h"
#include "Platform/Folder.h"
#include "TarvoModel/Exploring/WhatIsIt.h"
#include "TarvoModel/Flows/ModelChoice.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "TarvoModel/Showing/DemoItems.h"

#include <mutex>
#include <utility>

namespace tarvo {

using lumo::FolderContents::Listing;

namespace {

Listing listedFrom(const std::vector<std::string>& paths, const std::stop_token& end) {
    const lumo::FileTree::Watch watch{.progress = nullptr, .stop = end};
    // Of one path the breakdown has measured what the listing needs.
    return paths.size() == 1 ? lumo::FolderContents::openOne(paths.front(), watch).listing
                             : lumo::FolderContents::open(paths, [&](const std::vector<std::string>& each) {
                                   return lumo::FolderContents::list(each, watch);
                               });
}

/// Also false for a single folder that nobody lets us read.
bool canBeListed(const std::vector<std::string>& paths) {
    return lumo::FolderContents::canOpen(paths) &&
           (paths.size() > 1 || lumo::platform::canList(paths.front()));
}

/// What is installed is looked at once, when somebody first opens a folder.
class Knowing {
  public:
    explicit Knowing(std::string home) : home_(std::move(home)) {}

    std::map<std::string, lumo::Explanation> operator()(const std::vector<lumo::UnclassifiedItem>& items) {
        const std::scoped_lock lock(mutex_);
        if (!known_) {
            installed_ = lumo::Installed::ofThisMachine(home_);
            known_.emplace(lumo::HomePlaces::ofThisMachine(home_), installed_);
        }
        return known_->explainAll(items, lumo::platform::now());
    }

  private:
    std::mutex mutex_;
    std::string home_;
    lumo::Installed installed_;
    std::optional<lumo::KnownPlaces> known_;
};

MapModel::Folders foldersIn(const std::string& home, const RunMode& mode) {
    if (mode.isDemo) {
        return {.list = [](const std::vector<std::string>& paths,
                           const std::stop_token&) { return DemoDisk::contents(paths); },
                .canOpen =
                    [](const std::vector<std::string>& paths) {
                        return !DemoDisk::contents(paths).items.empty();
                    },
                .know = [](const auto&) { return std::map<std::string, lumo::Explanation>(); }};
    }
    return {
        .list = listedFrom,
        .canOpen = canBeListed,
        .know = [knowing = std::make_shared<Knowing>(home)](const auto& items) { return (*knowing)(items); }};
}

PreviewDesk::Make previewIn(const RunMode& mode) {
    if (mode.isDemo) {
        return
            [](const std::vector<std::string>& paths, const std::stop_token&) { return demoPreview(paths); };
    }
    return [](const std::vector<std::string>& paths, const std::stop_token& end) {
        return previewOf(paths, {.progress = nullptr, .stop = end});
    };
}

} // namespace

std::string AppServices::shownHome() const {
    return mode.isDemo ? std::string(DemoDisk::home()) : desk.home;
}

AppServices AppServices::ofThisMachine(const std::string& home, const RunMode& mode) {
    return {.desk = Desk::ofThisMachine(home, "tarvo-app"),
            .mode = mode,
            .steadySeconds = lumo::platform::steadySeconds,
            .volumeInfo = lumo::Scanner::volumeInfo,
            .carryOut = usualCarryOut,
            .model = chosenModel,
            .mountedVolumes = lumo::platform::mountedVolumes,
            .folders = foldersIn(home, mode),
            .preview = previewIn(mode),
            .look =
                [home, mode](lumo::InventoryKind kind, const std::stop_token& stop) {
                    return mode.isDemo ? CloserLook{.found = DemoDisk::items(kind)}
                                       : lookedAt({.kinds = {kind}}, Desk::ofThisMachine(home, "tarvo-app"),
                                                  {.stop = stop});
                },
            .evidence =
                [home, mode](const std::string& path, const std::stop_token& end) {
                    return mode.isDemo ? DemoDisk::evidence(path)
                                       : lumo::FolderEvidence::gather(path, home,
                                                                      lumo::Installed::ofThisMachine(home),
                                                                      {.progress = nullptr, .stop = end});
                },
            .measure = [home, mode](lumo::NamedTree& tree, lumo::platform::WalkProgress& progress,
                                    const std::stop_token& stop) -> std::int64_t {
                if (mode.isDemo) {
                    DemoDisk::fill(tree, lumo::platform::now());
                    return 0;
                }
                return lumo::measureInto(tree, home, lumo::NamedTree::root, &progress, stop);
            },
            .whatItIs =
                [home, mode](const std::string& path, const std::stop_token& stop) {
                    const lumo::Date now = lumo::platform::now();
                    return mode.isDemo ? explanationLines(
                                             lumo::HeuristicExplainer::explain(DemoDisk::evidence(path), now))
                                       : tarvo::whatItIs(path, home, now, stop);
                },
            .notify = [](const Notification&, const std::function<void()>&) {},
            .startsAtLogin = [] { return false; },
            .setStartAtLogin = [](bool) { return std::nullopt; },
            .drawCard = [](const ShareStats&, CardLook) { return QImage(); },
            .saveCard = [](const QImage&) { return lumo::Result<void>(); },
            .copyCard = [](const QImage&) {}};
}

} // namespace tarvo
