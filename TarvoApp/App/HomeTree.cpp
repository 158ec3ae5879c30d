#include "TarvoApp/App/HomeTree.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "TarvoModel/Exploring/Explorer.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tarvo {

namespace {

constexpr std::chrono::milliseconds betweenNews{250};

} // namespace

HomeTree::HomeTree(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {
    ticker_.setInterval(betweenNews);
    connect(&ticker_, &QTimer::timeout, this, &HomeTree::tellChanged);
}

HomeTree::~HomeTree() {
    if (walk_) {
        walk_->stop.request_stop();
    }
}

void HomeTree::want() {
    if (!tree_) {
        begin();
        tree_ = walk_->tree; // Shown while it grows.
        ticker_.start();
        emit replaced();
    }
}

void HomeTree::measureAgain() {
    if (tree_ && !walk_) {
        begin();
        emit changed();
    }
}

void HomeTree::begin() {
    walk_ = std::make_shared<Walk>();
    walk_->tree = std::make_shared<lumo::NamedTree>(ground_.shownHome());
    walk_->tree->chargeLast(lumo::OwnFiles::support(ground_.shownHome()));
    ground_.background.start(walk_->stop,
                             [this, walk = walk_, measure = ground_.services.measure](
                                 const std::stop_token& stop) -> Background::Apply {
                                 const std::int64_t unreadable = measure(*walk->tree, walk->progress, stop);
                                 return [this, walk, unreadable] { ended(walk, unreadable); };
                             });
}

void HomeTree::ended(const std::shared_ptr<Walk>& walk, std::int64_t unreadable) {
    ticker_.stop();
    walk_.reset();
    unreadableCount_ = unreadable;
    if (std::exchange(tree_, walk->tree) != walk->tree) {
        emit replaced();
    } else {
        emit changed();
    }
    if (!changedMeanwhile_.empty()) {
        lookAgainAt(std::exchange(changedMeanwhile_, {}));
    }
}

void HomeTree::lookAgainAt(const std::vector<std::string>& places) {
    if (!tree_ || ground_.isDemo()) {
        return;
    }
    std::vector<std::string> paths = places;
    paths.push_back(lumo::OwnFiles::support(ground_.services.desk.home)); // With what is set aside.
    if (walk_) {
        // The walk may be there just now: what is gone goes at once, the rest when it has ended.
        changedMeanwhile_.insert(changedMeanwhile_.end(), paths.begin(), paths.end());
    }
    ground_.background.start(
        [this, paths, tree = tree_, isMeasured = !walk_](const std::stop_token& stop) -> Background::Apply {
            if (isMeasured) {
                for (const std::string& path : paths) {
                    measureAnew(*tree, path, stop);
                }
            } else {
                dropMissing(*tree, paths);
            }
            return [this] { emit changed(); };
        });
}

void HomeTree::tellChanged() {
    // Reading a folder of very many entries takes a while: never longer than the time between.
    QElapsedTimer clock;
    clock.start();
    emit changed();
    ticker_.setInterval(std::max(betweenNews, std::chrono::milliseconds(clock.elapsed() * 8)));
}

std::int64_t HomeTree::foundCount() const {
    return walk_ ? walk_->progress.entries.load(std::memory_order_relaxed) : 0;
}

} // namespace tarvo
