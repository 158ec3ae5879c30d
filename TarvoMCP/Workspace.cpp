#include "TarvoMCP/Workspace.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/UniqueID.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/ScanPass.h"

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

std::string progressText(const lumo::ScanProgress& progress) {
    return Words{"{} elementos, {}", "{} items, {}"}.with(
        lumo::ByteFormat::number(static_cast<double>(progress.walked.entries.load()), 0),
        lumo::ByteFormat::string(progress.walked.bytes));
}

/// Without "~" and made absolute from the home on.
std::string spelledOut(const std::string& given, const std::string& home) {
    if (given == "~" || given.empty() || given == ".") {
        return home;
    }
    std::string path = given.starts_with("~/") ? home + given.substr(1) : given;
    if (!path.starts_with('/')) {
        path = home + "/" + path;
    }
    while (path.size() > 1 && path.ends_with('/')) {
        path.pop_back();
    }
    return path;
}

} // namespace

std::optional<lumo::ScanReport> Workspace::scan(bool isQuick, const ToolCall& call) {
    lumo::ScanProgress progress;
    lumo::ScanContext context{.startedAt = platform::now(),
                              .stop = call.stop,
                              .progress = &progress,
                              .findAppCaches = appCacheRules};
    const ScanPass pass = isQuick ? ScanPass::quick : ScanPass::full;
    std::optional<lumo::ScanReport> report;
    whileTicking([&] { call.progress(progress.walked.entries, progressText(progress)); },
                 [&] { report = lumo::Scanner::scan(rulesFor(pass), optionsFor(pass, home_), context); });
    if (report && !isQuick) {
        report_ = report;
        reportedAt_ = platform::monotonicSeconds();
    }
    return report;
}

std::optional<lumo::ScanReport> Workspace::recentReport(const ToolCall& call) {
    constexpr double oldest = 300;
    if (report_ && platform::monotonicSeconds() - reportedAt_ < oldest) {
        return report_;
    }
    return scan(false, call);
}

lumo::Result<std::string> Workspace::pathInHome(const std::string& given) const {
    std::string path = spelledOut(given, home_);
    if (path != home_) {
        const lumo::PathGuard guard(home_);
        if (!guard.base() || !path.starts_with(home_ + "/")) {
            return lumo::failure(lumo::PathGuard::outside(path));
        }
        // Links on the way are followed as long as they stay in the home.
        const auto place = guard.base()->place(std::string_view(path).substr(home_.size() + 1));
        if (!place && !place.error().isMissing()) {
            return lumo::failure(lumo::PathGuard::outside(path));
        }
    }
    if (!platform::kindOf(path)) {
        return lumo::failure(Words{"no hay nada en {}", "there is nothing at {}"}.with(path));
    }
    return path;
}

const ProposedPlan& Workspace::keep(ProposedPlan plan) {
    constexpr std::size_t mostKept = 8;
    plan.handle = "plan-" + lumo::uniqueID();
    plan.proposedAt = platform::monotonicSeconds();
    plans_.push_back(std::move(plan));
    if (plans_.size() > mostKept) {
        plans_.pop_front();
    }
    return plans_.back();
}

const ProposedPlan* Workspace::planNamed(const std::string& handle) const {
    const auto found = std::ranges::find(plans_, handle, &ProposedPlan::handle);
    constexpr double lifetime = 3600;
    const bool isFresh = found != plans_.end() && platform::monotonicSeconds() - found->proposedAt < lifetime;
    return isFresh ? &*found : nullptr;
}

void Workspace::forgetReports() {
    report_.reset();
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
