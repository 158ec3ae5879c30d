#include "TarvoMCP/Workspace.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/UniqueID.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/GivenPath.h"
#include "TarvoModel/Flows/ScanPass.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Showing/Preview.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace tarvo::mcp {

using lumo::Words;
namespace platform = lumo::platform;

namespace {

/// Longer than this nothing that was measured is taken for what is there now.
constexpr double oldestKept = 300;

std::string progressText(const platform::WalkProgress& walked) {
    return fmt::format("{}, {}", itemsText(walked.entries.load()), lumo::ByteFormat::string(walked.bytes));
}

} // namespace

Desk Workspace::desk(const std::string& caller) const {
    Desk desk = Desk::ofThisMachine(home_, "tarvo mcp");
    if (!caller.empty()) {
        desk.caller = caller;
    }
    return desk;
}

lumo::Result<Workspace::Report> Workspace::measured(bool isQuick, const ToolCall& call) const {
    if (auto problem = homeProblem(desk())) {
        return lumo::failure(std::move(*problem));
    }
    lumo::ScanProgress progress;
    const ScanPass pass = isQuick ? ScanPass::quick : ScanPass::full;
    std::optional<lumo::ScanReport> report;
    whileTicking(
        [&] {
            call.progress({.done = static_cast<double>(progress.walked.entries),
                           .message = progressText(progress.walked)});
        },
        [&] {
            report = scanned(rulesFor(pass, home_), optionsFor(pass, home_), desk(),
                             {.progress = &progress, .stop = call.stop});
        });
    if (!report) {
        return lumo::failure(Words{"Interrumpido.", "Interrupted."}.in());
    }
    return std::make_shared<const lumo::ScanReport>(std::move(*report));
}

bool Workspace::waitToMeasure(const ToolCall& call) {
    std::unique_lock lock(mutex_);
    const bool isFree = hasMeasured_.wait(lock, call.stop, [this] { return !isMeasuring_; });
    isMeasuring_ = isMeasuring_ || isFree;
    return isFree;
}

lumo::Result<Workspace::Report> Workspace::scan(bool isQuick, const ToolCall& call) {
    if (isQuick) {
        return measured(isQuick, call);
    }
    if (!waitToMeasure(call)) {
        return lumo::failure(Words{"Interrumpido.", "Interrupted."}.in());
    }
    const std::shared_ptr<void> turn(nullptr, [this](void*) { // Memory may run out while it measures.
        {
            const std::scoped_lock lock(mutex_);
            isMeasuring_ = false;
        }
        hasMeasured_.notify_all();
    });
    std::unique_lock lock(mutex_);
    const std::int64_t changes = changes_;
    lock.unlock();
    auto report = measured(isQuick, call);
    lock.lock();
    if (report && changes == changes_) {
        report_ = *report;
        reportedAt_ = platform::monotonicSeconds();
    }
    return report;
}

lumo::Result<Workspace::Report> Workspace::recentReport(const ToolCall& call) {
    std::unique_lock lock(mutex_);
    hasMeasured_.wait(lock, call.stop, [this] { return !isMeasuring_; });
    if (report_ && platform::monotonicSeconds() - reportedAt_ < oldestKept) {
        return report_;
    }
    lock.unlock();
    return scan(false, call);
}

lumo::Result<std::shared_ptr<const lumo::Inventory>> Workspace::find(const FindRequest& request,
                                                                     const ToolCall& call) {
    const lumo::InventoryKind kind = kindsOf(request).front();
    std::unique_lock lock(mutex_);
    const auto last = looks_.find(kind);
    if (last != looks_.end() && last->second.request == request &&
        platform::monotonicSeconds() - last->second.lookedAt < oldestKept) {
        return last->second.found;
    }
    const std::int64_t changes = changes_;
    lock.unlock();
    platform::WalkProgress walked;
    std::vector<lumo::Inventory> inventories;
    whileTicking(
        [&] {
            call.progress({.done = static_cast<double>(walked.entries),
                           .message = fmt::format("{}: {}", lumo::titleOf(kind), progressText(walked))});
        },
        [&] { inventories = found(request, desk(), {.progress = &walked, .stop = call.stop}); });
    if (call.stop.stop_requested() || inventories.empty()) {
        return lumo::failure(Words{"Interrumpido.", "Interrupted."}.in());
    }
    auto inventory = std::make_shared<const lumo::Inventory>(std::move(inventories.front()));
    lock.lock();
    if (changes == changes_) {
        looks_[kind] = {request, inventory, platform::monotonicSeconds()};
    }
    return inventory;
}

