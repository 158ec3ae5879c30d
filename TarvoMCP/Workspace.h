#pragma once

#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoMCP/Tool.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/Finding.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::mcp {

/// A cleanup that was proposed and may be carried out.
struct ProposedPlan {
    std::string handle;
    PlanRequest request;
    Plan plan;                           ///< As it was shown.
    double proposedAt = 0;               ///< On the clock that is never set.
    std::optional<Cleaned> cleaned = {}; ///< What came of it: a plan serves once.
};

/// What the tools know of the home from one call to the next. Used by any thread.
class Workspace final {
  public:
    explicit Workspace(const std::string& home) : home_(home) {}

    [[nodiscard]] const std::string& home() const { return home_; }

    /// The desk at which a tool works for that caller.
    [[nodiscard]] Desk desk(const std::string& caller = {}) const;

    /// Measures the home, quickly or in full, with progress. Stores nothing and removes nothing. Fails
    /// after a stop, and when the home cannot be listed.
    lumo::Result<std::shared_ptr<const lumo::ScanReport>> scan(bool isQuick, const ToolCall& call);

    /// The last full report when it is some minutes old at most, else a new one. Who comes while one is being
    /// made waits for that.
    lumo::Result<std::shared_ptr<const lumo::ScanReport>> recentReport(const ToolCall& call);

    /// What a closer look finds, with progress; of the same request again what it found some minutes ago at
    /// most, so that all pages are of one look. The request has one kind. Fails after a stop.
    lumo::Result<std::shared_ptr<const lumo::Inventory>> find(const FindRequest& request,
                                                              const ToolCall& call);

    /// The last full report, whatever its age; none before the first one and after a change.
    [[nodiscard]] std::shared_ptr<const lumo::ScanReport> lastReport() const;

    /// The path anywhere that a client named, read as below.
    [[nodiscard]] lumo::Result<std::string> pathNamed(const std::string& given) const;

    /// The path in the home that a client named: absolute, or from the home on, with or without "~". A
    /// failure says why it may not be looked at.
    [[nodiscard]] lumo::Result<std::string> pathInHome(const std::string& given) const;

    /// Keeps a plan under a handle of its own; only the newest few are kept.
    std::shared_ptr<const ProposedPlan> keep(ProposedPlan plan);
    /// None for one that is gone or, before it was carried out, older than an hour: the disk is no longer
    /// what it was.
    [[nodiscard]] std::shared_ptr<const ProposedPlan> planNamed(const std::string& handle) const;
    /// The plan that was kept last, as above.
    [[nodiscard]] std::shared_ptr<const ProposedPlan> lastPlan() const;
    /// Remembers what came of the plan, which serves no more. What was cleaned is no longer as the reports
    /// have it.
    void retire(const std::string& handle, Cleaned cleaned);
    /// What was changed is no longer as the reports have it.
    void forgetReports();

  private:
    using Report = std::shared_ptr<const lumo::ScanReport>;

    /// Waits while another call measures the whole home. False after a stop.
    bool waitToMeasure(const ToolCall& call);
    lumo::Result<Report> measured(bool isQuick, const ToolCall& call) const;

    std::string home_;
    mutable std::mutex mutex_; ///< Of everything below.
    std::condition_variable_any hasMeasured_;
    bool isMeasuring_ = false; ///< In full.
    Report report_;
    double reportedAt_ = 0;    ///< On the clock that is never set.
    std::int64_t changes_ = 0; ///< A report that was begun before one is not kept.
    /// The last closer look of each kind.
    struct Look {
        FindRequest request;
        std::shared_ptr<const lumo::Inventory> found;
        double lookedAt = 0; ///< On the clock that is never set.
    };
    std::map<lumo::InventoryKind, Look> looks_;
    std::deque<std::shared_ptr<const ProposedPlan>> plans_;
};

/// Runs the work and calls `tick` a few times a second meanwhile, on a thread that has ended when this
/// returns.
void whileTicking(const std::function<void()>& tick, const std::function<void()>& work);

} // namespace tarvo::mcp
