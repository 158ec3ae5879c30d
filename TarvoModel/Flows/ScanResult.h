#pragma once

#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/History/GrowthTracker.h"
#include "LumoCore/Scanning/Scanner.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Flows/ScanPass.h"
#include "TarvoModel/Showing/WholePlan.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// All that a window shows of one pass, made ready where the pass ran: whoever shows it only takes it over.
struct ScanResult {
    std::shared_ptr<const lumo::ScanReport> report; ///< Never null; shared with later work on it.
    std::shared_ptr<const WholePlan> plan;          ///< Never null.
    std::string summary;                            ///< The template's.
    std::vector<lumo::Inventory> items;             ///< Large files and models, of a full pass.
    std::optional<lumo::Growth> growth;             ///< Only of a full pass; the one before stays otherwise.
    /// Of a full pass: what is certain of the folders that no rule knows, by path.
    std::map<std::string, lumo::Explanation> certain;
    HeldState held;
    bool isFromFile = false;            ///< A saved report's: what it says of the disk may be long over.
    std::optional<std::string> problem; ///< Why the home, or what is set aside, cannot be looked at.
    bool hasSeenHome = true; ///< False when it cannot be looked at: that it has nothing means nothing.
};

/// What becomes of a full pass's snapshot.
enum class Snapshot { stored, dropped };

/// How a pass is made.
struct PassRequest {
    ScanPass pass = ScanPass::quick;
    Desk desk;
    PlanRequest plan; ///< Whose report the pass makes.
    Snapshot snapshot = Snapshot::stored;
    /// What joins the plan: the items that are shown. Null for none.
    std::shared_ptr<const ShownItems> items = nullptr;
    /// What a quick pass is complemented with: the last full report, and the ids of what was cleaned since.
    std::shared_ptr<const lumo::ScanReport> full;
    std::set<std::string> cleaned;
    lumo::ScanProgress* progress = nullptr;
    std::stop_token stop;
    lumo::ScanMemory* memory = nullptr; ///< The same for both passes of one scan; used while a pass runs.
};

/// Scans and plans. Absent only when a stop was requested. A snapshot is compared with the older ones before
/// it joins them.
std::optional<ScanResult> scanResult(const PassRequest& request);

/// A plan of the request's report, which is there.
ShownPlan shownPlan(const PlanRequest& request, const Desk& desk);

/// All that a window shows of a saved report, planned for this moment; the growth that is shown stays. The
/// request says what the plan takes into account.
ScanResult savedResult(std::shared_ptr<const lumo::ScanReport> report, PlanRequest request, const Desk& desk);

/// The same of the made-up disk, which is not looked at.
ScanResult demoResult(lumo::Date now);

} // namespace tarvo