std::shared_ptr<const lumo::ScanReport> Workspace::lastReport() const {
    const std::scoped_lock lock(mutex_);
    return report_;
}

lumo::Result<std::string> Workspace::pathNamed(const std::string& given) const {
    std::string path = given.empty() ? home_ : pathMeant(given, home_, LastLink::kept, home_);
    if (!platform::kindOf(path)) {
        return lumo::failure(
            Words{"no hay nada en {}", "there is nothing at {}"}.with(lumo::printableWithStrays(path)));
    }
    return path;
}

lumo::Result<std::string> Workspace::pathInHome(const std::string& given) const {
    auto path = pathNamed(given);
    // What links on the way lead to was seen through, so that a path cannot point out of the home.
    if (path && !lumo::isInside(*path, home_)) {
        return lumo::failure(lumo::PathGuard::outside(lumo::printableWithStrays(*path)));
    }
    return path;
}

namespace {

bool isOld(const ProposedPlan& plan) {
    constexpr double lifetime = 3600;
    return !plan.cleaned && platform::monotonicSeconds() - plan.proposedAt >= lifetime;
}

} // namespace

std::shared_ptr<const ProposedPlan> Workspace::keep(ProposedPlan plan) {
    constexpr std::size_t mostKept = 8;
    plan.handle = "plan-" + lumo::uniqueID();
    plan.proposedAt = platform::monotonicSeconds();
    auto kept = std::make_shared<const ProposedPlan>(std::move(plan));
    const std::scoped_lock lock(mutex_);
    plans_.push_back(kept);
    if (plans_.size() > mostKept) {
        plans_.pop_front();
    }
    return kept;
}

std::shared_ptr<const ProposedPlan> Workspace::planNamed(const std::string& handle) const {
    const std::scoped_lock lock(mutex_);
    const auto found = std::ranges::find(plans_, handle, [](const auto& plan) { return plan->handle; });
    return found != plans_.end() && !isOld(**found) ? *found : nullptr;
}

std::shared_ptr<const ProposedPlan> Workspace::lastPlan() const {
    const std::scoped_lock lock(mutex_);
    return !plans_.empty() && !isOld(*plans_.back()) ? plans_.back() : nullptr;
}

void Workspace::retire(const std::string& handle, Cleaned cleaned) {
    {
        const std::scoped_lock lock(mutex_);
        const auto found = std::ranges::find(plans_, handle, [](const auto& plan) { return plan->handle; });
        if (found != plans_.end()) {
            ProposedPlan retired = **found;
            retired.cleaned = std::move(cleaned);
            *found = std::make_shared<const ProposedPlan>(std::move(retired));
        }
    }
    forgetReports();
}

void Workspace::forgetReports() {
    const std::scoped_lock lock(mutex_);
    report_.reset();
    looks_.clear();
    ++changes_;
}

void whileTicking(const std::function<void()>& tick, const std::function<void()>& work) {
    std::jthread ticking;
    try {
        ticking = std::jthread([&](const std::stop_token& isDone) {
            constexpr std::chrono::milliseconds pause{250};
            std::mutex mutex;
            std::unique_lock lock(mutex);
            std::condition_variable_any bell;
            while (!bell.wait_for(lock, isDone, pause, [&] { return isDone.stop_requested(); })) {
                tick();
            }
        });
    } catch (const std::system_error&) {
        // Nobody hears how far it is; the work is done all the same.
    }
    work();
}

} // namespace tarvo::mcp
